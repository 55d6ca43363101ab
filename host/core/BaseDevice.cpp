// SPDX-License-Identifier: LGPL-3.0-or-later

#include "norvo/BaseDevice.h"

#include "host/core/Methods.h"
#include "norvo/DoubleVec.h"

#include <QDebug>

/// Qt refuses a queued wire by name as long as it does not know the type that it is to carry.
BaseDevice::BaseDevice()
{
    qRegisterMetaType<DoubleVec>();
}

BaseDevice::~BaseDevice() = default;

QObject* BaseDevice::getProvider(const QString& name, QString& signature)
{
    signature = norvo::signatureOf(*metaObject(), staticMetaObject, name, QMetaMethod::Signal);
    return signature.isEmpty() ? nullptr : this;
}

QObject* BaseDevice::getReceiver(const QString& name, QString& signature)
{
    signature = norvo::signatureOf(*metaObject(), staticMetaObject, name, QMetaMethod::Slot);
    return signature.isEmpty() ? nullptr : this;
}

QStringList BaseDevice::getIncomingConnections() const
{
    return m_incoming;
}

void BaseDevice::addSignal(const QString& signal)
{
    m_incoming.append(signal);
}

void BaseDevice::removeSignal(const QString& signal)
{
    m_incoming.removeOne(signal);
}

QString BaseDevice::getObjectName() const
{
    return objectName();
}

void BaseDevice::setParam(QString name, QString value)
{
    if (const Param* const changed = storeParam(name, value)) {
        emit paramChanged(changed->name(), value);
    }
}

void BaseDevice::postInitialisation() {}

void BaseDevice::preShutdown() {}

bool BaseDevice::initialise()
{
    return true;
}

void BaseDevice::deinitialise() {}

bool BaseDevice::error(QString text)
{
    qWarning().noquote().nospace() << objectName() << ": " << text;
    emit errorOccurred(text);
    return false;
}

bool BaseDevice::alert(QString text)
{
    qWarning().noquote().nospace() << objectName() << ": " << text;
    emit alertRaised(text);
    return true;
}

void BaseDevice::sendParamChanged()
{
    const QStringList names = paramNames();
    for (const QString& name : names) {
        emit paramChanged(name, params().value(name).value());
    }
}

QStringList BaseDevice::grabMethods(const QString& name, QMetaMethod::MethodType type, bool) const
{
    return norvo::signatures(*metaObject(), staticMetaObject, name, type);
}

void BaseDevice::setDescription(const QString& description)
{
    if (m_description == description) {
        return;
    }
    m_description = description;
    emit descriptionChanged(m_description);
}
