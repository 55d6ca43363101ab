// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/services/HistoryReader.h"

#include "host/panel/file/ConnectionReader.h"

#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <QSet>

#include <cmath>

namespace norvo {

namespace {

const QMap<QString, double> kBytes{{"MB", 1e6}, {"GB", 1e9}};
const QStringList kKeys{"signals", "file", "keep", "max"};
const QStringList kSignalKeys{"signal", "deadband", "every"};
const char kWanted[] = "signals must be a list of \"device.signal\", or a map of them, each with "
                       "deadband and every where wanted";

/// Reads the key; goes on after an error, to report them all.
class HistoryReader
{
public:
    HistoryReader(const ReadContext& context, HistorySetting& history)
        : m_context(context), m_history(history)
    {}

    void read(const YamlEntry& entry)
    {
        m_history.isGiven = true;
        for (const YamlEntry& part :
             m_context.entriesOf(entry, YamlNode::Kind::Map,
                                 "history must be a map of signals, file, keep and max")) {
            if (isUsable(part)) {
                readPart(part);
            }
        }
        if (!m_hasSignals && entry.value->kind != YamlNode::Kind::Text) {
            m_context.refuse(entry.key->place, "history lacks signals, the list of what is "
                                               "recorded, such as \"signals: [boiler.output]\"");
        }
    }

private:
    void readPart(const YamlEntry& part)
    {
        const QString& key = part.key->text;
        if (key == "signals") {
            m_hasSignals = true;
            readSignals(part);
        } else if (key == "file") {
            readFile(part);
        } else if (key == "keep") {
            m_history.keep = readDuration(part, m_context).value_or(m_history.keep);
        } else if (key == "max") {
            readSize(part);
        } else {
            m_context.refuseKey(*part.key, " of history", kKeys,
                                "history has signals, file, keep and max");
        }
    }

    void readFile(const YamlEntry& part)
    {
        const bool isText = part.value->isText();
        m_history.file = isText ? m_context.text(*part.value).trimmed() : QString();
        if (m_history.file.isEmpty()) {
            m_context.refuse(part.place, "file must name a file, such as panel.history.sqlite");
        }
    }

    void readSize(const YamlEntry& part)
    {
        static const QRegularExpression pattern(historySizePattern());
        const auto match = pattern.match(part.value->text);
        const double bytes = match.captured(1).toDouble() * kBytes.value(match.captured(2));
        if (part.value->isText() && bytes >= double(HistorySetting::kMinBytes) &&
            bytes <= double(HistorySetting::kMaxBytes)) {
            m_history.maxBytes = std::llround(bytes);
        } else {
            m_context.refuse(part.place,
                             "max must be from 1 MB to 1000 GB with its unit, such as \"500 MB\"");
        }
    }

    void readSignals(const YamlEntry& part)
    {
        if (part.value->isText() || part.value->entries.empty()) {
            return m_context.refuse(part.place, kWanted);
        }
        for (const YamlEntry& signal : part.value->entries) {
            if (m_history.recorded.size() == kMaxRecorded) {
                return m_context.refuse(signal.place, "more than 2,000 recorded signals");
            }
            if (signal.key && isUsable(signal)) {
                YamlEntry name = signal;
                name.value = signal.key;
                name.place = signal.key->place;
                readSignal(name, signal, true);
            } else if (!signal.key && signal.value->isText()) {
                readSignal(signal, signal, false);
            } else if (!signal.key) {
                readListed(signal);
            }
        }
    }

    /// An entry of a list that is a map.
    void readListed(const YamlEntry& entry)
    {
        for (const YamlEntry& part : entry.value->entries) {
            if (part.key && isUsable(part) && part.key->text == "signal") {
                return readSignal(part, entry, true);
            }
        }
        m_context.refuse(entry.place, kWanted);
    }

    void readSignal(const YamlEntry& name, const YamlEntry& settings, bool hasSettings)
    {
        const auto end = readSource(name, m_context);
        if (!end) {
            return;
        }
        HistorySignal signal{end->device.text, end->device.place, end->method.text,
                             end->method.place};
        if (hasSettings) {
            readSettings(settings, signal);
        }
        if (m_names.contains(signal.name())) {
            return m_context.refuse(name.place, inQuotes(signal.name()) + " is recorded already");
        }
        m_names.insert(signal.name());
        m_history.recorded.append(signal);
    }

    void readSettings(const YamlEntry& entry, HistorySignal& signal)
    {
        for (const YamlEntry& part :
             m_context.entriesOf(entry, YamlNode::Kind::Map,
                                 "a signal has deadband and every, as in {every: 1 s}")) {
            if (!isUsable(part)) {
                continue;
            }
            const QString& key = part.key->text;
            if (key == "deadband") {
                readDeadband(part, signal);
            } else if (key == "every") {
                signal.every = readDuration(part, m_context).value_or(signal.every);
            } else if (key != "signal") {
                m_context.refuseKey(*part.key, " of a recorded signal", kSignalKeys,
                                    "a recorded signal has deadband and every");
            }
        }
    }

    void readDeadband(const YamlEntry& part, HistorySignal& signal)
    {
        bool isNumber = false;
        const double number = m_context.text(*part.value).trimmed().toDouble(&isNumber);
        if (!part.value->isText() || !isNumber || !std::isfinite(number) || number < 0) {
            return m_context.refuse(part.place, "deadband must be a number from 0 on");
        }
        signal.deadband = number;
    }

    const ReadContext& m_context;
    HistorySetting& m_history;
    QSet<QString> m_names;
    bool m_hasSignals = false;
};

} // namespace

QString HistorySetting::besidePanel(const QString& panelFile)
{
    const QFileInfo info(panelFile);
    const QString name = info.suffix() == "yaml" ? info.completeBaseName() : info.fileName();
    return info.path() + '/' + name + ".history.sqlite";
}

QString historySizePattern()
{
    return "^\\s*(\\d{1,6}(?:\\.\\d{1,6})?)\\s*(MB|GB)\\s*$";
}

void readHistory(const YamlEntry& entry, const ReadContext& context, HistorySetting& history)
{
    HistoryReader(context, history).read(entry);
}

} // namespace norvo
