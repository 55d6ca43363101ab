#pragma once

#include <QTextCursor>
#include <QTextEdit>

/// A text area for lines that come without end.
///
/// It holds each line at once. While it cannot be seen it lays none of them out; that is made up
/// for when it is shown, and so are the document's signals.
///
/// Qt draws nothing below 8,388,607 pixels, about 174,000 lines of 30 points, and hangs when it
/// lays out such a text anew. Before a text grows as tall as that, its oldest lines are dropped.
class LogArea : public QTextEdit
{
public:
    using QTextEdit::QTextEdit;

    void appendLine(const QString& text); ///< Like append().

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void layOutHeldLines();
    void dropWhatCannotBeDrawn();
    void dropOldest(int lines);

    QTextCursor m_held; ///< Not null: has an edit block open, which holds the layout back.
};
