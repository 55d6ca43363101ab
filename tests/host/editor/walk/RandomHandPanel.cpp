// SPDX-License-Identifier: GPL-3.0-or-later

#include "RandomHand.h"

#include "host/editor/form/ParamRow.h"
#include "host/editor/frame/PanelPane.h"
#include "host/editor/pages/PagesList.h"
#include "host/editor/pages/PanelForm.h"
#include "host/editor/pages/RemovePageSheet.h"
#include "host/window/PanelPages.h"

#include <QLineEdit>
#include <QListWidget>

#include <algorithm>

using norvo::PagesList;
using norvo::PanelForm;
using norvo::ParamRow;

/// In front, where a hand reaches it.
template <class T>
T* RandomHand::partOfPanelPane() const
{
    m_editor.openPane("panel");
    auto* const pane = m_editor.shown<norvo::PanelPane>();
    T* const part = pane->findChild<T*>();
    pane->setCurrentWidget(part);
    LiveEditor::settle();
    return part;
}

QString RandomHand::usePagesList()
{
    auto* const list = partOfPanelPane<PagesList>();
    const int pages = m_editor.pages().areas().size();
    auto* const rows = list->findChild<QListWidget*>("pages");
    const QListWidgetItem* const row = rows->item(below(rows->count()));
    rows->scrollToItem(row);
    tap(rows->viewport(), rows->visualItemRect(row).center());
    const auto click = [list](const QString& name) {
        LiveEditor::click(list->findChild<QPushButton*>(name));
        return name;
    };
    switch (below(5)) {
    case 0:
        return pages < 4 ? click("addPage") : "enough pages";
    case 1:
        return click("pageUp");
    case 2:
        return click("pageDown");
    case 3: {
        if (pages < 3 || oneIn(2)) {
            return "pages that stay";
        }
        click("removePage");
        if (auto* const sheet = m_editor.window().findChild<norvo::RemovePageSheet*>()) {
            oneIn(2) ? sheet->accept() : sheet->reject();
            LiveEditor::settle();
        }
        return "remove a page";
    }
    default:
        auto* const name = list->findChild<QLineEdit*>("pageName");
        type(*name, anyOf(QStringList{"Run", "Stop", "Main", "Gr\u00f6\u00dfe: 1", "no", ""}));
        QTest::keyClick(name, oneIn(5) ? Qt::Key_Escape : Qt::Key_Return);
        LiveEditor::settle();
        return "name a page";
    }
}

/// All but the language, which all that runs here has in common.
QString RandomHand::fillPanelForm()
{
    QList<ParamRow*> rows = partOfPanelPane<PanelForm>()->findChildren<ParamRow*>();
    const QStringList kept{"language"};
    rows.erase(
        std::remove_if(rows.begin(), rows.end(),
                       [&kept](const ParamRow* row) { return kept.contains(row->words().name); }),
        rows.end());
    return fill(*anyOf(rows));
}
