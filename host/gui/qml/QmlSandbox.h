// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QObject>
#include <QPointer>
#include <QQmlAbstractUrlInterceptor>
#include <QQmlEngine>
#include <QQmlNetworkAccessManagerFactory>

#include <memory>

namespace norvo {

/// What the QML documents of one engine may do outside of their panel. Until it is allowed: read
/// local files; use no network, write no file, open no URL in another program. Where it is, such a
/// URL may be a page, a mail or a file.
///
/// Covers what goes through the engine: imports, pictures, fonts and requests of scripts. QML
/// modules written in C++ that open connections or files of their own are not held.
class QmlSandbox : public QObject,
                   public QQmlNetworkAccessManagerFactory,
                   public QQmlAbstractUrlInterceptor
{
    Q_OBJECT

public:
    struct State;

    explicit QmlSandbox(QQmlEngine& engine);
    ~QmlSandbox() override;

    void setAllowed(bool allowed); ///< For the next document.
    bool mayOpen(const QUrl& url); ///< In another program; always where no script of it asks.

    // Called on the engine's threads, too.
    QNetworkAccessManager* create(QObject* parent) override;
    QUrl intercept(const QUrl& url, DataType type) override;

signals:
    /// What was refused and why, once for each thing and document; may come from any of the
    /// engine's threads.
    void refused(QString text);

private:
    bool isRunning() const;

    const std::shared_ptr<State> m_state;
    const QPointer<QQmlEngine> m_engine;
};

} // namespace norvo
