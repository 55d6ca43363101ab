// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/extras/PictureFeed.h"
#include "norvo/BaseGuiDevice.h"

#include <QTimer>

/// Pictures that change: a file that is followed, or data by wire. The newest is shown.
class ImageDevice : public BaseGuiDevice
{
    Q_OBJECT

public:
    static constexpr char kScaling[] = "widget/scaling";
    static constexpr char kStretch[] = "stretch";
    static constexpr char kNone[] = "none";

    ImageDevice();

    const PictureFeed& feed() const { return m_feed; }
    /// No new picture for the time of "stale", or since the start.
    bool isStale() const { return m_isStale; }

    bool initialise() override;
    void postInitialisation() override; ///< Begins to follow the file.
    void preShutdown() override;
    BaseWidget* createWidget() override;

signals:
    /// Whether a picture is shown that is not stale; no at the start, then at each change.
    void shown(bool on);

public slots:
    void input(QString base64);  ///< With or without a head "data:image/...;base64,".
    void input(QByteArray data); ///< A file's content, of any kind that Qt reads.
    void input(QImage image);
    void file(QString fileName); ///< Follows this file instead; empty: none.

private:
    void noteArrival();
    void noteStale();
    void offer(const QVariant& picture);

    PictureFeed m_feed;
    QTimer m_stale;
    bool m_isStale = false;
    bool m_isShown = false;
};
