// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/services/AlarmReader.h"

#include "host/panel/file/ConnectionReader.h"
#include "host/panel/file/EditDistance.h"

#include <QMap>

#include <cmath>
#include <limits>

namespace norvo {

namespace {

constexpr int kMaxTextLength = 500; // In characters.

const QMap<QString, AlarmLimit::Kind> kLimits{{"above", AlarmLimit::Kind::Above},
                                              {"below", AlarmLimit::Kind::Below},
                                              {"equals", AlarmLimit::Kind::Equals},
                                              {"is", AlarmLimit::Kind::Is}};
const QMap<QString, AlarmPriority> kPriorities{
    {"high", AlarmPriority::High}, {"medium", AlarmPriority::Medium}, {"low", AlarmPriority::Low}};

/// Reads one alarm; goes on after an error, to report them all.
class AlarmReader
{
public:
    AlarmReader(const YamlEntry& entry, const ReadContext& context)
        : m_entry(entry), m_context(context)
    {}

    std::optional<AlarmSetting> read()
    {
        if (m_entry.value->kind != YamlNode::Kind::Map) {
            refuse(m_entry, "an alarm is a map such as {signal: boiler.output, above: 80}");
            return std::nullopt;
        }
        for (const YamlEntry& part : m_entry.value->entries) {
            if (isUsable(part)) {
                readPart(part);
            }
        }
        checkParts();
        if (m_hasErrors) {
            return std::nullopt;
        }
        m_alarm.id = QString("%1.%2 %3 %4")
                         .arg(m_alarm.device, m_alarm.signal, m_limitKey, m_alarm.limit.text);
        m_alarm.text = m_alarm.text.isEmpty() ? m_alarm.id : m_alarm.text;
        return m_alarm;
    }

private:
    void readPart(const YamlEntry& part)
    {
        const QString& key = part.key->text;
        if (key == "signal") {
            readSignal(part);
        } else if (kLimits.contains(key)) {
            readLimit(part);
        } else if (key == "deadband") {
            m_alarm.limit.deadband = readNumber(part, 0);
            m_deadband = &part;
        } else if (key == "delay") {
            readTime(part, m_alarm.delay);
        } else if (key == "offDelay") {
            readTime(part, m_alarm.offDelay);
        } else if (key == "priority") {
            readPriority(part);
        } else if (key == "text") {
            m_alarm.text = readText(part).trimmed();
        } else if (key == "help") {
            m_alarm.help = readText(part).trimmed();
        } else if (key == "sound") {
            m_alarm.hasSound = readYesNo(part);
        } else {
            m_hasErrors = true;
            m_context.refuseKey(*part.key, " of an alarm", alarmKeys(),
                                "an alarm has " + alarmKeys().join(", "));
        }
    }

    void readSignal(const YamlEntry& part)
    {
        m_hasSignal = true;
        const auto end = readSource(part, m_context);
        if (!end) {
            m_hasErrors = true;
            return;
        }
        m_alarm.device = end->device.text;
        m_alarm.devicePlace = end->device.place;
        m_alarm.signal = end->method.text;
        m_alarm.signalPlace = end->method.place;
    }

    void readLimit(const YamlEntry& part)
    {
        const QString key = part.key->text;
        if (!m_limitKey.isEmpty()) {
            return refuse(part, QString("an alarm has one of above, below, equals and is; this one "
                                        "has %1 already; write an alarm for each")
                                    .arg(m_limitKey));
        }
        m_limitKey = key;
        m_alarm.limitPlace = m_context.at(part.place);
        AlarmLimit& limit = m_alarm.limit;
        limit.kind = kLimits.value(key);
        limit.text = readText(part);
        if (limit.kind == AlarmLimit::Kind::Is) {
            limit.isYes = readYesNo(part);
        } else if (limit.kind == AlarmLimit::Kind::Equals) {
            bool isNumber = false;
            limit.number = limit.text.trimmed().toDouble(&isNumber);
            limit.number = isNumber ? limit.number : std::numeric_limits<double>::quiet_NaN();
        } else {
            limit.number = readNumber(part, std::numeric_limits<double>::lowest());
        }
    }

    double readNumber(const YamlEntry& part, double least)
    {
        bool isNumber = false;
        const double number = m_context.text(*part.value).trimmed().toDouble(&isNumber);
        if (!part.value->isText() || !isNumber || !std::isfinite(number) || number < least) {
            refuse(part, part.key->text +
                             (least < 0 ? " must be a number" : " must be a number from 0 on"));
        }
        return number;
    }

    void readTime(const YamlEntry& part, Duration& time)
    {
        const auto read = readDuration(part, m_context);
        m_hasErrors = m_hasErrors || !read;
        time = read.value_or(time);
    }

    void readPriority(const YamlEntry& part)
    {
        const auto found = kPriorities.constFind(m_context.text(*part.value));
        if (!part.value->isText() || found == kPriorities.constEnd()) {
            return refuse(part, "priority must be one of high, medium, low" +
                                    didYouMean(m_context.text(*part.value), kPriorities.keys()));
        }
        m_alarm.priority = *found;
    }

    QString readText(const YamlEntry& part)
    {
        QString text = m_context.text(*part.value);
        if (!part.value->isText() || text.size() > kMaxTextLength) {
            refuse(part, QString("%1 must be a text of %2 characters at most")
                             .arg(part.key->text, QString::number(kMaxTextLength)));
        }
        return text;
    }

    bool readYesNo(const YamlEntry& part)
    {
        const QString text = m_context.text(*part.value).toLower();
        const bool isYes = text == "true" || text == "yes" || text == "on";
        if (!part.value->isText() || !(isYes || text == "false" || text == "no" || text == "off")) {
            refuse(part, part.key->text + " must be true or false");
        }
        return isYes;
    }

    void checkParts()
    {
        if (!m_hasSignal) {
            refuse(m_entry, "the alarm has no signal; add \"signal: device.signal\"");
        }
        if (m_limitKey.isEmpty()) {
            refuse(m_entry, "the alarm has no limit; add one of above, below, equals and is");
        } else if (m_deadband && m_limitKey != "above" && m_limitKey != "below") {
            refuse(*m_deadband, "a deadband goes with above or below only");
        }
    }

    void refuse(const YamlEntry& part, const QString& text)
    {
        m_hasErrors = true;
        m_context.refuse(part.place, text);
    }

    const YamlEntry& m_entry;
    const ReadContext& m_context;
    AlarmSetting m_alarm;
    QString m_limitKey;                    ///< Empty: none has been read.
    const YamlEntry* m_deadband = nullptr; ///< Null: there is none.
    bool m_hasSignal = false;
    bool m_hasErrors = false;
};

} // namespace

const QStringList& alarmKeys()
{
    static const QStringList keys{"signal", "above",    "below",    "equals", "is",   "deadband",
                                  "delay",  "offDelay", "priority", "text",   "help", "sound"};
    return keys;
}

std::optional<AlarmSetting> readAlarm(const YamlEntry& entry, const ReadContext& context)
{
    return AlarmReader(entry, context).read();
}

} // namespace norvo
