#include "host/gui/qml/QmlNetwork.h"

#include <QMutex>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSet>

#include <atomic>

namespace norvo {

/// What the managers on all threads share; outlives the master, as they do.
struct QmlNetwork::Door
{
    std::atomic<bool> isOpen{false};
    QMutex mutex;
    QmlNetwork* master = nullptr;
    QSet<QString> told;

    void refuse(const QString& url)
    {
        const QMutexLocker lock(&mutex);
        if (master && !told.contains(url)) {
            told.insert(url);
            emit master->refused(url);
        }
    }
};

namespace {

/// The answer to a request that is not made.
class Refusal : public QNetworkReply
{
public:
    Refusal(QNetworkAccessManager::Operation operation, const QNetworkRequest& request,
            QObject* parent)
        : QNetworkReply(parent)
    {
        setOperation(operation);
        setRequest(request);
        setUrl(request.url());
        setError(ContentAccessDenied, "the network is closed to this document");
        setFinished(true);
        open(ReadOnly);
        QMetaObject::invokeMethod(
            this,
            [this] {
                emit errorOccurred(ContentAccessDenied);
                emit finished();
            },
            Qt::QueuedConnection);
    }

    void abort() override {}

protected:
    qint64 readData(char*, qint64) override { return -1; }
};

template <class Door>
class Gatekeeper : public QNetworkAccessManager
{
public:
    Gatekeeper(std::shared_ptr<Door> door, QObject* parent)
        : QNetworkAccessManager(parent), m_door(std::move(door))
    {}

protected:
    QNetworkReply* createRequest(Operation operation, const QNetworkRequest& request,
                                 QIODevice* data) override
    {
        static const QStringList local{"file", "qrc", "data"};
        if (m_door->isOpen || local.contains(request.url().scheme())) {
            return QNetworkAccessManager::createRequest(operation, request, data);
        }
        m_door->refuse(request.url().toString());
        return new Refusal(operation, request, this);
    }

private:
    const std::shared_ptr<Door> m_door;
};

} // namespace

QmlNetwork::QmlNetwork() : m_door(std::make_shared<Door>())
{
    m_door->master = this;
}

QmlNetwork::~QmlNetwork()
{
    const QMutexLocker lock(&m_door->mutex);
    m_door->master = nullptr;
}

void QmlNetwork::setAllowed(bool allowed)
{
    m_door->isOpen = allowed;
    const QMutexLocker lock(&m_door->mutex);
    m_door->told.clear();
}

QNetworkAccessManager* QmlNetwork::create(QObject* parent)
{
    return new Gatekeeper<Door>(m_door, parent);
}

} // namespace norvo
