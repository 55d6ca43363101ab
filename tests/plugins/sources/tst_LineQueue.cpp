// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/sources/process/LineQueue.h"
#include "TestMain.h"

#include <QtTest>

using norvo::LineQueue;

namespace {

constexpr LineQueue::Limits kRoomy{1000, 1000, 100000};

void feed(LineQueue& queue, const QByteArray& bytes)
{
    queue.append(bytes.constData(), bytes.size());
}

QByteArrayList takeAll(LineQueue& queue)
{
    QByteArrayList lines;
    while (!queue.isEmpty()) {
        lines << queue.takeFirst();
    }
    return lines;
}

} // namespace

class tst_LineQueue : public QObject
{
    Q_OBJECT

private slots:
    void linesComeInOrder();
    void lineInPieces();
    void carriageReturnBeforeTheEndGoes();
    void emptyLinesAreLines();
    void nulBytesStay();
    void lastLineWithoutEndComesAtTheFinish();
    void longestLineIsKeptWhole();
    void longerLineIsCutAndCountedOnce();
    void oldestLinesGoWhenThereAreTooMany();
    void oldestLinesGoWhenTheyAreTooLong();
    void newestLineStaysWhateverItsLength();
    void manyLinesThroughASmallQueue();
    void lastLineWithoutEndCountsForTheLimits();
    void clearForgetsUncounted();
    void clearedQueueIsLikeANewOne();
};

void tst_LineQueue::linesComeInOrder()
{
    LineQueue queue(kRoomy);
    QVERIFY(queue.isEmpty());
    feed(queue, "one\ntwo\nthree\n");
    QCOMPARE(takeAll(queue), (QByteArrayList{"one", "two", "three"}));
    QVERIFY(!queue.hasLosses());
}

void tst_LineQueue::lineInPieces()
{
    LineQueue queue(kRoomy);
    feed(queue, "on");
    QVERIFY(queue.isEmpty());
    feed(queue, "e");
    feed(queue, "\ntw");
    QCOMPARE(takeAll(queue), QByteArrayList{"one"});
    feed(queue, "o\n");
    QCOMPARE(takeAll(queue), QByteArrayList{"two"});
}

void tst_LineQueue::carriageReturnBeforeTheEndGoes()
{
    LineQueue queue(kRoomy);
    feed(queue, "a\r\n\r\nb\rc\r\r\n");
    QCOMPARE(takeAll(queue), (QByteArrayList{"a", "", "b\rc\r"}));
}

void tst_LineQueue::emptyLinesAreLines()
{
    LineQueue queue(kRoomy);
    feed(queue, "\n\n");
    QCOMPARE(takeAll(queue), (QByteArrayList{"", ""}));
}

void tst_LineQueue::nulBytesStay()
{
    LineQueue queue(kRoomy);
    feed(queue, QByteArray("a\0b\n", 4));
    QCOMPARE(queue.takeFirst(), QByteArray("a\0b", 3));
}

void tst_LineQueue::lastLineWithoutEndComesAtTheFinish()
{
    LineQueue queue(kRoomy);
    feed(queue, "one\ntwo");
    queue.finish();
    QCOMPARE(takeAll(queue), (QByteArrayList{"one", "two"}));
    queue.finish();
    QVERIFY(queue.isEmpty());
}

void tst_LineQueue::longestLineIsKeptWhole()
{
    LineQueue queue({5, 10, 1000});
    feed(queue, "12345\n");
    feed(queue, "123");
    feed(queue, "45\n");
    QCOMPARE(takeAll(queue), (QByteArrayList{"12345", "12345"}));
    QCOMPARE(queue.takeCut(), qint64(0));
}

void tst_LineQueue::longerLineIsCutAndCountedOnce()
{
    LineQueue queue({5, 10, 1000});
    feed(queue, "123456\nnext\n");
    feed(queue, "abc");
    feed(queue, "def");
    feed(queue, "ghi");
    QVERIFY(queue.hasLosses());
    feed(queue, "\nlast\n");
    QCOMPARE(takeAll(queue), (QByteArrayList{"12345", "next", "abcde", "last"}));
    QCOMPARE(queue.takeCut(), qint64(2));
    QCOMPARE(queue.takeCut(), qint64(0));
    QVERIFY(!queue.hasLosses());
}

void tst_LineQueue::oldestLinesGoWhenThereAreTooMany()
{
    LineQueue queue({5, 3, 1000});
    feed(queue, "1\n2\n3\n4\n5\n");
    QVERIFY(queue.hasLosses());
    QCOMPARE(queue.takeDropped(), qint64(2));
    QCOMPARE(takeAll(queue), (QByteArrayList{"3", "4", "5"}));
    feed(queue, "6\n");
    QCOMPARE(queue.takeDropped(), qint64(0));
}

void tst_LineQueue::oldestLinesGoWhenTheyAreTooLong()
{
    LineQueue queue({100, 100, 20});
    feed(queue, "123456789\nabcdefghi\n");
    QCOMPARE(queue.takeDropped(), qint64(0));
    feed(queue, "x\n");
    QCOMPARE(queue.takeDropped(), qint64(1));
    QCOMPARE(takeAll(queue), (QByteArrayList{"abcdefghi", "x"}));
}

void tst_LineQueue::newestLineStaysWhateverItsLength()
{
    LineQueue queue({100, 100, 20});
    feed(queue, "1\n" + QByteArray(50, 'x') + '\n');
    QCOMPARE(takeAll(queue), QByteArrayList{QByteArray(50, 'x')});
    QCOMPARE(queue.takeDropped(), qint64(1));
}

void tst_LineQueue::manyLinesThroughASmallQueue()
{
    LineQueue queue({100, 7, 1000});
    qint64 taken = 0;
    for (int i = 0; i < 10000; ++i) {
        feed(queue, QByteArray::number(i) + '\n');
        if (i % 3 == 0) {
            queue.takeFirst();
            ++taken;
        }
    }
    QCOMPARE(takeAll(queue), (QByteArrayList{"9994", "9995", "9996", "9997", "9998", "9999"}));
    QCOMPARE(queue.takeDropped() + taken + 6, qint64(10000));
}

void tst_LineQueue::clearForgetsUncounted()
{
    LineQueue queue(kRoomy);
    feed(queue, "one\ntw");
    queue.clear();
    QVERIFY(queue.isEmpty());
    QVERIFY(!queue.hasLosses());
    feed(queue, "o\n");
    QCOMPARE(takeAll(queue), QByteArrayList{"o"});
}

void tst_LineQueue::lastLineWithoutEndCountsForTheLimits()
{
    LineQueue queue({1000, 2, 100000});
    feed(queue, "one\ntwo\nthree");
    queue.finish();
    QCOMPARE(queue.takeDropped(), qint64(1));
    QCOMPARE(takeAll(queue), (QByteArrayList{"two", "three"}));
}

void tst_LineQueue::clearedQueueIsLikeANewOne()
{
    LineQueue queue({5, 1000, 100000});
    feed(queue, "a\nbbbbb\nlonger");
    QCOMPARE(queue.takeFirst(), QByteArray("a"));
    QCOMPARE(queue.takeCut(), qint64(1));
    queue.clear();
    feed(queue, "x\nlonger\n");
    QCOMPARE(takeAll(queue), (QByteArrayList{"x", "longe"}));
    QCOMPARE(queue.takeCut(), qint64(1));
}

NORVO_APPLESS_TEST(tst_LineQueue)
#include "tst_LineQueue.moc"
