// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/frame/MenuSheet.h"

#include "host/window/layout/FingerScrollArea.h"
#include "host/window/look/TouchSize.h"

#include <QAction>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTimer>

namespace norvo {

namespace {

constexpr int kColumns = 2;
constexpr int kSpacing = 6; // pixels

QPushButton* makeActionKey(MenuSheet& sheet, QAction& action)
{
    const QString keys = action.shortcut().toString(QKeySequence::NativeText);
    auto* const key =
        new QPushButton(keys.isEmpty() ? action.text() : action.text() + "    " + keys);
    key->setObjectName(action.objectName());
    key->setEnabled(action.isEnabled());
    key->setCheckable(action.isCheckable());
    key->setChecked(action.isChecked());
    key->setMinimumHeight(TouchSize::pixels(PanelLook::Touch::Fingers, *sheet.screen()));
    key->setAutoDefault(false);
    // Once the sheet is gone: what it does may open another.
    QObject::connect(key, &QPushButton::clicked, &sheet, [&sheet, &action] {
        sheet.accept();
        QTimer::singleShot(0, &action, &QAction::trigger);
    });
    return key;
}

} // namespace

MenuSheet::MenuSheet(QWidget& opener, const QList<Group>& groups) : Sheet(opener, tr("Menu"))
{
    setObjectName("editorMenu");
    auto* const list = new QWidget;
    auto* const grid = new QGridLayout(list);
    grid->setSpacing(kSpacing);
    int row = 0;
    for (const Group& group : groups) {
        if (group.second.isEmpty()) {
            continue;
        }
        auto* const title = new QLabel(group.first);
        QFont bold = title->font();
        bold.setBold(true);
        title->setFont(bold);
        grid->addWidget(title, row++, 0, 1, kColumns);
        for (int i = 0; i < group.second.size(); ++i) {
            grid->addWidget(makeActionKey(*this, *group.second[i]), row + i / kColumns,
                            i % kColumns);
        }
        row += (group.second.size() + kColumns - 1) / kColumns;
    }
    grid->setRowStretch(row, 1);
    auto* const scroll = new FingerScrollArea(list);
    scroll->setWidgetResizable(true);
    content().addWidget(scroll, 1);
}

} // namespace norvo
