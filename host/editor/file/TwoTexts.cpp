// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/file/TwoTexts.h"

#include "host/editor/file/LineDiff.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTextBlock>

namespace norvo {

namespace {

/// The text, with the lines that the other one does not have in reverse, the first of them in view.
QPlainTextEdit* makeView(const QString& name, const QStringList& lines, const QVector<bool>& isOwn)
{
    auto* const view = new QPlainTextEdit(lines.join('\n'));
    view->setObjectName(name);
    view->setReadOnly(true);
    view->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    view->setLineWrapMode(QPlainTextEdit::NoWrap);
    view->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    QList<QTextEdit::ExtraSelection> marks;
    for (int line = 0; line < lines.size(); ++line) {
        if (isOwn[line]) {
            QTextEdit::ExtraSelection mark;
            mark.cursor = QTextCursor(view->document()->findBlockByNumber(line));
            mark.format.setBackground(view->palette().highlight());
            mark.format.setForeground(view->palette().highlightedText());
            mark.format.setProperty(QTextFormat::FullWidthSelection, true);
            marks.append(mark);
        }
    }
    view->setExtraSelections(marks);
    if (!marks.isEmpty()) {
        view->setTextCursor(marks.constFirst().cursor);
        view->centerCursor();
    }
    return view;
}

QStringList linesOf(const QByteArray& text)
{
    return QString::fromUtf8(text).remove('\r').split('\n');
}

} // namespace

TwoTexts::TwoTexts(const QString& leftTitle, const QByteArray& left, const QString& rightTitle,
                   const QByteArray& right)
{
    const QStringList leftLines = linesOf(left);
    const QStringList rightLines = linesOf(right);
    const LineDiff diff(leftLines, rightLines);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    const auto addSide = [row](const QString& title, QPlainTextEdit* view) {
        auto* const column = new QVBoxLayout;
        auto* const label = new QLabel(title);
        label->setFont(row->parentWidget()->font());
        label->setBuddy(view);
        view->setAccessibleName(title);
        column->addWidget(label);
        column->addWidget(view, 1);
        row->addLayout(column);
    };
    addSide(leftTitle, makeView("left", leftLines, diff.onlyLeft));
    addSide(rightTitle, makeView("right", rightLines, diff.onlyRight));
}

} // namespace norvo
