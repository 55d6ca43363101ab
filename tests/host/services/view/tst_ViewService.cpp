// SPDX-License-Identifier: GPL-3.0-or-later

#include "Effort.h"
#include "TestMain.h"
#include "host/services/view/ViewService.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QProcess>
#include <QSignalSpy>
#include <QSslSocket>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QVBoxLayout>
#include <QWebSocket>
#include <QtTest>

using norvo::ViewService;
using norvo::ViewSettings;

namespace {

constexpr int kPatience = 30000; // ms

const QByteArray kToken = QByteArrayLiteral("a-long-and-secret-token");

/// A window of one label, served.
class Served
{
public:
    explicit Served(const ViewSettings& settings = {})
        : service(settings, {window, "Title",
                             [this] { return "{\"asked\":" + QByteArray::number(++asked) + '}'; }})
    {
        window.resize(400, 300);
        auto* const layout = new QVBoxLayout(&window);
        layout->addWidget(&label);
        label.setParent(&window);
        window.show();
        isOpen = service.open(error);
    }

    quint16 port() const { return quint16(QUrl(service.url()).port()); }

    QWidget window;
    QLabel label{"one"};
    int asked = 0; ///< For values.
    ViewService service;
    bool isOpen = false;
    QString error;
};

/// All that comes before the other end closes.
QByteArray answerTo(quint16 port, const QByteArray& request)
{
    QTcpSocket socket;
    socket.connectToHost("127.0.0.1", port);
    socket.write(request);
    QElapsedTimer clock;
    clock.start();
    while (socket.state() != QAbstractSocket::UnconnectedState && !clock.hasExpired(kPatience)) {
        QTest::qWait(5);
    }
    return socket.readAll();
}

QByteArray get(const QByteArray& path, const QByteArray& fields = {})
{
    return "GET " + path + " HTTP/1.1\r\nHost: localhost\r\n" + fields + "\r\n";
}

/// One who looks.
class Looking : public QWebSocket
{
public:
    explicit Looking(quint16 port, const QByteArray& path = "/stream", const QString& origin = {})
        : QWebSocket(origin)
    {
        connect(this, &QWebSocket::textMessageReceived, this, [this](const QString& text) {
            const QJsonObject message = QJsonDocument::fromJson(text.toUtf8()).object();
            if (!message.contains("width")) {
                ++aliveCount;
            } else {
                title = message["title"].toString();
                size = QSize(message["width"].toInt(), message["height"].toInt());
                picture = size.isEmpty() ? QImage() : QImage(size, QImage::Format_RGB32);
            }
        });
        connect(this, &QWebSocket::binaryMessageReceived, this, [this](const QByteArray& message) {
            const auto number = [&message](int at) {
                return int(uchar(message[at])) * 256 + int(uchar(message[at + 1]));
            };
            const QImage tile =
                QImage::fromData(message.mid(4), "png").convertToFormat(QImage::Format_RGB32);
            for (int y = 0; y < tile.height(); ++y) {
                for (int x = 0; x < tile.width(); ++x) {
                    picture.setPixel(number(0) + x, number(2) + y, tile.pixel(x, y));
                }
            }
            ++tileCount;
        });
        open(QUrl(QString("ws://127.0.0.1:%1%2").arg(port).arg(QString::fromUtf8(path))));
    }

    bool isAt(QWidget& window) const
    {
        return picture == window.grab().toImage().convertToFormat(QImage::Format_RGB32);
    }

    QString title;
    QSize size;
    QImage picture;
    int tileCount = 0;
    int aliveCount = 0;
};

/// One who looks and takes nothing: a handshake, and no reading after it.
class Sleeping : public QTcpSocket
{
public:
    explicit Sleeping(quint16 port)
    {
        setReadBufferSize(1);
        connectToHost("127.0.0.1", port);
        write(get("/stream", "Upgrade: websocket\r\nConnection: Upgrade\r\n"
                             "Sec-WebSocket-Version: 13\r\n"
                             "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n"));
    }
};

} // namespace

class tst_ViewService : public QObject
{
    Q_OBJECT

private slots:
    void pageIsServed();
    void valuesAreServed();
    void panelIsAskedForValuesNowAndThen();
    void headInPiecesIsRead();
    void headThatIsTooLongIsRefused();
    void viewerSeesThePanel();
    void viewerHearsThatThePanelLives();
    void panelThatHangsIsSilent();
    void newSizeIsTold();
    void nobodyLooksCostsNothing();
    void severalSeeTheSame();
    void oneTooManyIsTold();
    void placeIsFreeAgain();
    void sleepingViewerHoldsNobodyUp();
    void sleepingViewersCostNothing();
    void whatAViewerSendsIsIgnored();
    void pageOfAnotherMachineSeesNothing();
    void tokenIsNeeded();
    void portInUseIsReported();
    void fileThatIsNoCertificateIsReported();
    void encryptedPanelIsSeen();
};

void tst_ViewService::pageIsServed()
{
    const Served served;
    QVERIFY2(served.isOpen, qPrintable(served.error));
    const QByteArray page = answerTo(served.port(), get("/"));
    QVERIFY(page.startsWith("HTTP/1.1 200 OK\r\n"));
    QVERIFY(page.contains("<canvas"));
    QVERIFY(answerTo(served.port(), get("/view.js")).contains("WebSocket"));
    QVERIFY(answerTo(served.port(), get("/view.css")).contains("canvas"));
    QVERIFY(answerTo(served.port(), get("/nothing")).startsWith("HTTP/1.1 404 "));
    QVERIFY(answerTo(served.port(), "POST / HTTP/1.1\r\n\r\n").startsWith("HTTP/1.1 405 "));
    QVERIFY(answerTo(served.port(), "nonsense\r\n\r\n").startsWith("HTTP/1.1 400 "));
}

void tst_ViewService::valuesAreServed()
{
    const Served served;
    QVERIFY(answerTo(served.port(), get("/values")).endsWith("\r\n\r\n{\"asked\":1}"));
    QTest::qWait(2 * norvo::ViewServer::kValuesMs);
    QVERIFY(answerTo(served.port(), get("/values")).endsWith("\r\n\r\n{\"asked\":2}"));
}

/// However often somebody asks.
void tst_ViewService::panelIsAskedForValuesNowAndThen()
{
    const Served served;
    QElapsedTimer clock;
    clock.start();
    constexpr int kRequests = 100;
    for (int i = 0; i < kRequests; ++i) {
        QVERIFY(answerTo(served.port(), get("/values")).contains("{\"asked\":"));
    }
    QVERIFY(served.asked <= 2 + clock.elapsed() / norvo::ViewServer::kValuesMs);
}

void tst_ViewService::headInPiecesIsRead()
{
    const Served served;
    QTcpSocket socket;
    socket.connectToHost("127.0.0.1", served.port());
    QTRY_COMPARE_WITH_TIMEOUT(socket.state(), QAbstractSocket::ConnectedState, kPatience);
    for (const char letter : get("/values")) {
        socket.write(&letter, 1);
        socket.flush();
        QTest::qWait(1);
    }
    QTRY_VERIFY_WITH_TIMEOUT(socket.bytesAvailable() > 100, kPatience);
    QVERIFY(socket.readAll().endsWith("{\"asked\":1}"));
}

void tst_ViewService::headThatIsTooLongIsRefused()
{
    const Served served;
    const QByteArray answer =
        answerTo(served.port(), get("/", "X: " + QByteArray(20000, 'x') + "\r\n"));
    QVERIFY(answer.isEmpty() || answer.startsWith("HTTP/1.1 400 "));
    QCOMPARE(served.asked, 0);
}

void tst_ViewService::viewerSeesThePanel()
{
    Served served;
    Looking viewer(served.port());
    QTRY_VERIFY_WITH_TIMEOUT(viewer.isAt(served.window), kPatience);
    QCOMPARE(viewer.title, QString("Title"));
    for (const char* text : {"two", "three", ""}) {
        served.label.setText(text);
        QTRY_VERIFY_WITH_TIMEOUT(viewer.isAt(served.window), kPatience);
    }
}

void tst_ViewService::viewerHearsThatThePanelLives()
{
    Served served;
    Looking viewer(served.port());
    QTRY_VERIFY_WITH_TIMEOUT(viewer.isAt(served.window), kPatience);
    const int tiles = viewer.tileCount;
    const int before = viewer.aliveCount;
    QTRY_VERIFY_WITH_TIMEOUT(viewer.aliveCount > before + 2, kPatience);
    QCOMPARE(viewer.tileCount, tiles); // Nothing has changed.
}

void tst_ViewService::panelThatHangsIsSilent()
{
    Served served;
    Looking viewer(served.port());
    QTRY_VERIFY_WITH_TIMEOUT(viewer.isAt(served.window), kPatience);
    QThread::msleep(2500);
    QCoreApplication::processEvents();
    viewer.aliveCount = 0;
    QElapsedTimer clock;
    clock.start();
    QTRY_VERIFY_WITH_TIMEOUT(viewer.aliveCount > 0, kPatience);
}

void tst_ViewService::newSizeIsTold()
{
    Served served;
    Looking viewer(served.port());
    QTRY_VERIFY_WITH_TIMEOUT(viewer.isAt(served.window), kPatience);
    served.window.resize(500, 200);
    QTRY_VERIFY_WITH_TIMEOUT(viewer.isAt(served.window), kPatience);
    QCOMPARE(viewer.size, QSize(500, 200));
}

void tst_ViewService::nobodyLooksCostsNothing()
{
    Served served;
    const auto paintsIn = [&served](int ms) {
        int count = 0;
        QObject owner;
        class Counter : public QObject
        {
        public:
            bool eventFilter(QObject*, QEvent* event) override
            {
                count += event->type() == QEvent::Paint ? 1 : 0;
                return false;
            }
            int count = 0;
        } counter;
        served.label.installEventFilter(&counter);
        QTest::qWait(ms);
        count = counter.count;
        return count;
    };
    QTest::qWait(100);
    QCOMPARE(paintsIn(600), 0);
    {
        Looking viewer(served.port());
        QTRY_VERIFY_WITH_TIMEOUT(viewer.isAt(served.window), kPatience);
        viewer.close();
        QTRY_COMPARE_WITH_TIMEOUT(viewer.state(), QAbstractSocket::UnconnectedState, kPatience);
    }
    QTest::qWait(500);
    QCOMPARE(paintsIn(600), 0);
}

void tst_ViewService::severalSeeTheSame()
{
    Served served;
    Looking first(served.port());
    QTRY_VERIFY_WITH_TIMEOUT(first.isAt(served.window), kPatience);
    served.label.setText("two");
    Looking second(served.port());
    QTRY_VERIFY_WITH_TIMEOUT(second.isAt(served.window), kPatience);
    QTRY_VERIFY_WITH_TIMEOUT(first.isAt(served.window), kPatience);
}

void tst_ViewService::oneTooManyIsTold()
{
    ViewSettings settings;
    settings.maxViewers = 1;
    Served served(settings);
    Looking first(served.port());
    QTRY_VERIFY_WITH_TIMEOUT(first.isAt(served.window), kPatience);
    Looking second(served.port());
    QSignalSpy gone(&second, &QWebSocket::disconnected);
    QTRY_COMPARE_WITH_TIMEOUT(gone.count(), 1, kPatience);
    QCOMPARE(second.closeReason(), QString("1 viewers look already"));
    QCOMPARE(second.tileCount, 0);
}

void tst_ViewService::placeIsFreeAgain()
{
    ViewSettings settings;
    settings.maxViewers = 1;
    Served served(settings);
    for (int i = 0; i < 3; ++i) {
        Looking viewer(served.port());
        QTRY_VERIFY_WITH_TIMEOUT(viewer.isAt(served.window), kPatience);
        viewer.abort();
        QTest::qWait(300);
    }
}

void tst_ViewService::sleepingViewerHoldsNobodyUp()
{
    Served served;
    Sleeping sleeping(served.port());
    QTRY_COMPARE_WITH_TIMEOUT(sleeping.state(), QAbstractSocket::ConnectedState, kPatience);
    Looking viewer(served.port());
    for (int i = 0; i < 10; ++i) {
        served.label.setText(QString::number(i));
        QTRY_VERIFY_WITH_TIMEOUT(viewer.isAt(served.window), kPatience);
    }
}

/// Once their connections are full nothing is drawn for them.
void tst_ViewService::sleepingViewersCostNothing()
{
    Served served;
    served.window.resize(1600, 1000);
    QImage noise(1600, 1000, QImage::Format_RGB32); // It does not compress.
    quint32 state = 1;
    for (int y = 0; y < noise.height(); ++y) {
        for (int x = 0; x < noise.width(); ++x) {
            state = state * 1664525U + 1013904223U;
            noise.setPixel(x, y, state >> 8);
        }
    }
    Sleeping sleeping(served.port());
    QTRY_COMPARE_WITH_TIMEOUT(sleeping.state(), QAbstractSocket::ConnectedState, kPatience);
    int paints = 0;
    class Counter : public QObject
    {
    public:
        explicit Counter(int& count) : m_count(count) {}
        bool eventFilter(QObject*, QEvent* event) override
        {
            m_count += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }

    private:
        int& m_count;
    } counter(paints);
    served.label.installEventFilter(&counter);
    // Frames of 5 MB each, until no buffer takes one more.
    for (int i = 0; i < 8; ++i) {
        noise.setPixel(0, 0, QRgb(i));
        served.label.setPixmap(QPixmap::fromImage(noise.mirrored(i % 2 == 0, i % 4 < 2)));
        QTest::qWait(400);
    }
    QTest::qWait(500);
    paints = 0;
    QTest::qWait(2000);
    QCOMPARE(paints, 0);
}

void tst_ViewService::whatAViewerSendsIsIgnored()
{
    Served served;
    Looking viewer(served.port());
    QTRY_VERIFY_WITH_TIMEOUT(viewer.isAt(served.window), kPatience);
    for (int i = 0; i < 100; ++i) {
        viewer.sendTextMessage("{\"click\":[10,10]}");
        viewer.sendBinaryMessage(QByteArray(500, '\0'));
    }
    served.label.setText("two");
    QTRY_VERIFY_WITH_TIMEOUT(viewer.isAt(served.window), kPatience);
}

void tst_ViewService::pageOfAnotherMachineSeesNothing()
{
    const Served served;
    Looking viewer(served.port(), "/stream", "https://example.org");
    QSignalSpy refused(&viewer, QOverload<QAbstractSocket::SocketError>::of(&QWebSocket::error));
    QTRY_VERIFY_WITH_TIMEOUT(refused.count() > 0, kPatience);
    QCOMPARE(viewer.tileCount, 0);
}

void tst_ViewService::tokenIsNeeded()
{
    ViewSettings settings;
    settings.token = kToken;
    Served served(settings);
    QVERIFY(answerTo(served.port(), get("/values")).startsWith("HTTP/1.1 401 "));
    QVERIFY(answerTo(served.port(), get("/values", "Authorization: Bearer " + kToken + "\r\n"))
                .startsWith("HTTP/1.1 200 "));
    const QByteArray redirection = answerTo(served.port(), get("/?token=" + kToken));
    QVERIFY(redirection.startsWith("HTTP/1.1 303 "));
    QVERIFY(redirection.contains("\r\nLocation: /\r\n"));
    QVERIFY(redirection.contains("\r\nSet-Cookie: norvo-view="));
    Looking stranger(served.port());
    QSignalSpy refused(&stranger, QOverload<QAbstractSocket::SocketError>::of(&QWebSocket::error));
    QTRY_VERIFY_WITH_TIMEOUT(refused.count() > 0, kPatience);
    Looking viewer(served.port(), "/stream?token=" + kToken);
    QTRY_VERIFY_WITH_TIMEOUT(viewer.isAt(served.window), kPatience);
}

void tst_ViewService::portInUseIsReported()
{
    const Served first;
    ViewSettings settings;
    settings.port = first.port();
    const Served second(settings);
    QVERIFY(!second.isOpen);
    QVERIFY2(
        second.error.startsWith(QString("cannot listen at 127.0.0.1, port %1: ").arg(first.port())),
        qPrintable(second.error));
}

void tst_ViewService::fileThatIsNoCertificateIsReported()
{
    ViewSettings settings;
    settings.certificateFile = "nothing.pem";
    settings.keyFile = "nothing.key";
    const Served served(settings);
    QVERIFY(!served.isOpen);
    QCOMPARE(served.error, QString("nothing.pem holds no certificate in PEM form"));
}

void tst_ViewService::encryptedPanelIsSeen()
{
    const QTemporaryDir folder;
    ViewSettings settings;
    settings.certificateFile = folder.filePath("panel.pem");
    settings.keyFile = folder.filePath("panel.key");
    QCOMPARE(QProcess::execute("openssl", {"req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days",
                                           "2", "-subj", "/CN=localhost", "-keyout",
                                           settings.keyFile, "-out", settings.certificateFile}),
             0);
    const Served served(settings);
    QVERIFY2(served.isOpen, qPrintable(served.error));
    QVERIFY(served.service.url().startsWith("https://"));
    QSslSocket socket;
    socket.connectToHostEncrypted("127.0.0.1", served.port());
    socket.ignoreSslErrors(); // Of a certificate that nobody has signed.
    socket.write(get("/values"));
    QTRY_VERIFY_WITH_TIMEOUT(socket.bytesAvailable() > 100, kPatience);
    QVERIFY(socket.readAll().endsWith("{\"asked\":1}"));
    QVERIFY(!answerTo(served.port(), get("/values")).contains("asked"));
}

NORVO_TEST(tst_ViewService)
#include "tst_ViewService.moc"
