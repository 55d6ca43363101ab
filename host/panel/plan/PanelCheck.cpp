#include "host/panel/plan/PanelCheck.h"

#include "host/panel/plan/CycleFinder.h"
#include "host/panel/plan/Placement.h"
#include "host/panel/file/EditDistance.h"
#include "host/panel/plan/Wiring.h"

#include "norvo/BaseGuiDevice.h"
#include "norvo/DeviceManager.h"

#include <QHash>
#include <QStringList>

#include <memory>
#include <utility>
#include <vector>

namespace norvo {

namespace {

constexpr int kMethodsNeedInitialise = 1; ///< DeviceTypeInfo::flag

/// One check of one panel.
class Examination
{
public:
    Examination(const PanelDescription& description, const DeviceManager& manager,
                Diagnostics& diagnostics)
        : m_description(description), m_manager(manager), m_diagnostics(diagnostics)
    {}
    ~Examination()
    {
        for (Subject& subject : m_subjects) {
            if (subject.isInitialised) {
                subject.device->deinitialise();
            }
        }
    }
    Examination(const Examination&) = delete;
    Examination& operator=(const Examination&) = delete;

    void run()
    {
        examineDevices();
        examinePlacement();
        examineArrows();
    }

private:
    struct Subject
    {
        const DeviceSetting* setting = nullptr;
        std::unique_ptr<BaseDevice> device; ///< Null when its type is unknown.
        bool isInitialised = false;
        bool methodsKnown = false;
    };

    void examineDevices()
    {
        for (const DeviceSetting& setting : m_description.devices) {
            Subject subject;
            subject.setting = &setting;
            subject.device.reset(m_manager.createDevice(setting.type.text));
            if (subject.device) {
                subject.device->setObjectName(setting.id.text);
                subject.device->setNetworkAllowed(setting.network);
                examineParams(setting, *subject.device);
                learnMethods(subject);
            } else if (!setting.type.text.isEmpty()) {
                const QStringList known = m_manager.factories().keys();
                refuse(setting.type.place, "unknown device type " + inQuotes(setting.type.text) +
                                               suggestion(setting.type.text, known));
            }
            m_indexes.insert(setting.id.text, int(m_subjects.size()));
            m_subjects.push_back(std::move(subject));
        }
    }

    void examineParams(const DeviceSetting& setting, BaseDevice& device)
    {
        for (const ParamSetting& param : setting.params) {
            const QString name = param.name.text;
            if (!device.params().contains(name)) {
                refuse(param.name.place, QString("a device of type %1 has no parameter %2%3")
                                             .arg(inQuotes(setting.type.text), inQuotes(name),
                                                  suggestion(name, device.paramNames())));
                continue;
            }
            const QString declared = device.params().storedKey(name);
            device.setParam(declared, param.value.text);
            examineValue(param, declared, device.getParam(declared));
        }
    }

    void examineValue(const ParamSetting& setting, const QString& name, const Param& param)
    {
        QString fault = placementFault(name, param.value());
        if (fault.isEmpty()) {
            fault = param.fault();
        }
        if (!fault.isEmpty()) {
            refuse(setting.value.place, QString("parameter %1: %2").arg(inQuotes(name), fault));
        } else if (!param.options().isEmpty() && !param.options().contains(param.value())) {
            warn(setting.value.place,
                 QString("parameter %1: %2 is none of %3%4")
                     .arg(inQuotes(name), inQuotes(param.value()), quoted(param.options()),
                          didYouMean(param.value(), param.options())));
        }
    }

    void learnMethods(Subject& subject)
    {
        const auto info = m_manager.typeInfos().value(subject.setting->type.text);
        if (info.flag != kMethodsNeedInitialise) {
            subject.methodsKnown = true;
            return;
        }
        QStringList reasons;
        const auto reports =
            QObject::connect(subject.device.get(), &BaseDevice::errorOccurred,
                             [&reasons](const QString& reason) { reasons.append(reason); });
        subject.isInitialised = subject.device->initialise();
        QObject::disconnect(reports);
        subject.methodsKnown = subject.isInitialised;
        if (!subject.isInitialised) {
            reasons += subject.device->paramFaults();
            warn(subject.setting->id.place,
                 QString("device %1 does not start, and its arrows cannot be checked: %2")
                     .arg(inQuotes(subject.setting->id.text),
                          reasons.isEmpty() ? QString("it gave no reason") : reasons.join("; ")));
        }
    }

    void examinePlacement()
    {
        QVector<Cells> wishes;
        std::vector<const DeviceSetting*> settings;
        for (const Subject& subject : m_subjects) {
            auto* device = dynamic_cast<BaseGuiDevice*>(subject.device.get());
            if (device) {
                settings.push_back(subject.setting);
                wishes.append(readCells(
                    [device](const QString& param) { return device->getParam(param).value(); }));
            }
        }
        const Placement placement(wishes);
        for (const Placement::Overlap& overlap : placement.overlaps()) {
            const PlacedText& later = settings[overlap.later]->id;
            const PlacedText& earlier = settings[overlap.earlier]->id;
            const QString area = placement.cells()[overlap.later].area;
            refuse(later.place,
                   QString("%1 and %2 (line %3) overlap at row %4, column %5%6")
                       .arg(inQuotes(later.text), inQuotes(earlier.text),
                            QString::number(earlier.place.line), QString::number(overlap.row),
                            QString::number(overlap.column),
                            area.isEmpty() ? QString() : " of area " + inQuotes(area)));
        }
    }

    void examineArrows()
    {
        const CycleFinder circles(m_description);
        QHash<QString, int> lines; // by the wire in full
        for (int i = 0; i < m_description.connections.size(); ++i) {
            const ConnectionSetting& arrow = m_description.connections[i];
            if (circles.closes(i)) {
                warn(arrow.whole.place,
                     QString("this arrow closes the circle %1; its values are passed on from the "
                             "event loop")
                         .arg(circles.way(i).join(" -> ")));
            }
            const auto wire = resolve(arrow);
            if (!wire) {
                continue;
            }
            const QString whole =
                QString("%1.%2 -> %3.%4")
                    .arg(arrow.from.device.text, wire->signal, arrow.to.device.text, wire->slot);
            if (lines.contains(whole)) {
                warn(arrow.whole.place,
                     QString("%1 is connected already, in line %2; each value will arrive twice")
                         .arg(whole, QString::number(lines[whole])));
            } else {
                lines.insert(whole, arrow.whole.place.line);
            }
        }
    }

    std::optional<Wire> resolve(const ConnectionSetting& arrow)
    {
        const Subject* from = find(arrow.from);
        const Subject* to = find(arrow.to);
        if (!from || !to || !from->methodsKnown || !to->methodsKnown) {
            return std::nullopt;
        }
        return resolveConnection(arrow, *from->device, *to->device, m_diagnostics);
    }

    const Subject* find(const Endpoint& end)
    {
        const int index = m_indexes.value(end.device.text, -1);
        if (index < 0) {
            reportUnknownDevice(end, m_description, m_diagnostics);
            return nullptr;
        }
        return &m_subjects[index];
    }

    /// Ends a fault with the nearest of the known names, or with all of them.
    static QString suggestion(const QString& wanted, const QStringList& known)
    {
        const QString nearest = didYouMean(wanted, known);
        return nearest.isEmpty() && !known.isEmpty() ? QString("; known are %1").arg(quoted(known))
                                                     : nearest;
    }

    static QString quoted(const QStringList& texts)
    {
        QStringList quotes;
        for (const QString& text : texts) {
            quotes.append(inQuotes(text));
        }
        return quotes.join(", ");
    }

    void refuse(const Place& place, const QString& text) { m_diagnostics.error(place, text); }

    void warn(const Place& place, const QString& text) { m_diagnostics.warning(place, text); }

    const PanelDescription& m_description;
    const DeviceManager& m_manager;
    std::vector<Subject> m_subjects; ///< In the order of the file.
    QHash<QString, int> m_indexes;   ///< Id to index in m_subjects.
    Diagnostics& m_diagnostics;
};

} // namespace

void PanelCheck::check(const PanelDescription& description, const DeviceManager& manager,
                       Diagnostics& diagnostics)
{
    Examination(description, manager, diagnostics).run();
}

} // namespace norvo
