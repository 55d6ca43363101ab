// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <qcustomplot.h>

#include <QHash>

namespace norvo::plot {

/// A ticker that keeps the labels of its ticks: the same ones are asked for at each refresh.
template <class Ticker>
class KeptLabels : public Ticker
{
protected:
    QString getTickLabel(double tick, const QLocale& locale, QChar formatChar,
                         int precision) override
    {
        if (m_labels.size() >= kMost || m_formatChar != formatChar || m_precision != precision ||
            m_locale != locale) {
            forgetLabels();
            m_locale = locale;
            m_formatChar = formatChar;
            m_precision = precision;
        }
        QString& label = m_labels[tick];
        if (label.isNull()) {
            label = Ticker::getTickLabel(tick, locale, formatChar, precision);
        }
        return label;
    }

    void forgetLabels() { m_labels.clear(); }

private:
    static constexpr int kMost = 100;

    QHash<double, QString> m_labels;
    QLocale m_locale;
    QChar m_formatChar;
    int m_precision = 0;
};

} // namespace norvo::plot
