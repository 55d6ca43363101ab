#include "widgets/LogArea.h"

#include "norvo/Truncation.h"

#include <QScrollBar>
#include <QTextBlock>

namespace {

constexpr int kTallestPixels = 8'000'000;
constexpr qreal kTallestEstimatePixels = 7'000'000;
constexpr int kDroppedShare = 10; // one tenth at once: dropping lays out all the rest

/// The rows that a line takes which is broken at blanks or, for want of them, anywhere.
int rowsOf(const QString& line, int columns)
{
    int rows = 1;
    for (int start = 0; line.size() - start > columns; ++rows) {
        const int blank = line.lastIndexOf(' ', start + columns);
        start = blank > start ? blank + 1 : start + columns;
    }
    return rows;
}

} // namespace

void LogArea::appendLine(const QString& text)
{
    const bool hasLayout = !document()->pageSize().isNull();
    if (m_held.isNull() && hasLayout && !isVisible()) {
        m_held = QTextCursor(document());
        m_held.beginEditBlock();
    }
    append(text);
    if (verticalScrollBar()->maximum() > kTallestPixels) {
        dropOldest(document()->blockCount() / kDroppedShare);
    }
}

void LogArea::paintEvent(QPaintEvent* event)
{
    layOutHeldLines();
    QTextEdit::paintEvent(event);
}

void LogArea::resizeEvent(QResizeEvent* event)
{
    dropWhatCannotBeDrawn();
    layOutHeldLines();
    QTextEdit::resizeEvent(event);
}

void LogArea::showEvent(QShowEvent* event)
{
    dropWhatCannotBeDrawn();
    layOutHeldLines();
    QTextEdit::showEvent(event);
}

void LogArea::layOutHeldLines()
{
    if (m_held.isNull()) {
        return;
    }
    QTextCursor held;
    std::swap(held, m_held);
    const bool follows = textCursor().atEnd(); // as append() does
    held.endEditBlock();
    if (follows) {
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    }
}

/// Goes by an estimate: the layout, which would know, must not come to see such a text.
void LogArea::dropWhatCannotBeDrawn()
{
    const QFontMetricsF metrics(font());
    const qreal width = viewport()->width() - 2 * document()->documentMargin();
    const int columns = qMax(1, norvo::truncatedToInt(width / metrics.averageCharWidth()));
    const qreal mostRows = document()->blockCount() + 2.0 * document()->characterCount() / columns;
    if (mostRows * metrics.lineSpacing() <= kTallestEstimatePixels) {
        return;
    }
    const qreal rowsThatFit = kTallestEstimatePixels / metrics.lineSpacing();
    int rows = 0;
    int kept = 0;
    for (QTextBlock line = document()->lastBlock(); line.isValid(); line = line.previous()) {
        rows += rowsOf(line.text(), columns);
        if (rows > rowsThatFit) {
            break;
        }
        ++kept;
    }
    dropOldest(document()->blockCount() - kept);
}

void LogArea::dropOldest(int lines)
{
    if (lines <= 0) {
        return;
    }
    document()->setUndoRedoEnabled(false); // what can be undone is not freed
    QTextCursor oldest(document());
    oldest.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor, lines);
    oldest.removeSelectedText();
    document()->setUndoRedoEnabled(true);
}
