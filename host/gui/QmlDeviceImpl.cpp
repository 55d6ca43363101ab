// SPDX-License-Identifier: LGPL-3.0-or-later

#include "norvo/QmlDeviceImpl.h"

#include "host/gui/qml/QmlLoader.h"

#include "norvo/DynamicPorts.h"
#include "norvo/LibraryPart.h"

struct QmlDeviceImpl::Private
{
    std::unique_ptr<norvo::QmlLoader> loader; ///< Null where its library is not there.
    QString error;                            ///< Why there is no loader.

    DynamicPorts* ports() const { return loader ? loader->ports() : nullptr; }

    QObject* find(const QString& name, QMetaMethod::MethodType type, QString& signature) const
    {
        signature = ports() ? ports()->signatureOf(name, type) : QString();
        return signature.isEmpty() ? nullptr : ports();
    }

    QStringList methods(const QString& name, QMetaMethod::MethodType type) const
    {
        return ports() ? ports()->signatures(name, type) : QStringList();
    }

    QVector<QStringList> allMethods() const
    {
        return {methods({}, QMetaMethod::Signal), methods({}, QMetaMethod::Slot)};
    }
};

QmlDeviceImpl::QmlDeviceImpl(QQmlEngine* engine) : d(std::make_unique<Private>())
{
    static const char here = 0;
    const auto makeLoader = reinterpret_cast<norvo::MakeQmlLoader>(
        norvo::symbolOfPart(&here, "libNorvoGUIQml.so", norvo::kQmlLoaderFunction, d->error));
    if (makeLoader) {
        d->loader.reset(makeLoader(engine));
    }
}

QmlDeviceImpl::~QmlDeviceImpl() = default;

QString QmlDeviceImpl::init(QObject* owner, QString sourceType, QString sourceData,
                            QString sourceCode, bool& methodsChanged)
{
    const QVector<QStringList> before = d->allMethods();
    QString error =
        d->loader ? d->loader->load(owner, sourceType == "file", sourceData, sourceCode) : d->error;
    methodsChanged = d->allMethods() != before;
    return error;
}

void QmlDeviceImpl::deinit()
{
    if (d->loader) {
        d->loader->unload();
    }
}

QObject* QmlDeviceImpl::getSignalWrapper(const QString& name, QString& signature)
{
    return d->find(name, QMetaMethod::Signal, signature);
}

QObject* QmlDeviceImpl::getSlotWrapper(const QString& name, QString& signature)
{
    return d->find(name, QMetaMethod::Slot, signature);
}

QStringList QmlDeviceImpl::grabMethods(const QString& name, QMetaMethod::MethodType type,
                                       bool) const
{
    return d->methods(name, type);
}

bool QmlDeviceImpl::isInitialised() const
{
    return d->ports() != nullptr;
}

QQmlEngine* QmlDeviceImpl::getEngine() const
{
    return d->loader ? d->loader->engine() : nullptr;
}

QQuickItem* QmlDeviceImpl::getItem() const
{
    return d->loader ? d->loader->item() : nullptr;
}
