// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/ErrorPage.h"

#include <QLabel>
#include <QTextCursor>
#include <QTextEdit>
#include <QVBoxLayout>

namespace norvo {

namespace {

constexpr int kTitlePoints = 18;
constexpr int kTextPoints = 12;
constexpr int kGap = 12; // pixels, between two of them

QFont sized(QFont font, int points)
{
    font.setPointSize(points);
    return font;
}

/// The place and the kind in bold, the text below.
void append(QTextCursor& cursor, const Diagnostic& diagnostic)
{
    QTextBlockFormat block;
    block.setBottomMargin(kGap);
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    cursor.setBlockFormat(block);
    Diagnostic heading = diagnostic;
    heading.text.clear();
    cursor.insertText(heading.toString().trimmed(), bold);
    cursor.insertText(QString(QChar::LineSeparator) + diagnostic.text, QTextCharFormat());
}

QTextEdit* makeList(const DiagnosticList& diagnostics)
{
    auto* const list = new QTextEdit;
    list->setReadOnly(true);
    list->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    list->setFont(sized(list->font(), kTextPoints));
    QTextCursor cursor(list->document());
    for (const Diagnostic& diagnostic : diagnostics) {
        if (!list->document()->isEmpty()) {
            cursor.insertBlock();
        }
        append(cursor, diagnostic);
    }
    list->moveCursor(QTextCursor::Start); // It has moved along with what was inserted.
    return list;
}

} // namespace

ErrorPage::ErrorPage(const Diagnostics& diagnostics, QWidget* parent) : QWidget(parent)
{
    auto* const title = new QLabel(tr("This panel cannot start"));
    title->setFont(sized(title->font(), kTitlePoints));
    title->setWordWrap(true);
    auto* const summary = new QLabel(diagnostics.summary());
    summary->setFont(sized(summary->font(), kTextPoints));
    summary->setWordWrap(true);
    summary->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addWidget(summary);
    layout->addWidget(makeList(diagnostics.sorted()), 1);
}

} // namespace norvo
