// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/history/HistoryWriter.h"

#include <QFileInfo>

#include <utility>

#include <csignal>

namespace norvo {

namespace {

const QString kWaiting = QStringLiteral("values wait until it can be");

} // namespace

HistoryWriter::HistoryWriter(const QString& fileName, const QStringList& names,
                             const HistoryStore::Limits& limits)
    : m_fileName(fileName),
      m_path(QFileInfo(fileName).absoluteFilePath()),
      m_store(m_path, names, limits)
{
    // Signals are the main thread's.
    sigset_t all;
    sigset_t before;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before);
    m_thread = std::thread(&HistoryWriter::run, this);
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

HistoryWriter::~HistoryWriter()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isEnding = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

void HistoryWriter::add(HistoryRow row)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_queue.size() < kMaxQueued) {
        m_queue.append(std::move(row));
    } else {
        ++m_lost;
    }
}

void HistoryWriter::read(Job job)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_jobs.push_back(std::move(job));
    }
    m_wake.notify_one();
}

void HistoryWriter::run()
{
    for (bool isEnding = false; !isEnding;) {
        std::vector<Job> jobs;
        {
            std::unique_lock<std::mutex> lock(m_mutex);
            m_wake.wait_for(lock, kInterval, [this] { return m_isEnding || !m_jobs.empty(); });
            isEnding = m_isEnding;
            jobs = std::exchange(m_jobs, {});
            if (m_batch.isEmpty()) {
                m_batch.swap(m_queue);
            }
        }
        if (isReady()) {
            write();
            follow();
        }
        serve(jobs);
    }
    if (m_store.isOpen()) {
        m_store.addGaps();
    }
    m_query.close();
    m_store.close();
}

/// Opens the file where it is not open, setting aside one that cannot be used.
bool HistoryWriter::isReady()
{
    if (m_store.isOpen()) {
        return true;
    }
    const ClockReading now = ClockReading::now();
    HistoryStore::Opening opening = m_store.open(now.wall);
    if (opening == HistoryStore::Opening::Unusable && setAside()) {
        opening = m_store.open(now.wall);
    }
    if (opening != HistoryStore::Opening::Open) {
        const bool isBusy = opening == HistoryStore::Opening::Busy;
        if (isBusy) {
            m_batch.clear(); // The other one has its own.
        }
        fail(m_store.error(), isBusy ? "nothing is recorded here" : kWaiting);
        return false;
    }
    m_clock.emplace(now, m_store.newest());
    const qint64 ahead = m_clock->ahead(now);
    if (ahead >= HistoryClock::kReportedStep) {
        report(QString("the clock is %1 s behind the newest value; new ones are recorded behind "
                       "that")
                   .arg(ahead / 1000));
    }
    return true;
}

bool HistoryWriter::setAside()
{
    const QString reason = m_store.error();
    m_query.close();
    if (!m_store.setAside()) {
        return false;
    }
    report(QString("%1; it is kept as %2.bad, and a new history begins").arg(reason, m_fileName));
    return true;
}

void HistoryWriter::write()
{
    QVector<HistoryRow> rows = m_batch;
    for (HistoryRow& row : rows) {
        row.point.time = m_clock->at(row.point.time);
    }
    const qint64 now = m_clock->at(ClockReading::bootNow());
    if ((rows.isEmpty() || m_store.append(rows)) && m_store.tidy(now)) {
        m_batch.clear();
        noteSuccess();
    } else if (!m_store.isCorrupt()) {
        fail(m_store.error(), kWaiting);
    } else if (!setAside()) {
        fail(m_store.error(), kWaiting);
        m_store.close();
    }
}

void HistoryWriter::noteSuccess()
{
    qint64 lost = 0;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_lost > 0 && !m_queue.isEmpty()) {
            return; // What was lost came behind what waits.
        }
        lost = std::exchange(m_lost, 0);
    }
    if (lost > 0) {
        m_store.addGaps();
    }
    if (m_isFailing || lost > 0) {
        report(QString("values are recorded again; %1 were lost").arg(lost));
    }
    m_isFailing = false;
}

void HistoryWriter::follow()
{
    const qint64 step = m_clock->follow(ClockReading::now());
    if (step > 0) {
        report(QString("the clock was set forward by %1 s").arg(step / 1000));
    } else if (step < 0) {
        report(QString("the clock was set back by %1 s; until the next start values are recorded "
                       "with the time that it showed before")
                   .arg(-step / 1000));
    }
}

void HistoryWriter::serve(const std::vector<Job>& jobs)
{
    if (!jobs.empty() && !m_query.isOpen()) {
        m_query.open(m_path);
    }
    for (const Job& job : jobs) {
        job(m_query.isOpen() ? &m_query : nullptr,
            m_clock ? m_clock->ahead(ClockReading::now()) : 0);
    }
}

void HistoryWriter::fail(const QString& reason, const QString& consequence)
{
    if (!m_isFailing) {
        m_isFailing = true;
        report(QString("the history cannot be written: %1; %2").arg(reason, consequence));
    }
}

void HistoryWriter::report(const QString& text)
{
    const QString line = QString("%1: warning: %2").arg(m_fileName, text);
    QMetaObject::invokeMethod(
        this, [this, line] { emit problem(line); }, Qt::QueuedConnection);
}

} // namespace norvo
