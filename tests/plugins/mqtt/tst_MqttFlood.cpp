// SPDX-License-Identifier: GPL-3.0-or-later

#include "MqttSubject.h"
#include "Peer.h"
#include "TestBroker.h"
#include "TestMain.h"

#include <QAbstractEventDispatcher>
#include <QtTest>

#include <limits>
#include <thread>

namespace {

constexpr int kPatience = 60000; ///< ms
constexpr int kRate = 50000;     ///< Messages a second.

qint64 residentKilobytes()
{
    QFile file("/proc/self/statm");
    return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').value(1).toLongLong() * 4 : 0;
}

} // namespace

/// More than a panel can show. NORVO_FLOOD_SECONDS in the environment makes it last longer.
class tst_MqttFlood : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { mosquitto_lib_init(); }
    void cleanupTestCase() { mosquitto_lib_cleanup(); }
    void steadyStreamIsTakenSomeThirtyTimesASecond();
    void messageAfterAFewComesSoon();
    void floodLeavesTheWindowFreeAndMemoryBounded();
};

/// Each time the window is painted.
void tst_MqttFlood::steadyStreamIsTakenSomeThirtyTimesASecond()
{
    constexpr int sent = 1500;
    TestBroker broker({"allow_anonymous true"});
    broker.start();
    MqttSubject panel(broker.address());
    QCOMPARE(panel.device.addOutput("t", QString("bench/t")), QString());
    int pass = 0;
    int count = 0;
    QSet<int> passes;
    QObject context;
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake,
                     &context, [&pass] { ++pass; });
    Listener values;
    values.onNote = [&] {
        ++count;
        passes.insert(pass);
    };
    values.listenTo(panel.device, "t");
    panel.startAndConnect();
    Peer peer(broker.port());
    peer.waitUntilUp();

    QElapsedTimer whole;
    whole.start();
    std::thread stream([&peer] {
        for (int i = 0; i < sent; ++i) {
            peer.publish("bench/t", "x"); // Leaves as a text alone.
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    });
    QTRY_COMPARE_WITH_TIMEOUT(count, sent, kPatience);
    stream.join();
    const qint64 mostPasses = whole.elapsed() / 33 + 5;
    QVERIFY2(passes.size() <= mostPasses, qPrintable(QString::number(passes.size())));
}

/// Each few are answered with as many, so that a pause as after many would hold all of them up.
/// However busy the machine is, some of them come through.
void tst_MqttFlood::messageAfterAFewComesSoon()
{
    constexpr int few = 4;
    constexpr qint64 soonMs = 25;
    TestBroker broker({"allow_anonymous true"});
    broker.start();
    MqttSubject panel(broker.address());
    QCOMPARE(panel.device.addOutput("t", QString("bench/t")), QString());
    Peer peer(broker.port());
    peer.waitUntilUp();
    qint64 shortestMs = std::numeric_limits<qint64>::max();
    int count = 0;
    QElapsedTimer sincePublished;
    const auto publishFew = [&] {
        sincePublished.start();
        for (int i = 0; i < few; ++i) {
            peer.publish("bench/t", "x"); // Leaves as a text alone.
        }
    };
    Listener values;
    values.onNote = [&] {
        if (++count % few == 0) {
            shortestMs = qMin(shortestMs, sincePublished.elapsed());
            QTimer::singleShot(0, &panel.device, publishFew); // Not in the turn that is going on.
        }
    };
    values.listenTo(panel.device, "t");
    panel.startAndConnect();
    QTimer::singleShot(200, &panel.device, publishFew); // It has subscribed by then.
    QTRY_VERIFY_WITH_TIMEOUT(shortestMs <= soonMs, kPatience);
    QVERIFY(count >= few);
}

void tst_MqttFlood::floodLeavesTheWindowFreeAndMemoryBounded()
{
    const int seconds = qMax(2, qEnvironmentVariableIntValue("NORVO_FLOOD_SECONDS"));
    TestBroker broker({"allow_anonymous true", "max_inflight_messages 0"});
    broker.start();
    MqttSubject panel(broker.address());
    QCOMPARE(panel.device.addOutput("t", QString("bench/t")), QString());
    QCOMPARE(panel.device.addOutput("end", QString("bench/end qos1")), QString());
    qint64 count = 0;
    double last = -1;
    bool isOrdered = true;
    Listener values;
    values.onNote = [&] {
        const double number = values.notes.takeLast().section(' ', 1).toDouble();
        values.notes.clear();
        isOrdered = isOrdered && number >= last;
        last = number;
        ++count;
    };
    values.listenTo(panel.device, "t");
    panel.listenTo("end");
    panel.startAndConnect();
    Peer peer(broker.port());
    peer.waitUntilUp();

    const qint64 before = residentKilobytes();
    std::thread flood([&peer, seconds] {
        QElapsedTimer clock;
        clock.start();
        for (qint64 sent = 0; sent < qint64(seconds) * kRate;) {
            for (const qint64 due = clock.elapsed() * kRate / 1000; sent < due; ++sent) {
                peer.publish("bench/t", QByteArray::number(sent + 2)); // Neither yes nor no.
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    });
    qint64 longestGap = 0;
    qint64 largest = before;
    int turns = 0;
    QElapsedTimer whole;
    QElapsedTimer gap;
    whole.start();
    gap.start();
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        longestGap = qMax(longestGap, gap.restart());
        largest = qMax(largest, residentKilobytes());
        ++turns;
    });
    timer.start(5);
    QTRY_VERIFY_WITH_TIMEOUT(whole.hasExpired(seconds * 1000), kPatience);
    flood.join();
    timer.stop();
    while (panel.notes.filter("end").isEmpty() && !whole.hasExpired(kPatience)) {
        peer.publish("bench/end", "now", 1);
        QTest::qWait(100);
    }
    qInfo("%lld of %d messages in %d s; longest gap %lld ms, %d turns; %lld kB more", count / 2,
          seconds * kRate, seconds, longestGap, turns, largest - before);
    QVERIFY(!panel.notes.filter("end").isEmpty());
    QVERIFY(isOrdered);
    QVERIFY(count > 1000);
    QVERIFY(turns >= seconds); // A window that answers; how fast is for a machine that is free.
#ifndef __SANITIZE_ADDRESS__   // It keeps what has been freed for a while.
    QVERIFY(largest - before < 200 * 1024); // The peer's own queue included.
#endif
}

NORVO_GUILESS_TEST(tst_MqttFlood)
#include "tst_MqttFlood.moc"
