// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/PanelFile.h"

#include "host/panel/file/EditDistance.h"
#include "host/yaml/SourceText.h"
#include "host/yaml/YamlTree.h"

#include <QHash>

#include <algorithm>

namespace norvo {

namespace {

// Each costs a check some 20 microseconds and 7 kB, and the largest is to take a second at most.
constexpr int kMaxDevices = 20000;
constexpr int kMaxConnections = 25000;
constexpr int kMaxNameLength = 256;        // Of a parameter, in characters.
constexpr int kMaxConnectionLength = 1000; // In characters.
const char* const kArrowExample = "\"source.signal -> target.slot\"";

bool isId(const QString& text)
{
    const QVector<uint> characters = text.toUcs4();
    return !text.isEmpty() && std::all_of(characters.cbegin(), characters.cend(), [](uint c) {
        return QChar::isLetter(c) || QChar::isMark(c) || QChar::isDigit(c) || c == '_' || c == '-';
    });
}

/// Whether the entry of a map can be read; otherwise the check of the keys has reported why.
bool isUsable(const YamlEntry& entry)
{
    return entry.key->isText() && entry.earlier.line == 0 &&
           !(entry.key->isPlain && entry.key->text == "<<");
}

/// Finds a panel in a YAML tree. Goes on after each error, to report them all.
class PanelReader
{
public:
    PanelReader(const SourceText& source, const QString& fileName, Diagnostics& diagnostics)
        : m_source(source), m_diagnostics(diagnostics)
    {
        m_description.file = fileName;
    }

    PanelDescription read(const YamlNode& root)
    {
        if (root.kind == YamlNode::Kind::Absent) {
            refuse({1, 1}, "the file is empty; a panel begins with \"devices:\"");
            return m_description;
        }
        if (root.kind != YamlNode::Kind::Map) {
            refuse(root.place, "a panel is a map with the keys title, devices and connections");
            return m_description;
        }
        checkKeys(root, Keys::Panel);
        for (const YamlEntry& entry : root.entries) {
            if (!isUsable(entry)) {
                continue;
            }
            const QString& key = entry.key->text;
            if (key == "title") {
                readTitle(entry);
            } else if (key == "devices") {
                readDevices(entry);
            } else if (key == "connections") {
                readConnections(entry);
            } else {
                refuseKey(*entry.key, "", {"title", "devices", "connections"},
                          "a panel has title, devices and connections");
            }
        }
        return m_description;
    }

private:
    enum class Keys { Any, Panel, Devices };

    /// The parameters of one device while they are read.
    struct Params
    {
        QVector<ParamSetting>& settings;
        QHash<QString, Place> seen; ///< Under their names in lower case.
    };

    /// Whether the keys of this map, and of all below it, are texts and stand there once.
    void checkKeys(const YamlNode& node, Keys keys)
    {
        for (const YamlEntry& entry : node.entries) {
            const bool isDevices = keys == Keys::Panel && entry.key->isText() &&
                                   entry.key->text == "devices" && !entry.isAlias;
            if (entry.key) {
                const YamlNode& key = *entry.key;
                if (!key.isText()) {
                    refuse(key.place, "a key must be a text");
                } else if (key.isPlain && key.text == "<<") {
                    refuse(key.place,
                           "\"<<\" merges nothing here; give the alias as the value itself");
                } else if (entry.earlier.line > 0) {
                    refuse(key.place, QString("the %1 %2 is given twice; it is already in %3")
                                          .arg(keys == Keys::Devices ? "device" : "key",
                                               inQuotes(key.text), toString(entry.earlier)));
                }
            }
            if (!entry.isAlias) {
                checkKeys(*entry.value, isDevices ? Keys::Devices : Keys::Any);
            }
        }
    }

    void readTitle(const YamlEntry& entry)
    {
        if (entry.value->isText()) {
            m_description.title = {entry.value->text, entry.value->place};
        } else {
            refuse(entry.place, "the title must be a text");
        }
    }

    void readDevices(const YamlEntry& entry)
    {
        for (const YamlEntry& device :
             entriesOf(entry, YamlNode::Kind::Map,
                       "devices must be a map: the id of each device, and what it is")) {
            if (m_description.devices.size() == kMaxDevices) {
                return refuse(device.key->place, "more than 20,000 devices");
            }
            if (isUsable(device)) {
                readDevice(device);
            }
        }
    }

    void readDevice(const YamlEntry& entry)
    {
        DeviceSetting device;
        device.id = {entry.key->text, entry.key->place};
        checkId(device.id);
        const YamlNode& value = *entry.value;
        if (value.kind == YamlNode::Kind::Text || value.kind == YamlNode::Kind::List) {
            refuse(entry.place, QString("the device %1 must be a map, such as {device: %2}")
                                    .arg(inQuotes(device.id.text),
                                         isId(value.text) ? value.text : QString("TYPE")));
        } else {
            readSettings(value, device);
        }
        m_description.devices.append(device); // Connections to it are no errors of their own.
    }

    void checkId(const PlacedText& id)
    {
        if (id.text.isEmpty()) {
            refuse(id.place, "the id of a device is empty");
        } else if (!isId(id.text)) {
            refuse(id.place,
                   QString("the device id %1 holds more than letters, digits, \"_\" and \"-\"")
                       .arg(inQuotes(id.text)));
        }
    }

    void readSettings(const YamlNode& value, DeviceSetting& device)
    {
        bool hasType = false;
        for (const YamlEntry& setting : value.entries) {
            if (isUsable(setting)) {
                hasType = hasType || setting.key->text == "device";
                readSetting(setting, device);
            }
        }
        if (!hasType) {
            refuse(device.id.place, QString("the device %1 has no type; add \"device: TYPE\"")
                                        .arg(inQuotes(device.id.text)));
        }
    }

    void readSetting(const YamlEntry& entry, DeviceSetting& device)
    {
        const QString& key = entry.key->text;
        if (key == "device") {
            readType(entry, device);
        } else if (key == "params") {
            readParams(entry, device);
        } else if (key == "network") {
            readNetwork(entry, device);
        } else {
            refuseKey(*entry.key, " of the device " + inQuotes(device.id.text),
                      {"device", "params", "network"}, "a device has device, params and network");
        }
    }

    void readType(const YamlEntry& entry, DeviceSetting& device)
    {
        const YamlNode& type = *entry.value;
        if (!type.isText()) {
            refuse(entry.place, "the type of a device must be a text");
        } else if (type.text.trimmed().isEmpty()) {
            refuse(entry.place,
                   QString("the type of the device %1 is empty; write \"device: TYPE\"")
                       .arg(inQuotes(device.id.text)));
        } else {
            device.type = {type.text, type.place};
        }
    }

    void readNetwork(const YamlEntry& entry, DeviceSetting& device)
    {
        const YamlNode& value = *entry.value;
        if (!value.isText() || (value.text != "true" && value.text != "false")) {
            refuse(entry.place, "network must be true or false" +
                                    (value.isText() ? ", not " + inQuotes(value.text) : QString()));
        }
        device.network = value.text == "true";
    }

    void readParams(const YamlEntry& entry, DeviceSetting& device)
    {
        Params params{device.params, {}};
        for (const YamlEntry& param :
             entriesOf(entry, YamlNode::Kind::Map,
                       "params must be a map: the name of each parameter, and its value")) {
            readParam(param, {}, params);
        }
    }

    void readParam(const YamlEntry& entry, const QString& prefix, Params& params)
    {
        if (!isUsable(entry)) {
            return;
        }
        const QString& key = entry.key->text;
        if (key.isEmpty()) {
            return refuse(entry.key->place, "the name of a parameter is empty");
        }
        if (prefix.size() + key.size() > kMaxNameLength) {
            return refuse(
                entry.key->place,
                QString("the name of a parameter has %1 characters at most").arg(kMaxNameLength));
        }
        const QString name = prefix + key;
        if (entry.value->kind == YamlNode::Kind::List) {
            return refuse(entry.place,
                          QString("the parameter %1 must be a text or a map, not a list")
                              .arg(inQuotes(name)));
        }
        if (entry.value->kind == YamlNode::Kind::Map) {
            for (const YamlEntry& below : entry.value->entries) {
                readParam(below, name + '/', params);
            }
            return;
        }
        const auto earlier = params.seen.constFind(name.toLower());
        if (earlier != params.seen.constEnd()) {
            return refuse(entry.key->place,
                          QString("the parameter %1 is given twice; it is already in %2")
                              .arg(inQuotes(name), toString(*earlier)));
        }
        params.seen.insert(name.toLower(), entry.key->place);
        const bool isAbsent = entry.value->kind == YamlNode::Kind::Absent;
        const Place valuePlace = isAbsent ? entry.place : entry.value->place;
        params.settings.append(
            ParamSetting{{name, entry.key->place}, {entry.value->text, valuePlace}});
    }

    void readConnections(const YamlEntry& entry)
    {
        for (const YamlEntry& connection : entriesOf(
                 entry, YamlNode::Kind::List,
                 QString("connections must be a list of arrows such as %1").arg(kArrowExample))) {
            if (m_description.connections.size() == kMaxConnections) {
                return refuse(connection.place, "more than 25,000 connections");
            }
            readConnection(connection);
        }
    }

    void readConnection(const YamlEntry& entry)
    {
        const YamlNode& node = *entry.value;
        if (!node.isText()) {
            return refuse(entry.place, QString("an arrow is a text such as %1").arg(kArrowExample));
        }
        const QString& text = node.text;
        if (text.trimmed().isEmpty()) {
            return refuse(entry.place,
                          QString("the arrow is empty; write one such as %1").arg(kArrowExample));
        }
        if (text.size() > kMaxConnectionLength) {
            return refuse(entry.place,
                          QString("an arrow has %1 characters at most").arg(kMaxConnectionLength));
        }
        const QString sign = "->";
        const int head = text.indexOf(sign);
        if (head < 0) {
            return refuse(entry.place, QString("%1 holds no \"->\"; write an arrow such as %2")
                                           .arg(inQuotes(text), kArrowExample));
        }
        const int second = text.indexOf(sign, head + sign.size());
        if (second >= 0) {
            return refuse(node.placeOf(second, m_source),
                          "an arrow holds one \"->\"; write one arrow for each");
        }
        ConnectionSetting connection;
        connection.whole = {text, node.place};
        const bool hasSource = readEndpoint(node, 0, head, true, connection.from);
        if (readEndpoint(node, head + sign.size(), text.size(), false, connection.to) &&
            hasSource) {
            m_description.connections.append(connection);
        }
    }

    /// Reads one side of an arrow, which reaches from `begin` up to `end` of the node's text.
    bool readEndpoint(const YamlNode& node, int begin, int end, bool isSource, Endpoint& endpoint)
    {
        const QString kind = isSource ? "signal" : "slot";
        const QString side = node.text.mid(begin, end - begin);
        const QString trimmed = side.trimmed();
        if (trimmed.isEmpty()) {
            refuse(node.placeOf(isSource ? end : begin - 2, m_source),
                   QString("missing %1 \"->\"; write a device's id and its %2, \"id.%2\"")
                       .arg(isSource ? "source before" : "target after", kind));
            return false;
        }
        const int first = begin + side.indexOf(trimmed);
        const int point = trimmed.indexOf('.');
        const QString device = trimmed.left(point).trimmed();
        const QString method = point < 0 ? QString() : trimmed.mid(point + 1).trimmed();
        if (device.isEmpty()) {
            refuse(node.placeOf(first, m_source),
                   QString("the id of a device is missing before %1").arg(inQuotes(trimmed)));
            return false;
        }
        if (method.isEmpty()) {
            refuse(node.placeOf(first, m_source),
                   QString("%1 names no %2; write \"%3.%2\"").arg(inQuotes(trimmed), kind, device));
            return false;
        }
        const int methodAt = first + trimmed.indexOf(method, point + 1);
        endpoint.device = {device, node.placeOf(first, m_source)};
        endpoint.method = {method, node.placeOf(methodAt, m_source)};
        return true;
    }

    /// What the map or list of this entry holds; nothing where it is absent, or refused.
    const std::vector<YamlEntry>& entriesOf(const YamlEntry& entry, YamlNode::Kind kind,
                                            const QString& error)
    {
        static const std::vector<YamlEntry> none;
        const bool isOfKind = entry.value->kind == kind;
        if (!isOfKind && entry.value->kind != YamlNode::Kind::Absent) {
            refuse(entry.place, error);
        }
        return isOfKind ? entry.value->entries : none;
    }

    void refuseKey(const YamlNode& key, const QString& where, const QStringList& known,
                   const QString& all)
    {
        m_diagnostics.error(key.place, [&] {
            const QString nearest = didYouMean(key.text, known);
            return QString("unknown key %1%2%3")
                .arg(inQuotes(key.text), where, nearest.isEmpty() ? "; " + all : nearest);
        });
    }

    void refuse(const Place& place, const QString& text) { m_diagnostics.error(place, text); }

    const SourceText& m_source;
    Diagnostics& m_diagnostics;
    PanelDescription m_description;
};

} // namespace

PanelDescription PanelFile::read(const QString& fileName, Diagnostics& diagnostics)
{
    QString reason;
    const auto text = readTextFile(fileName, reason);
    if (!text) {
        diagnostics.error({}, reason);
    }
    return text ? parse(*text, fileName, diagnostics) : PanelDescription{fileName, {}, {}, {}};
}

PanelDescription PanelFile::parse(const QByteArray& text, const QString& fileName,
                                  Diagnostics& diagnostics)
{
    const SourceText source(text);
    const auto tree = YamlTree::read(source);
    if (const auto* error = std::get_if<TextError>(&tree)) {
        diagnostics.error(error->place, error->text);
        return {fileName, {}, {}, {}};
    }
    return PanelReader(source, fileName, diagnostics).read(*std::get<YamlNodePtr>(tree));
}

} // namespace norvo
