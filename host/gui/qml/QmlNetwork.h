#pragma once

#include <QObject>
#include <QQmlNetworkAccessManagerFactory>

#include <memory>

namespace norvo {

/// What the QML documents of one engine get of the network: nothing, until it is allowed.
///
/// Covers what goes through the engine: imports, pictures, fonts and requests of scripts. QML
/// modules written in C++ that open connections of their own are not held.
class QmlNetwork : public QObject, public QQmlNetworkAccessManagerFactory
{
    Q_OBJECT

public:
    QmlNetwork();
    ~QmlNetwork() override;

    void setAllowed(bool allowed);
    QNetworkAccessManager*
    create(QObject* parent) override; ///< Called on the engine's threads, too.

signals:
    void refused(QString url); ///< Once for each URL; may come from any of the engine's threads.

private:
    struct Door;
    const std::shared_ptr<Door> m_door;
};

} // namespace norvo
