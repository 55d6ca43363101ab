// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/wiring/WireScene.h"

#include "host/editor/EditSession.h"
#include "host/editor/wiring/DeviceShelf.h"
#include "host/panel/run/Panel.h"
#include "host/window/ErrorTile.h"
#include "host/window/PanelPages.h"

#include "norvo/BaseWidget.h"

#include <QFontMetrics>
#include <QLineF>

#include <algorithm>
#include <cmath>

namespace norvo {

namespace {

constexpr double kLeastBow = 30; // pixels, how far a line goes straight on from its ends
constexpr double kMostBow = 160;
constexpr double kStub = 18; // pixels, of a line to another page
constexpr int kTagPadding = 5;
constexpr int kPoints = 24; // along a line

const QWidget* widgetOf(const EditSession& session, const QString& device)
{
    if (const QWidget* const widget = session.live().panel().widget(device)) {
        return widget;
    }
    return session.live().pages().findChild<ErrorTile*>(device);
}

} // namespace

WireScene::WireScene(const EditSession& session, const QWidget& canvas, const DeviceShelf& shelf)
{
    const PanelPages& pages = session.live().pages();
    const QHash<QString, Cells> cells = session.live().cells();
    for (const DeviceSetting& device : session.live().description().devices) {
        const QString& id = device.id.text;
        const QWidget* const widget = cells.contains(id) ? widgetOf(session, id) : nullptr;
        if (!widget) {
            continue;
        }
        if (!widget->isVisibleTo(&pages)) {
            m_pageOf.insert(id, cells.value(id).area);
            continue;
        }
        m_rects.insert(id, QRect(widget->mapTo(&pages, {0, 0}) - canvas.pos(), widget->size()));
        m_onPage.insert(id);
        m_devices.append(id);
    }
    std::stable_sort(m_devices.begin(), m_devices.end(), [&](const QString& a, const QString& b) {
        const Cells one = cells.value(a);
        const Cells other = cells.value(b);
        return one.row == other.row ? one.column < other.column : one.row < other.row;
    });
    for (const QString& id : shelf.devices()) {
        QRect rect = shelf.itemRect(id);
        rect.moveTop(canvas.height()); // All that is said of it is its place along the edge.
        m_rects.insert(id, rect);
        m_devices.append(id);
    }
}

void WireScene::addLines(const EditSession& session, const QWidget& canvas)
{
    const QVector<ConnectionSetting>& connections = session.live().description().connections;
    QHash<QString, int> outCounts;
    QHash<QString, int> inCounts;
    for (const ConnectionSetting& one : connections) {
        ++outCounts[one.from.device.text];
        ++inCounts[one.to.device.text];
    }
    QHash<QString, int> outs;
    QHash<QString, int> ins;
    for (int i = 0; i < connections.size(); ++i) {
        WireLine line;
        line.connection = i;
        line.from = connections[i].from.device.text;
        line.to = connections[i].to.device.text;
        const int out = outs[line.from]++;
        const int in = ins[line.to]++;
        const End from = endAt(line.from, true, out, outCounts.value(line.from), canvas.size());
        const End to = endAt(line.to, false, in, inCounts.value(line.to), canvas.size());
        addLine(line, from, to, canvas);
    }
}

void WireScene::addLine(WireLine line, const End& from, const End& to, const QWidget& canvas)
{
    const bool isFromSeen = m_rects.contains(line.from);
    const bool isToSeen = m_rects.contains(line.to);
    if (isFromSeen && isToSeen) {
        addCurve(line, from, to, canvas.size());
    } else if (isFromSeen && m_pageOf.contains(line.to)) {
        line.away = line.to;
        addStub(line, from, canvas);
    } else if (isToSeen && m_pageOf.contains(line.from)) {
        line.away = line.from;
        addStub(line, to, canvas);
    } else {
        return; // Neither end is seen, or one is of an unknown device.
    }
    m_lines.append(line);
}

/// The ends of a device's lines are spread along its edge, so that each can be told.
WireScene::End WireScene::endAt(const QString& device, bool isOutput, int number, int count,
                                const QSize& canvas) const
{
    const QRectF rect = m_rects.value(device);
    const double share = (number + 1.0) / (count + 1.0);
    if (!m_onPage.contains(device)) {
        const double half = rect.width() / 2;
        const double x = rect.left() + (isOutput ? half : 0) + half * share;
        return {{std::clamp(x, 2.0, canvas.width() - 2.0), double(canvas.height())}, {0, -1}};
    }
    const double y = rect.top() + rect.height() * share;
    return isOutput ? End{{rect.right(), y}, {1, 0}} : End{{rect.left(), y}, {-1, 0}};
}

void WireScene::addCurve(WireLine& line, const End& from, const End& to, const QSize& canvas) const
{
    const double bow = std::clamp(QLineF(from.point, to.point).length() / 2, kLeastBow, kMostBow);
    // A curve stays between its four points, and so on the canvas.
    const auto inside = [&canvas](const QPointF& point) {
        return QPointF(std::clamp(point.x(), 0.0, double(canvas.width())), point.y());
    };
    const QPointF first = inside(from.point + bow * from.direction);
    const QPointF second = inside(to.point + bow * to.direction);
    line.path.moveTo(from.point);
    line.path.cubicTo(first, second, to.point);
    for (int i = 0; i <= kPoints; ++i) {
        const double t = double(i) / kPoints;
        const double rest = 1 - t;
        line.points.append(rest * rest * rest * from.point + 3 * rest * rest * t * first +
                           3 * rest * t * t * second + t * t * t * to.point);
    }
}

void WireScene::addStub(WireLine& line, const End& end, const QWidget& canvas) const
{
    const QFontMetrics metrics = canvas.fontMetrics();
    const QString page = m_pageOf.value(line.away);
    line.tag = line.away + (page.isEmpty() ? QString() : ", " + page) +
               (line.away == line.to ? QString(" \u203a") : QString());
    if (line.away == line.from) {
        line.tag.prepend("\u203a ");
    }
    const QPointF tip = end.point + kStub * end.direction;
    const QSizeF size(metrics.horizontalAdvance(line.tag) + 2 * kTagPadding,
                      metrics.height() + kTagPadding);
    QRectF tag(tip - QPointF(end.direction.x() < 0   ? size.width()
                             : end.direction.x() > 0 ? 0.0
                                                     : size.width() / 2,
                             end.direction.y() < 0 ? size.height() : size.height() / 2),
               size);
    tag.moveLeft(std::clamp(tag.left(), 0.0, std::max(0.0, canvas.width() - size.width())));
    for (const WireLine& other : qAsConst(m_lines)) {
        if (other.tagRect.intersects(tag)) {
            end.direction.y() < 0 ? tag.moveBottom(other.tagRect.top() - 2)
                                  : tag.moveTop(other.tagRect.bottom() + 2);
        }
    }
    line.tagRect = tag;
    line.path.moveTo(end.point);
    line.path.lineTo(QPointF(std::clamp(tip.x(), tag.left(), tag.right()), tag.center().y()));
    line.points = {end.point, tag.center()};
}

QString WireScene::deviceAt(const QPoint& point) const
{
    for (const QString& id : m_devices) {
        if (m_onPage.contains(id) && m_rects.value(id).contains(point)) {
            return id;
        }
    }
    return {};
}

double WireScene::distanceTo(const WireLine& line, const QPointF& point)
{
    if (line.tagRect.contains(point)) {
        return 0;
    }
    double nearest = 1e9;
    for (int i = 0; i + 1 < line.points.size(); ++i) {
        const QPointF a = line.points[i];
        const QPointF along = line.points[i + 1] - a;
        const double length = QPointF::dotProduct(along, along);
        const double share =
            length > 0 ? std::clamp(QPointF::dotProduct(point - a, along) / length, 0.0, 1.0) : 0;
        nearest = std::min(nearest, QLineF(point, a + share * along).length());
    }
    return nearest;
}

bool WireScene::standsAs(const WireScene& other) const
{
    return m_rects == other.m_rects && m_pageOf == other.m_pageOf;
}

} // namespace norvo
