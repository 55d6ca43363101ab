// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/values/ValueTable.h"

#include "host/panel/plan/PanelPlan.h"
#include "host/panel/run/Panel.h"
#include "host/services/signals/Outputs.h"
#include "host/services/signals/SignalTap.h"

#include "norvo/BaseDevice.h"
#include "norvo/DoubleVec.h"

#include <algorithm>
#include <ctime>
#include <utility>

namespace norvo {

namespace {

constexpr int kMaxText = 200;
constexpr int kMaxListed = 20; // Of the numbers of an array.

/// The time that the machine sleeps counts, and setting its clock does not.
qint64 nowMs()
{
    timespec time{};
    clock_gettime(CLOCK_BOOTTIME, &time);
    return qint64(time.tv_sec) * 1000 + time.tv_nsec / 1000000;
}

QString numberText(double number)
{
    return QString::number(number, 'g', 12);
}

QString arrayText(const DoubleVec& numbers)
{
    QStringList texts;
    for (int i = 0; i < std::min(numbers.size(), kMaxListed); ++i) {
        texts.append(numberText(numbers[i]));
    }
    return QString("%1: [%2%3]")
        .arg(QString::number(numbers.size()), texts.join(", "),
             numbers.size() > kMaxListed ? ", ..." : "");
}

} // namespace

struct ValueTable::Heard
{
    QString device;
    QString output;
    QVariantList values;
    quint64 count = 0;
    qint64 stamp = 0;
    std::unique_ptr<SignalTap> tap;
};

QString shownText(const QVariant& value)
{
    QString text;
    if (value.userType() == QMetaType::Bool) {
        text = value.toBool() ? "yes" : "no";
    } else if (value.userType() == QMetaType::Double || value.userType() == QMetaType::Float) {
        text = numberText(value.toDouble());
    } else if (value.userType() == qMetaTypeId<DoubleVec>()) {
        text = arrayText(value.value<DoubleVec>());
    } else if (value.canConvert<QString>()) {
        text = value.toString().left(2 * kMaxText).simplified();
    } else if (value.isValid()) {
        text = QString("(%1)").arg(value.typeName());
    }
    return text.size() > kMaxText ? text.left(kMaxText - 3) + "..." : text;
}

ValueTable::ValueTable() : m_lastLook(nowMs()) {}
ValueTable::~ValueTable() = default;

void ValueTable::listen(const PanelPlan& plan)
{
    m_wired.clear();
    for (const PlannedWire& wire : plan.wires) {
        m_wired[wire.from].append(wire.signal);
    }
    forgetAllBut(plan.kept());
    for (const Node* const node : plan.nodes) {
        if (node->device()) {
            for (const QString& output : m_wired.value(node->id())) {
                hear(node->id(), *node->device(), output);
            }
        }
    }
}

/// An output that nothing is wired to any more is not heard, unless all are.
void ValueTable::forgetAllBut(const QSet<QString>& devices)
{
    const auto isGone = [&](const std::unique_ptr<Heard>& heard) {
        return !devices.contains(heard->device) ||
               !(m_hearsAll || m_wired.value(heard->device).contains(heard->output));
    };
    for (const auto& heard : m_heard) {
        if (isGone(heard)) {
            m_outputs[heard->device].removeOne(heard->output);
            m_countsAtLook.remove(heard->device + ' ' + heard->output);
        }
    }
    m_heard.erase(std::remove_if(m_heard.begin(), m_heard.end(), isGone), m_heard.end());
}

void ValueTable::complete(const Panel& panel)
{
    for (auto wired = m_wired.cbegin(); wired != m_wired.cend(); ++wired) {
        BaseDevice* const device = panel.device(wired.key());
        for (const QString& output : device ? *wired : QStringList()) {
            hear(wired.key(), *device, output);
        }
    }
    if (m_hearsAll) {
        hearAll(panel);
    }
}

void ValueTable::hearAll(const Panel& panel)
{
    m_hearsAll = true;
    for (const Node* node : panel.nodes()) {
        if (!node->device()) {
            continue;
        }
        const QStringList outputs = tellingOutputs(*node->device());
        for (const QString& output : outputs) {
            const QStringList heard = m_outputs.value(node->id());
            const QString name = output.section('(', 0, 0);
            if (std::none_of(heard.cbegin(), heard.cend(), [&name](const QString& known) {
                    return known.section('(', 0, 0) == name;
                })) {
                hear(node->id(), *node->device(), output);
            }
        }
    }
}

void ValueTable::hear(const QString& id, BaseDevice& device, const QString& output)
{
    QStringList& outputs = m_outputs[id];
    if (outputs.contains(output)) {
        return;
    }
    auto heard = std::make_unique<Heard>();
    heard->device = id;
    heard->output = output;
    const auto take = [&heard = *heard](const SignalArguments& arguments) {
        heard.values.clear();
        for (int i = 0; i < arguments.count(); ++i) {
            heard.values.append(arguments.at(i));
        }
        ++heard.count;
        heard.stamp = nowMs();
    };
    heard->tap.reset(SignalTap::open(device, output, take, *this));
    if (heard->tap) {
        m_heard.push_back(std::move(heard));
        outputs.append(output);
    }
}

QVector<Reading> ValueTable::readings() const
{
    const qint64 now = nowMs();
    QVector<Reading> readings;
    for (const auto& heard : m_heard) {
        QStringList texts;
        for (const QVariant& value : qAsConst(heard->values)) {
            texts.append(shownText(value));
        }
        Reading reading;
        reading.device = heard->device;
        reading.output = heard->output;
        reading.value = texts.join(", ").left(kMaxText);
        reading.values = heard->values;
        reading.count = heard->count;
        reading.ageMs = heard->count > 0 ? now - heard->stamp : -1;
        readings.append(reading);
    }
    std::sort(readings.begin(), readings.end(), [](const Reading& a, const Reading& b) {
        return a.device == b.device ? a.output < b.output : a.device < b.device;
    });
    return readings;
}

QVector<Reading> ValueTable::look()
{
    const qint64 now = nowMs();
    const double seconds = double(std::max<qint64>(now - m_lastLook, 1)) / 1000.0;
    m_lastLook = now;
    QVector<Reading> all = readings();
    for (Reading& reading : all) {
        quint64& before = m_countsAtLook[reading.device + ' ' + reading.output];
        reading.perSecond = double(reading.count - before) / seconds;
        before = reading.count;
    }
    return all;
}

} // namespace norvo
