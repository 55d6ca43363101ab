// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/wiring/WireCanvas.h"

#include "host/editor/EditSession.h"
#include "host/editor/wiring/DeviceShelf.h"
#include "host/editor/wiring/PortKeys.h"
#include "host/editor/wiring/ports/PortList.h"
#include "host/editor/wiring/WirePainter.h"
#include "host/editor/wiring/WireValues.h"
#include "host/window/PanelPages.h"

#include <QAction>
#include <QEvent>
#include <QLayout>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>

#include <algorithm>

namespace norvo {

namespace {

constexpr int kTickMs = 200; // Values and places are looked at so often.
constexpr int kMostValues = 80;
constexpr int kMostDistinct = 200; // Of more lines, single ones are not told apart anyway.
constexpr int kMostLetters = 14;   // of a value on a line
constexpr int kDigits = 6;
constexpr int kValuePadding = 6;

QString shortened(const QString& text)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    const QString shown = isNumber ? QString::number(number, 'g', kDigits) : text;
    return shown.size() > kMostLetters ? shown.left(kMostLetters - 1) + QString("\u2026") : shown;
}

/// What none of the widgets around it cuts off, in its own coordinates.
QRect visiblePart(const QWidget& widget)
{
    QRect part = widget.rect();
    QPoint origin;
    for (const QWidget* inner = &widget; !inner->isWindow() && inner->parentWidget();
         inner = inner->parentWidget()) {
        origin -= inner->pos();
        part &= inner->parentWidget()->rect().translated(origin);
    }
    return part;
}

} // namespace

WireCanvas::WireCanvas(EditSession& session, QWidget* pages)
    : QWidget(pages),
      m_session(session),
      m_shelf(new DeviceShelf(session, pages)),
      m_values(new WireValues(this)),
      m_remove(new QAction(tr("Remove the connection"), this)),
      m_goTo(new QAction(tr("Go to the other end"), this))
{
    setObjectName("wireCanvas");
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Connections of the panel"));
    m_remove->setObjectName("removeConnection");
    m_remove->setShortcut(QKeySequence::Delete);
    m_goTo->setObjectName("goToOtherEnd");
    m_goTo->setShortcut(Qt::Key_G);
    for (QAction* action : {m_remove, m_goTo}) {
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        addAction(action);
    }
    connect(m_remove, &QAction::triggered, this, &WireCanvas::removeConnection);
    connect(m_goTo, &QAction::triggered, this, &WireCanvas::goToOtherEnd);
    connect(m_shelf, &DeviceShelf::tapped, this, &WireCanvas::tapDevice);
    connect(m_shelf, &DeviceShelf::scrolled, this, &WireCanvas::lay);
    connect(&session, &EditSession::changed, this, &WireCanvas::reload);
    connect(&session, &EditSession::selectionChanged, this, [this] {
        m_cursor = m_session.selection().value(0, m_cursor);
        lay();
    });
    pages->installEventFilter(this);
    for (QWidget* around = pages; around; around = around->parentWidget()) {
        if (const auto* const area = qobject_cast<QScrollArea*>(around)) {
            for (const QScrollBar* bar : {area->verticalScrollBar(), area->horizontalScrollBar()}) {
                connect(bar, &QScrollBar::valueChanged, this, &WireCanvas::lay);
            }
        }
    }
    m_cursor = session.selection().value(0);
    reload();
    show();
    setFocus();
}

WireCanvas::~WireCanvas()
{
    m_keys.reset();
    if (QLayout* const layout =
            parentWidget()->layout()) { // Null: the pages go, and this with them.
        layout->setContentsMargins(0, 0, 0, 0);
    }
    delete m_shelf;
}

QList<QAction*> WireCanvas::actions() const
{
    return {m_remove, m_goTo};
}

QString WireCanvas::shownValue(int connection) const
{
    const auto found = std::find_if(m_shown.cbegin(), m_shown.cend(), [&](const Value& value) {
        return m_scene.lines()[value.line].connection == connection;
    });
    return found == m_shown.cend() ? QString() : found->text;
}

bool WireCanvas::event(QEvent* event)
{
    if (event->type() == QEvent::Show) {
        m_tick.start(kTickMs, this);
        hear();
        lay();
    } else if (event->type() == QEvent::Hide) {
        m_tick.stop();
        m_values->hear({}, m_session.live().panel());
    } else if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
        lay();
    }
    return QWidget::event(event);
}

bool WireCanvas::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest) {
        QMetaObject::invokeMethod(this, &WireCanvas::lay, Qt::QueuedConnection);
    }
    return QWidget::eventFilter(watched, event);
}

/// What can be seen of the page, without the keys of the pages, and above the shelf.
QRect WireCanvas::place() const
{
    const PanelPages& pages = m_session.live().pages();
    QRect area = visiblePart(pages);
    if (const auto* const tabs = pages.findChild<QTabWidget*>()) {
        area.setTop(std::max(area.top(), tabs->mapTo(&pages, {0, 0}).y()));
    }
    return area.adjusted(0, 0, 0, m_shelf->isHidden() ? 0 : -m_shelf->sizeHint().height());
}

/// The page leaves room for the shelf below it, which stays in sight where the page scrolls.
void WireCanvas::takePlace()
{
    const int shelf = m_shelf->isHidden() ? 0 : m_shelf->sizeHint().height();
    m_session.live().pages().layout()->setContentsMargins(0, 0, 0, shelf);
    const QRect area = place();
    setGeometry(area);
    m_shelf->setGeometry(area.left(), area.bottom() + 1, area.width(), shelf);
    raise();
    m_shelf->raise();
}

void WireCanvas::reload()
{
    closePorts();
    disarm();
    const QString chosen = m_chosenText;
    m_ports = std::make_unique<PortList>(m_session);
    m_wires.clear();
    const QVector<ConnectionSetting>& connections = m_session.live().description().connections;
    for (int i = 0; i < connections.size(); ++i) {
        if (const auto wire = m_ports->wire(connections[i])) {
            m_wires.insert(i, *wire);
        }
    }
    hear();
    if (!m_session.device(m_cursor)) {
        m_cursor.clear();
    }
    const auto found =
        std::find_if(connections.cbegin(), connections.cend(), [&](const ConnectionSetting& one) {
            return !chosen.isEmpty() && one.whole.text == chosen;
        });
    markConnection(found == connections.cend() ? -1 : int(found - connections.cbegin()));
    lay();
}

void WireCanvas::hear()
{
    if (isVisible()) {
        m_values->hear(QVector<PlannedWire>::fromList(m_wires.values()), m_session.live().panel());
    }
}

void WireCanvas::lay()
{
    takePlace();
    m_scene = WireScene(m_session, *this, *m_shelf);
    m_scene.addLines(m_session, *this);
    m_layer = QPixmap();
    placeValues();
    update();
}

/// Those of the watched lines; without any, of all that find room.
void WireCanvas::placeValues()
{
    m_shown.clear();
    const QVector<WireLine>& lines = m_scene.lines();
    for (const bool watched : {true, false}) {
        const int most = watched || m_shown.isEmpty() ? kMostValues : 0;
        for (int i = 0; i < lines.size() && m_shown.size() < most; ++i) {
            const auto wire = m_wires.constFind(lines[i].connection);
            if (isWatched(lines[i]) != watched || wire == m_wires.constEnd()) {
                continue;
            }
            Value value{i, {}, shortened(m_values->text(*wire))};
            if (!lines[i].away.isEmpty()) {
                value.area = stubValueArea(lines[i], valueArea({}, value.text).size());
                if (!value.area.isNull()) {
                    m_shown.append(value);
                }
                continue;
            }
            for (const int place : {12, 9, 15, 6, 18}) {
                value.area = valueArea(lines[i].points[place], value.text);
                if (isFree(value.area)) {
                    m_shown.append(value);
                    break;
                }
            }
        }
    }
}

/// Of other values.
bool WireCanvas::isFree(const QRect& area) const
{
    return std::none_of(m_shown.cbegin(), m_shown.cend(),
                        [&area](const Value& other) { return other.area.intersects(area); });
}

/// Beside the name at the end of a line to another page; null: there is no room.
QRect WireCanvas::stubValueArea(const WireLine& line, const QSize& size) const
{
    const QRect tag = line.tagRect.toAlignedRect();
    QRect area({}, size);
    area.moveCenter(tag.center());
    const QPoint corners[] = {{tag.right() + 2, area.top()},
                              {tag.left() - 1 - size.width(), area.top()},
                              {tag.left(), tag.bottom() + 2},
                              {tag.left(), tag.top() - 1 - size.height()}};
    const auto isTagged = [&area](const WireLine& other) { return other.tagRect.intersects(area); };
    for (const QPoint& corner : corners) {
        area.moveTopLeft(corner);
        if (rect().contains(area) && isFree(area) &&
            std::none_of(m_scene.lines().cbegin(), m_scene.lines().cend(), isTagged)) {
            return area;
        }
    }
    return {};
}

QRect WireCanvas::valueArea(const QPointF& middle, const QString& text) const
{
    const QSize size = fontMetrics().size(Qt::TextSingleLine, text);
    QRect area({}, QSize(std::max(size.width(), 2 * size.height()), size.height()) +
                       QSize(2 * kValuePadding, kValuePadding));
    area.moveCenter(middle.toPoint());
    const QRect room = rect();
    area.moveLeft(std::max(0, std::min(area.left(), room.width() - area.width())));
    area.moveTop(std::max(0, std::min(area.top(), room.height() - area.height())));
    return area;
}

void WireCanvas::timerEvent(QTimerEvent* /*event*/)
{
    if (place() != geometry() || !WireScene(m_session, *this, *m_shelf).standsAs(m_scene)) {
        lay();
    }
    refreshValues();
}

/// Draws again only what reads another way.
void WireCanvas::refreshValues()
{
    for (Value& value : m_shown) {
        const WireLine& line = m_scene.lines()[value.line];
        const QString text = shortened(m_values->text(m_wires.value(line.connection)));
        if (text != value.text) {
            update(value.area);
            const QSize size = valueArea({}, text).size();
            const QPoint middle = value.area.center();
            value.area.setSize(size.expandedTo(value.area.size()));
            value.area.moveCenter(middle);
            value.text = text;
            update(value.area);
        }
    }
}

bool WireCanvas::isWatched(const WireLine& line) const
{
    return line.connection == m_connection || (!m_cursor.isEmpty() && line.touches(m_cursor));
}

WirePainter::Weight WireCanvas::weightOf(const WireLine& line) const
{
    return line.connection == m_connection          ? WirePainter::Weight::Selected
           : isWatched(line)                        ? WirePainter::Weight::Strong
           : m_scene.lines().size() > kMostDistinct ? WirePainter::Weight::Faint
                                                    : WirePainter::Weight::Thin;
}

void WireCanvas::paintLayer()
{
    m_layer = QPixmap(size() * devicePixelRatioF());
    m_layer.setDevicePixelRatio(devicePixelRatioF());
    m_layer.fill(Qt::transparent);
    QPainter painter(&m_layer);
    painter.setFont(font());
    for (const QString& device : m_scene.devices()) {
        if (m_scene.isOnPage(device)) {
            WirePainter::paintDevice(painter, m_scene.deviceRect(device), device, palette());
        }
    }
    for (const bool watched : {false, true}) {
        for (const WireLine& line : m_scene.lines()) {
            if (isWatched(line) == watched) {
                const auto weight = weightOf(line);
                WirePainter::paintLine(painter, line, weight, palette());
                if (!line.away.isEmpty()) {
                    WirePainter::paintTag(painter, line, weight, palette());
                }
            }
        }
    }
}

void WireCanvas::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    if (m_armed) {
        paintFits(painter);
        return;
    }
    if (m_layer.isNull()) {
        paintLayer();
    }
    painter.drawPixmap(0, 0, m_layer);
    if (m_scene.isOnPage(m_cursor)) {
        WirePainter::paintFrame(painter, m_scene.deviceRect(m_cursor), palette());
    }
    for (const Value& value : qAsConst(m_shown)) {
        if (value.area.intersects(event->rect())) {
            const WireLine& line = m_scene.lines()[value.line];
            const auto weight = weightOf(line);
            WirePainter::paintValue(painter, value.area, value.text, weight, palette());
        }
    }
}

void WireCanvas::paintFits(QPainter& painter) const
{
    for (const QString& device : m_scene.devices()) {
        if (!m_scene.isOnPage(device)) {
            continue;
        }
        const QVector<Port> fitting = m_fitting.value(device);
        const QRect area = m_scene.deviceRect(device);
        if (fitting.isEmpty()) {
            WirePainter::paintVeil(painter, area, palette());
        } else {
            const QString name = fitting.size() == 1 ? fitting.first().name
                                 : m_armed->isOutput ? tr("%1 inputs").arg(fitting.size())
                                                     : tr("%1 outputs").arg(fitting.size());
            WirePainter::paintFit(painter, area, name, palette());
        }
    }
    if (!m_cursor.isEmpty() && m_scene.isOnPage(m_cursor)) {
        WirePainter::paintFrame(painter, m_scene.deviceRect(m_cursor).adjusted(4, 4, -4, -4),
                                palette());
    }
}

DeviceShelf& WireCanvas::shelf() const
{
    return *m_shelf;
}

} // namespace norvo
