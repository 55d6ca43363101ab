// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/mqtt/NewsQueue.h"
#include "Effort.h"
#include "TestMain.h"

#include <QtTest>

using norvo::News;
using norvo::NewsQueue;

class tst_NewsQueue : public QObject
{
    Q_OBJECT

private slots:
    void orderStays();
    void newestOfEachTopicStays();
    void bytesAreBounded();
    void newestHalfOfTheBytesStays();
    void topicsAreBounded();
    void otherNewsAlwaysStay();
    void floodCostsLittle();

private:
    static News message(const QByteArray& topic, const QByteArray& payload, int filter = 1)
    {
        News news;
        news.topic = topic;
        news.payload = payload;
        news.filters.append(filter);
        return news;
    }
    static QStringList rest(NewsQueue& queue)
    {
        QStringList texts;
        for (const News& news : queue.take(1000000)) {
            texts.append(news.kind == News::Message ? news.topic + ' ' + news.payload
                                                    : QByteArray("event"));
        }
        return texts;
    }
};

void tst_NewsQueue::orderStays()
{
    NewsQueue queue;
    QVERIFY(queue.isEmpty());
    for (int i = 0; i < 5; ++i) {
        queue.push(message("t", QByteArray::number(i)));
    }
    QCOMPARE(queue.take(2).size(), std::size_t(2));
    QVERIFY(!queue.isEmpty());
    QCOMPARE(rest(queue), QStringList({"t 2", "t 3", "t 4"}));
    QVERIFY(queue.take(1).empty());
    QCOMPARE(queue.takeDropped(), qint64(0));
}

void tst_NewsQueue::newestOfEachTopicStays()
{
    NewsQueue queue;
    queue.push(message("rare", "1"));
    for (std::size_t i = 0; i < NewsQueue::kMaxCount - 2; ++i) {
        queue.push(message("busy", QByteArray::number(int(i))));
    }
    queue.push(message("busy", "last", 2)); // For another filter: it is not the same message.
    QCOMPARE(queue.takeDropped(), qint64(0));
    queue.push(message("busy", "last"));
    QCOMPARE(rest(queue), QStringList({"rare 1", "busy last", "busy last"}));
    QCOMPARE(queue.takeDropped(), qint64(NewsQueue::kMaxCount) - 2);
    QCOMPARE(queue.takeDropped(), qint64(0));
}

void tst_NewsQueue::bytesAreBounded()
{
    NewsQueue queue;
    const QByteArray large(1024 * 1024, 'x');
    for (int i = 0; i < 100; ++i) {
        queue.push(message(QByteArray::number(i), large));
    }
    std::size_t bytes = 0;
    const auto all = queue.take(1000);
    for (const News& news : all) {
        bytes += std::size_t(news.payload.size());
    }
    QVERIFY(bytes <= NewsQueue::kMaxBytes);
    QVERIFY(bytes >= NewsQueue::kMaxBytes / 4);
    QCOMPARE(all.back().topic, QByteArray("99"));
    QCOMPARE(qint64(all.size()) + queue.takeDropped(), qint64(100));
}

void tst_NewsQueue::newestHalfOfTheBytesStays()
{
    constexpr int size = 1024 * 1024;
    constexpr int most = int(NewsQueue::kMaxBytes / size);
    NewsQueue queue;
    for (int i = 0; i < most; ++i) {
        queue.push(message(QByteArray::number(100 + i), QByteArray(size - 3, 'x')));
    }
    QCOMPARE(queue.takeDropped(), qint64(0));
    queue.push(message("200", QByteArray(size - 3, 'x')));
    QCOMPARE(queue.takeDropped(), qint64(most / 2 + 1));
    const auto all = queue.take(1000);
    QCOMPARE(all.size(), std::size_t(most / 2));
    QCOMPARE(all.back().topic, QByteArray("200"));
}

void tst_NewsQueue::topicsAreBounded()
{
    NewsQueue queue;
    const int count = int(NewsQueue::kMaxCount) * 3;
    for (int i = 0; i < count; ++i) {
        queue.push(message(QByteArray::number(i), {}));
    }
    const auto all = queue.take(1000000);
    QVERIFY(all.size() <= NewsQueue::kMaxCount);
    QCOMPARE(all.back().topic, QByteArray::number(count - 1));
    QCOMPARE(qint64(all.size()) + queue.takeDropped(), qint64(count));
}

void tst_NewsQueue::otherNewsAlwaysStay()
{
    NewsQueue queue;
    News event;
    event.kind = News::Disconnected;
    queue.push(message("t", "before"));
    queue.push(event);
    for (std::size_t i = 0; i < NewsQueue::kMaxCount - 1; ++i) {
        queue.push(message("t", "after"));
    }
    QCOMPARE(rest(queue), QStringList({"event", "t after"}));
}

void tst_NewsQueue::floodCostsLittle()
{
    NewsQueue queue;
    const norvo::ProcessorTimer timer;
    for (int i = 0; i < 500000; ++i) {
        queue.push(message(QByteArray::number(i % 100), "12.5"));
    }
    QVERIFY(timer.elapsedMs() < 5000);
    QVERIFY(queue.take(1000000).size() <= NewsQueue::kMaxCount);
}

NORVO_GUILESS_TEST(tst_NewsQueue)
#include "tst_NewsQueue.moc"
