// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFont>
#include <QLabel>
#include <QMap>

/// Needs no more room than the screen has, however long the text that came: a window may not be
/// smaller than what its labels need.
///
/// Before a page is laid out it asks a dozen times for the height at some width. To break the lines
/// for each would take a third of the time that a page of labels takes to show.
class BoundedLabel : public QLabel
{
public:
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

private:
    /// All that the height of a plain text depends on, besides the width.
    struct Content
    {
        bool operator==(const Content& other) const;

        QString text;
        QFont font;
        QMargins margins;
        QSize least;
        int margin = 0;
        int indent = 0;
        int frame = 0;
        Qt::Alignment alignment;
        bool isWrapped = false;
    };

    Content content() const;
    QMap<int, int> atHints() const;
    int keptHeight(int width) const;

    mutable Content m_measured;
    mutable QMap<int, int> m_heights; ///< Of what was measured, by width.
};
