// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/history/HistoryService.h"

#include "host/panel/plan/PanelPlan.h"
#include "host/services/history/HistoryClock.h"
#include "host/services/history/HistoryWriter.h"
#include "host/services/signals/SignalTap.h"

#include "norvo/BaseDevice.h"

#include <QCoreApplication>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace norvo {

struct HistoryService::Recorded
{
    HistorySignal setting;
    QString signature;
    HistoryFilter filter;
    std::unique_ptr<QObject> ear = std::make_unique<QObject>(); ///< Owns the tap.
};

HistoryService::HistoryService(const HistorySetting& setting) : m_setting(setting)
{
    connect(&m_tick, &QTimer::timeout, this, [this] {
        for (const auto& recorded : m_recorded) {
            recorded->filter.advance(ClockReading::bootNow());
        }
    });
}

HistoryService::~HistoryService()
{
    stop();
}

bool HistoryService::records(const HistorySetting& setting) const
{
    const auto isSame = [](const HistorySignal& a, const HistorySignal& b) {
        return a.device == b.device && a.signal == b.signal && a.deadband == b.deadband &&
               a.every == b.every;
    };
    return setting.isGiven == m_setting.isGiven && setting.file == m_setting.file &&
           setting.keep == m_setting.keep && setting.maxBytes == m_setting.maxBytes &&
           std::equal(setting.recorded.cbegin(), setting.recorded.cend(),
                      m_setting.recorded.cbegin(), m_setting.recorded.cend(), isSame);
}

void HistoryService::listen(const PanelPlan& plan)
{
    const auto isSame = [](const PlannedHistory& planned, const auto& recorded) {
        return planned.setting.name() == recorded->setting.name() &&
               planned.signature == recorded->signature;
    };
    QHash<QString, BaseDevice*> devices;
    for (Node* const node : plan.nodes) {
        devices.insert(node->id(), node->device());
    }
    if (m_writer && std::equal(plan.history.cbegin(), plan.history.cend(), m_recorded.cbegin(),
                               m_recorded.cend(), isSame)) {
        const QSet<QString> kept = plan.kept();
        for (const auto& recorded : m_recorded) {
            if (!kept.contains(recorded->setting.device)) {
                hear(*recorded, *devices.value(recorded->setting.device));
            }
        }
        return;
    }
    stop();
    open(plan);
    for (const PlannedHistory& planned : plan.history) {
        record(planned, *devices.value(planned.setting.device));
    }
}

void HistoryService::open(const PanelPlan& plan)
{
    QStringList names;
    for (const PlannedHistory& planned : plan.history) {
        names.append(planned.setting.name());
    }
    m_writer = std::make_unique<HistoryWriter>(
        m_setting.file, names, HistoryStore::Limits{m_setting.keep.count(), m_setting.maxBytes});
    connect(m_writer.get(), &HistoryWriter::problem, this, &HistoryService::problem);
}

void HistoryService::record(const PlannedHistory& planned, BaseDevice& device)
{
    const auto keep = [this, number = int(m_recorded.size())](const HistoryPoint& point) {
        m_writer->add({number, point});
    };
    const HistorySignal& setting = planned.setting;
    m_recorded.push_back(std::make_unique<Recorded>(
        Recorded{setting, planned.signature, {setting.deadband, setting.every.count(), keep}}));
    Recorded& recorded = *m_recorded.back();
    m_byName.insert(setting.name(), &recorded.setting);
    hear(recorded, device);
    if (setting.every.count() > 0) {
        m_tick.start(HistoryWriter::kInterval);
    }
}

void HistoryService::hear(Recorded& recorded, BaseDevice& device)
{
    recorded.ear = std::make_unique<QObject>();
    SignalTap::open(
        device, recorded.signature,
        [&filter = recorded.filter](const SignalArguments& arguments) {
            filter.take({ClockReading::bootNow(), HistoryValue::of(arguments.at(0))});
        },
        *recorded.ear);
}

void HistoryService::stop()
{
    m_tick.stop();
    for (const auto& recorded : m_recorded) {
        recorded->ear.reset();
        recorded->filter.end();
    }
    m_byName.clear();
    m_recorded.clear();
    m_writer.reset();
}

const HistorySignal* HistoryService::recorded(const QString& device, const QString& signal) const
{
    return m_byName.value(device + '.' + signal);
}

namespace {

HistoryService::Answer readNow(HistoryRange range, HistoryQuery* query, qint64 ahead)
{
    if (!query) {
        return {};
    }
    range.from += ahead;
    range.to += ahead;
    HistoryService::Points points = query->read(range);
    if (!query->error().isEmpty()) {
        return {};
    }
    for (HistoryPoint& point : points) {
        point.time -= ahead;
    }
    return points;
}

} // namespace

void HistoryService::read(const HistoryRange& range, QObject& receiver,
                          std::function<void(const Answer&)> done)
{
    if (!m_writer) {
        QTimer::singleShot(0, &receiver, [done = std::move(done)] { done({}); });
        return;
    }
    m_writer->read([range, target = QPointer<QObject>(&receiver),
                    done = std::move(done)](HistoryQuery* query, qint64 ahead) {
        const auto tell = [target, done, answer = readNow(range, query, ahead)] {
            if (target) {
                done(answer);
            }
        };
        // Neither the receiver nor the service may be left by then.
        QMetaObject::invokeMethod(QCoreApplication::instance(), tell, Qt::QueuedConnection);
    });
}

std::future<HistoryService::Answer> HistoryService::read(const HistoryRange& range)
{
    const auto promise = std::make_shared<std::promise<Answer>>();
    if (m_writer) {
        m_writer->read([range, promise](HistoryQuery* query, qint64 ahead) {
            promise->set_value(readNow(range, query, ahead));
        });
    } else {
        promise->set_value({});
    }
    return promise->get_future();
}

} // namespace norvo
