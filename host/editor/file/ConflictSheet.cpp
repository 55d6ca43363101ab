// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/file/ConflictSheet.h"

#include "host/editor/file/EditedFile.h"
#include "host/editor/file/TwoTexts.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace norvo {

ConflictSheet::ConflictSheet(QWidget& opener, EditedFile& file, const QByteArray& mine)
    : Sheet(opener, tr("The file was changed by others, too"))
{
    setObjectName("conflict");
    content().addWidget(new TwoTexts(tr("Here, not saved"), mine, tr("In the file"), file.theirs()),
                        1);
    closeKey()->setText(tr("Decide later"));
    const auto add = [this](const QString& text, const char* name) {
        QPushButton* const key = addKey(text);
        key->setObjectName(name);
        return key;
    };
    QPushButton* const theirs = add(tr("Take theirs"), "takeTheirs");
    connect(theirs, &QPushButton::clicked, &file, [this, &file] {
        emit problem(file.takeTheirs());
        accept();
    });
    QPushButton* const keep = add(tr("Save mine over it"), "keepMine");
    connect(keep, &QPushButton::clicked, &file, [this, &file] {
        emit problem(file.saveOver());
        accept();
    });
}

} // namespace norvo
