// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/PanelFile.h"

#include "host/panel/file/ConnectionReader.h"
#include "host/panel/file/DeviceReader.h"
#include "host/panel/file/EditDistance.h"
#include "host/panel/file/look/LookReader.h"
#include "host/panel/file/TemplateLibrary.h"
#include "host/panel/file/TemplateUse.h"
#include "host/panel/file/services/AccessReader.h"
#include "host/panel/file/services/AlarmReader.h"
#include "host/panel/file/services/AuditReader.h"
#include "host/panel/file/services/HistoryReader.h"
#include "host/yaml/YamlEdit.h"

#include "norvo/Ids.h"

#include <QFileInfo>
#include <QHash>

#include <algorithm>

namespace norvo {

namespace {

// Each costs a check some 20 microseconds and 7 kB, and the largest panel is to take a second at
// most.
constexpr int kMaxDevices = 5000;
constexpr int kMaxConnections = 8000;
constexpr int kMaxNestedUses = 32; // Of templates in templates.

/// Finds a panel in a YAML tree. Goes on after each error, to report them all.
class PanelReader
{
public:
    PanelReader(const SourceFile& file, Diagnostics& diagnostics)
        : m_file(file), m_diagnostics(diagnostics), m_library(diagnostics)
    {
        m_description.file = file.name;
    }

    PanelDescription read()
    {
        const YamlNode& root = *m_file.root;
        const ReadContext context(m_file.source, nullptr, m_diagnostics);
        if (root.kind == YamlNode::Kind::Absent) {
            context.refuse({1, 1}, "the file is empty; a panel begins with \"devices:\"");
        } else if (root.kind != YamlNode::Kind::Map) {
            context.refuse(root.place,
                           "a panel is a map with the keys title, devices and connections");
        } else {
            context.checkKeys(root, ReadContext::Keys::Panel);
            m_library.addPanel(m_file);
            m_description.included = m_library.included();
            readKeys(root, context);
        }
        return m_description;
    }

private:
    void readKeys(const YamlNode& root, const ReadContext& context)
    {
        Place fitPlace;
        for (const YamlEntry& entry : root.entries) {
            if (!isUsable(entry)) {
                continue;
            }
            const QString& key = entry.key->text;
            if (key == "title") {
                readTitle(entry, context);
            } else if (key == "devices") {
                readDevices(entry, context);
            } else if (key == "connections") {
                readConnections(entry, context);
            } else if (key == "alarms") {
                readAlarms(entry, context);
            } else if (key == "audit") {
                readAudit(entry, context, m_description.audit);
            } else if (key == "history") {
                readHistory(entry, context, m_description.history);
            } else if (lookKeys().contains(key)) {
                readLook(entry, context, m_description.look);
                fitPlace = key == "fit" ? entry.place : fitPlace;
            } else if (key == "access") {
                readAccess(entry, context, m_description.access);
            } else if (key != "templates" && key != "include") {
                refuseKey(entry, context);
            }
        }
        checkLook(m_description.look, fitPlace, context);
        checkAccess(m_description, m_diagnostics);
    }

    static void refuseKey(const YamlEntry& entry, const ReadContext& context)
    {
        const auto& settings = entry.value->entries;
        const bool isDevice =
            std::any_of(settings.cbegin(), settings.cend(), [](const YamlEntry& one) {
                return one.key && (one.key->text == "device" || one.key->text == "use");
            });
        const QStringList keys =
            QStringList{"title",  "devices", "connections", "templates", "include",
                        "access", "alarms",  "audit",       "history"} +
            lookKeys();
        context.refuseKey(*entry.key, "", keys,
                          isDevice ? "a device stands below \"devices:\" and is indented"
                                   : "a panel has " + keys.mid(0, keys.size() - 1).join(", ") +
                                         " and " + keys.constLast());
    }

    void readTitle(const YamlEntry& entry, const ReadContext& context)
    {
        if (entry.value->isText()) {
            m_description.title = {entry.value->text, entry.value->place};
        } else {
            context.refuse(entry.place, "the title must be a text");
        }
    }

    void readDevices(const YamlEntry& entry, const ReadContext& context)
    {
        for (const YamlEntry& device : context.entriesOf(
                 entry, YamlNode::Kind::Map,
                 "devices must be a map: the id of each device, and what it is, as in "
                 "\"start: {device: button}\"")) {
            if (m_description.devices.size() == kMaxDevices) {
                return context.refuse(device.key->place, "more than 5,000 devices");
            }
            if (m_budget.isSpent()) {
                return;
            }
            if (isUsable(device)) {
                readDeviceOrUse(device, context);
            }
        }
    }

    void readDeviceOrUse(const YamlEntry& entry, const ReadContext& context)
    {
        const PlacedText id = readId(entry, context);
        const auto earlier = m_ids.constFind(id.text);
        if (earlier != m_ids.constEnd()) {
            return context.refuse(
                id.place, QString("the device %1 is given twice; it is already in line %2%3")
                              .arg(inQuotes(id.text), QString::number(earlier->line),
                                   earlier->origin ? " of " + earlier->origin->file : QString()));
        }
        m_ids.insert(id.text, id.place);
        const YamlEntry* const name = findUse(*entry.value);
        if (name) {
            readUse(id, *name, *entry.value, context);
        } else {
            DeviceSetting device;
            device.id = id;
            readDevice(entry, context, device);
            m_description.devices.append(device); // Connections to it are no errors of their own.
        }
    }

    static PlacedText readId(const YamlEntry& entry, const ReadContext& context)
    {
        const QString name = context.text(*entry.key);
        const QString prefix = context.use() ? context.use()->ownPrefix() : QString();
        PlacedText id{prefix + name, context.at(entry.key->place)};
        if (name.isEmpty()) {
            context.refuse(id.place, "the id of a device is empty");
        } else if (!isId(id.text)) {
            context.refuse(
                id.place, QString("the device id %1 may hold letters, digits, \"_\" and \"-\" only")
                              .arg(inQuotes(id.text)));
        }
        return id;
    }

    static const YamlEntry* findUse(const YamlNode& settings)
    {
        for (const YamlEntry& entry : settings.entries) {
            if (entry.key && isUsable(entry) && entry.key->text == "use") {
                return &entry;
            }
        }
        return nullptr;
    }

    void readUse(const PlacedText& id, const YamlEntry& name, const YamlNode& settings,
                 const ReadContext& context)
    {
        const Template* const used = findTemplate(name, context);
        if (!used) {
            return;
        }
        if (!isNestingSound(*used, name, context)) {
            return;
        }
        TemplateUse use(*used, id, context, m_budget);
        use.read(settings);
        if (!m_budget.isSpent()) {
            const ReadContext inside(used->file->source, use.origin(), m_diagnostics, &use);
            readDevices(used->devices, inside);
            readConnections(used->connections, inside);
            readAlarms(used->alarms, inside);
        }
        if (m_budget.isSpent() && !m_isBudgetReported) {
            m_isBudgetReported = true;
            context.refuse(id.place, m_budget.values < 0
                                         ? "templates make more than 100,000 values"
                                         : "templates make more than 4 MiB of text");
        }
    }

    const Template* findTemplate(const YamlEntry& name, const ReadContext& context) const
    {
        if (!name.value->isText()) {
            context.refuse(name.place, "the name of a template must be a text");
            return nullptr;
        }
        const QString text = context.text(*name.value);
        const Template* const found = m_library.find(text);
        if (!found) {
            context.refuse(name.place, QString("there is no template %1%2")
                                           .arg(inQuotes(text), m_library.suggestion(text)));
        }
        return found;
    }

    static bool isNestingSound(const Template& used, const YamlEntry& name,
                               const ReadContext& context)
    {
        QStringList chain{used.name.text};
        for (const TemplateUse* around = context.use(); around; around = around->outer()) {
            chain.prepend(around->used().name.text);
            if (&around->used() == &used) {
                context.refuse(name.place, QString("the template %1 uses itself: %2")
                                               .arg(inQuotes(used.name.text), chain.join(" -> ")));
                return false;
            }
        }
        if (chain.size() > kMaxNestedUses) {
            context.refuse(
                name.place,
                QString("templates use one another %1 deep at most").arg(kMaxNestedUses));
            return false;
        }
        return true;
    }

    void readConnections(const YamlEntry& entry, const ReadContext& context)
    {
        for (const YamlEntry& connection :
             context.entriesOf(entry, YamlNode::Kind::List,
                               "connections must be a list, with a line such as "
                               "\"- source.signal -> target.slot\" for each")) {
            if (m_description.connections.size() == kMaxConnections) {
                return context.refuse(connection.place, "more than 8,000 connections");
            }
            if (m_budget.isSpent()) {
                return;
            }
            if (const auto made = readConnection(connection, context)) {
                m_description.connections.append(*made);
            }
        }
    }

    void readAlarms(const YamlEntry& entry, const ReadContext& context)
    {
        for (const YamlEntry& alarm :
             context.entriesOf(entry, YamlNode::Kind::List,
                               "alarms must be a list, with an entry such as "
                               "\"- {signal: boiler.output, above: 80}\" for each")) {
            if (m_description.alarms.size() == kMaxAlarms) {
                return context.refuse(alarm.place, "more than 5,000 alarms");
            }
            if (m_budget.isSpent()) {
                return;
            }
            const auto made = readAlarm(alarm, context);
            if (made && m_alarms.contains(made->id)) {
                context.refuse(alarm.place, QString("the alarm %1 is given twice; it is already in "
                                                    "line %2")
                                                .arg(inQuotes(made->id))
                                                .arg(m_alarms.value(made->id).line));
            } else if (made) {
                m_alarms.insert(made->id, alarm.place);
                m_description.alarms.append(*made);
            }
        }
    }

    const SourceFile& m_file;
    Diagnostics& m_diagnostics;
    TemplateLibrary m_library;
    ExpansionBudget m_budget;
    bool m_isBudgetReported = false;
    PanelDescription m_description;
    QHash<QString, Place> m_ids;    ///< Of devices and uses.
    QHash<QString, Place> m_alarms; ///< By id.
};

} // namespace

PanelDescription PanelFile::read(const QString& fileName, Diagnostics& diagnostics)
{
    QString reason;
    const auto text = readTextFile(fileName, reason);
    if (!text) {
        diagnostics.error({}, reason);
    }
    return text ? parse(*text, fileName, diagnostics)
                : PanelDescription{fileName, {}, {}, {}, {}, {}};
}

PanelDescription PanelFile::parse(const QByteArray& text, const QString& fileName,
                                  Diagnostics& diagnostics)
{
    return parse(YamlEdit(text), fileName, diagnostics);
}

PanelDescription PanelFile::parse(const YamlEdit& text, const QString& fileName,
                                  Diagnostics& diagnostics)
{
    if (const YamlEdit::Error& error = text.error()) {
        diagnostics.error(error->place, error->text);
        return {fileName, {}, {}, {}, {}, {}};
    }
    const SourceFile file{fileName, text.source(), text.sharedRoot(), true};
    return PanelReader(file, diagnostics).read();
}

QString PanelFile::shownTitle(const PanelDescription& description)
{
    return description.title.text.isEmpty() ? QFileInfo(description.file).fileName()
                                            : description.title.text;
}

} // namespace norvo
