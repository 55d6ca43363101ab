// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/audit/AuditFile.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace norvo {

namespace {

constexpr qint64 kPage = 4096; // Bytes of a file that the system writes in one piece.
constexpr int kMaxText = 4096; // Characters of a value: a line stays one piece for the system.

/// A single value as JSON. What is no finite number stands as text.
QByteArray jsonOf(const QVariant& value)
{
    const bool isText = value.userType() == QMetaType::QString ||
                        (value.userType() == QMetaType::Double && !std::isfinite(value.toDouble()));
    const QJsonValue json =
        isText ? QJsonValue(value.toString().left(kMaxText)) : QJsonValue::fromVariant(value);
    return QJsonDocument(QJsonArray{json}).toJson(QJsonDocument::Compact).mid(1).chopped(1);
}

QByteArray lineOf(const AuditFields& fields)
{
    QByteArray line =
        R"({"time":)" + jsonOf(QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs));
    for (const auto& field : fields) {
        line += ',' + jsonOf(field.first) + ':' + jsonOf(field.second);
    }
    return line + "}\n";
}

} // namespace

AuditFile::AuditFile(const QString& fileName, const Limits& limits)
    : m_fileName(fileName), m_path(QFileInfo(fileName).absoluteFilePath()), m_limits(limits)
{}

AuditFile::~AuditFile()
{
    close();
}

void AuditFile::close()
{
    if (m_fd >= 0) {
        ::close(m_fd);
        m_fd = -1;
    }
}

void AuditFile::report(const QString& what)
{
    if (!m_isReported) {
        m_isReported = true;
        emit problem(QString("%1: warning: %2; what is done at the panel is not recorded")
                         .arg(m_fileName, what));
    }
}

bool AuditFile::open()
{
    constexpr mode_t onlyOwner = 0600;
    m_fd = ::open(QFile::encodeName(m_path).constData(),
                  O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW, onlyOwner);
    if (m_fd < 0) {
        report(QString("the audit cannot be written: %1").arg(qt_error_string(errno)));
        return false;
    }
    struct stat info = {};
    if (::fstat(m_fd, &info) != 0 || !S_ISREG(info.st_mode)) {
        close();
        report("the audit cannot be written: this is not a file");
        return false;
    }
    if (::flock(m_fd, LOCK_EX | LOCK_NB) != 0) {
        close();
        report("another program writes this audit");
        return false;
    }
    m_size = info.st_size;
    mendEnd();
    return true;
}

void AuditFile::mendEnd()
{
    qint64 end = m_size;
    std::array<char, 4096> piece{};
    while (end > 0) {
        const qint64 begin = std::max<qint64>(0, end - qint64(piece.size()));
        const ssize_t count = ::pread(m_fd, piece.data(), size_t(end - begin), begin);
        if (count != end - begin) {
            return;
        }
        const QByteArray text = QByteArray::fromRawData(piece.data(), int(count));
        const int lineEnd = text.lastIndexOf('\n');
        end = begin + lineEnd + 1;
        if (lineEnd >= 0) {
            break;
        }
        end = begin;
    }
    if (end < m_size && ::ftruncate(m_fd, end) == 0) {
        m_size = end;
    }
}

bool AuditFile::rotate()
{
    const auto numbered = [this](int number) { return m_path + '.' + QString::number(number); };
    QFile::remove(m_limits.kept > 0 ? numbered(m_limits.kept) : m_path);
    for (int number = m_limits.kept - 1; number > 0; --number) {
        QFile::rename(numbered(number), numbered(number + 1));
    }
    if (m_limits.kept > 0) {
        QFile::rename(m_path, numbered(1));
    }
    close();
    return open();
}

void AuditFile::write(const AuditFields& fields)
{
    if (m_fd < 0 && !open()) {
        ++m_lost;
        return;
    }
    if (m_lost > 0 && append(lineOf({{"event", "lost"}, {"value", m_lost}}))) {
        m_lost = 0;
    }
    if (m_lost > 0 || !append(lineOf(fields))) {
        ++m_lost;
        return;
    }
    m_isReported = false;
    m_sync.request(m_fd);
}

/// A kill in the middle of a write leaves the pages that are done: a line that would lie on two of
/// them is moved to the second by spaces.
int AuditFile::spacesBefore(const QByteArray& line) const
{
    const qint64 left = kPage - m_size % kPage;
    return line.size() > left && line.size() <= kPage ? int(left) : 0;
}

/// All of it or nothing.
bool AuditFile::append(QByteArray line)
{
    if (m_size > 0 && m_size + spacesBefore(line) + line.size() > m_limits.maxBytes && !rotate()) {
        return false;
    }
    line.prepend(spacesBefore(line), ' ');
    const ssize_t count = ::write(m_fd, line.constData(), size_t(line.size()));
    if (count == line.size()) {
        m_size += count;
        return true;
    }
    const QString reason = qt_error_string(count == -1 ? errno : ENOSPC);
    if (count > 0 && ::ftruncate(m_fd, m_size) != 0) {
        close(); // To be mended when it is opened again.
    }
    report(QString("the audit cannot be written: %1").arg(reason));
    return false;
}

} // namespace norvo
