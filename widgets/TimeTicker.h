// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/KeptLabels.h"

#include <QFontMetrics>
#include <QPointer>

namespace norvo::plot {

/// Ticks of a horizontal axis of time, as many as usual, or fewer where their labels would run
/// into each other.
class TimeTicker : public KeptLabels<QCPAxisTickerDateTime>
{
public:
    explicit TimeTicker(QCPAxis* axis) : m_axis(axis) {}

protected:
    double getTickStep(const QCPRange& range) override
    {
        const double least = range.size() * labelShare(range.upper);
        const int usualCount = mTickCount;
        double step = QCPAxisTickerDateTime::getTickStep(range);
        while (step < least && mTickCount > 1) {
            --mTickCount;
            step = QCPAxisTickerDateTime::getTickStep(range);
        }
        mTickCount = usualCount;
        while (step > 0 && step < least) { // A label takes more than half of the axis.
            step *= 2;
        }
        return step;
    }

    QString getTickLabel(double time, const QLocale& locale, QChar formatChar,
                         int precision) override
    {
        if (m_format != mDateTimeFormat) {
            forgetLabels();
            m_format = mDateTimeFormat;
        }
        return KeptLabels::getTickLabel(time, locale, formatChar, precision);
    }

private:
    /// How much of the axis a label with the space behind it takes; 0 where that is not known.
    double labelShare(double time) const
    {
        if (!m_axis) {
            return 0;
        }
        const QMargins margins = m_axis->axisRect()->margins();
        const int plotWidth = m_axis->parentPlot()->viewport().width();
        const int width = plotWidth - margins.left() - margins.right();
        const QString label = keyToDateTime(time).toString(mDateTimeFormat) + ' ';
        const int labelWidth = QFontMetrics(m_axis->tickLabelFont()).horizontalAdvance(label);
        return width > 0 ? double(labelWidth) / width : 0;
    }

    const QPointer<QCPAxis> m_axis; ///< A ticker may outlive it.
    QString m_format;               ///< Of the labels that are kept.
};

} // namespace norvo::plot
