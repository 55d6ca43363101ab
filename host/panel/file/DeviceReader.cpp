// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/DeviceReader.h"

#include "host/panel/file/TemplateUse.h"
#include "host/panel/file/services/AccessReader.h"

#include "norvo/Ids.h"

#include <QHash>

namespace norvo {

namespace {

constexpr int kMaxNameLength = 256; // Of a parameter, in characters.

/// Reads the settings of one device.
class DeviceReader
{
public:
    DeviceReader(const ReadContext& context, DeviceSetting& device)
        : m_context(context), m_device(device)
    {}

    void read(const YamlEntry& entry)
    {
        const YamlNode& value = *entry.value;
        if (value.kind == YamlNode::Kind::Text || value.kind == YamlNode::Kind::List) {
            const QString example = isId(value.text) ? value.text : QString("TYPE");
            m_context.refuse(entry.place,
                             QString("the device %1 must be a map%2")
                                 .arg(quotedId(), value.text.startsWith("device:")
                                                      ? "; a space is missing after \"device:\""
                                                      : ", such as {device: " + example + '}'));
        } else {
            readSettings(value);
        }
    }

private:
    QString quotedId() const { return inQuotes(m_device.id.text); }

    void readSettings(const YamlNode& value)
    {
        bool hasType = false;
        for (const YamlEntry& setting : value.entries) {
            if (isUsable(setting)) {
                hasType = hasType || setting.key->text == "device";
                readSetting(setting);
            }
        }
        if (!hasType) {
            m_context.refuse(
                m_device.id.place,
                QString("the device %1 has no type; add \"device: TYPE\"").arg(quotedId()));
        }
    }

    void readSetting(const YamlEntry& entry)
    {
        const QString& key = entry.key->text;
        if (key == "device") {
            readType(entry);
        } else if (key == "params") {
            readParams(entry);
        } else if (key == "outputs" || key == "inputs") {
            readPorts(entry, key);
        } else if (key == "network") {
            readNetwork(entry);
        } else if (key == "keep") {
            readKeep(entry);
        } else if (key == "access") {
            readDeviceAccess(entry, m_context, m_device.access);
        } else if (key == "confirm") {
            readConfirm(entry, m_context, m_device.access);
        } else {
            m_context.refuseKey(
                *entry.key, " of the device " + quotedId(),
                {"device", "params", "outputs", "inputs", "network", "keep", "access", "confirm"},
                "a device has device, params, outputs, inputs, network, keep, access and confirm, "
                "and its parameters stand in params");
        }
    }

    void readType(const YamlEntry& entry)
    {
        const YamlNode& type = *entry.value;
        if (!type.isText()) {
            return m_context.refuse(entry.place, "the type of a device must be a text");
        }
        const QString text = m_context.text(type);
        if (text.trimmed().isEmpty()) {
            return m_context.refuse(
                entry.place, QString("the type of the device %1 is empty; write \"device: TYPE\"")
                                 .arg(quotedId()));
        }
        m_device.type = {text, m_context.at(type.place)};
    }

    void readNetwork(const YamlEntry& entry)
    {
        const YamlNode& value = *entry.value;
        const QString text = m_context.text(value);
        if (!value.isText() || (text != "true" && text != "false")) {
            m_context.refuse(entry.place,
                             "network must be true or false" +
                                 (value.isText() ? ", not " + inQuotes(text) : QString()));
        }
        m_device.network = text == "true";
    }

    void readKeep(const YamlEntry& entry)
    {
        static const QMap<QString, Keep> texts{{"false", Keep::No},
                                               {"true", Keep::Silently},
                                               {"silent", Keep::Silently},
                                               {"send", Keep::Sending}};
        const YamlNode& value = *entry.value;
        const QString text = m_context.text(value);
        if (!value.isText() || !texts.contains(text)) {
            m_context.refuse(entry.place,
                             "keep must be true, false, silent or send" +
                                 (value.isText() ? ", not " + inQuotes(text) : QString()));
        }
        m_device.keep = texts.value(text, Keep::Unsaid);
        m_device.keepPlace = m_context.at(entry.key->place);
    }

    void readParams(const YamlEntry& entry)
    {
        for (const YamlEntry& param : m_context.entriesOf(
                 entry, YamlNode::Kind::Map,
                 "params must be a map: the name of each parameter, and its value")) {
            readParam(param, {});
        }
    }

    void readPorts(const YamlEntry& entry, const QString& key)
    {
        for (const YamlEntry& port :
             m_context.entriesOf(entry, YamlNode::Kind::Map,
                                 key + " must be a map: the name of each, and its definition")) {
            if (isUsable(port)) {
                readPort(port, key == "outputs");
            }
        }
    }

    void readPort(const YamlEntry& entry, bool isOutput)
    {
        PortSetting port{isOutput,
                         {m_context.text(*entry.key), m_context.at(entry.key->place)},
                         {m_context.text(*entry.value), m_context.at(entry.place)},
                         {}};
        if (entry.value->kind == YamlNode::Kind::List) {
            return m_context.refuse(entry.place,
                                    QString("the definition of %1 must be a text or a map, such as "
                                            "{as: TEXT}, not a list")
                                        .arg(inQuotes(port.name.text)));
        }
        for (const YamlEntry& option : entry.value->entries) {
            if (isUsable(option)) {
                readOption(option, port);
            }
        }
        m_device.ports.append(port);
    }

    void readOption(const YamlEntry& entry, PortSetting& port)
    {
        const QString key = m_context.text(*entry.key);
        const QString text = m_context.text(*entry.value);
        if (!entry.value->isText()) {
            m_context.refuse(entry.place, QString("%1 must be a text").arg(inQuotes(key)));
        } else if (key == "as") {
            port.definition = {text, m_context.at(entry.place)};
        } else {
            port.options.insert(key, text);
        }
    }

    void readParam(const YamlEntry& entry, const QString& prefix)
    {
        if (!isUsable(entry)) {
            return;
        }
        const Place& keyPlace = entry.key->place;
        const QString key = m_context.text(*entry.key);
        if (key.isEmpty()) {
            return m_context.refuse(keyPlace, "the name of a parameter is empty");
        }
        if (prefix.size() + key.size() > kMaxNameLength) {
            return m_context.refuse(
                keyPlace,
                QString("the name of a parameter has %1 characters at most").arg(kMaxNameLength));
        }
        const QString name = prefix + key;
        if (entry.value->kind == YamlNode::Kind::List) {
            return m_context.refuse(entry.place,
                                    QString("the parameter %1 must be a text or a map, not a list; "
                                            "what stands between several values in one text is "
                                            "said by --describe")
                                        .arg(inQuotes(name)));
        }
        if (entry.value->kind == YamlNode::Kind::Map) {
            for (const YamlEntry& below : entry.value->entries) {
                readParam(below, name + '/');
            }
            return;
        }
        const auto earlier = m_seen.constFind(name.toLower());
        if (earlier != m_seen.constEnd()) {
            return m_context.refuse(keyPlace,
                                    QString("the parameter %1 is given twice; it is already in %2")
                                        .arg(inQuotes(name), toString(*earlier)));
        }
        m_seen.insert(name.toLower(), keyPlace);
        const QString absence = entry.value->kind == YamlNode::Kind::Absent
                                    ? m_context.reasonOfAbsence(entry)
                                    : QString();
        const QString noValue = inQuotes(name) + " has no value" + absence;
        if (!absence.isEmpty() && key.at(0).isDigit()) { // No name of a parameter.
            return m_context.refuse(keyPlace, noValue);
        }
        if (!absence.isEmpty()) {
            m_context.warn(keyPlace, noValue);
        }
        addParam(name, entry);
    }

    void addParam(const QString& name, const YamlEntry& entry)
    {
        const bool isAbsent = entry.value->kind == YamlNode::Kind::Absent;
        const Place valuePlace = isAbsent ? entry.place : entry.value->place;
        ParamSetting param{{name, m_context.at(entry.key->place)},
                           {m_context.text(*entry.value), m_context.at(valuePlace)}};
        if (m_context.use()) {
            param.file = m_context.use()->fileOf(entry.value->text);
        }
        m_device.params.append(param);
    }

    const ReadContext& m_context;
    DeviceSetting& m_device;
    QHash<QString, Place> m_seen; ///< The names of the parameters, in lower case.
};

} // namespace

void readDevice(const YamlEntry& entry, const ReadContext& context, DeviceSetting& device)
{
    DeviceReader(context, device).read(entry);
    if (context.use()) {
        context.use()->move(device);
    }
}

} // namespace norvo
