// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/common/LossReport.h"

#include <chrono>
#include <utility>

namespace norvo {

namespace {

using namespace std::chrono_literals;

constexpr auto kFirstReport = 1s;
constexpr auto kNextReports = 10s;

} // namespace

LossReport::LossReport(QStringList texts, Report report)
    : m_texts(std::move(texts)), m_report(std::move(report)), m_counts(std::size_t(m_texts.size()))
{
    m_timer.setSingleShot(true);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { reportNow(); });
}

void LossReport::add(int kind, qint64 count)
{
    m_counts[std::size_t(kind)] += count;
    if (count > 0) {
        reportSoon();
    }
}

void LossReport::reportSoon()
{
    if (!m_timer.isActive()) {
        m_timer.start(m_hasReported ? kNextReports : kFirstReport);
    }
}

void LossReport::reportNow()
{
    if (m_collect) {
        m_collect();
    }
    m_timer.stop(); // All that has been counted goes out now.
    for (int kind = 0; kind < m_texts.size(); ++kind) {
        if (const qint64 count = std::exchange(m_counts[std::size_t(kind)], 0)) {
            m_hasReported = true;
            m_report(QString("%1: %2").arg(m_texts[kind]).arg(count));
        }
    }
}

} // namespace norvo
