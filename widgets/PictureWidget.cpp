#include "widgets/PictureWidget.h"

#include "devices/PictureDevice.h"
#include "norvo/Truncation.h"

#include <QDebug>
#include <QDir>
#include <QGridLayout>
#include <QImageReader>
#include <QLabel>

namespace {

constexpr qint64 kMostPixels = 8192LL * 8192;

/// What speaks against a picture of that size; empty when nothing does.
QString objectionTo(const QSize& size)
{
    if (size.isEmpty() || qint64(size.width()) * size.height() <= kMostPixels) {
        return QString();
    }
    return QString("%1 x %2 pixels are more than the %3 that a picture may have")
        .arg(size.width())
        .arg(size.height())
        .arg(kMostPixels);
}

QImage readImage(const QString& fileName, QString& error)
{
    QImageReader reader(fileName);
    error = objectionTo(reader.size()); // no size: the file is broken or tells it only when read
    if (!error.isEmpty()) {
        return QImage();
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

    QString error = isScaled ? objectionTo(scaledSize) : QString();
    const QImage image = error.isEmpty() ? readImage(fileName, error) : QImage();
    if (image.isNull()) {
        qCritical().noquote() << QString("PictureWidget: Cannot load %1: %2")
                                     .arg(QDir::toNativeSeparators(fileName), error);
        return;
    }
    QPixmap pixmap = QPixmap::fromImage(image);
    if (isScaled) {
        pixmap = pixmap.scaled(scaledSize, Qt::IgnoreAspectRatio, Qt::FastTransformation);
    }

    auto* const label = new QLabel;
    label->setBackgroundRole(QPalette::Base);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    label->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    label->setPixmap(pixmap);
    if (isScaled) {
        label->resize(scaledSize);
    } else {
        label->adjustSize();
    }
    getLayout()->addWidget(label);
    setInitialised(true);
}
