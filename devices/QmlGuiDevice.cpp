// SPDX-License-Identifier: GPL-3.0-or-later

#include "devices/QmlGuiDevice.h"

#include "devices/QmlParts.h"
#include "norvo/QmlDeviceImpl.h"

#include <QDebug>
#include <QThread>

namespace {

constexpr char kFile[] = "file";
constexpr char kParameter[] = "parameter";

} // namespace

QmlGuiDevice::QmlGuiDevice()
{
    addParam(kSourceType, kFile, {kFile, kParameter});
    Param& sourceType = getParam(kSourceType);
    sourceType.setDisplayName(tr("Source type"));
    sourceType.setDescription(tr("Use file to load .qml from from file, use parameter to load .qml "
                                 "from parameter."));

    addParam(kSourceData, "");
    Param& sourceData = getParam(kSourceData);
    sourceData.setDisplayName(tr("Source data"));
    sourceData.setDescription(tr("Use this parameter to store path to qml."));
    sourceData.addEnabledCondition(kSourceType, {kFile});

    addParam(kSourceCode, "");
    Param& sourceCode = getParam(kSourceCode);
    sourceCode.setDisplayName(tr("Source code"));
    sourceCode.setDescription(tr("Use this parameter to store the qml."));
    sourceCode.setUnit("multiline");
    sourceCode.addEnabledCondition(kSourceType, {kParameter});

    qDebug() << QThread::currentThread() << QThread::currentThreadId();
}

QmlGuiDevice::~QmlGuiDevice() = default;

DeviceTypeInfo QmlGuiDevice::typeInfo()
{
    DeviceTypeInfo info = BaseGuiDevice::typeInfo();
    info.flag = DeviceTypeInfo::kMethodsAfterInitialise;
    return info;
}

QObject* QmlGuiDevice::getProvider(const QString& name, QString& signature)
{
    QObject* const wrapper = m_impl ? m_impl->getSignalWrapper(name, signature) : nullptr;
    return wrapper ? wrapper : BaseGuiDevice::getProvider(name, signature);
}

QObject* QmlGuiDevice::getReceiver(const QString& name, QString& signature)
{
    QObject* const wrapper = m_impl ? m_impl->getSlotWrapper(name, signature) : nullptr;
    return wrapper ? wrapper : BaseGuiDevice::getReceiver(name, signature);
}

bool QmlGuiDevice::initialise()
{
    if (!m_engine) {
        QString reason;
        const QmlParts* const parts = qmlParts(reason);
        if (!parts) {
            return error(reason);
        }
        m_engine.reset(parts->makeEngine(m_impl));
    }
    const QString type = getParam(kSourceType).value();
    const QString data = getParam(kSourceData).value();
    const QString code = getParam(kSourceCode).value();
    if (type == kFile && data.isEmpty()) {
        return error("Source data/file not set");
    }
    bool haveMethodsChanged = false;
    const QString reason = m_impl->init(this, type, data, code, haveMethodsChanged);
    if (!reason.isEmpty()) {
        return error(reason);
    }
    if (haveMethodsChanged) {
        emit methodsChanged();
    }
    setDescription(type == kFile ? data : tr("Script from parameter"));
    return true;
}

void QmlGuiDevice::deinitialise()
{
    if (m_impl) {
        m_impl->deinit();
    }
}

QStringList QmlGuiDevice::grabMethods(const QString& name, QMetaMethod::MethodType type,
                                      bool flag) const
{
    return m_impl ? m_impl->grabMethods(name, type, flag)
                  : BaseGuiDevice::grabMethods(name, type, flag);
}
