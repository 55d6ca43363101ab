// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <QTimer>

#include <functional>
#include <vector>

namespace norvo {

/// What a source has lost, counted by kind, and reported from time to time instead of each time: a
/// second after the first loss, then every 10 s where there is news.
class LossReport
{
public:
    using Report = std::function<void(const QString& text)>;

    /// `texts`: what is lost, by kind; a report reads "inputs lost: 3".
    LossReport(QStringList texts, Report report);

    /// Called before each report, to add what is counted elsewhere.
    void setCollector(std::function<void()> collect) { m_collect = std::move(collect); }

    void add(int kind, qint64 count = 1);
    void reportSoon();
    void reportNow();
    void stop() { m_timer.stop(); } ///< What has been counted stays for the next report.

private:
    QStringList m_texts;
    Report m_report;
    std::function<void()> m_collect;
    std::vector<qint64> m_counts;
    QTimer m_timer;
    bool m_hasReported = false;
};

} // namespace norvo
