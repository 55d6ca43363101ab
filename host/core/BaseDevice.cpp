#include "norvo/BaseDevice.h"

#include "norvo/DoubleVec.h"

#include <QDebug>

namespace {

bool isOffered(const QMetaMethod& method, QMetaMethod::MethodType type)
{
    return method.methodType() == type && method.access() == QMetaMethod::Public;
}

/// The signature of the first public method of that type below BaseDevice which `name`, a method
/// name or a full signature, asks for; empty when there is none.
QString resolve(const QMetaObject* meta, const QString& name, QMetaMethod::MethodType type)
{
    const bool isSignature = name.contains('(');
    const QByteArray wanted =
        isSignature ? QMetaObject::normalizedSignature(name.toUtf8().constData()) : name.toUtf8();
    for (int i = BaseDevice::staticMetaObject.methodCount(); i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (isOffered(method, type) &&
            wanted == (isSignature ? method.methodSignature() : method.name())) {
            return QString::fromUtf8(method.methodSignature());
        }
    }
    return {};
}

} // namespace

/// Qt refuses a queued wire by name as long as it does not know the type that it is to carry.
BaseDevice::BaseDevice()
{
    qRegisterMetaType<DoubleVec>();
}

BaseDevice::~BaseDevice() = default;

QObject* BaseDevice::getProvider(const QString& name, QString& signature)
{
    signature = resolve(metaObject(), name, QMetaMethod::Signal);
    return signature.isEmpty() ? nullptr : this;
}

QObject* BaseDevice::getReceiver(const QString& name, QString& signature)
{
    signature = resolve(metaObject(), name, QMetaMethod::Slot);
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

QString BaseDevice::getObjectName() const
{
    return objectName();
}

void BaseDevice::setParam(QString name, QString value)
{
    if (!params().contains(name)) {
        ParametersEntity::setParam(name, value);
        return;
    }
    if (storeParam(name, value)) {
        emit paramChanged(params().storedKey(name), value);
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
    QStringList signatures;
    const QMetaObject* meta = metaObject();
    for (int i = staticMetaObject.methodCount(); i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (isOffered(method, type) && (name.isEmpty() || method.name() == name.toUtf8())) {
            signatures.append(QString::fromUtf8(method.methodSignature()));
        }
    }
    return signatures;
}

void BaseDevice::setDescription(const QString& description)
{
    if (m_description == description) {
        return;
    }
    m_description = description;
    emit descriptionChanged(m_description);
}
