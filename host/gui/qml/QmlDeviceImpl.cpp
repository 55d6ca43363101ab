// SPDX-License-Identifier: LGPL-3.0-or-later

#include "norvo/QmlDeviceImpl.h"

#include "host/gui/qml/QmlDocument.h"
#include "host/gui/qml/QmlRenderer.h"
#include "host/gui/qml/QmlSandbox.h"
#include "host/gui/qml/QmlWrapper.h"

#include "norvo/BaseDevice.h"

#include <QDebug>
#include <QPointer>
#include <QQmlEngine>
#include <QQmlError>
#include <QQuickItem>

using norvo::QmlDocument;
using norvo::QmlSandbox;
using norvo::QmlWrapper;

struct QmlDeviceImpl::Private
{
    explicit Private(QQmlEngine* qmlEngine) : engine(qmlEngine), sandbox(*qmlEngine) {}

    QPointer<QQmlEngine> engine;
    QmlSandbox sandbox;
    QPointer<QObject> owner;
    QmlDocument document;                ///< The newest, even if it did not load.
    std::unique_ptr<QmlWrapper> wrapper; ///< Null when there is no item.
    QPointer<QQuickItem> item;
    QVector<QPointer<QQuickItem>> retired; ///< Waiting for the event loop to delete them.

    void alert(const QString& text)
    {
        if (auto* const device = dynamic_cast<ParametersEntity*>(owner.data())) {
            device->alert(text);
        } else {
            qWarning().noquote() << text;
        }
    }

    /// Gives up the item. It may be the one whose handler has led here, so it is deleted later.
    void retireItem()
    {
        if (!item) {
            return;
        }
        wrapper->unbind();
        item->setParentItem(nullptr);
        item->deleteLater();
        retired.removeAll(nullptr);
        retired.append(item);
        item = nullptr;
    }

    /// All signals and slots there are, for comparison.
    QStringList methods() const
    {
        QStringList list;
        for (const auto type : {QMetaMethod::Signal, QMetaMethod::Slot}) {
            const QStringList signatures =
                wrapper ? wrapper->ports().signatures({}, type) : QStringList();
            for (const QString& signature : signatures) {
                list.append(QString("%1 %2").arg(type).arg(signature));
            }
        }
        return list;
    }

    QObject* find(const QString& name, QMetaMethod::MethodType type, QString& signature) const
    {
        signature = wrapper ? wrapper->ports().signatureOf(name, type) : QString();
        return signature.isEmpty() ? nullptr : &wrapper->ports();
    }

    /// The wires stay where they can.
    void wrap(QQuickItem& newItem)
    {
        if (wrapper && wrapper->fits(newItem)) {
            wrapper->bind(newItem);
        } else {
            wrapper = std::make_unique<QmlWrapper>(newItem);
        }
        wrapper->ports().setObjectName(owner ? owner->objectName() : QString());
    }
};

QmlDeviceImpl::QmlDeviceImpl(QQmlEngine* engine) : d(std::make_unique<Private>(engine))
{
    norvo::chooseQuickRenderer();
    engine->setOutputWarningsToStandardError(false);
    connect(engine, &QQmlEngine::warnings, this, [this](const QList<QQmlError>& warnings) {
        for (const QQmlError& warning : warnings) {
            d->alert(d->document.describe(warning));
        }
    });
    connect(
        &d->sandbox, &QmlSandbox::refused, this, [this](const QString& text) { d->alert(text); },
        Qt::QueuedConnection);
}

QmlDeviceImpl::~QmlDeviceImpl()
{
    deinit();
    for (const QPointer<QQuickItem>& item : qAsConst(d->retired)) {
        delete item;
    }
}

QString QmlDeviceImpl::init(QObject* owner, QString sourceType, QString sourceData,
                            QString sourceCode, bool& methodsChanged)
{
    const QStringList before = d->methods();
    d->retireItem();
    if (d->owner) {
        d->owner->disconnect(this);
    }
    d->owner = owner;
    const auto* const device = qobject_cast<BaseDevice*>(owner);
    d->sandbox.setAllowed(device && device->isNetworkAllowed());
    d->document = sourceType == "file" ? QmlDocument::fromFile(sourceData)
                                       : QmlDocument::fromText(sourceCode);
    d->engine->clearComponentCache(); // The files may have changed.

    QString error;
    d->item = d->document.load(*d->engine, error).release();
    if (d->item) {
        d->wrap(*d->item);
        if (owner) {
            connect(owner, &QObject::objectNameChanged, this,
                    [this](const QString& name) { d->wrapper->ports().setObjectName(name); });
        }
    } else {
        d->wrapper.reset();
    }
    methodsChanged = d->methods() != before;
    return error;
}

void QmlDeviceImpl::deinit()
{
    if (d->owner) {
        d->owner->disconnect(this);
    }
    d->retireItem();
    d->wrapper.reset();
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
    return d->wrapper ? d->wrapper->ports().signatures(name, type) : QStringList();
}

bool QmlDeviceImpl::isInitialised() const
{
    return d->wrapper != nullptr;
}

QQmlEngine* QmlDeviceImpl::getEngine() const
{
    return d->engine;
}

QQuickItem* QmlDeviceImpl::getItem() const
{
    return d->item;
}
