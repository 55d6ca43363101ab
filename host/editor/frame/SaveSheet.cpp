// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/frame/SaveSheet.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace norvo {

SaveSheet::SaveSheet(QWidget& opener, const QString& file)
    : Sheet(opener, tr("There are changes that are not saved"))
{
    setObjectName("saveQuestion");
    auto* const text = new QLabel(file);
    text->setTextFormat(Qt::PlainText);
    text->setFont(font());
    text->setWordWrap(true);
    content().addWidget(text);
    closeKey()->setText(tr("Edit on"));
    QPushButton* const discard = addKey(tr("Discard"));
    discard->setObjectName("discard");
    connect(discard, &QPushButton::clicked, this, [this] {
        accept();
        emit discardChosen();
    });
    QPushButton* const save = addKey(tr("Save"));
    save->setObjectName("save");
    save->setDefault(true);
    connect(save, &QPushButton::clicked, this, [this] {
        accept();
        emit saveChosen();
    });
}

} // namespace norvo
