// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/access/PinAttempts.h"

#include "host/panel/state/AtomicFile.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace norvo {

namespace {

constexpr int kMaxCount = 12;     // From here on the wait is the longest.
constexpr int kMaxFileSize = 200; // Bytes.

PinAttempts::Clock monotonicClock()
{
    QElapsedTimer clock;
    clock.start();
    return [clock] { return clock.elapsed(); };
}

} // namespace

PinAttempts::PinAttempts(const QString& fileName, Clock clock)
    : m_fileName(fileName.isEmpty() ? QString() : QFileInfo(fileName).absoluteFilePath()),
      m_clock(clock ? std::move(clock) : monotonicClock())
{}

qint64 PinAttempts::waitAfter(int wrongPins)
{
    return wrongPins <= kFreeTries
               ? 0
               : std::min(qint64(1000) << std::min(wrongPins - kFreeTries - 1, 20), kMaxWaitMs);
}

void PinAttempts::read()
{
    QFile file(m_fileName);
    if (m_fileName.isEmpty() || !file.exists()) {
        return;
    }
    bool isSound = file.open(QIODevice::ReadOnly);
    const QByteArray content = file.read(kMaxFileSize);
    const QStringList lines =
        QString::fromLatin1(content.constData(), content.size()).split('\n', Qt::SkipEmptyParts);
    for (const QString& line : lines) {
        bool isNumber = false;
        const QString role = line.section(": ", 0, 0);
        const int wrong = line.section(": ", 1).toInt(&isNumber);
        isSound = isSound && isNumber && wrong >= 0 && roleNames().contains(role);
        m_counts.insert(roleNames().value(role), {std::min(wrong, kMaxCount), m_clock()});
    }
    if (!isSound) {
        m_counts = {{Role::Operate, {kMaxCount, m_clock()}},
                    {Role::Engineer, {kMaxCount, m_clock()}}};
    }
}

qint64 PinAttempts::waitMs(Role role) const
{
    const Count count = m_counts.value(role);
    return std::max(qint64(0), count.last + waitAfter(count.wrong) - m_clock());
}

void PinAttempts::count(const QList<Role>& roles)
{
    for (const Role role : roles) {
        Count& count = m_counts[role];
        count = {std::min(count.wrong + 1, kMaxCount), m_clock()};
    }
    write();
}

void PinAttempts::forget(Role upTo)
{
    for (auto count = m_counts.begin(); count != m_counts.end();) {
        count = count.key() <= upTo ? m_counts.erase(count) : std::next(count);
    }
    write();
}

void PinAttempts::write()
{
    if (m_fileName.isEmpty()) {
        return;
    }
    QByteArray content;
    for (auto count = m_counts.cbegin(); count != m_counts.cend(); ++count) {
        content += QString("%1: %2\n").arg(nameOf(count.key())).arg(count->wrong).toUtf8();
    }
    QString reason;
    if (!writeFileAtomically(m_fileName, content, reason) && !m_isProblemTold) {
        m_isProblemTold = true;
        emit problem(
            QString("%1: wrong PINs are not counted beyond this run: %2").arg(m_fileName, reason));
    }
}

} // namespace norvo
