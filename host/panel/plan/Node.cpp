// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/Node.h"

#include "host/panel/plan/CriticalMessages.h"
#include "host/panel/plan/Placement.h"
#include "host/yaml/Quote.h"

#include "norvo/BaseGuiDevice.h"
#include "norvo/BaseWidget.h"
#include "norvo/Categories.h"

#include <algorithm>
#include <utility>

namespace norvo {

namespace {

/// The value that counts where the file gives a parameter more than once; null: it does not.
const QString* givenValue(const DeviceSetting& setting, const QString& param)
{
    const auto found = std::find_if(
        setting.params.crbegin(), setting.params.crend(), [&param](const ParamSetting& entry) {
            return entry.name.text.compare(param, Qt::CaseInsensitive) == 0;
        });
    return found == setting.params.crend() ? nullptr : &found->value.text;
}

bool isSameParam(const ParamSetting& a, const ParamSetting& b)
{
    return a.name.text == b.name.text && a.value.text == b.value.text;
}

bool isSamePort(const PortSetting& a, const PortSetting& b)
{
    return a.isOutput == b.isOutput && a.name.text == b.name.text &&
           a.definition.text == b.definition.text && a.options == b.options;
}

bool isSameAccess(const DeviceAccess& a, const DeviceAccess& b)
{
    return a.role == b.role && a.isConfirmed == b.isConfirmed && a.question == b.question;
}

/// But those of placement.
bool areSameParams(const QVector<ParamSetting>& a, const QVector<ParamSetting>& b)
{
    const auto next = [](auto param, auto end) {
        return std::find_if(
            param, end, [](const ParamSetting& one) { return !isPlacementParam(one.name.text); });
    };
    auto one = next(a.cbegin(), a.cend());
    auto other = next(b.cbegin(), b.cend());
    while (one != a.cend() && other != b.cend() && isSameParam(*one, *other)) {
        one = next(one + 1, a.cend());
        other = next(other + 1, b.cend());
    }
    return one == a.cend() && other == b.cend();
}

} // namespace

Node::Node(DeviceSetting setting, std::unique_ptr<BaseDevice> device)
    : m_setting(std::move(setting)), m_device(std::move(device))
{
    if (!m_device) {
        fail({"unknown device type " + inQuotes(m_setting.type.text)});
        return;
    }
    m_device->setObjectName(id());
    m_device->setNetworkAllowed(m_setting.network);
    connect(m_device.get(), &BaseDevice::paramChanged, this,
            [this](const QString& param, const QString& value) {
                if (m_device->isRunning() && m_device->getParam(param).isPersistent()) {
                    emit parameterWritten(id(), param, value);
                }
            });
}

Node::~Node()
{
    deinitialise();
}

BaseGuiDevice* Node::guiDevice() const
{
    return dynamic_cast<BaseGuiDevice*>(m_device.get());
}

BaseWidget* Node::widget() const
{
    return m_widget;
}

bool Node::isShowable() const
{
    return m_state == State::Failed || guiDevice();
}

Cells Node::wantedCells(const DeviceSetting& setting) const
{
    return readCells([&](const QString& param) {
        const QString* const given = givenValue(setting, param);
        if (given || !m_device) {
            return given ? *given : QString();
        }
        const auto declared = m_device->params().constFind(param);
        return declared == m_device->params().constEnd() ? QString() : declared->defaultValue();
    });
}

bool Node::isMadeFrom(const DeviceSetting& setting) const
{
    return setting.id.text == m_setting.id.text && setting.type.text == m_setting.type.text &&
           setting.network == m_setting.network && setting.keep == m_setting.keep &&
           isSameAccess(setting.access, m_setting.access) &&
           areSameParams(setting.params, m_setting.params) &&
           std::equal(setting.ports.cbegin(), setting.ports.cend(), m_setting.ports.cbegin(),
                      m_setting.ports.cend(), isSamePort);
}

void Node::takeOver(const DeviceSetting& setting)
{
    m_setting = setting;
    if (!m_device) {
        return;
    }
    for (const QString& param :
         {kWidgetRow, kWidgetColumn, kWidgetRowspan, kWidgetColspan, kWidgetArea}) {
        if (m_device->params().contains(param)) {
            const QString* const given = givenValue(setting, param);
            m_device->setParam(param, given ? *given : m_device->getParam(param).defaultValue());
        }
    }
}

bool Node::initialise()
{
    if (m_state != State::Created) {
        return isUsable();
    }
    QStringList errors;
    const auto reports = connect(m_device.get(), &BaseDevice::errorOccurred, this,
                                 [&errors](const QString& error) { errors.append(error); });
    const bool succeeded = m_device->initialise();
    disconnect(reports);
    if (succeeded) {
        m_state = State::Initialised;
    } else {
        fail(errors + m_device->paramFaults());
    }
    return succeeded;
}

void Node::fail(const QStringList& errors)
{
    m_state = State::Failed;
    m_errors = errors.isEmpty() ? QStringList("no reason given") : errors;
}

void Node::setRunning()
{
    if (isUsable()) {
        m_device->setRunning(true);
    }
}

BaseWidget* Node::createWidget()
{
    auto* const device = guiDevice();
    if (!isUsable() || !device) {
        return nullptr;
    }
    m_widget = device->createWidget();
    if (m_widget) {
        m_widget->setObjectName(id());
    } else {
        m_errors = QStringList("it made no widget");
    }
    return m_widget;
}

void Node::initialiseWidget()
{
    const bool isFirst = m_state == State::Initialised;
    if (m_widget) {
        const CriticalMessages messages;
        m_widget->initialise();
        if (!m_widget->isInitialised()) {
            m_errors = messages.texts();
            m_errors.replaceInStrings(QString(m_widget->metaObject()->className()) + ": ",
                                      QString());
        }
    }
    const KeptValue* const value = m_keptValue ? m_keptValue.get() : m_value.get();
    if (isFirst) {
        m_state = State::Shown;
    } else if (m_widget && value) {
        value->showIn(*m_widget);
    }
}

BaseWidget* Node::renewWidget()
{
    deinitialiseWidget();
    deleteWidget();
    return createWidget();
}

void Node::postInitialise()
{
    if (m_state == State::Shown) {
        m_state = State::Running;
        m_device->postInitialisation();
    }
}

void Node::setControl(const std::optional<KeptMethods>& methods)
{
    m_isControl = true;
    if (methods) {
        m_value = std::make_unique<KeptValue>(*m_device, *methods);
    }
}

void Node::keepValue(const KeptMethods& methods, bool isSent)
{
    m_keptValue = std::make_unique<KeptValue>(*m_device, methods);
    m_keptValue->setSending(isSent);
    connect(m_keptValue.get(), &KeptValue::given, this, [this](const QString& value) {
        emit parameterWritten(id(), KeptValue::kValue, value);
        emit parameterWritten(id(), KeptValue::kSettings, m_keptValue->settings());
    });
}

void Node::startKeeping()
{
    if (m_keptValue && m_state == State::Running) {
        m_keptValue->start(m_widget);
    }
}

void Node::clearRunning()
{
    if (isUsable()) {
        m_device->setRunning(false);
    }
}

void Node::preShutdown()
{
    if (isUsable()) {
        m_device->preShutdown();
    }
}

void Node::deinitialiseWidget()
{
    if (m_widget) {
        m_widget->deinitialise();
    }
}

void Node::deinitialise()
{
    if (isUsable() && m_state != State::Stopped) {
        m_state = State::Stopped;
        m_device->deinitialise();
    }
}

void Node::deleteWidget()
{
    delete m_widget;
}

} // namespace norvo
