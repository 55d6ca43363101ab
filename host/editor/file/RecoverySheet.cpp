// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/file/RecoverySheet.h"

#include "host/editor/file/TwoTexts.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace norvo {

RecoverySheet::RecoverySheet(QWidget& opener, const QByteArray& left, const QByteArray& inFile)
    : Sheet(opener, tr("The last editing ended before its changes were saved"))
{
    setObjectName("recovery");
    content().addWidget(new TwoTexts(tr("What was not saved"), left, tr("In the file"), inFile), 1);
    closeKey()->setText(tr("Decide later"));
    QPushButton* const drop = addKey(tr("Drop them"));
    drop->setObjectName("drop");
    connect(drop, &QPushButton::clicked, this, [this] {
        accept();
        emit dropChosen();
    });
    QPushButton* const take = addKey(tr("Take them over"));
    take->setObjectName("takeOver");
    connect(take, &QPushButton::clicked, this, [this] {
        accept();
        emit takeOverChosen();
    });
}

} // namespace norvo
