// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/CurvesPicture.h"

#include "widgets/LineParts.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace norvo::plot {

namespace {

constexpr int kSpare = 256; // Columns that a picture moves on by before it is copied back.
constexpr int kReach = 3;   // Columns beside its points that a pen reaches at most, and one more.

bool endsBefore(const KeptStretches::Part& part, double key)
{
    return part.stretch.lastKey < key;
}

/// Passes what is seen between two keys.
template <class PlaceOf, class HeightOf>
void pass(LineParts& parts, const KeptStretches& stretches, double from, double to, PlaceOf placeOf,
          HeightOf heightOf)
{
    const auto& all = stretches.parts();
    auto part = std::lower_bound(all.cbegin(), all.cend(), from, endsBefore);
    if (part != all.cbegin()) {
        --part; // A line comes from there.
    }
    QPointF before;
    for (bool isFirst = true; part != all.cend(); ++part, isFirst = false) {
        const QPointF begin(placeOf(part->stretch.firstKey), heightOf(part->firstValue));
        const QPointF end(placeOf(part->stretch.lastKey), heightOf(part->lastValue));
        parts.pass((begin.x() + end.x()) / 2, heightOf(part->stretch.greatest),
                   heightOf(part->stretch.least));
        if (!isFirst) {
            parts.pass(before, begin);
        }
        if (part->stretch.firstKey > to) {
            return;
        }
        before = end;
    }
}

} // namespace

void CurvesPicture::draw(QPainter& painter, const Axes& axes, const std::vector<Curve>& curves)
{
    const QRect clip = DevicePixels::clipOf(painter);
    forgetUnless(clip.size(), axes, curves);
    const auto place = qint64(std::llround(axes.left / m_axes.pixel * kShifts));
    const qint64 shift = (place % kShifts + kShifts) % kShifts;
    Shifted& shifted = m_shifted[size_t(shift)];
    shifted.shift = double(shift) / kShifts;
    moveTo(shifted, (place - shift) / kShifts);
    paintWhatChanged(shifted, curves);
    const DevicePixels pixels(painter);
    painter.drawImage(clip.topLeft(), shifted.image,
                      QRect(QPoint(int(shifted.begin - shifted.column), 0), m_size));
}

/// Brings the curves' stretches up to their points, and forgets all pictures where more has changed
/// than points that came and went.
void CurvesPicture::forgetUnless(const QSize& size, const Axes& axes,
                                 const std::vector<Curve>& curves)
{
    constexpr double same = 1e-6; // An axis that moves is not always as long to the last digit.
    const bool isAsLong = std::abs(axes.pixel - m_axes.pixel) <= same * axes.pixel;
    const double pixel = isAsLong ? m_axes.pixel : axes.pixel;
    std::vector<Known> known;
    known.reserve(curves.size());
    for (const Curve& curve : curves) {
        curve.stretches.update(curve.points, curve.blocks, pixel / LineParts::kParts);
        known.push_back({&curve.stretches, curve.stretches.generation(), curve.pen});
    }
    const auto isSame = [](const Known& a, const Known& b) {
        return a.stretches == b.stretches && a.generation == b.generation && a.pen == b.pen;
    };
    if (!isAsLong || size != m_size || axes.value != m_axes.value || axes.height != m_axes.height ||
        axes.perValue != m_axes.perValue ||
        !std::equal(known.cbegin(), known.cend(), m_curves.cbegin(), m_curves.cend(), isSame)) {
        m_shifted = {};
    }
    m_size = size;
    m_axes = axes;
    m_axes.pixel = pixel;
    m_curves = std::move(known);
}

/// The picture's first column that is seen: keeps those that it has of the others.
void CurvesPicture::moveTo(Shifted& shifted, qint64 column) const
{
    if (shifted.image.isNull()) {
        shifted.image = QImage(m_size + QSize(kSpare, 0), QImage::Format_ARGB32_Premultiplied);
    }
    if (column < shifted.begin || column >= shifted.end) {
        shifted.column = column;
        shifted.end = column;
        shifted.curves.assign(m_curves.size(), {});
    }
    const qint64 place = column - shifted.column;
    if (place > kSpare) {
        const auto kept = size_t(shifted.end - column) * sizeof(QRgb);
        for (int row = 0; row < m_size.height(); ++row) {
            auto* const pixels = reinterpret_cast<QRgb*>(shifted.image.scanLine(row));
            std::memmove(pixels, pixels + place, kept);
        }
        shifted.column = column;
    }
    shifted.begin = column;
}

/// From where a curve has grown to the right edge, and at its beginning where that can be seen.
void CurvesPicture::paintWhatChanged(Shifted& shifted, const std::vector<Curve>& curves) const
{
    const auto columnOf = [&](double key) {
        return qint64(std::floor(key / m_axes.pixel - shifted.shift));
    };
    const qint64 end = shifted.begin + m_size.width();
    qint64 grown = shifted.end;
    qint64 goneFrom = end;
    qint64 goneTo = shifted.begin;
    for (size_t i = 0; i < curves.size(); ++i) {
        const KeptStretches& stretches = curves[i].stretches;
        const Stretch& first = stretches.parts().front().stretch;
        Painted& painted = shifted.curves[i];
        const bool isNew = painted.end == 0;
        if (painted.end != stretches.endNumber()) {
            grown = isNew ? grown : qMin(grown, columnOf(painted.lastKey) - kReach);
            painted.end = stretches.endNumber();
            painted.lastKey = stretches.parts().back().stretch.firstKey;
        }
        if (isNew) {
            painted.firstKey = first.firstKey;
        } else if (first.firstKey != painted.firstKey && columnOf(first.firstKey) > shifted.begin) {
            goneFrom = qMin(goneFrom, columnOf(painted.firstKey) - kReach);
            goneTo = qMax(goneTo, columnOf(first.lastKey) + kReach);
            painted.firstKey = first.firstKey;
        }
    }
    grown = qMax(grown, shifted.begin);
    paintColumns(shifted, grown, end, curves);
    paintColumns(shifted, qMax(goneFrom, shifted.begin), qMin(goneTo, grown), curves);
    shifted.end = end;
}

void CurvesPicture::paintColumns(Shifted& shifted, qint64 from, qint64 to,
                                 const std::vector<Curve>& curves) const
{
    constexpr double far = 1e7; // Heights beyond cannot be told apart.
    if (from >= to) {
        return;
    }
    const QRect part(int(from - shifted.column), 0, int(to - from), m_size.height());
    QPainter painter(&shifted.image);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(part, Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setClipRect(part);
    painter.setRenderHint(QPainter::Antialiasing);
    const double left = double(shifted.column) + shifted.shift; // In pixels, from the key 0.
    const auto heightOf = [&](double value) {
        return qBound(-far, m_axes.height + (value - m_axes.value) * m_axes.perValue, far);
    };
    for (const Curve& curve : curves) {
        painter.setPen(curve.pen);
        LineParts parts(painter);
        pass(
            parts, curve.stretches, (double(from) - kReach) * m_axes.pixel,
            (double(to) + kReach) * m_axes.pixel,
            [&](double key) { return parts.placeOf(key / m_axes.pixel - left); }, heightOf);
        parts.draw();
    }
}

} // namespace norvo::plot
