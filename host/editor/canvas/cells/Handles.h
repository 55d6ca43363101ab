// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRect>
#include <QVector>

namespace norvo {

/// The eight places of a frame by which its edges are dragged.
class Handles
{
public:
    /// `target`: how large what is touched is at least, in pixels.
    Handles(const QRect& frame, int target) : m_frame(frame), m_target(target) {}

    static constexpr int kDrawn = 12; ///< Pixels of a handle, as it is drawn.

    QVector<QRect> drawn() const;
    /// The edges that a drag from there takes along; none: it drags the whole. The inner third of
    /// the frame is always for the whole.
    Qt::Edges at(const QPoint& place) const;

private:
    struct Handle
    {
        QPoint centre;
        Qt::Edges edges;
    };

    QVector<Handle> all() const;

    const QRect m_frame;
    const int m_target;
};

} // namespace norvo
