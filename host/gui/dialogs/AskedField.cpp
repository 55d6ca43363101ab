// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/dialogs/AskedField.h"

#include "norvo/BaseWidget.h"

#include <QApplication>
#include <QCoreApplication>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QScreen>

#include <initializer_list>
#include <optional>

namespace norvo {
namespace {

constexpr int kGap = 12; ///< Around the field, and to the screen's edge, in pixels.

/// The view of a page that is drawn scaled; null for any other page.
QGraphicsView* viewOf(const QWidget& page)
{
    const QGraphicsProxyWidget* const proxy = page.graphicsProxyWidget();
    return proxy && proxy->scene() ? proxy->scene()->views().value(0) : nullptr;
}

/// Of such a page only the view has the focus.
QWidget* focusedField()
{
    QWidget* const widget = QApplication::focusWidget();
    const auto* const view = qobject_cast<QGraphicsView*>(widget);
    const auto* const page =
        view && view->scene()
            ? qgraphicsitem_cast<QGraphicsProxyWidget*>(view->scene()->focusItem())
            : nullptr;
    return page && page->widget()->focusWidget() ? page->widget()->focusWidget() : widget;
}

BaseWidget* deviceWidget(QWidget* field)
{
    QWidget* widget = field;
    while (widget && !qobject_cast<BaseWidget*>(widget)) {
        widget = widget->parentWidget();
    }
    return static_cast<BaseWidget*>(widget);
}

/// The first of these parameters that has a value.
QString firstValue(BaseWidget& widget, std::initializer_list<const char*> names)
{
    for (const char* name : names) {
        QString value = widget.getParam(name).value().simplified();
        if (!value.isEmpty()) {
            return value;
        }
    }
    return {};
}

QRect moved(QRect place, const QRect& screen)
{
    place.moveLeft(qBound(screen.left(), place.left(), screen.right() + 1 - place.width()));
    place.moveTop(qBound(screen.top(), place.top(), screen.bottom() + 1 - place.height()));
    return place;
}

/// Below, above, right or left of the field; nothing where none of them has room.
std::optional<QRect> freePlace(const QRect& field, const QSize& size, const QRect& screen)
{
    const QRect kept = field.adjusted(-kGap, -kGap, kGap, kGap);
    QRect middle(QPoint(), size);
    middle.moveCenter(field.center());
    const QPoint corners[] = {{middle.left(), kept.bottom() + 1},
                              {middle.left(), kept.top() - size.height()},
                              {kept.right() + 1, middle.top()},
                              {kept.left() - size.width(), middle.top()}};
    for (const QPoint& corner : corners) {
        const QRect place = moved(QRect(corner, size), screen);
        if (screen.contains(place) && !place.intersects(kept)) {
            return place;
        }
    }
    return std::nullopt;
}

} // namespace

AskedField::AskedField() : m_field(focusedField()) {}

QWidget* AskedField::owner() const
{
    BaseWidget* const widget = deviceWidget(m_field);
    return widget ? widget : m_field.data();
}

QWidget* AskedField::window() const
{
    QWidget* const page = owner() ? owner()->window() : nullptr;
    const QGraphicsView* const view = page ? viewOf(*page) : nullptr;
    return view ? view->window() : page;
}

QString AskedField::caption() const
{
    BaseWidget* const widget = deviceWidget(m_field);
    if (!widget) {
        return m_field ? m_field->accessibleName() : QString();
    }
    const QString name = firstValue(*widget, {"name", "widget/caption"});
    const QString unit = firstValue(*widget, {"units", "widget/units"});
    return name.isEmpty() || unit.isEmpty()
               ? name + unit
               : QCoreApplication::translate("EntryDialog", "%1, %2").arg(name, unit);
}

QRect AskedField::screenArea() const
{
    const QScreen* const screen = window() ? window()->screen() : QApplication::primaryScreen();
    return screen->availableGeometry();
}

QRect AskedField::placeBeside(const QSize& preferred, const QSize& least) const
{
    const QRect room = screenArea();
    const QSize usual = preferred.expandedTo(least);
    if (m_field) {
        const QRect field(m_field->mapToGlobal(QPoint()),
                          m_field->mapToGlobal(m_field->rect().bottomRight()));
        for (const QSize& size : {usual, least}) {
            if (const auto place =
                    freePlace(field, size, room.adjusted(kGap, kGap, -kGap, -kGap))) {
                return *place;
            }
        }
    }
    QRect place(QPoint(), usual.boundedTo(room.size()));
    place.moveCenter(room.center());
    return place;
}

} // namespace norvo
