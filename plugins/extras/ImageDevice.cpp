// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/extras/ImageDevice.h"

#include <algorithm>

namespace {

constexpr char kFile[] = "file";
constexpr char kStale[] = "stale";
constexpr double kMaxStaleSeconds = 1e6;

} // namespace

ImageDevice::ImageDevice()
{
    addParam(kFile, "");
    addParam(kStale, "0");
    getParam(kStale).setUnit("s");
    addParam(kScaling, QStringList{"fit", kStretch, kNone});
    m_stale.setSingleShot(true);
    connect(&m_stale, &QTimer::timeout, this, &ImageDevice::noteStale);
    connect(&m_feed, &PictureFeed::arrived, this, &ImageDevice::noteArrival);
    connect(&m_feed, &PictureFeed::failed, this,
            [this](const QString& reason) { alert("Cannot show the picture: " + reason); });
}

bool ImageDevice::initialise()
{
    if (!paramsOk()) {
        return error(paramFaults().join("; "));
    }
    const double seconds = getParam(kStale);
    m_stale.setInterval(seconds > 0 ? int(std::min(seconds, kMaxStaleSeconds) * 1000) : 0);
    return true;
}

void ImageDevice::postInitialisation()
{
    noteStale(); // a picture from before the start
    m_feed.follow(getParam(kFile).value());
}

void ImageDevice::preShutdown()
{
    m_feed.stop();
    m_stale.stop();
}

void ImageDevice::input(QString base64)
{
    offer(base64);
}

void ImageDevice::input(QByteArray data)
{
    offer(data);
}

void ImageDevice::input(QImage image)
{
    offer(image);
}

void ImageDevice::file(QString fileName)
{
    if (isRunning()) {
        m_feed.follow(fileName);
    }
}

void ImageDevice::offer(const QVariant& picture)
{
    if (isRunning()) {
        m_feed.offer(picture);
    }
}

void ImageDevice::noteArrival()
{
    if (m_stale.interval() > 0) {
        m_stale.start();
    }
    m_isStale = false;
    if (!m_isShown) {
        m_isShown = true;
        emit shown(true);
    }
}

void ImageDevice::noteStale()
{
    m_isStale = true;
    m_isShown = false;
    emit shown(false);
}
