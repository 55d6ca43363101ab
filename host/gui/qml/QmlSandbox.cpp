// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/qml/QmlSandbox.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QJSValue>
#include <QMutex>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>
#include <QThread>
#include <QUrl>

#include <algorithm>
#include <atomic>

namespace norvo {

namespace {

/// Whether the module is in that folder, with or without versions in the names of its folders.
bool holdsModule(const QDir& folder, const QStringList& names)
{
    if (names.isEmpty()) {
        return folder.exists("qmldir");
    }
    const QStringList entries = folder.entryList({names[0], names[0] + ".*"}, QDir::Dirs);
    return std::any_of(entries.cbegin(), entries.cend(), [&](const QString& entry) {
        return holdsModule(folder.filePath(entry), names.mid(1));
    });
}

bool namesNativeCode(const QString& qmldir)
{
    static const QRegularExpression plugin("^\\s*(optional\\s+)?plugin\\b",
                                           QRegularExpression::MultilineOption);
    QFile file(qmldir);
    return file.open(QIODevice::ReadOnly) && plugin.match(file.readAll()).hasMatch();
}

/// Keeps the modules of the current folder behind those of the system: where both have one, Qt
/// takes the folder with the more exact version in its name, wherever it stands among the import
/// paths. A module can name native code, and the current folder was not chosen for that.
class LocalModules
{
public:
    explicit LocalModules(const QStringList& importPaths);

    /// Whether the module with that qmldir file is not to be used. From any thread.
    bool isAside(const QString& qmldir) const;

private:
    const QString m_folder; ///< With a slash at its end.
    QStringList m_systemPaths;
};

LocalModules::LocalModules(const QStringList& importPaths)
    : m_folder(QDir::current().canonicalPath() + "/"), m_systemPaths(importPaths)
{
    m_systemPaths.removeAll(QDir::current().canonicalPath());
}

bool LocalModules::isAside(const QString& qmldir) const
{
    static const QRegularExpression version("\\.[0-9]+(\\.[0-9]+)?$");
    if (!qmldir.startsWith(m_folder) || !QFile::exists(qmldir)) {
        return false;
    }
    QStringList names = qmldir.mid(m_folder.size()).split('/', Qt::SkipEmptyParts);
    names.removeLast();
    if (names.isEmpty()) { // beside a document that is a text, and not put there for it
        return namesNativeCode(qmldir);
    }
    for (QString& name : names) {
        name.remove(version);
    }
    return std::any_of(m_systemPaths.cbegin(), m_systemPaths.cend(),
                       [&](const QString& path) { return holdsModule(path, names); });
}

} // namespace

/// What the managers on all threads share; outlives the sandbox, as they do.
struct QmlSandbox::State
{
    explicit State(const QStringList& importPaths) : modules(importPaths) {}

    const LocalModules modules;
    std::atomic<bool> isAllowed{false};
    QMutex mutex;
    QmlSandbox* sandbox = nullptr;
    QSet<QString> reported;

    void refuse(const QString& what,
                const char* why = "the network is closed to this document; \"network: true\" at "
                                  "the device opens it")
    {
        const QMutexLocker lock(&mutex);
        if (sandbox && !reported.contains(what)) {
            reported.insert(what);
            emit sandbox->refused(what + " is refused: " + why);
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

class NetworkManager : public QNetworkAccessManager
{
public:
    NetworkManager(std::shared_ptr<QmlSandbox::State> state, QObject* parent)
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
    const std::shared_ptr<QmlSandbox::State> m_state;
};

/// Is asked, in place of the desktop, to open a URL in another program.
class ExternalLinks : public QObject
{
    Q_OBJECT

public:
    /// A script of `sandbox` may be about to open such a URL: Qt resolves each before it opens it.
    static void expect(QmlSandbox& sandbox, const QString& scheme)
    {
        static QPointer<ExternalLinks> s_instance;
        if (!s_instance) {
            s_instance = new ExternalLinks(QCoreApplication::instance());
        }
        s_instance->m_sandbox = &sandbox;
        if (!s_instance->m_schemes.contains(scheme)) {
            s_instance->m_schemes.insert(scheme);
            QDesktopServices::setUrlHandler(scheme, s_instance, "open");
        }
    }

public slots:
    void open(const QUrl& url)
    {
        if (!m_sandbox || m_sandbox->mayOpen(url)) {
            QDesktopServices::openUrl(url); // Qt does not come back to this function from here.
        }
    }

private:
    using QObject::QObject;

    QPointer<QmlSandbox> m_sandbox; ///< The latest.
    QSet<QString> m_schemes;
};

} // namespace

QmlSandbox::QmlSandbox(QQmlEngine& engine)
    : m_state(std::make_shared<State>(engine.importPathList())), m_engine(&engine)
{
    m_state->sandbox = this;
    engine.setNetworkAccessManagerFactory(this);
    engine.setUrlInterceptor(this);
}

QmlSandbox::~QmlSandbox()
{
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

/// A call stack has more than this function's own line then.
bool QmlSandbox::isRunning() const
{
    return m_engine && m_engine->evaluate("new Error().stack").toString().contains('\n');
}

bool QmlSandbox::mayOpen(const QUrl& url)
{
    static const QStringList schemes{"http", "https", "mailto", "file"};
    if (!isRunning() || (m_state->isAllowed && schemes.contains(url.scheme()))) {
        return true;
    }
    const QString what = "opening " + url.toString();
    if (m_state->isAllowed) {
        m_state->refuse(what, "a document opens http, https, mailto and file URLs only");
    } else {
        m_state->refuse(what);
    }
    return false;
}

QNetworkAccessManager* QmlSandbox::create(QObject* parent)
{
    return new NetworkManager(m_state, parent);
}

QUrl QmlSandbox::intercept(const QUrl& url, DataType type)
{
    if (type == UrlString && QThread::currentThread() == thread()) {
        ExternalLinks::expect(*this, url.scheme());
    }
    const bool isAside = type == QmldirFile && m_state->modules.isAside(url.toLocalFile());
    return isAside ? QUrl::fromLocalFile(url.toLocalFile() + ".aside") : url; // which is not there
}

} // namespace norvo

#include "QmlSandbox.moc"
