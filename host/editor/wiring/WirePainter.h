// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRectF>

class QPainter;
class QPalette;

namespace norvo {

struct WireLine;

/// Draws what wiring shows over a panel, so that it reads on any ground.
namespace WirePainter {

enum class Weight {
    Faint, ///< One of so many that a single one is not read.
    Thin,
    Strong,
    Selected
};

void paintLine(QPainter& painter, const WireLine& line, Weight weight, const QPalette& palette);
void paintTag(QPainter& painter, const WireLine& line, Weight weight, const QPalette& palette);
/// A value on its line.
void paintValue(QPainter& painter, const QRectF& area, const QString& value, Weight weight,
                const QPalette& palette);

/// Where a device stands, and its id, also where it shows nothing itself.
void paintDevice(QPainter& painter, const QRect& device, const QString& id,
                 const QPalette& palette);
void paintFrame(QPainter& painter, const QRect& device, const QPalette& palette);
/// A device that something fits, with what fits.
void paintFit(QPainter& painter, const QRect& device, const QString& port, const QPalette& palette);
void paintVeil(QPainter& painter, const QRect& device, const QPalette& palette);

} // namespace WirePainter

} // namespace norvo
