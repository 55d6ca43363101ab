// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/history/HistoryFilter.h"

#include <utility>

namespace norvo {

HistoryFilter::HistoryFilter(std::optional<double> deadband, qint64 every, Keep keep)
    : m_deadband(deadband), m_every(every), m_keep(std::move(keep))
{}

void HistoryFilter::take(const HistoryPoint& point)
{
    const bool isNew = isChange(point.value);
    if (!isNew || (m_kept && point.time - m_kept->time < m_every)) {
        m_held = point;
        m_isHeldChange = isNew;
        return;
    }
    const bool isGap = m_kept && m_kept->value.kind == HistoryValue::Kind::Gap;
    if (m_held && !m_isHeldChange && !isGap) {
        m_keep(*m_held);
    }
    keep(point);
}

void HistoryFilter::advance(qint64 now)
{
    if (m_held && m_isHeldChange && now - m_kept->time >= m_every) {
        keep(HistoryPoint(*m_held));
    }
}

void HistoryFilter::end()
{
    if (m_held && m_held->value.kind != HistoryValue::Kind::Gap) {
        keep(HistoryPoint(*m_held));
    }
}

bool HistoryFilter::isChange(const HistoryValue& value) const
{
    if (!m_kept || m_kept->value.kind != value.kind) {
        return true;
    }
    switch (value.kind) {
    case HistoryValue::Kind::Gap:
        return false;
    case HistoryValue::Kind::Text:
        return !m_deadband || m_kept->value.text != value.text;
    case HistoryValue::Kind::YesNo:
        return !m_deadband || m_kept->value.number != value.number;
    default:
        return !m_deadband || std::abs(m_kept->value.number - value.number) > *m_deadband;
    }
}

void HistoryFilter::keep(const HistoryPoint& point)
{
    m_kept = point;
    m_held.reset();
    m_keep(point);
}

} // namespace norvo
