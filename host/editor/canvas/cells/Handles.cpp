// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/canvas/cells/Handles.h"

#include <limits>

namespace norvo {

QVector<Handles::Handle> Handles::all() const
{
    const QPoint centre = m_frame.center();
    return {{m_frame.topLeft(), Qt::TopEdge | Qt::LeftEdge},
            {{centre.x(), m_frame.top()}, Qt::TopEdge},
            {m_frame.topRight(), Qt::TopEdge | Qt::RightEdge},
            {{m_frame.right(), centre.y()}, Qt::RightEdge},
            {m_frame.bottomRight(), Qt::BottomEdge | Qt::RightEdge},
            {{centre.x(), m_frame.bottom()}, Qt::BottomEdge},
            {m_frame.bottomLeft(), Qt::BottomEdge | Qt::LeftEdge},
            {{m_frame.left(), centre.y()}, Qt::LeftEdge}};
}

QVector<QRect> Handles::drawn() const
{
    QVector<QRect> rects;
    for (const Handle& handle : all()) {
        QRect rect(0, 0, kDrawn, kDrawn);
        rect.moveCenter(handle.centre);
        rects.append(rect);
    }
    return rects;
}

Qt::Edges Handles::at(const QPoint& place) const
{
    const int third = m_frame.width() / 3;
    const int upperThird = m_frame.height() / 3;
    if (m_frame.adjusted(third, upperThird, -third, -upperThird).contains(place)) {
        return {};
    }
    Qt::Edges edges;
    int least = std::numeric_limits<int>::max();
    for (const Handle& handle : all()) {
        const QPoint distance = place - handle.centre;
        if (std::max(std::abs(distance.x()), std::abs(distance.y())) <= m_target / 2 &&
            distance.manhattanLength() < least) {
            least = distance.manhattanLength();
            edges = handle.edges;
        }
    }
    return edges;
}

} // namespace norvo
