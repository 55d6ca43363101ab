// SPDX-License-Identifier: GPL-3.0-or-later

#include "Effort.h"
#include "TestMain.h"
#include "TestServer.h"
#include "WebSocketSubject.h"

#include <QTimer>
#include <QtTest>

#include <algorithm>

class tst_WebSocketFlood : public QObject
{
    Q_OBJECT

private slots:
    void floodLeavesTheWindowFree();
    void queueDropsTheOldest();
    void queueIsBoundedInBytes();
};

void tst_WebSocketFlood::floodLeavesTheWindowFree()
{
    constexpr int rate = 10000;
    constexpr int seconds = 5;

    TestServer server;
    server.start();
    WebSocketSubject subject(server.url());
    subject.addOutput("value", {"$.value"}, false);
    int count = 0;
    double last = 0;
    bool isOrdered = true;
    Listener listener;
    QString signature;
    QObject* const provider = subject.device.getProvider("value(double)", signature);
    QVERIFY(
        connect(provider, ("2" + signature.toUtf8()).constData(), &listener, SLOT(take(double))));
    listener.onNote = [&] {
        const double value = listener.notes.takeLast().section(' ', 1).toDouble();
        isOrdered = isOrdered && value > last;
        last = value;
        ++count;
    };
    subject.startAndConnect();

    qint64 longest = 0;
    qint64 longestOwn = 0;
    norvo::OwnTimer gap;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    connect(&timer, &QTimer::timeout, this, [&] {
        const auto elapsed = gap.restart();
        longest = std::max(longest, elapsed.clockMs);
        longestOwn = std::max(longestOwn, elapsed.ownMs);
    });
    timer.start(1);
    const norvo::ProcessorTimer effort;
    server.obey(QString("flood %1 %2").arg(rate).arg(seconds));
    QTRY_VERIFY_WITH_TIMEOUT(server.news.contains("flooded"), 60000);
    QTRY_COMPARE_WITH_TIMEOUT(int(last), rate * seconds, 30000);
    qInfo("%d values of %d, %lld ms of the processor; longest gap %lld ms, %lld without others",
          count, rate * seconds, effort.elapsedMs(), longest, longestOwn);
    QVERIFY(isOrdered);
    QVERIFY2(longestOwn < 100, qPrintable(QString::number(longestOwn)));
}

void tst_WebSocketFlood::queueDropsTheOldest()
{
    norvo::MessageQueue queue;
    const int count = int(norvo::MessageQueue::kMaxCount) + 2;
    for (int i = 0; i < count; ++i) {
        queue.push(QByteArray::number(i));
    }
    QCOMPARE(queue.takeFirst(), QByteArray("2"));
    QCOMPARE(queue.takeDropped(), qint64(2));
    QCOMPARE(queue.takeDropped(), qint64(0));
    queue.drop();
    QVERIFY(queue.isEmpty());
    QCOMPARE(queue.takeDropped(), qint64(norvo::MessageQueue::kMaxCount - 1));
}

void tst_WebSocketFlood::queueIsBoundedInBytes()
{
    norvo::MessageQueue queue;
    const QByteArray megabyte(1024 * 1024, 'x');
    for (int i = 0; i < 17; ++i) {
        queue.push(megabyte);
    }
    QCOMPARE(queue.takeDropped(), qint64(1));
    queue.takeFirst();
    queue.push(megabyte);
    QCOMPARE(queue.takeDropped(), qint64(0));
}

NORVO_GUILESS_TEST(tst_WebSocketFlood)
#include "tst_WebSocketFlood.moc"
