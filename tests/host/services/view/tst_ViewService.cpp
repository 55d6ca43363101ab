// SPDX-License-Identifier: GPL-3.0-or-later

#include "ServedView.h"
#include "TestMain.h"

using norvo::ViewService;
using norvo::ViewSettings;

class tst_ViewService : public QObject
{
    Q_OBJECT

private slots:
    void pageIsServed();
    void valuesAreServed();
    void panelIsAskedForValuesNowAndThen();
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

NORVO_TEST(tst_ViewService)
#include "tst_ViewService.moc"
