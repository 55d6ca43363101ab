// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/PictureWidget.h"

#include "devices/PictureDevice.h"
#include "norvo/Truncation.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGridLayout>
#include <QImageReader>
#include <QLabel>

namespace {

constexpr int kMaxMegabytes = 300;
constexpr int kPixmapDepth = 32;

/// Empty where a picture of that size may be in memory.
QString sizeError(const QSize& size, int bitsPerPixel)
{
    const double needed = double(size.width()) * size.height() * bitsPerPixel / 8 / 1e6;
    if (size.isEmpty() || needed <= kMaxMegabytes) {
        return QString();
    }
    return QString("%1 x %2 pixels take %3 MB, a picture may take %4")
        .arg(size.width())
        .arg(size.height())
        .arg(needed, 0, 'f', 0)
        .arg(kMaxMegabytes);
}

int depthOf(const QImageReader& reader)
{
    const QImage::Format format = reader.imageFormat();
    return format == QImage::Format_Invalid ? kPixmapDepth
                                            : QImage::toPixelFormat(format).bitsPerPixel();
}

/// Whether the reader can scale a picture without having the whole of it in memory.
bool scalesWhileItReads(const QImageReader& reader)
{
    const QByteArray format = reader.format();
    if (format == "png") { // if of 8 bits a channel and row after row
        constexpr int interlaceMethod = 28;
        QFile file(reader.fileName()); // the reader has read beyond the header already
        const bool isOpen = file.open(QIODevice::ReadOnly);
        const QByteArray header = isOpen ? file.read(interlaceMethod + 1) : QByteArray();
        return depthOf(reader) == 32 && header.endsWith('\0');
    }
    return format == "jpeg" || format == "svg" || format == "svgz";
}

/// Null where `error` says why. `scaledSize` is empty where the picture keeps its own size.
QImage readImage(const QString& fileName, const QSize& scaledSize, QString& error)
{
    const QFileInfo info(fileName);
    if (info.exists() && !info.isFile() && !info.isDir()) {
        error = "it is not a regular file"; // a FIFO or a device might never end
        return QImage();
    }
    QImageReader reader(fileName);
    const QSize size = reader.size(); // none: the file is broken or declares none
    error = reader.errorString();
    if (reader.error() != QImageReader::UnknownError) {
        return QImage(); // reading would say the same again
    }
    const int depth = scaledSize.isEmpty() ? qMax(depthOf(reader), kPixmapDepth) : depthOf(reader);
    const QString tooLarge = sizeError(size, depth);
    if (!tooLarge.isEmpty() && (scaledSize.isEmpty() || !scalesWhileItReads(reader))) {
        error = tooLarge;
        return QImage();
    }
    if (!tooLarge.isEmpty()) {
        reader.setScaledSize(scaledSize);
    }
    QImage image = reader.read();
    error = reader.errorString();
    return image;
}

} // namespace

void PictureWidget::initialise()
{
    const QString fileName = getParam(PictureDevice::kFilename).value();
    const double width = getParam(PictureDevice::kWidth);
    const double height = getParam(PictureDevice::kHeight);
    const bool isScaled = width > 0 && height > 0;
    const QSize scaledSize(norvo::truncatedToInt(width), norvo::truncatedToInt(height));

    QString error = isScaled ? sizeError(scaledSize, kPixmapDepth) : QString();
    QImage image;
    if (error.isEmpty()) {
        image = readImage(fileName, isScaled ? scaledSize : QSize(), error);
    }
    if (image.isNull()) {
        qCritical().noquote() << QString("PictureWidget: Cannot load %1: %2")
                                     .arg(QDir::toNativeSeparators(fileName), error);
        return;
    }
    if (isScaled) { // as an image: a pixmap of the whole would take four bytes for each pixel
        image = scaledSize.isEmpty()
                    ? QImage()
                    : image.scaled(scaledSize, Qt::IgnoreAspectRatio, Qt::FastTransformation);
    }

    auto* const label = new QLabel;
    label->setBackgroundRole(QPalette::Base);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    label->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    label->setPixmap(QPixmap::fromImage(std::move(image)));
    if (isScaled) {
        label->resize(scaledSize);
    } else {
        label->adjustSize();
    }
    getLayout()->addWidget(label);
    setInitialised(true);
}
