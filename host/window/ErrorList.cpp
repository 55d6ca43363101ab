// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/ErrorList.h"

#include <QRegularExpression>
#include <QTextCursor>

namespace norvo {

namespace {

constexpr int kTextPoints = 12;
constexpr int kGap = 12; // pixels, between two of them

/// The place and the kind in bold, the text below; the file above the first of its errors.
void write(QTextCursor& cursor, const Diagnostic& diagnostic, bool isFirstOfFile)
{
    QTextBlockFormat block;
    block.setBottomMargin(kGap);
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    cursor.setBlockFormat(block);
    if (isFirstOfFile) {
        cursor.insertText(diagnostic.file, QTextCharFormat());
        cursor.insertBlock();
    }
    Diagnostic heading = diagnostic;
    heading.file.clear();
    heading.text.clear();
    static const QRegularExpression behindFile("^[: ]+");
    cursor.insertText(heading.toString().remove(behindFile).trimmed(), bold);
    cursor.insertText(QString(QChar::LineSeparator) + diagnostic.text, QTextCharFormat());
}

} // namespace

ErrorList::ErrorList(const DiagnosticList& diagnostics)
{
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    QFont sized = font();
    sized.setPointSize(kTextPoints);
    setFont(sized);
    QTextCursor cursor(document());
    QString file;
    for (const Diagnostic& diagnostic : diagnostics) {
        if (!document()->isEmpty()) {
            cursor.insertBlock();
        }
        write(cursor, diagnostic, diagnostic.file != file);
        file = diagnostic.file;
    }
    moveCursor(QTextCursor::Start); // It has moved along with what was inserted.
}

} // namespace norvo
