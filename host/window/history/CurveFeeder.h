// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/history/HistoryValue.h"

#include <QString>
#include <QVector>

class BaseWidget;

namespace norvo {

/// As a time graph takes it: 0 for a text that is no number. NaN for a gap.
double valueOnCurve(const HistoryValue& value);

/// Recorded values of a curve.
struct RememberedCurve
{
    QVector<HistoryPoint> points; ///< In the order of time.
    double holdSeconds = 0;       ///< A pause up to this long was none: values were left out.
};

/// Gives recorded values to the input of a time graph's widget, in their order.
class CurveFeeder
{
public:
    CurveFeeder(BaseWidget& graph, const QString& sender, double timeout);

    static bool canFeed(const BaseWidget& graph); ///< Whether the widget has such an input.

    /// Whether the curve is filled: each piece behind a break is filled again.
    void setFilled(bool isFilled) { m_isFilled = isFilled; }
    /// Those from `begin` on and before `end`, in seconds since the epoch.
    void feed(const RememberedCurve& curve, double begin, double end);

private:
    void feedPoint(double value, double time);
    void bridge(double value, double time, double hold);

    BaseWidget& m_graph;
    const QString m_sender;
    const double m_timeout; ///< After so many seconds the graph breaks a curve.
    const int m_input;      ///< Number of the method.
    bool m_isFilled = false;
    bool m_isEmpty = true;
    double m_lastValue = 0;
    double m_lastTime = 0;
};

} // namespace norvo
