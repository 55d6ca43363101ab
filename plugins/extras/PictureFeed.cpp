// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/extras/PictureFeed.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <cmath>
#include <utility>

namespace {

constexpr qint64 kMaxBytes = 300'000'000;
constexpr int kBytesPerPixel = 4;
constexpr int kMaxAttempts = 10;
constexpr int kAttemptMs = 100;

QByteArray fromText(const QString& text)
{
    const int comma = text.startsWith("data:") ? text.indexOf(',') : -1;
    return QByteArray::fromBase64(text.mid(comma + 1).toLatin1());
}

/// The JPEG reader takes a file that breaks off for a picture that is grey below.
bool isCutOff(QByteArray data)
{
    while (data.endsWith('\0')) {
        data.chop(1);
    }
    return data.startsWith("\xff\xd8") && !data.endsWith("\xff\xd9");
}

/// What a picture of that size is to be scaled to.
QSize bounded(const QSize& size)
{
    const double bytes = double(size.width()) * size.height() * kBytesPerPixel;
    const double factor = std::sqrt(kMaxBytes / bytes);
    return QSize(int(size.width() * factor), int(size.height() * factor)).expandedTo({1, 1});
}

bool isTooLarge(const QSize& size)
{
    return double(size.width()) * size.height() * kBytesPerPixel > double(kMaxBytes);
}

} // namespace

PictureFeed::PictureFeed()
{
    m_turn.setSingleShot(true);
    connect(&m_turn, &QTimer::timeout, this, &PictureFeed::decode);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &PictureFeed::noteFileChange);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] {
        if (!m_watcher.files().contains(m_fileName)) {
            noteFileChange();
        }
    });
}

void PictureFeed::offer(const QVariant& picture)
{
    m_waiting = picture;
    m_turn.start(0);
}

void PictureFeed::follow(const QString& fileName)
{
    stop();
    if (!fileName.isEmpty()) {
        m_fileName = QFileInfo(fileName).absoluteFilePath();
        m_watcher.addPath(QFileInfo(m_fileName).path());
        noteFileChange();
    }
}

void PictureFeed::stop()
{
    const QStringList watched = m_watcher.files() + m_watcher.directories();
    if (!watched.isEmpty()) {
        m_watcher.removePaths(watched);
    }
    m_turn.stop();
    m_waiting.clear();
    m_fileName.clear();
}

void PictureFeed::noteFileChange()
{
    if (QFileInfo(m_fileName).isFile() && !m_watcher.files().contains(m_fileName)) {
        m_watcher.addPath(m_fileName); // one that replaced it is watched anew
    }
    m_waiting.clear();
    m_attempts = 0;
    m_turn.start(0);
}

void PictureFeed::decode()
{
    const QVariant waiting = std::exchange(m_waiting, QVariant());
    QString reason;
    if (!waiting.isValid()) {
        reason = decodeFile();
        if (!reason.isEmpty() && ++m_attempts < kMaxAttempts) {
            m_turn.start(kAttemptMs);
            return;
        }
    } else if (waiting.userType() == QMetaType::QImage) {
        reason = takeImage(waiting.value<QImage>());
    } else {
        reason = decodeData(waiting.userType() == QMetaType::QString ? fromText(waiting.toString())
                                                                     : waiting.toByteArray());
    }
    const bool isNews = !reason.isEmpty() && !m_hasFailed;
    m_hasFailed = !reason.isEmpty();
    if (!m_hasFailed) {
        emit arrived();
    } else if (isNews) {
        emit failed(reason);
    }
}

QString PictureFeed::decodeFile()
{
    const QFileInfo info(m_fileName);
    const QString name = m_fileName + ": ";
    if (info.exists() && !info.isFile()) {
        return name + "it is not a regular file";
    }
    QFile stored(m_fileName);
    if (!stored.open(QIODevice::ReadOnly)) {
        return name + stored.errorString();
    }
    if (stored.size() > kMaxBytes) {
        return name + "the file is larger than 300 MB";
    }
    const QString reason = decodeData(stored.readAll());
    return reason.isEmpty() ? reason : name + reason;
}

QString PictureFeed::decodeData(const QByteArray& data)
{
    if (isCutOff(data)) {
        return QStringLiteral("the picture is not complete");
    }
    QBuffer buffer;
    buffer.setData(data);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    const QByteArray format = reader.format();
    const QSize size = reader.size();
    if (isTooLarge(size)) {
        if (format != "jpeg" && format != "svg") {
            return QString("%1 x %2 pixels take more than 300 MB")
                .arg(size.width())
                .arg(size.height());
        }
        reader.setScaledSize(bounded(size));
    }
    const QImage image = reader.read();
    return image.isNull() ? reader.errorString() : takeImage(image);
}

QString PictureFeed::takeImage(const QImage& image)
{
    if (image.isNull()) {
        return QStringLiteral("the picture is empty");
    }
    if (image.sizeInBytes() > kMaxBytes) {
        return QStringLiteral("the picture takes more than 300 MB");
    }
    m_image = image;
    return QString();
}
