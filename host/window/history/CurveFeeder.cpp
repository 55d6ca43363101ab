// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/history/CurveFeeder.h"

#include "host/plots/KeyTime.h"

#include "norvo/BaseWidget.h"

#include <QMetaObject>

#include <array>
#include <limits>

namespace norvo {

namespace {

constexpr char kInput[] = "input(double,QString,double)";
constexpr int kMaxBridge = 5000; // Points in one pause.

} // namespace

double valueOnCurve(const HistoryValue& value)
{
    switch (value.kind) {
    case HistoryValue::Kind::Gap:
        return std::numeric_limits<double>::quiet_NaN();
    case HistoryValue::Kind::Text:
        return value.text.toDouble();
    default:
        return value.number;
    }
}

bool CurveFeeder::canFeed(const BaseWidget& graph)
{
    return graph.isInitialised() && graph.metaObject()->indexOfSlot(kInput) >= 0;
}

CurveFeeder::CurveFeeder(BaseWidget& graph, const QString& sender, double timeout)
    : m_graph(graph),
      m_sender(sender),
      m_timeout(timeout),
      m_input(graph.metaObject()->indexOfSlot(kInput))
{}

void CurveFeeder::feed(const RememberedCurve& curve, double begin, double end)
{
    bool isBroken = true; // Nothing is known of what was before.
    for (const HistoryPoint& point : curve.points) {
        const double time = keyOf(point.time);
        if (point.value.kind == HistoryValue::Kind::Gap) {
            isBroken = true;
        } else if (time >= begin && time < end) {
            const double value = valueOnCurve(point.value);
            if (!isBroken) {
                bridge(value, time, curve.holdSeconds);
            } else if (!m_isEmpty && time - m_timeout <= m_lastTime) {
                feedPoint(std::numeric_limits<double>::quiet_NaN(), time);
            }
            feedPoint(value, time);
            m_lastValue = value;
            isBroken = false;
        }
    }
    if (!isBroken && curve.holdSeconds > 0) {
        bridge(m_lastValue, end, curve.holdSeconds);
    }
}

void CurveFeeder::feedPoint(double value, double time)
{
    const bool isBreak = !m_isEmpty && time - m_timeout > m_lastTime;
    QString sender = m_sender;
    std::array<void*, 4> arguments{nullptr, &value, &sender, &time};
    QMetaObject::metacall(&m_graph, QMetaObject::InvokeMetaMethod, m_input, arguments.data());
    if (isBreak && m_isFilled) {
        QMetaObject::invokeMethod(&m_graph, "inputFill", Q_ARG(QString, m_sender),
                                  Q_ARG(bool, true));
    }
    m_isEmpty = false;
    m_lastTime = time;
}

/// On a straight line from the last point, close enough for the graph not to break the curve.
void CurveFeeder::bridge(double value, double time, double hold)
{
    const double pause = time - m_lastTime;
    if (m_isEmpty || m_timeout <= 0 || pause <= m_timeout || pause > hold) {
        return;
    }
    const int pieces = int(pause / m_timeout * 2) + 1;
    if (pause / m_timeout * 2 > kMaxBridge) {
        return;
    }
    const double from = m_lastTime;
    for (int i = 1; i < pieces; ++i) {
        const double part = double(i) / pieces;
        feedPoint(m_lastValue + (value - m_lastValue) * part, from + pause * part);
    }
}

} // namespace norvo
