// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/alarms/AlarmHistory.h"

#include "host/panel/file/Diagnostics.h"
#include "host/panel/state/AtomicFile.h"
#include "host/panel/state/FileLock.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace norvo {

namespace {

constexpr int kMaxLines = 2 * AlarmHistory::kMaxEntries; // Of the file, before it is cut.
constexpr int kMaxLineLength = 64 * 1024;
constexpr qint64 kMaxFileSize = 64LL * 1024 * 1024;

/// In quotes, and no formula for whoever opens the table: one that a device has sent might be.
QByteArray cell(QString text)
{
    static const QString formula("=+-@\t\r");
    if (!text.isEmpty() && formula.contains(text.at(0))) {
        text.prepend('\'');
    }
    return '"' + text.replace('"', "\"\"").toUtf8() + '"';
}

QString localTime(qint64 time)
{
    return time > 0 ? QDateTime::fromMSecsSinceEpoch(time).toString("yyyy-MM-dd HH:mm:ss.zzz")
                    : QString();
}

} // namespace

AlarmHistory::AlarmHistory(const QString& fileName, QObject* parent)
    : QObject(parent),
      m_fileName(fileName),
      m_path(fileName.isEmpty() ? QString() : QFileInfo(fileName).absoluteFilePath())
{
    m_delay.setSingleShot(true);
    connect(&m_delay, &QTimer::timeout, this, &AlarmHistory::save);
}

AlarmHistory::~AlarmHistory()
{
    save();
}

QString AlarmHistory::besideState(const QString& stateFile)
{
    static const QRegularExpression ending("(\\.state)?\\.yaml$");
    return QString(stateFile).remove(ending) + ".alarms.jsonl";
}

bool AlarmHistory::lock()
{
    m_lock = std::make_unique<FileLock>(m_path + ".lock");
    switch (m_lock->lock()) {
    case FileLock::Result::Locked:
        removeLeftovers(m_path);
        return true;
    case FileLock::Result::Busy:
        warn("another panel that runs keeps its alarms here, so those of this one are not kept");
        return false;
    default:
        return true; // Writing will say what is wrong, if anything is.
    }
}

void AlarmHistory::read()
{
    if (m_path.isEmpty()) {
        return;
    }
    m_isWriting = lock();
    const QFileInfo info(m_path);
    QFile file(m_path);
    if (!info.exists()) {
        return;
    }
    if (!info.isFile() || !file.open(QIODevice::ReadOnly)) {
        m_isWriting = false;
        return warn(QString("the alarms of before cannot be read: %1; none are kept")
                        .arg(info.isFile() ? file.errorString() : "it is not a regular file"));
    }
    file.seek(std::max<qint64>(0, file.size() - kMaxFileSize));
    bool isWhole = true;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine(kMaxLineLength);
        isWhole = line.endsWith('\n');
        takeLine(line);
    }
    if (m_badLines > 0) {
        warn(QString("%1 lines are no entries of alarms, and were left out").arg(m_badLines));
    }
    if (!isWhole || m_badLines > 0 || m_linesInFile > kMaxLines) {
        m_linesInFile = kMaxLines; // A line begins where a line has ended: all is written again.
    }
}

void AlarmHistory::takeLine(const QByteArray& line)
{
    ++m_linesInFile;
    if (const auto entry = AlarmEntry::fromJson(line)) {
        remember(*entry, entry->toJson());
    } else if (line.endsWith('\n')) { // Half a line is what a sudden end has left.
        ++m_badLines;
    }
}

void AlarmHistory::remember(const AlarmEntry& entry, const QByteArray& line)
{
    m_entries.push_back(entry);
    m_lines.push_back(line);
    if (m_entries.size() > std::size_t(kMaxEntries)) {
        m_entries.pop_front();
        m_lines.pop_front();
    }
    if (entry.isUnfinished()) {
        m_unfinished.insert(entry.id, entry);
    } else {
        m_unfinished.remove(entry.id);
    }
}

void AlarmHistory::add(const AlarmEntry& entry)
{
    remember(entry, m_isWriting ? entry.toJson() : QByteArray());
    m_unsaved = std::min(m_unsaved + 1, m_entries.size());
    if (m_isWriting && !m_delay.isActive()) {
        m_delay.start(kWriteDelayMs);
    }
}

void AlarmHistory::save()
{
    m_delay.stop();
    if (m_unsaved == 0 || !m_isWriting) {
        return;
    }
    QString reason;
    QByteArray text;
    for (auto line = m_lines.cend() - std::ptrdiff_t(m_unsaved); line != m_lines.cend(); ++line) {
        text += *line;
    }
    // What has no room in memory any more may be of an alarm that is not over.
    const bool isFull =
        m_linesInFile + int(m_unsaved) > kMaxLines || m_unsaved >= std::size_t(kMaxEntries);
    if (isFull ? rewrite(reason) : append(text, reason)) {
        m_linesInFile += isFull ? 0 : int(m_unsaved);
        m_unsaved = 0;
        m_isFailureReported = false;
        return;
    }
    m_delay.start(kRetryMs);
    if (!m_isFailureReported) {
        m_isFailureReported = true;
        warn(QString("the alarms cannot be saved: %1; tried again every %2 s")
                 .arg(reason)
                 .arg(kRetryMs / 1000));
    }
}

/// All of it, or nothing: on a full disk a part may have been written.
bool AlarmHistory::append(const QByteArray& text, QString& reason)
{
    QFile file(m_path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered)) {
        reason = file.errorString();
        return false;
    }
    const qint64 size = file.size();
    const qint64 written = file.write(text);
    if (written != text.size()) {
        reason = written < 0 ? file.errorString() : QString("the disk is full");
        file.resize(size);
        return false;
    }
    if (!m_sync) {
        m_sync.emplace();
    }
    m_sync->request(file.handle());
    return true;
}

bool AlarmHistory::rewrite(QString& reason)
{
    QByteArray text;
    int lines = 0;
    QHash<QString, bool> kept;
    for (const AlarmEntry& entry : m_entries) {
        kept.insert(entry.id, true);
    }
    for (const AlarmEntry& entry : qAsConst(m_unfinished)) {
        if (!kept.contains(entry.id)) {
            text += entry.toJson();
            ++lines;
        }
    }
    for (const QByteArray& line : m_lines) {
        text += line;
        ++lines;
    }
    if (!writeFileAtomically(m_path, text, reason)) {
        return false;
    }
    m_linesInFile = lines;
    return true;
}

QByteArray AlarmHistory::toCsv() const
{
    QByteArray text = "time,event,priority,text,device,state,detail,since,shelved until,alarm\n";
    for (const AlarmEntry& entry : m_entries) {
        const QByteArrayList cells{cell(localTime(entry.time)),
                                   cell(entry.event),
                                   cell(nameOf(entry.priority)),
                                   cell(entry.text),
                                   cell(entry.device),
                                   cell(nameOf(entry.state)),
                                   cell(entry.detail),
                                   cell(localTime(entry.since)),
                                   cell(localTime(entry.shelvedUntil)),
                                   cell(entry.id)};
        text += cells.join(',') + '\n';
    }
    return text;
}

void AlarmHistory::warn(const QString& text)
{
    emit problem(Diagnostic{Diagnostic::Severity::Warning, m_fileName, {}, text}.toString());
}

} // namespace norvo
