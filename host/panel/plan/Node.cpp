// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/Node.h"

#include "host/panel/plan/CriticalMessages.h"
#include "host/panel/plan/Placement.h"
#include "host/yaml/Quote.h"

#include "norvo/BaseGuiDevice.h"
#include "norvo/BaseWidget.h"

#include <algorithm>
#include <utility>

namespace norvo {

namespace {

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

Cells Node::wantedCells() const
{
    return readCells([this](const QString& param) {
        if (m_device) {
            const auto& params = m_device->params();
            const auto found = params.find(param);
            if (found != params.constEnd()) {
                return found->value();
            }
        }
        return settingOf(m_setting, param);
    });
}

bool Node::isMadeFrom(const DeviceSetting& setting) const
{
    const auto isSameParam = [](const ParamSetting& a, const ParamSetting& b) {
        return a.name.text == b.name.text && a.value.text == b.value.text;
    };
    const auto isSamePort = [](const PortSetting& a, const PortSetting& b) {
        return a.isOutput == b.isOutput && a.name.text == b.name.text &&
               a.definition.text == b.definition.text && a.options == b.options;
    };
    return setting.id.text == m_setting.id.text && setting.type.text == m_setting.type.text &&
           setting.network == m_setting.network && setting.keep == m_setting.keep &&
           std::equal(setting.params.cbegin(), setting.params.cend(), m_setting.params.cbegin(),
                      m_setting.params.cend(), isSameParam) &&
           std::equal(setting.ports.cbegin(), setting.ports.cend(), m_setting.ports.cbegin(),
                      m_setting.ports.cend(), isSamePort);
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
        if (!isFirst) {
            m_widget->deinitialise();
        }
        const CriticalMessages messages;
        m_widget->initialise();
        if (!m_widget->isInitialised()) {
            m_errors = messages.texts();
            m_errors.replaceInStrings(QString(m_widget->metaObject()->className()) + ": ",
                                      QString());
        }
    }
    if (isFirst) {
        m_state = State::Shown;
    }
}

void Node::postInitialise()
{
    if (m_state == State::Shown) {
        m_state = State::Running;
        m_device->postInitialisation();
    }
}

void Node::keepValue(const KeptMethods& methods, bool isSent)
{
    m_keptValue = std::make_unique<KeptValue>(*m_device, methods, isSent);
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
