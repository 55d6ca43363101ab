// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "host/gui/qml/LocalModules.h"

#include <QObject>
#include <QPointer>
#include <QQmlEngine>
#include <QQmlNetworkAccessManagerFactory>

#include <memory>

namespace norvo {

/// What the QML documents of one engine may do outside of their panel. Until it is allowed: read
/// local files; use no network, write no file, open no URL in another program.
///
/// Covers what goes through the engine: imports, pictures, fonts and requests of scripts. QML
/// modules written in C++ that open connections or files of their own are not held.
class QmlSandbox : public QObject, public QQmlNetworkAccessManagerFactory
{
    Q_OBJECT

public:
    explicit QmlSandbox(QQmlEngine& engine);
    ~QmlSandbox() override;

    void setAllowed(bool allowed); ///< For the next document.
    bool isAllowed() const;
    bool isRunning() const; ///< Whether a script of the engine is being run at this moment.
    void refuse(const QString& what);
    QNetworkAccessManager*
    create(QObject* parent) override; ///< Called on the engine's threads, too.

signals:
    /// Once for each thing and document; may come from any of the engine's threads.
    void refused(QString what);

private:
    struct State;

    const std::shared_ptr<State> m_state;
    const QPointer<QQmlEngine> m_engine;
    LocalModules m_modules;
};

} // namespace norvo
