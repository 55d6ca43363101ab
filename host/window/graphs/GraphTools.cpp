// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/graphs/GraphTools.h"

#include "host/panel/plan/Node.h"
#include "host/panel/run/Panel.h"
#include "host/window/accessible/AccessibleDevice.h"
#include "host/window/graphs/CornerKey.h"
#include "host/plots/PlotLibrary.h"
#include "host/window/graphs/ToolPane.h"

#include "norvo/BaseWidget.h"

#include <QMouseEvent>

#include <algorithm>

namespace norvo {

namespace {

constexpr int kPressPixels = 10; // More than that is a drag.

/// The last that was made lies over those before.
QWidget* plotIn(const QWidget& display)
{
    const auto parts = display.findChildren<QWidget*>();
    const auto last = std::find_if(parts.crbegin(), parts.crend(),
                                   [](const QWidget* part) { return isPlot(*part); });
    return last == parts.crend() ? nullptr : *last;
}

bool hasOnlyGraphs(const QWidget& plot)
{
    const PlotLibrary* const plots = plotLibrary();
    return plots && plots->hasOnlyGraphs(plot);
}

} // namespace

void GraphTools::addTo(const Panel& panel, const QSet<QString>& devices,
                       const std::function<ToolSetting(const QString& device)>& settingOf)
{
    for (const QString& device : devices) {
        BaseWidget* const widget = panel.widget(device);
        const QWidget* const plot = widget && widget->parentWidget() ? plotIn(*widget) : nullptr;
        if (plot && hasOnlyGraphs(*plot)) {
            new GraphTools(*widget, settingOf(device));
        }
    }
}

GraphTools::GraphTools(BaseWidget& display, const ToolSetting& setting)
    : Overlay(display), m_setting(setting), m_key(new CornerKey(this, setting.keySize))
{
    setObjectName("graphToolsKey");
    m_key->setAccessibleName(tr("Graph tools: %1").arg(AccessibleDevice::nameOf(display)));
    m_longPress.setSingleShot(true);
    m_longPress.setInterval(kLongPressMs);
    connect(&m_longPress, &QTimer::timeout, this, &GraphTools::open);
    connect(m_key, &QAbstractButton::clicked, this, &GraphTools::open);
    connect(&display, &QObject::destroyed, this, &QObject::deleteLater);
    plot()->installEventFilter(this);
    follow();
}

ToolPane* GraphTools::pane() const
{
    return m_pane;
}

bool GraphTools::isWanted() const
{
    return !m_pane;
}

QWidget* GraphTools::plot() const
{
    return display() ? plotIn(*display()) : nullptr;
}

bool GraphTools::hasRoomForKey() const
{
    const QWidget* const shown = plot();
    return shown && shown->width() >= 4 * m_setting.keySize &&
           shown->height() >= 3 * m_setting.keySize;
}

QRect GraphTools::area(const QRect& display) const
{
    const QWidget* const shown = plot();
    if (!shown) {
        return display;
    }
    QRect place = ToolPane::placeOnPage(*shown, *parentWidget());
    if (hasRoomForKey()) {
        place.setTop(place.bottom() + 1 - m_setting.keySize);
        place.setWidth(m_setting.keySize);
    }
    return place;
}

/// Without room the key lies unseen over the whole graph, for the keyboard alone.
void GraphTools::resizeEvent(QResizeEvent* /*event*/)
{
    setAttribute(Qt::WA_TransparentForMouseEvents, !hasRoomForKey());
    m_key->setBare(!hasRoomForKey());
    m_key->setGeometry(rect());
}

bool GraphTools::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != display()) {
        watchPress(*event);
    }
    return Overlay::eventFilter(watched, event);
}

void GraphTools::watchPress(const QEvent& event)
{
    const auto& mouse = static_cast<const QMouseEvent&>(event);
    switch (event.type()) {
    case QEvent::MouseButtonPress:
        m_pressed = mouse.globalPos();
        if (!hasRoomForKey() && mouse.button() == Qt::LeftButton) {
            m_longPress.start();
        }
        break;
    case QEvent::MouseMove:
        if ((mouse.globalPos() - m_pressed).manhattanLength() > kPressPixels) {
            m_longPress.stop();
        }
        break;
    case QEvent::MouseButtonRelease:
    case QEvent::Hide:
        m_longPress.stop();
        break;
    default:
        break;
    }
}

void GraphTools::open()
{
    QWidget* const shown = plot();
    if (m_pane || !shown) {
        return;
    }
    m_pane = new ToolPane(static_cast<BaseWidget&>(*display()), *shown, m_setting);
    connect(m_pane, &ToolPane::closed, this, &GraphTools::close);
    follow();
    QWidget* before = m_key;
    const auto parts = m_pane->findChildren<QWidget*>();
    for (QWidget* const part : parts) {
        if (part->focusPolicy() & Qt::TabFocus) {
            setTabOrder(before, part);
            before = part;
        }
    }
    m_pane->plot().setFocus(Qt::OtherFocusReason);
}

void GraphTools::close()
{
    if (!m_pane) {
        return;
    }
    m_pane->hide();
    m_pane->deleteLater();
    m_pane.clear();
    follow();
    m_key->setFocus(Qt::OtherFocusReason);
}

} // namespace norvo
