// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/qml/QmlSandbox.h"

#include "host/gui/qml/ExternalLinks.h"

#include <QJSValue>
#include <QMutex>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSet>

#include <atomic>

namespace norvo {

/// What the managers on all threads share; outlives the sandbox, as they do.
struct QmlSandbox::State
{
    std::atomic<bool> isAllowed{false};
    QMutex mutex;
    QmlSandbox* sandbox = nullptr;
    QSet<QString> reported;

    void refuse(const QString& what)
    {
        const QMutexLocker lock(&mutex);
        if (sandbox && !reported.contains(what)) {
            reported.insert(what);
            emit sandbox->refused(what);
        }
    }
};

namespace {

/// The answer to a request that is not made.
class DeniedReply : public QNetworkReply
{
public:
    DeniedReply(QNetworkAccessManager::Operation operation, const QNetworkRequest& request,
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

template <class State>
class NetworkManager : public QNetworkAccessManager
{
public:
    NetworkManager(std::shared_ptr<State> state, QObject* parent)
        : QNetworkAccessManager(parent), m_state(std::move(state))
    {}

protected:
    QNetworkReply* createRequest(Operation operation, const QNetworkRequest& request,
                                 QIODevice* data) override
    {
        static const QStringList localSchemes{"file", "qrc", "data"};
        const bool isLocal = localSchemes.contains(request.url().scheme());
        const bool isRead = operation == GetOperation || operation == HeadOperation;
        if (m_state->isAllowed || (isLocal && isRead)) {
            return QNetworkAccessManager::createRequest(operation, request, data);
        }
        m_state->refuse((isLocal ? "writing " : "") + request.url().toString());
        return new DeniedReply(operation, request, this);
    }

private:
    const std::shared_ptr<State> m_state;
};

} // namespace

QmlSandbox::QmlSandbox(QQmlEngine& engine)
    : m_state(std::make_shared<State>()), m_engine(&engine), m_modules(engine.importPathList())
{
    m_state->sandbox = this;
    engine.setNetworkAccessManagerFactory(this);
    engine.setUrlInterceptor(&m_modules);
    ExternalLinks::add(*this);
}

QmlSandbox::~QmlSandbox()
{
    ExternalLinks::remove(*this);
    if (m_engine) {
        m_engine->setNetworkAccessManagerFactory(nullptr);
        m_engine->setUrlInterceptor(nullptr);
    }
    const QMutexLocker lock(&m_state->mutex);
    m_state->sandbox = nullptr;
}

void QmlSandbox::setAllowed(bool allowed)
{
    m_state->isAllowed = allowed;
    const QMutexLocker lock(&m_state->mutex);
    m_state->reported.clear();
}

bool QmlSandbox::isAllowed() const
{
    return m_state->isAllowed;
}

/// A call stack has more than this function's own line then.
bool QmlSandbox::isRunning() const
{
    return m_engine && m_engine->evaluate("new Error().stack").toString().contains('\n');
}

void QmlSandbox::refuse(const QString& what)
{
    m_state->refuse(what);
}

QNetworkAccessManager* QmlSandbox::create(QObject* parent)
{
    return new NetworkManager<State>(m_state, parent);
}

} // namespace norvo
