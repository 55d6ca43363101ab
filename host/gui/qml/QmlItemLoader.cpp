// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/qml/QmlDocument.h"
#include "host/gui/qml/QmlLoader.h"
#include "host/gui/qml/QmlRenderer.h"
#include "host/gui/qml/QmlSandbox.h"
#include "host/gui/qml/QmlWrapper.h"

#include "norvo/BaseDevice.h"

#include <QDebug>
#include <QPointer>
#include <QQmlEngine>
#include <QQmlError>
#include <QQuickItem>

#include <memory>

namespace norvo {

namespace {

class QmlItemLoader : public QmlLoader
{
public:
    explicit QmlItemLoader(QQmlEngine& engine);
    ~QmlItemLoader() override;

    QString load(QObject* owner, bool isFile, const QString& data, const QString& code) override;
    void unload() override;
    QQmlEngine* engine() const override { return m_engine; }
    DynamicPorts* ports() const override { return m_wrapper ? &m_wrapper->ports() : nullptr; }
    QQuickItem* item() const override { return m_item; }

private:
    void alert(const QString& text);
    void retireItem();
    void wrap(QQuickItem& item);

    QPointer<QQmlEngine> m_engine;
    QmlSandbox m_sandbox;
    QPointer<QObject> m_owner;
    QmlDocument m_document;                ///< The newest, even if it did not load.
    std::unique_ptr<QmlWrapper> m_wrapper; ///< Null when there is no item.
    QPointer<QQuickItem> m_item;
    QVector<QPointer<QQuickItem>> m_retired; ///< Waiting for the event loop to delete them.
};

QmlItemLoader::QmlItemLoader(QQmlEngine& engine) : m_engine(&engine), m_sandbox(engine)
{
    chooseQuickRenderer();
    engine.setOutputWarningsToStandardError(false);
    connect(&engine, &QQmlEngine::warnings, this, [this](const QList<QQmlError>& warnings) {
        for (const QQmlError& warning : warnings) {
            alert(m_document.describe(warning));
        }
    });
    connect(&m_sandbox, &QmlSandbox::refused, this, &QmlItemLoader::alert, Qt::QueuedConnection);
}

QmlItemLoader::~QmlItemLoader()
{
    unload();
    for (const QPointer<QQuickItem>& item : qAsConst(m_retired)) {
        delete item;
    }
}

QString QmlItemLoader::load(QObject* owner, bool isFile, const QString& data, const QString& code)
{
    retireItem();
    if (m_owner) {
        m_owner->disconnect(this);
    }
    m_owner = owner;
    const auto* const device = qobject_cast<BaseDevice*>(owner);
    m_sandbox.setAllowed(device && device->isNetworkAllowed());
    m_document = isFile ? QmlDocument::fromFile(data) : QmlDocument::fromText(code);
    m_engine->clearComponentCache(); // The files may have changed.

    QString error;
    m_item = m_document.load(*m_engine, error).release();
    if (m_item) {
        wrap(*m_item);
    } else {
        m_wrapper.reset();
    }
    return error;
}

void QmlItemLoader::unload()
{
    if (m_owner) {
        m_owner->disconnect(this);
    }
    retireItem();
    m_wrapper.reset();
}

void QmlItemLoader::alert(const QString& text)
{
    if (auto* const device = dynamic_cast<ParametersEntity*>(m_owner.data())) {
        device->alert(text);
    } else {
        qWarning().noquote() << text;
    }
}

/// Gives up the item. It may be the one whose handler has led here, so it is deleted later.
void QmlItemLoader::retireItem()
{
    if (!m_item) {
        return;
    }
    m_wrapper->unbind();
    m_item->setParentItem(nullptr);
    m_item->deleteLater();
    m_retired.removeAll(nullptr);
    m_retired.append(m_item);
    m_item = nullptr;
}

/// The wires stay where they can.
void QmlItemLoader::wrap(QQuickItem& item)
{
    if (m_wrapper && m_wrapper->fits(item)) {
        m_wrapper->bind(item);
    } else {
        m_wrapper = std::make_unique<QmlWrapper>(item);
    }
    ports()->setObjectName(m_owner ? m_owner->objectName() : QString());
    if (m_owner) {
        connect(m_owner, &QObject::objectNameChanged, this,
                [this](const QString& name) { ports()->setObjectName(name); });
    }
}

} // namespace

} // namespace norvo

extern "C" Q_DECL_EXPORT norvo::QmlLoader* norvoMakeQmlLoader(QQmlEngine* engine)
{
    return new norvo::QmlItemLoader(*engine);
}
