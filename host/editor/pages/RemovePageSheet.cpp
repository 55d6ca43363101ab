// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/pages/RemovePageSheet.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace norvo {

namespace {

constexpr int kNamed = 12; ///< More devices are only counted.

} // namespace

RemovePageSheet::RemovePageSheet(QWidget& opener, const QString& page, const QStringList& devices)
    : Sheet(opener, tr("Remove the page %1?").arg(page))
{
    setObjectName("removePageQuestion");
    const int more = devices.size() - kNamed;
    const QString named = QStringList(devices.mid(0, kNamed)).join(", ");
    auto* const text =
        new QLabel(tr("Its devices and their connections go with it: %1. Undo brings all back.")
                       .arg(more > 0 ? tr("%1 and %2 more").arg(named).arg(more) : named));
    text->setTextFormat(Qt::PlainText);
    text->setFont(font());
    text->setWordWrap(true);
    content().addWidget(text);
    closeKey()->setText(tr("Keep it"));
    QPushButton* const remove = addKey(tr("Remove"));
    remove->setObjectName("remove");
    connect(remove, &QPushButton::clicked, this, &QDialog::accept);
}

} // namespace norvo
