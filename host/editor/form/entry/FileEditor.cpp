// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/form/entry/FileEditor.h"

#include "host/editor/form/entry/FileSheet.h"

#include <QLineEdit>
#include <QPushButton>

namespace norvo {

FileEditor::FileEditor(const ParamWords& words) : LineEditor(words), m_kind(words.kind)
{
    QPushButton* const open = addKey(QString(QChar(0x2026)), tr("Files"));
    open->setObjectName(words.name + " files");
    connect(open, &QPushButton::clicked, this, [this] {
        auto* const sheet = new FileSheet(*this, m_kind, line().text());
        connect(sheet, &FileSheet::chosen, this, &FileEditor::enter);
        sheet->present();
    });
}

} // namespace norvo
