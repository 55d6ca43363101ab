// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QFileSystemWatcher>
#include <QImage>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVariant>

/// The newest of the pictures that come by file or as data.
///
/// Of those that come within one turn of the event loop only the last is decoded. A picture takes
/// 300 MB at most: a larger JPEG or SVG is scaled while it is read, any other is refused, as are
/// FIFOs and devices. What cannot be read keeps the picture before.
class PictureFeed : public QObject
{
    Q_OBJECT

public:
    PictureFeed();

    const QImage& image() const { return m_image; } ///< Null before the first good one.

    void offer(const QVariant& picture); ///< A QImage, QByteArray, or QString of base64.
    /// Shows the file now and whenever it changes, also when it is removed and comes again. Empty:
    /// follows none.
    void follow(const QString& fileName);
    void stop(); ///< Follows no file, drops what waits.

signals:
    void arrived();
    void failed(QString reason); ///< Once until a good picture comes.

private:
    void noteFileChange();
    void decode();
    QString decodeFile();
    QString decodeData(const QByteArray& data);
    QString takeImage(const QImage& image);

    QFileSystemWatcher m_watcher;
    QString m_fileName;
    QVariant m_waiting; ///< Invalid: the file is to be read.
    QTimer m_turn;
    QImage m_image;
    int m_attempts = 0; ///< At a file that may be half written.
    bool m_hasFailed = false;
};
