// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/LogArea.h"

#include "widgets/ShownText.h"

#include <QEvent>
#include <QScrollBar>
#include <QTextBlock>

namespace {

constexpr int kMaxLines = 112'000;
constexpr int kMaxCharacters = 10'000'000;
constexpr int kDroppedShare = 10; // one tenth at once: dropping lays out all the rest

constexpr int kMaxTextLength = 20'000;
constexpr int kMaxTextLines = 5'000;
constexpr int kMaxLineLength = 4'000; // without a space it costs its square

constexpr int kMaxHeight = 8'000'000;
constexpr qreal kMaxHeightEstimate = 7'000'000;
constexpr qreal kMarkedRowHeight = 200; // letters of 99 points

} // namespace

LogArea::LogArea()
{
    setUndoRedoEnabled(false);
}

void LogArea::appendLine(const QString& text)
{
    const bool hasLayout = !document()->pageSize().isNull();
    if (m_held.isNull() && hasLayout && !isVisible()) {
        m_held = QTextCursor(document());
        m_held.beginEditBlock();
    }
    const QString shown = limited(text);
    if (norvo::isMarked(shown)) {
        m_hasMarks = m_hasMarks || Qt::mightBeRichText(shown);
        append(shown);
    } else {
        appendPlain(shown);
    }
    if (document()->blockCount() > kMaxLines || document()->characterCount() > kMaxCharacters ||
        verticalScrollBar()->maximum() > kMaxHeight) {
        dropOldest(qMax(1, document()->blockCount() / kDroppedShare));
    }
    if (m_scrollingDisabled) {
        scroll(false);
    }
}

/// A text as long as can be laid out in little time; each row that it breaks is a line.
QString LogArea::limited(const QString& text)
{
    QString shown = text.left(kMaxTextLength);
    shown.replace(QChar::LineSeparator, '\n');
    if (text.size() <= kMaxLineLength) {
        return shown;
    }
    shown = norvo::shortened(text, shown.section('\n', 0, kMaxTextLines - 1).size(), *this);
    shown.replace(QChar::LineSeparator, '\n');
    QStringList lines = shown.split('\n');
    for (QString& line : lines) {
        line = norvo::shortened(line, kMaxLineLength, *this);
    }
    return lines.join('\n');
}

void LogArea::appendPlain(const QString& text)
{
    const bool follows = textCursor().atEnd(); // as append() does
    QTextCursor end(document());
    end.beginEditBlock();
    end.movePosition(QTextCursor::End);
    if (!document()->isEmpty()) {
        end.insertBlock(textCursor().blockFormat(), textCursor().charFormat());
    }
    end.insertText(text);
    end.endEditBlock();
    scroll(follows);
}

void LogArea::scroll(bool follows)
{
    QScrollBar* const bar = verticalScrollBar();
    if (m_scrollingDisabled) {
        bar->setValue(bar->minimum());
    } else if (follows) {
        bar->setValue(bar->maximum());
    }
}

void LogArea::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange) {
        wrapWhatCanBeDrawn();
        layOutHeldLines();
    }
    QTextEdit::changeEvent(event);
}

void LogArea::paintEvent(QPaintEvent* event)
{
    layOutHeldLines();
    QTextEdit::paintEvent(event);
}

void LogArea::resizeEvent(QResizeEvent* event)
{
    wrapWhatCanBeDrawn();
    layOutHeldLines();
    QTextEdit::resizeEvent(event);
}

void LogArea::showEvent(QShowEvent* event)
{
    wrapWhatCanBeDrawn();
    layOutHeldLines();
    QTextEdit::showEvent(event);
    if (m_scrollingDisabled) { // a text area shows its cursor when it is first shown
        scroll(false);
    }
}

void LogArea::layOutHeldLines()
{
    if (m_held.isNull()) {
        return;
    }
    QTextCursor held;
    std::swap(held, m_held);
    const bool follows = textCursor().atEnd();
    held.endEditBlock();
    scroll(follows);
}

/// Goes by an estimate: the layout, which would know, must not come to see what is too tall.
void LogArea::wrapWhatCanBeDrawn()
{
    const QFontMetricsF metrics(font());
    const qreal rowHeight =
        m_hasMarks ? qMax(kMarkedRowHeight, 3 * metrics.lineSpacing()) : metrics.lineSpacing();
    const qreal maxRows = kMaxHeightEstimate / rowHeight;
    const qreal width = qMax(1.0, viewport()->width() - 2 * document()->documentMargin());
    const qreal maxWidth = 2 * metrics.averageCharWidth() * document()->characterCount();
    if (document()->blockCount() + 2 * maxWidth / width <= maxRows) {
        setLineWrapMode(WidgetWidth);
        return;
    }
    qreal wrappedRows = 0;
    qreal rows = 0;
    int kept = 0;
    for (QTextBlock line = document()->lastBlock(); line.isValid(); line = line.previous()) {
        const QString text = line.text();
        const int unwrapped = 1 + text.count(QChar::LineSeparator);
        if (rows + unwrapped > maxRows) {
            break;
        }
        rows += unwrapped;
        const qreal lineWidth = metrics.horizontalAdvance(text);
        wrappedRows += lineWidth > width ? 2 * lineWidth / width : 0;
        ++kept;
    }
    dropOldest(document()->blockCount() - kept); // first: the mode lays out at once
    setLineWrapMode(rows + wrappedRows <= maxRows ? WidgetWidth : NoWrap);
}

void LogArea::dropOldest(int lines)
{
    if (lines <= 0) {
        return;
    }
    QTextCursor oldest(document());
    oldest.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor, lines);
    oldest.removeSelectedText();
}
