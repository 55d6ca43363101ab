// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/common/LineDevice.h"
#include "plugins/common/LossReport.h"
#include "plugins/serial/FrameQueue.h"
#include "plugins/serial/FrameText.h"
#include "plugins/serial/Poll.h"
#include "plugins/serial/SerialLink.h"
#include "norvo/DeviceTypeInfo.h"

#include <QElapsedTimer>
#include <QTimer>

#include <memory>

/// A serial port whose frames become values.
///
/// Parameters: see SerialSettings ("port", "baud", "frame", "flow"), Framing ("framing", "end",
/// "length", "prefix") and FrameText ("encoding"). With "ask" the text is sent every "every" ms;
/// no answer within "timeout" ms is a fault, and three in a row mean not connected. "silence", such
/// as "5 s", is how long the device may send nothing before it counts as not connected. It is
/// connected when the port is open and, with either of these two, when the device has been heard.
///
/// What comes before the first frame has surely begun is dropped, see FrameQueue. 10,000 frames or
/// 1 MiB may wait to be emitted; of more than that the oldest are dropped. What has been lost is
/// reported in an alert from time to time.
class SerialDevice : public LineDevice
{
    Q_OBJECT

public:
    SerialDevice();
    ~SerialDevice() override;

    static DeviceTypeInfo typeInfo();

    /// False where a parameter does not read. Whether there is such a port is seen later.
    bool initialise() override;
    void postInitialisation() override;
    void preShutdown() override;
    void deinitialise() override;

protected:
    /// Writes the text as a frame. One that would be several, or none, is refused. While the device
    /// is not connected the text is lost, never kept for later.
    bool write(const QString& text) override;
    void countUnmatchedLine() override { m_losses.add(UnmatchedFrames); }

private:
    enum Loss {
        DroppedFrames,
        LongFrames,
        IncompleteFrames,
        StrayBytes,
        UnreadInputs,
        LateInputs,
        RefusedInputs,
        UnmatchedFrames
    };

    QString readPort();
    QString readFraming();
    QString readTimes();
    std::optional<QByteArray> frameOf(const QString& text) const;
    void onOpened();
    void onLost(const QString& reason);
    void turn();
    void waitForPause();
    void onPause();
    void take(const QByteArray& frame);
    void onMissed(int inARow);
    void watchSilence();
    void leave(); ///< Not connected any more, and nothing that was written before may arrive.
    void countLosses();

    norvo::PortName m_name;
    norvo::SerialSettings m_settings;
    norvo::Framing m_framing;
    norvo::FrameText m_encoding = norvo::FrameText::Utf8;
    QByteArray m_question; ///< A frame.
    std::chrono::milliseconds m_every{0};
    std::chrono::milliseconds m_timeout{0};
    std::chrono::milliseconds m_silence{0}; ///< 0: as long as it likes.
    std::unique_ptr<norvo::SerialLink> m_link;
    std::unique_ptr<norvo::FrameQueue> m_queue;
    std::unique_ptr<norvo::Poll> m_poll; ///< Null: nothing is asked.
    QTimer m_turnTimer;                  ///< Between two turns of a port that keeps us busy.
    QTimer m_pauseTimer;                 ///< Until the line has been still for a while.
    QTimer m_silenceTimer;
    bool m_isSilenceExtended = false;
    QElapsedTimer m_sinceFrame;
    bool m_inTurn = false;
    norvo::LossReport m_losses; ///< By Loss.
};
