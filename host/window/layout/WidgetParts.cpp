// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/layout/WidgetParts.h"

#include "host/window/ErrorTile.h"

#include <QAbstractScrollArea>
#include <QLabel>
#include <QSlider>

#include <algorithm>

namespace norvo {

namespace {

constexpr int kLeastPlotHeight = 160;
constexpr int kLeastHeight = 100; ///< Of what else wants height.

/// Without what opens in a window of its own, such as the list of a drop-down.
QWidgetList partsOf(const QWidget& widget)
{
    QWidgetList parts;
    for (auto* const part : widget.findChildren<QWidget*>()) {
        if (part->window() == widget.window()) {
            parts.append(part);
        }
    }
    return parts;
}

bool isPlot(const QWidget* part)
{
    return part->inherits("QCustomPlot");
}

/// A log, or a picture that is as large as it may be.
bool takesAnyHeight(const QWidget* part)
{
    return qobject_cast<const QAbstractScrollArea*>(part) ||
           part->sizePolicy().verticalPolicy() == QSizePolicy::Ignored;
}

bool wantsHeight(const QWidget& widget, const QWidgetList& parts)
{
    if (const auto* const slider = widget.findChild<QSlider*>()) {
        return slider->orientation() == Qt::Vertical;
    }
    return (widget.sizePolicy().expandingDirections() & Qt::Vertical) ||
           std::any_of(parts.cbegin(), parts.cend(), takesAnyHeight);
}

} // namespace

WidgetParts WidgetParts::of(const QWidget& widget)
{
    if (qobject_cast<const ErrorTile*>(&widget)) {
        return {};
    }
    const QWidgetList parts = partsOf(widget);
    if (parts.isEmpty()) {
        return {true, true, false, kLeastHeight}; // It paints itself, as gauges do.
    }
    const bool isSingle =
        widget.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly).size() == 1;
    const bool isHigh = norvo::wantsHeight(widget, parts);
    const bool hasPlot = std::any_of(parts.cbegin(), parts.cend(), isPlot);
    const bool showsText = !isHigh && widget.findChild<QLabel*>();
    return {isHigh, !isSingle, showsText, hasPlot ? kLeastPlotHeight : isHigh ? kLeastHeight : 0};
}

} // namespace norvo
