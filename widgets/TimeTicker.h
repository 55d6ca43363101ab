// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <qcustomplot.h>

#include <QFontMetrics>
#include <QHash>
#include <QPointer>

namespace norvo::plot {

/// Ticks of a horizontal axis of time, as many as usual, or fewer where their labels would run
/// into each other.
class TimeTicker : public QCPAxisTickerDateTime
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

    /// The same ticks are labelled at each refresh, and local time is far to fetch.
    QString getTickLabel(double time, const QLocale& locale, QChar formatChar,
                         int precision) override
    {
        if (m_labels.size() >= kMostLabels || m_format != mDateTimeFormat) {
            m_labels.clear();
            m_format = mDateTimeFormat;
        }
        QString& label = m_labels[time];
        if (label.isNull()) {
            label = QCPAxisTickerDateTime::getTickLabel(time, locale, formatChar, precision);
        }
        return label;
    }

private:
    static constexpr int kMostLabels = 100;

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
    QHash<double, QString> m_labels;
    QString m_format; ///< Of these.
};

} // namespace norvo::plot
