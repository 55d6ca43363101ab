// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/view/PanelPicture.h"

#include <QAbstractScrollArea>
#include <QPaintEvent>
#include <QScopedValueRollback>

#include <cstring>

namespace norvo {

namespace {

constexpr int kFramesUntilWhole = 25; // A change that was drawn past us is seen with it.

/// Pieces of one row are told as one, and so are equal ones of neighbouring rows.
QVector<Tile> tilesOf(const QImage& picture, const QRegion& changes)
{
    QVector<Tile> tiles;
    for (const QRect& rect : changes) {
        tiles.append({rect.topLeft(), picture.copy(rect)});
    }
    return tiles;
}

bool isEqual(const QImage& a, const QImage& b, const QRect& rect)
{
    const size_t bytes = size_t(rect.width()) * sizeof(QRgb);
    const int offset = rect.left() * int(sizeof(QRgb));
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        if (std::memcmp(a.constScanLine(y) + offset, b.constScanLine(y) + offset, bytes) != 0) {
            return false;
        }
    }
    return true;
}

void copyPixels(const QImage& from, QImage& to, const QRect& rect)
{
    const size_t bytes = size_t(rect.width()) * sizeof(QRgb);
    const int offset = rect.left() * int(sizeof(QRgb));
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        std::memcpy(to.scanLine(y) + offset, from.constScanLine(y) + offset, bytes);
    }
}

} // namespace

PanelPicture::PanelPicture(QWidget& window) : m_window(window) {}

void PanelPicture::setWatched(bool isWatched)
{
    if (m_isWatched == isWatched) {
        return;
    }
    m_isWatched = isWatched;
    m_told = QImage();
    m_next = QImage();
    m_hasNewWidgets = isWatched;
    if (!isWatched) {
        unwatchAll();
    }
}

void PanelPicture::watchAll()
{
    m_hasNewWidgets = false;
    m_window.installEventFilter(this);
    const auto widgets = m_window.findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        if (widget->window() == &m_window) {
            widget->installEventFilter(this);
        }
    }
}

void PanelPicture::unwatchAll()
{
    m_window.removeEventFilter(this);
    const auto widgets = m_window.findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        widget->removeEventFilter(this);
    }
}

void PanelPicture::noteWhole(const QWidget& widget)
{
    m_drawn += QRect(widget.mapTo(&m_window, QPoint()), widget.size());
}

/// Scenes of Qt Quick may change without the widget's being drawn.
void PanelPicture::noteScenes()
{
    const auto widgets = m_window.findChildren<QWidget*>();
    for (const QWidget* widget : widgets) {
        if (widget->inherits("QQuickWidget") && widget->isVisible() &&
            widget->window() == &m_window) {
            noteWhole(*widget);
        }
    }
}

bool PanelPicture::eventFilter(QObject* watched, QEvent* event)
{
    const auto* const widget = static_cast<QWidget*>(watched);
    switch (event->type()) {
    case QEvent::Paint:
        if (m_isDrawing || widget->window() != &m_window) {
            break;
        }
        // What is scrolled is moved on the screen and not drawn.
        if (qobject_cast<QAbstractScrollArea*>(widget->parentWidget())) {
            noteWhole(*widget);
        } else {
            const QPoint offset = widget->mapTo(&m_window, QPoint());
            m_drawn += static_cast<QPaintEvent*>(event)->region().translated(offset);
        }
        break;
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::ZOrderChange:
        if (widget->parentWidget() && widget->window() == &m_window) {
            noteWhole(widget == &m_window ? m_window : *widget->parentWidget());
        }
        break;
    case QEvent::ChildAdded:
        m_hasNewWidgets = true;
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

/// Takes over what differs.
QRegion PanelPicture::changesIn(const QRegion& drawn)
{
    QRegion changes;
    const QRect area = drawn.boundingRect();
    for (int y = area.top() / kTile * kTile; y <= area.bottom(); y += kTile) {
        for (int x = area.left() / kTile * kTile; x <= area.right(); x += kTile) {
            const QRect tile = QRect(x, y, kTile, kTile) & m_next.rect();
            if (drawn.intersects(tile) && !isEqual(m_told, m_next, tile)) {
                copyPixels(m_next, m_told, tile);
                changes += tile;
            }
        }
    }
    return changes;
}

Frame PanelPicture::take()
{
    if (!m_isWatched || !m_window.isVisible() || m_window.size().isEmpty()) {
        return {};
    }
    if (m_hasNewWidgets) {
        watchAll();
    }
    const bool isNew = m_told.size() != m_window.size();
    if (isNew) {
        m_told = QImage(m_window.size(), QImage::Format_RGB32);
        m_told.fill(Qt::black);
        m_next = m_told;
    }
    noteScenes();
    if (isNew || m_untilWhole-- <= 0) {
        m_drawn = m_window.rect();
        m_untilWhole = kFramesUntilWhole;
    }
    const QRegion drawn = m_drawn & m_window.rect();
    m_drawn = QRegion();
    if (drawn.isEmpty()) {
        return {m_told.size(), {}};
    }
    {
        const QScopedValueRollback<bool> drawing(m_isDrawing, true);
        m_window.render(&m_next, drawn.boundingRect().topLeft(), drawn,
                        QWidget::DrawWindowBackground | QWidget::DrawChildren);
    }
    const QRegion changes = changesIn(drawn);
    return {m_told.size(), tilesOf(m_told, isNew ? QRegion(m_told.rect()) : changes)};
}

} // namespace norvo
