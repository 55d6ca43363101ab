// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/services/HistorySetting.h"
#include "host/services/history/HistoryFilter.h"
#include "host/services/history/HistoryQuery.h"

#include <QHash>
#include <QObject>
#include <QTimer>
#include <QVector>

#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <vector>

class BaseDevice;

namespace norvo {

class HistoryWriter;
struct PanelPlan;
struct PlannedHistory;

/// Records what the signals of a running panel send, as its key "history" says, and reads it again.
/// It listens only.
class HistoryService : public QObject
{
    Q_OBJECT

public:
    using Points = QVector<HistoryPoint>;
    using Answer = std::optional<Points>; ///< Null: the history cannot be read.

    /// The file is relative to the working folder of now.
    explicit HistoryService(const HistorySetting& setting);
    ~HistoryService() override; ///< Stops.

    /// Whether this one records what such a key asks for.
    bool records(const HistorySetting& setting) const;
    /// Before each plan is applied. What devices that run on send is recorded without a gap where
    /// the plan records the same signals as the last; else the file is opened anew.
    void listen(const PanelPlan& plan);
    void stop(); ///< Writes all; from then on nothing is recorded or read.

    /// The signal as the panel names it for the history; null where it is not recorded. `signal` is
    /// its name without types.
    const HistorySignal* recorded(const QString& device, const QString& signal) const;

    /// Reads beside the panel's thread, and then calls `done` in the panel's, unless `receiver` is
    /// gone. All that was sent before the call is among it.
    /// Times are the wall clock's of now, even where that was set back meanwhile.
    void read(const HistoryRange& range, QObject& receiver,
              std::function<void(const Answer&)> done);
    /// The same for one who can wait.
    std::future<Answer> read(const HistoryRange& range);

signals:
    void problem(QString line); ///< One line for the user.

private:
    struct Recorded;

    void open(const PanelPlan& plan);
    void record(const PlannedHistory& planned, BaseDevice& device);
    static void hear(Recorded& recorded, BaseDevice& device);

    const HistorySetting m_setting;
    std::vector<std::unique_ptr<Recorded>> m_recorded;
    QHash<QString, const HistorySignal*> m_byName; ///< "device.signal".
    QTimer m_tick;
    std::unique_ptr<HistoryWriter> m_writer; ///< Null before the start and after the stop.
};

} // namespace norvo
