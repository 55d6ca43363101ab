// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/view/Frame.h"

#include <QObject>
#include <QRegion>
#include <QWidget>

namespace norvo {

/// What a window shows, told by what has changed. It asks only those widgets to draw themselves
/// once more that have drawn something, and compares what they draw with what they drew before: a
/// value that looks as before is no change. While it is not watched it costs nothing.
class PanelPicture : public QObject
{
    Q_OBJECT

public:
    static constexpr int kTile = 64; ///< Pixels; the side of what is compared and sent as one.

    explicit PanelPicture(QWidget& window); ///< It outlives the picture.

    void setWatched(bool isWatched); ///< The first frame from then on is the whole picture.
    Frame take();                    ///< What has changed since the last one.

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void watchAll();
    void unwatchAll();
    void noteWhole(const QWidget& widget);
    void noteScenes();
    QRegion changesIn(const QRegion& drawn);

    QWidget& m_window;
    bool m_isWatched = false;
    bool m_isDrawing = false;    ///< What widgets draw for us is no change.
    bool m_hasNewWidgets = true; ///< That are not watched yet.
    int m_untilWhole = 0;        ///< Frames until the whole picture is compared once more.
    QRegion m_drawn;             ///< Since the last frame.
    QImage m_told;
    QImage m_next;
};

} // namespace norvo
