// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Effort.h"

#include <QByteArray>
#include <QFile>
#include <QStringList>

#include <condition_variable>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <thread>
#include <unistd.h>

/// Measures one case after the other: none may take 2 s or 500 MB. Ends the process, with the name
/// of the case, when one does not come to an end.
class CaseWatch
{
public:
    static constexpr qint64 kMostMs = 2000;
    static constexpr qint64 kMostMegabytes = 500;

    CaseWatch() : m_thread([this] { watch(); }) {}
    ~CaseWatch()
    {
        enter(QByteArray(), true);
        m_thread.join();
    }
    CaseWatch(const CaseWatch&) = delete;
    CaseWatch& operator=(const CaseWatch&) = delete;

    template <class Work>
    void run(const QString& name, const Work& work)
    {
        enter(name.toUtf8());
        resetPeak();
        const qint64 before = residentMegabytes("VmRSS:");
        const norvo::OwnTimer timer;
        work();
        const qint64 ms = timer.elapsed().ownMs;
        const qint64 megabytes = residentMegabytes("VmHWM:") - before;
        enter(QByteArray());
        ++m_count;
        if (ms > m_slowestMs) {
            m_slowestMs = ms;
            m_slowest = name;
        }
        if (megabytes > m_largestMegabytes) {
            m_largestMegabytes = megabytes;
            m_largest = name;
        }
        if (ms > kMostMs || megabytes > kMostMegabytes) {
            m_excesses.append(QString("%1: %2 ms, %3 MB").arg(name).arg(ms).arg(megabytes));
        }
    }

    int count() const { return m_count; }
    QString excesses() const { return m_excesses.join('\n'); } ///< Empty: all within the bounds.
    QString summary() const
    {
        return QString("%1 cases; slowest %2 ms: %3; most memory %4 MB: %5")
            .arg(m_count)
            .arg(m_slowestMs)
            .arg(m_slowest)
            .arg(m_largestMegabytes)
            .arg(m_largest);
    }

private:
    static constexpr std::chrono::seconds kHung{60};

    void enter(const QByteArray& name, bool isLast = false)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_name = name;
        m_isLast = isLast;
        ++m_turn;
        m_changed.notify_one();
    }

    void watch()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        while (!m_isLast) {
            const int turn = m_turn;
            const bool isOver =
                m_changed.wait_for(lock, kHung, [this, turn] { return m_turn != turn; });
            if (!isOver && !m_name.isEmpty()) {
                std::fprintf(stderr, "does not end: %s\n", m_name.constData());
                std::abort();
            }
        }
    }

    /// The most that was resident counts anew from here.
    static void resetPeak()
    {
        QFile file("/proc/self/clear_refs");
        if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
            file.write("5");
        }
    }

    static qint64 residentMegabytes(const char* key)
    {
        QFile file("/proc/self/status");
        file.open(QIODevice::ReadOnly);
        const QByteArray text = file.readAll();
        const QByteArray rest = text.mid(text.indexOf(key) + int(qstrlen(key)));
        return rest.left(rest.indexOf("kB")).trimmed().toLongLong() / 1024;
    }

    std::mutex m_mutex;
    std::condition_variable m_changed;
    QByteArray m_name;
    int m_turn = 0;
    bool m_isLast = false;
    int m_count = 0;
    qint64 m_slowestMs = -1;
    qint64 m_largestMegabytes = -1;
    QString m_slowest;
    QString m_largest;
    QStringList m_excesses;
    std::thread m_thread; ///< The last: it uses all others.
};
