#include "host/panel/run/Panel.h"

#include "host/panel/plan/CycleFinder.h"
#include "host/window/ErrorTile.h"
#include "host/window/PanelPages.h"
#include "host/panel/plan/Placement.h"
#include "host/panel/run/QueuedWire.h"
#include "host/panel/plan/Wiring.h"

#include "norvo/BaseGuiDevice.h"
#include "norvo/BaseWidget.h"
#include "norvo/Categories.h"
#include "norvo/DeviceManager.h"

#include <QVBoxLayout>

#include <algorithm>
#include <memory>
#include <utility>

namespace norvo {

/// A device of the panel and what belongs to it.
struct Panel::Member
{
    const DeviceSetting* setting = nullptr;
    std::unique_ptr<BaseDevice> device; ///< Null when its type is unknown.
    QPointer<BaseWidget> widget;        ///< The page may die first.
    bool isUsable = false;              ///< Its initialise() has succeeded.
    QStringList reasons;                ///< What its tile says; empty: it has none.
};

/// An arrow while the panel runs: one of the two.
struct Panel::LiveWire
{
    QMetaObject::Connection direct;
    std::unique_ptr<QueuedWire> queued; ///< Where it closes a circle.
};

namespace {

/// Calls `step` for each usable member, last one first.
template <class Members, class Step>
void backward(Members& members, Step step)
{
    for (auto member = members.rbegin(); member != members.rend(); ++member) {
        if (member->isUsable) {
            step(*member);
        }
    }
}

/// The value that the file gives a parameter, or an empty text.
QString settingOf(const DeviceSetting& setting, const QString& param)
{
    const auto found = std::find_if(
        setting.params.cbegin(), setting.params.cend(), [&param](const ParamSetting& entry) {
            return entry.name.text.compare(param, Qt::CaseInsensitive) == 0;
        });
    return found == setting.params.cend() ? QString() : found->value.text;
}

} // namespace

Panel::Panel(const DeviceManager& manager, PanelDescription description, PanelState saved)
    : m_manager(manager),
      m_description(std::move(description)),
      m_saved(std::move(saved)),
      m_diagnostics(m_description.file)
{}

Panel::~Panel()
{
    stop();
}

BaseDevice* Panel::device(const QString& id) const
{
    const Member* member = find(id);
    return member ? member->device.get() : nullptr;
}

BaseWidget* Panel::widget(const QString& id) const
{
    const Member* member = find(id);
    return member ? member->widget.data() : nullptr;
}

const Panel::Member* Panel::find(const QString& id) const
{
    const int index = m_indexes.value(id, -1);
    return index < 0 ? nullptr : &m_members[index];
}

void Panel::start(QWidget* page)
{
    if (m_started) {
        return;
    }
    m_started = true;
    m_diagnostics = Diagnostics(m_description.file);
    createDevices();
    emit stepTaken(Step::Create);
    initialiseDevices();
    emit stepTaken(Step::Initialise);
    connectWires();
    emit stepTaken(Step::Wire);
    showWidgets(page);
    emit stepTaken(Step::Show);
    postInitialiseDevices();
    emit stepTaken(Step::PostInitialise);
}

void Panel::stop()
{
    if (!m_started) {
        return;
    }
    m_started = false;
    backward(m_members, [](const Member& member) { member.device->setRunning(false); });
    backward(m_members, [](const Member& member) { member.device->preShutdown(); });
    while (!m_wires.empty()) {
        QObject::disconnect(m_wires.back().direct);
        m_wires.pop_back();
    }
    backward(m_members, [](const Member& member) {
        if (member.widget) {
            member.widget->deinitialise();
        }
    });
    backward(m_members, [](const Member& member) { member.device->deinitialise(); });
    if (m_pages) {
        m_pages->dissolve();
    }
    backward(m_members, [](const Member& member) { delete member.widget; });
    delete m_pages;
    m_indexes.clear();
    while (!m_members.empty()) {
        m_members.pop_back();
    }
}

void Panel::createDevices()
{
    m_members.reserve(m_description.devices.size());
    for (const DeviceSetting& setting : m_description.devices) {
        const QString id = setting.id.text;
        m_indexes.insert(id, int(m_members.size()));
        m_members.push_back({&setting, nullptr, nullptr, false, {}});
        Member& member = m_members.back();
        member.device.reset(m_manager.createDevice(setting.type.text));
        BaseDevice* device = member.device.get();
        if (!device) {
            fail(member, "did not start", {"unknown device type " + inQuotes(setting.type.text)});
            continue;
        }
        device->setObjectName(id);
        device->setNetworkAllowed(setting.network);
        setParams(setting, *device);
        connect(device, &BaseDevice::paramChanged, this,
                [this, id, device](const QString& param, const QString& value) {
                    if (device->isRunning()) {
                        emit parameterWritten(id, param, value);
                    }
                });
    }
}

void Panel::setParams(const DeviceSetting& setting, BaseDevice& device) const
{
    const auto set = [&device](const QString& param, const QString& value) {
        if (device.params().contains(param)) {
            device.setParam(param, value);
        }
    };
    for (const ParamSetting& param : setting.params) {
        set(param.name.text, param.value.text);
    }
    const auto saved = m_saved.value(setting.id.text);
    for (auto param = saved.cbegin(); param != saved.cend(); ++param) {
        set(param.key(), param.value());
    }
}

void Panel::initialiseDevices()
{
    for (Member& member : m_members) {
        if (!member.device) {
            continue;
        }
        QStringList reasons;
        const auto reports = connect(member.device.get(), &BaseDevice::errorOccurred, this,
                                     [&reasons](const QString& reason) { reasons.append(reason); });
        member.isUsable = member.device->initialise();
        QObject::disconnect(reports);
        if (member.isUsable) {
            member.device->setRunning(true);
        } else {
            fail(member, "did not start", reasons + member.device->paramFaults());
        }
    }
}

void Panel::connectWires()
{
    const CycleFinder circles(m_description);
    for (int arrow = 0; arrow < m_description.connections.size(); ++arrow) {
        connectArrow(arrow, circles.closes(arrow));
    }
}

void Panel::connectArrow(int number, bool closesCircle)
{
    const ConnectionSetting& arrow = m_description.connections[number];
    const Member* from = find(arrow.from.device.text);
    const Member* to = find(arrow.to.device.text);
    for (const Endpoint* end : {&arrow.from, &arrow.to}) {
        if (!find(end->device.text)) {
            reportUnknownDevice(*end, m_description, m_diagnostics);
        }
    }
    if (!from || !to || !from->isUsable || !to->isUsable) {
        return;
    }
    const auto wire = resolveConnection(arrow, *from->device, *to->device, m_diagnostics);
    if (!wire) {
        return;
    }
    LiveWire live;
    if (closesCircle) {
        live.queued = std::make_unique<QueuedWire>(*wire);
    } else {
        live.direct = connectWire(*wire, Qt::AutoConnection);
    }
    if (live.queued && !live.queued->isConnected()) {
        m_diagnostics.error(
            arrow.whole.place,
            inQuotes(arrow.whole.text) +
                " closes a circle, and its values are of a type that cannot go round "
                "one");
        return;
    }
    m_wires.push_back(std::move(live));
    to->device->addSignal(arrow.from.device.text + "." + wire->signal);
}

void Panel::showWidgets(QWidget* page)
{
    std::vector<Member*> shown;
    QVector<Cells> wishes;
    for (Member& member : m_members) {
        if (member.isUsable && !dynamic_cast<BaseGuiDevice*>(member.device.get())) {
            continue;
        }
        shown.push_back(&member);
        wishes.append(readCells([&member](const QString& param) {
            return member.device && member.device->params().contains(param)
                       ? member.device->getParam(param).value()
                       : settingOf(*member.setting, param);
        }));
    }
    const Placement placement(wishes);
    m_pages = new PanelPages(placement.areas());
    if (!page->layout()) {
        new QVBoxLayout(page);
    }
    page->layout()->addWidget(m_pages);
    for (size_t i = 0; i < shown.size(); ++i) {
        showWidget(*shown[i], placement.cells()[int(i)]);
    }
}

void Panel::postInitialiseDevices()
{
    for (const Member& member : m_members) {
        if (member.isUsable) {
            member.device->postInitialisation();
        }
    }
}

void Panel::showWidget(Member& member, const Cells& cells)
{
    if (member.isUsable) {
        member.widget = static_cast<BaseGuiDevice*>(member.device.get())->createWidget();
        if (!member.widget) {
            fail(member, "is not shown", {"it made no widget"});
        }
    }
    if (!member.widget) {
        m_pages->place(new ErrorTile(member.setting->id.text, member.reasons.join('\n')), cells);
        return;
    }
    member.widget->setObjectName(member.setting->id.text);
    m_pages->place(member.widget, cells);
    member.widget->initialise();
}

void Panel::fail(Member& member, const QString& what, const QStringList& reasons)
{
    member.reasons = reasons.isEmpty() ? QStringList("it gave no reason") : reasons;
    m_diagnostics.error(member.setting->id.place, QString("device %1 %2: %3")
                                                      .arg(inQuotes(member.setting->id.text), what,
                                                           member.reasons.join("; ")));
}

} // namespace norvo
