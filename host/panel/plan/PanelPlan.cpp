// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/PanelPlan.h"

#include "host/panel/file/EditDistance.h"
#include "host/panel/plan/CycleFinder.h"
#include "host/panel/plan/MisspeltIds.h"
#include "host/panel/plan/NamedPorts.h"
#include "host/panel/plan/Wiring.h"

#include "norvo/BaseDevice.h"
#include "norvo/DeviceManager.h"

#include <QHash>

#include <algorithm>
#include <optional>
#include <utility>

namespace norvo {

namespace {

constexpr int kMaxSuggestedIds = 500; ///< The first of the file; a search takes time for each.
constexpr int kMaxLateDevices = 300;  ///< With documents, each of which takes time and memory.

/// Makes one plan.
class Planner
{
public:
    Planner(const PanelDescription& description, const DeviceManager& manager,
            const TypeKnowledge& knowledge, Diagnostics& diagnostics)
        : m_description(description),
          m_manager(manager),
          m_knowledge(knowledge),
          m_diagnostics(diagnostics),
          m_ports(diagnostics)
    {}

    PanelPlan plan(const SavedState& saved, const std::vector<Node*>& running)
    {
        addNodes(running);
        applySavedState(saved, m_nodes, m_diagnostics);
        initialiseNodes();
        reportPlacement(m_plan.layOut(), m_plan.nodes, m_plan.settings, m_plan.cells,
                        m_diagnostics);
        reportMisspeltIds(m_description, m_diagnostics);
        addWires();
        addAlarms();
        addHistory();
        m_knowledge.checkCurves(m_description, m_diagnostics);
        return std::move(m_plan);
    }

private:
    void addNodes(const std::vector<Node*>& running)
    {
        QHash<QString, Node*> known;
        for (Node* node : running) {
            known.insert(node->id(), node);
        }
        m_plan.isOfPanel = true;
        m_plan.settings = m_description.devices;
        m_plan.pages = m_description.look.pages;
        for (const DeviceSetting& setting : m_description.devices) {
            Node* const same = known.value(setting.id.text);
            const bool stays =
                same && same->isUsable() && same->errors().isEmpty() && same->isMadeFrom(setting);
            if (stays) {
                checkKept(setting, *same);
            }
            Node* const node = stays ? same : makeNode(setting);
            m_nodes.insert(setting.id.text, node);
            if (m_suggestedIds.size() < kMaxSuggestedIds) {
                m_suggestedIds.append(setting.id.text);
            }
            m_plan.nodes.push_back(node);
        }
    }

    Node* makeNode(const DeviceSetting& setting)
    {
        const PlacedText& type = setting.type;
        m_plan.made.push_back(std::make_unique<Node>(
            setting, std::unique_ptr<BaseDevice>(m_manager.createDevice(type.text))));
        Node* const node = m_plan.made.back().get();
        if (node->device()) {
            setParams(setting, *node->device());
            m_knowledge.checkSense(setting, *node->device(), m_diagnostics);
            m_ports.add(setting, *node->device());
            const auto methods = m_knowledge.keptMethods(setting.type.text);
            if (m_knowledge.control(setting.type.text) != Control::None) {
                node->setControl(methods);
            }
            if (methods && setting.keep != Keep::No) {
                node->keepValue(*methods, setting.keep == Keep::Sending);
            }
            checkKeep(setting, methods.has_value());
        } else if (!type.text.isEmpty()) {
            m_diagnostics.error(type.place, [&] { return unknownType(type.text, m_manager); });
        }
        return node;
    }

    /// Tells again what was told of the device when it was made, at the places of now.
    void checkKept(const DeviceSetting& setting, const Node& node)
    {
        for (const ParamSetting& param : setting.params) {
            const QString declared = node.device()->params().storedKey(param.name.text);
            if (!declared.isEmpty()) {
                checkValue(param, declared, node.device()->getParam(declared));
            }
        }
        m_knowledge.checkSense(setting, *node.device(), m_diagnostics);
        checkKeep(setting, m_knowledge.keptMethods(setting.type.text).has_value());
    }

    void checkKeep(const DeviceSetting& setting, bool isKnown)
    {
        if (!isKnown && setting.keep != Keep::Unsaid) {
            m_diagnostics.warning(setting.keepPlace, [&] {
                return QString("%1 takes no value from an operator that could be kept")
                    .arg(setting.type.text);
            });
        }
    }

    void setParams(const DeviceSetting& setting, BaseDevice& device)
    {
        for (const ParamSetting& param : setting.params) {
            const QString& name = param.name.text;
            if (!device.params().contains(name) && param.isOptional) {
                continue;
            }
            if (!device.params().contains(name)) {
                m_diagnostics.error(param.name.place,
                                    [&] { return unknownParam(setting.type.text, name, device); });
                continue;
            }
            const QString declared = device.params().storedKey(name);
            device.setParam(declared, param.value.text);
            checkValue(param, declared, device.getParam(declared));
        }
    }

    void checkValue(const ParamSetting& setting, const QString& name, const Param& param)
    {
        QString error = placementError(name, setting.value.text);
        if (error.isEmpty()) {
            error = param.fault();
        }
        if (!error.isEmpty()) {
            m_diagnostics.error(setting.value.place,
                                QString("parameter %1: %2").arg(inQuotes(name), error));
        } else if (!param.options().isEmpty() && !param.options().contains(param.value())) {
            m_diagnostics.warning(setting.value.place, [&] {
                return QString("parameter %1: %2 is not one of %3%4")
                    .arg(inQuotes(name), inQuotes(param.value()), inQuotes(param.options()),
                         didYouMean(param.value(), param.options()));
            });
        }
    }

    void initialiseNodes()
    {
        int count = 0;
        for (const auto& node : m_plan.made) {
            const DeviceSetting& setting = node->setting();
            const bool isLate = hasLateMethods(setting);
            // Values that do not convert have been reported at their place.
            if (!node->device() || !(isLate || (m_knowledge.startsNothing(setting.type.text) &&
                                                node->device()->paramsOk()))) {
                continue;
            }
            if (isLate && ++count > kMaxLateDevices) {
                m_diagnostics.error(setting.id.place,
                                    QString("more than %1 devices that are shown by documents")
                                        .arg(kMaxLateDevices));
                return;
            }
            if (node->initialise()) {
                continue;
            }
            m_diagnostics.errorOfDevice(
                placeOf(node->errors(), setting),
                QString("device %1 does not start%2: %3")
                    .arg(inQuotes(node->id()),
                         isLate ? ", and its connections cannot be checked" : "",
                         node->errors().join("; ")));
        }
    }

    /// The value of the parameter that the first of the errors names, as paramFaults() does it, or
    /// else the device.
    static Place placeOf(const QStringList& errors, const DeviceSetting& setting)
    {
        for (const ParamSetting& param : setting.params) {
            if (errors.constFirst().startsWith(QString("parameter \"%1\": ").arg(param.name.text),
                                               Qt::CaseInsensitive)) {
                return param.value.place;
            }
        }
        return setting.id.place;
    }

    bool hasLateMethods(const DeviceSetting& setting) const
    {
        return m_manager.typeInfos().value(setting.type.text).flag ==
               DeviceTypeInfo::kMethodsAfterInitialise;
    }

    void addWires()
    {
        const CycleFinder cycles(
            m_description, [this](const QString& type) { return m_knowledge.breaksCycles(type); });
        reportMultiplication(cycles);
        QHash<PlannedWire, int> lines;
        for (int i = 0; i < m_description.connections.size(); ++i) {
            const ConnectionSetting& setting = m_description.connections[i];
            if (!cycles.cycle(i).isEmpty()) {
                m_diagnostics.warning(setting.whole.place, [&] {
                    return QString("this connection closes the cycle %1; its values are passed on "
                                   "from the event loop")
                        .arg(cycles.cycle(i));
                });
            }
            const auto wire = resolve(setting, cycles.closes(i));
            if (!wire) {
                continue;
            }
            if (const int line = lines.value(*wire)) {
                reportRepetition(setting, *wire, line);
            } else {
                lines.insert(*wire, setting.whole.place.line);
            }
            m_plan.wires.append(*wire);
        }
    }

    void reportMultiplication(const CycleFinder& cycles)
    {
        const int device = cycles.multiplier();
        if (device >= 0) {
            const PlacedText& id = m_description.devices[device].id;
            m_diagnostics.error(
                id.place,
                QString("one value from %1 would make more than %2 calls, because several paths "
                        "of connections lead to the same devices; remove some of them")
                    .arg(inQuotes(id.text), QString::number(CycleFinder::kMaxCalls)));
        }
    }

    void reportRepetition(const ConnectionSetting& setting, const PlannedWire& wire, int line)
    {
        m_diagnostics.warning(setting.whole.place, [&] {
            return QString("%1.%2 -> %3.%4 is connected already, in line %5; each value will "
                           "arrive twice")
                .arg(wire.from, wire.signal, wire.to, wire.slot, QString::number(line));
        });
    }

    void addAlarms()
    {
        for (const AlarmSetting& alarm : m_description.alarms) {
            if (const BaseDevice* device =
                    heard({{alarm.device, alarm.devicePlace}, {alarm.signal, {}}})) {
                if (const auto planned = resolveAlarm(alarm, *device, m_diagnostics)) {
                    m_plan.alarms.append(*planned);
                }
            }
        }
    }

    void addHistory()
    {
        for (const HistorySignal& recorded : m_description.history.recorded) {
            if (const BaseDevice* device =
                    heard({{recorded.device, recorded.devicePlace}, {recorded.signal, {}}})) {
                if (const auto planned = resolveHistory(recorded, *device, m_diagnostics)) {
                    m_plan.history.append(*planned);
                }
            }
        }
    }

    /// The device whose signal a service is to hear; null where its signals are not known.
    const BaseDevice* heard(const Endpoint& end)
    {
        const Node* const node = find(end);
        return node && methodsAreKnown(*node) && !m_ports.isRefused(end) ? node->device() : nullptr;
    }

    std::optional<PlannedWire> resolve(const ConnectionSetting& setting, bool isQueued)
    {
        const Node* const from = find(setting.from);
        const Node* const to = find(setting.to);
        if (!from || !to || !methodsAreKnown(*from) || !methodsAreKnown(*to) ||
            m_ports.isRefused(setting.from) || m_ports.isRefused(setting.to)) {
            return std::nullopt;
        }
        // What one connection means, all like it mean between devices of the same types.
        const QString key = from->setting().type.text + '.' + setting.from.method.text + ' ' +
                            to->setting().type.text + '.' + setting.to.method.text;
        const auto known = m_resolved.constFind(key);
        const std::optional<Wire> wire =
            known != m_resolved.constEnd()
                ? *known
                : resolveConnection(setting, *from->device(), *to->device(), m_diagnostics);
        if (!wire) {
            return std::nullopt;
        }
        if (!hasMethodsOfItsOwn(from->setting()) && !hasMethodsOfItsOwn(to->setting())) {
            m_resolved.insert(key, *wire);
        }
        if (isQueued && !canBeQueued(*wire)) {
            m_diagnostics.error(setting.whole.place, inQuotes(setting.whole.text) +
                                                         " closes a cycle, and its values are "
                                                         "of a type that cannot go round one");
            return std::nullopt;
        }
        return PlannedWire{from->id(), wire->signal, to->id(), wire->slot, isQueued};
    }

    /// Whether two devices of this type may have different outputs and inputs.
    bool hasMethodsOfItsOwn(const DeviceSetting& setting) const
    {
        return hasLateMethods(setting) || !setting.ports.isEmpty();
    }

    bool methodsAreKnown(const Node& node) const
    {
        return node.device() && (node.isUsable() || !hasLateMethods(node.setting()));
    }

    Node* find(const Endpoint& end)
    {
        Node* const node = m_nodes.value(end.device.text);
        if (!node) {
            m_diagnostics.error(end.device.place, [&] {
                return "there is no device " + inQuotes(end.device.text) +
                       didYouMeanDevice(end.device.text, m_suggestedIds);
            });
        }
        return node;
    }

    const PanelDescription& m_description;
    const DeviceManager& m_manager;
    const TypeKnowledge& m_knowledge;
    Diagnostics& m_diagnostics;
    PanelPlan m_plan;
    QHash<QString, Node*> m_nodes; ///< By id.
    QStringList m_suggestedIds;    ///< At most kMaxSuggestedIds.
    QHash<QString, Wire> m_resolved;
    NamedPorts m_ports;
};

} // namespace

QString unknownType(const QString& type, const DeviceManager& manager)
{
    return "unknown device type " + inQuotes(type) +
           didYouMeanOneOf(type, manager.factories().keys());
}

QString unknownParam(const QString& type, const QString& name, const BaseDevice& device)
{
    return QString("a device of type %1 has no parameter %2%3")
        .arg(inQuotes(type), inQuotes(name), didYouMeanOneOf(name, device.paramNames()));
}

PanelPlan PanelPlan::make(const PanelDescription& description, const DeviceManager& manager,
                          const SavedState& saved, Diagnostics& diagnostics,
                          const std::vector<Node*>& running, const TypeKnowledge& knowledge)
{
    PanelDescription rebased = description;
    knowledge.rebaseFiles(rebased);
    return Planner(rebased, manager, knowledge, diagnostics).plan(saved, running);
}

Placement PanelPlan::layOut()
{
    QVector<Cells> wanted;
    std::vector<int> shown;
    cells.fill(Cells(), int(nodes.size()));
    for (int i = 0; i < cells.size(); ++i) {
        if (nodes[i]->isShowable()) {
            shown.push_back(i);
            wanted.append(nodes[i]->wantedCells(settings[i]));
        }
    }
    Placement placement(wanted, pages);
    for (size_t i = 0; i < shown.size(); ++i) {
        cells[shown[i]] = placement.cells()[int(i)];
    }
    areas = placement.areas();
    return placement;
}

} // namespace norvo
