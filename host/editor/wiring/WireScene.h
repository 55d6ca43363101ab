// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QPainterPath>
#include <QRect>
#include <QSet>
#include <QStringList>
#include <QVector>

namespace norvo {

class DeviceShelf;
class EditSession;
class PanelPages;

/// A connection as it is drawn.
struct WireLine
{
    int connection = -1; ///< Its number in the panel.
    QString from;
    QString to;
    QPainterPath path;
    QVector<QPointF> points; ///< Along the path.
    /// Of a connection with a page that is not seen: the device there; else empty.
    QString away;
    QString tag; ///< What stands at the end of such a line: "lamp, Page 2".
    QRectF tagRect;

    bool touches(const QString& device) const { return from == device || to == device; }
};

/// Where the devices of a panel stand on a canvas over its pages, and how the lines between them
/// run.
class WireScene
{
public:
    WireScene() = default;
    /// Without lines. `shelf` stands directly below `canvas`.
    WireScene(const EditSession& session, const QWidget& canvas, const DeviceShelf& shelf);

    void addLines(const EditSession& session, const QWidget& canvas);

    /// The devices that can be reached: those of the page that is seen, from top to bottom, then
    /// those of the shelf.
    const QStringList& devices() const { return m_devices; }
    bool isOnPage(const QString& device) const { return m_onPage.contains(device); }
    QRect deviceRect(const QString& device) const { return m_rects.value(device); }
    const QVector<WireLine>& lines() const { return m_lines; }

    QString deviceAt(const QPoint& point) const; ///< Of the page; empty: none.
    /// The place in lines() of the nearest line that `isWanted`, at most `reach` away; -1: none.
    template <class Predicate>
    int lineAt(const QPointF& point, double reach, Predicate isWanted) const
    {
        int nearest = -1;
        for (int i = 0; i < m_lines.size(); ++i) {
            const double distance = isWanted(m_lines[i]) ? distanceTo(m_lines[i], point) : reach;
            if (distance < reach) {
                reach = distance;
                nearest = i;
            }
        }
        return nearest;
    }
    /// Whether each device is where it is there.
    bool standsAs(const WireScene& other) const;

private:
    /// Where a line meets a device, and the way that it leaves it.
    struct End
    {
        QPointF point;
        QPointF direction;
    };

    static double distanceTo(const WireLine& line, const QPointF& point);

    void addLine(WireLine line, const End& from, const End& to, const QWidget& canvas);
    End endAt(const QString& device, bool isOutput, int number, int count,
              const QSize& canvas) const;
    void addCurve(WireLine& line, const End& from, const End& to, const QSize& canvas) const;
    void addStub(WireLine& line, const End& end, const QWidget& canvas) const;

    QStringList m_devices;
    QHash<QString, QRect> m_rects;    ///< In the canvas' coordinates.
    QHash<QString, QString> m_pageOf; ///< Of devices that stand on a page that is not seen.
    QSet<QString> m_onPage;
    QVector<WireLine> m_lines;
};

} // namespace norvo
