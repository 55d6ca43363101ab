// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTextCursor>
#include <QTextEdit>

/// A text area for lines that come without end.
///
/// It keeps at least the newest 100,000 lines, and fewer where they have more than ten million
/// characters or are taller than Qt can draw: nothing is drawn below 8,388,607 pixels (174,000
/// lines of 30 points), and Qt hangs when it lays out such a text again. What would be taller only
/// when it is wrapped is not wrapped, so that a narrow area loses no lines.
///
/// It holds each line at once. While it cannot be seen it lays none of them out; that is made up
/// for when it is shown, and so are the document's signals. Lines are not undone: who keeps them
/// for undoing never gets rid of them.
class LogArea : public QTextEdit
{
public:
    LogArea();

    void appendLine(const QString& text); ///< As append() does, documents verbatim.

    /// True: from the next line on the first line stays in view, in place of the last.
    void setScrollingDisabled(bool disabled) { m_scrollingDisabled = disabled; }

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QString limited(const QString& text);
    void appendPlain(const QString& text);
    void scroll(bool follows);
    void layOutHeldLines();
    void wrapWhatCanBeDrawn();
    void dropOldest(int lines);

    QTextCursor m_held; ///< Not null: has an edit block open, which holds the layout back.
    bool m_scrollingDisabled = false;
    bool m_hasMarks = false; ///< Rows may be taller than the font says.
};
