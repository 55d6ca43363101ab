// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/serial/FrameQueue.h"
#include "TestMain.h"

#include <QtTest>

using norvo::FrameQueue;
using norvo::Framing;

namespace {

constexpr FrameQueue::Limits kRoomy{1000, 1000000};

Framing lines(const QByteArray& end = "\n")
{
    Framing framing;
    framing.end = end;
    return framing;
}

Framing fixed(int length)
{
    Framing framing;
    framing.kind = Framing::Kind::Fixed;
    framing.length = length;
    return framing;
}

Framing prefixed(const QString& prefix)
{
    Framing framing;
    framing.kind = Framing::Kind::Prefixed;
    framing.readPrefix(prefix);
    return framing;
}

QByteArrayList takeAll(FrameQueue& queue)
{
    QByteArrayList frames;
    while (!queue.isEmpty()) {
        frames.append(queue.takeFirst());
    }
    return frames;
}

} // namespace

Q_DECLARE_METATYPE(Framing)

class tst_FrameQueue : public QObject
{
    Q_OBJECT

private slots:
    void framesAreCutWhereverTheStreamIsSplit_data();
    void framesAreCutWhereverTheStreamIsSplit();
    void firstLineMayBeTheRestOfOne();
    void lineThatHasBegunBeforeThePauseIsNoWholeOne();
    void bytesBeforeTheFirstPauseAreStray();
    void brokenFrameIsDroppedAfterAPause();
    void openLineSurvivesAPause();
    void longLineIsCutAndCounted_data();
    void longLineIsCutAndCounted();
    void memoryOfALineWithoutEndIsBounded();
    void lengthBeyondTheLimitLosesStep();
    void oldestGoWhenThereAreTooMany();
    void restartForgetsWhatHasCome();
};

void tst_FrameQueue::framesAreCutWhereverTheStreamIsSplit_data()
{
    QTest::addColumn<Framing>("framing");
    QTest::addColumn<QByteArray>("stream");
    QTest::addColumn<QByteArrayList>("frames");

    const QByteArray zero("a\0b", 3);
    QTest::newRow("LF") << lines() << QByteArray("one\n\ntwo\r\n\xff\xfe\n") + zero + "\n"
                        << QByteArrayList{"one", "", "two", "\xff\xfe", zero};
    QTest::newRow("CR") << lines("\r") << QByteArray("one\rtwo\n\r")
                        << QByteArrayList{"one", "two\n"};
    QTest::newRow("CRLF") << lines("\r\n") << QByteArray("o\rn\ne\r\n\r\r\n\r\n")
                          << QByteArrayList{"o\rn\ne", "\r", ""};
    QTest::newRow("other") << lines(";") << QByteArray("1;2\n;") << QByteArrayList{"1", "2\n"};
    QTest::newRow("doubled") << lines("::") << QByteArray("a:b::c:::")
                             << QByteArrayList{"a:b", "c"};
    QTest::newRow("fixed") << fixed(3) << QByteArray("abcd\nf\0\0\0xy", 11)
                           << QByteArrayList{"abc", "d\nf", QByteArray(3, '\0')};
    QTest::newRow("one byte") << prefixed("1")
                              << QByteArray("\x02"
                                            "ab\x00\x01\xff\x09z",
                                            8)
                              << QByteArrayList{"ab", "", "\xff"};
    QTest::newRow("two, big") << prefixed("2 big")
                              << QByteArray("\x00\x03"
                                            "abc\x00\x01\n",
                                            8)
                              << QByteArrayList{"abc", "\n"};
    QTest::newRow("two, little") << prefixed("2 little")
                                 << QByteArray("\x03\x00"
                                               "abc\x01",
                                               6)
                                 << QByteArrayList{"abc"};
    QTest::newRow("four, big") << prefixed("4 big") << QByteArray("\0\0\0\x02xy\0", 7)
                               << QByteArrayList{"xy"};
    QTest::newRow("four, little") << prefixed("4 little") << QByteArray("\x02\0\0\0xy", 6)
                                  << QByteArrayList{"xy"};
}

void tst_FrameQueue::framesAreCutWhereverTheStreamIsSplit()
{
    QFETCH(Framing, framing);
    QFETCH(QByteArray, stream);
    QFETCH(QByteArrayList, frames);

    for (int first = 0; first <= stream.size(); ++first) {
        for (int second = first; second <= stream.size(); ++second) {
            FrameQueue queue(framing, kRoomy);
            queue.notePause();
            queue.append(stream.left(first));
            queue.append(stream.mid(first, second - first));
            queue.append(stream.mid(second));
            QCOMPARE(takeAll(queue), frames);
        }
    }
    FrameQueue queue(framing, kRoomy);
    queue.notePause();
    for (const char byte : stream) {
        queue.append(QByteArray(1, byte));
    }
    QCOMPARE(takeAll(queue), frames);
}

void tst_FrameQueue::firstLineMayBeTheRestOfOne()
{
    FrameQueue queue(lines(), kRoomy);
    queue.append("1.5\n21.5\n");
    QVERIFY(queue.isInStep());
    QCOMPARE(takeAll(queue), QByteArrayList{"21.5"});
}

void tst_FrameQueue::lineThatHasBegunBeforeThePauseIsNoWholeOne()
{
    FrameQueue queue(lines(), kRoomy);
    queue.append("1");
    queue.notePause();
    QVERIFY(!queue.isInStep());
    queue.append(".5\n21.5\n");
    QCOMPARE(takeAll(queue), QByteArrayList{"21.5"});
}

void tst_FrameQueue::bytesBeforeTheFirstPauseAreStray()
{
    FrameQueue queue(fixed(2), kRoomy);
    queue.append("abc");
    QVERIFY(!queue.isInStep());
    queue.notePause();
    queue.append("defg");
    QCOMPARE(takeAll(queue), (QByteArrayList{"de", "fg"}));
    QCOMPARE(queue.takeLosses().stray, qint64(3));
    QCOMPARE(queue.takeLosses().stray, qint64(0));
}

void tst_FrameQueue::brokenFrameIsDroppedAfterAPause()
{
    FrameQueue queue(prefixed("1"), kRoomy);
    queue.notePause();
    queue.append("\x05"
                 "abc");
    QVERIFY(queue.isInFrame());
    queue.notePause();
    queue.append("\x02xy");
    QCOMPARE(takeAll(queue), QByteArrayList{"xy"});
    QCOMPARE(queue.takeLosses().incomplete, qint64(1));
}

void tst_FrameQueue::openLineSurvivesAPause()
{
    FrameQueue queue(lines(), kRoomy);
    queue.notePause();
    queue.append("21");
    queue.notePause();
    queue.append(".5\n");
    QCOMPARE(takeAll(queue), QByteArrayList{"21.5"});
    QCOMPARE(queue.takeLosses().incomplete, qint64(0));
}

void tst_FrameQueue::longLineIsCutAndCounted_data()
{
    QTest::addColumn<QByteArray>("end");
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("cut");

    for (const QByteArray& end : {QByteArray("\n"), QByteArray("\r\n"), QByteArray("::::")}) {
        for (const int more : {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 70000}) {
            QTest::addRow("%s %d", end.toHex().constData(), more)
                << end << Framing::kMaxLength + more << int(more > 0);
        }
    }
}

void tst_FrameQueue::longLineIsCutAndCounted()
{
    QFETCH(QByteArray, end);
    QFETCH(int, length);
    QFETCH(int, cut);

    for (const int piece : {length / 2 + 7, 65530, 1000}) {
        FrameQueue queue(lines(end), kRoomy);
        queue.notePause();
        const QByteArray stream = QByteArray(length, 'x') + end + "next" + end;
        for (int i = 0; i < stream.size(); i += piece) {
            queue.append(stream.mid(i, piece));
        }
        QCOMPARE(takeAll(queue),
                 (QByteArrayList{QByteArray(qMin(length, Framing::kMaxLength), 'x'), "next"}));
        QCOMPARE(queue.takeLosses().tooLong, qint64(cut));
    }
}

void tst_FrameQueue::memoryOfALineWithoutEndIsBounded()
{
    FrameQueue queue(lines("ab"), kRoomy);
    queue.notePause();
    for (int i = 0; i < 2000; ++i) {
        queue.append(QByteArray(5000, 'b') + 'a' + QByteArray(5000, 'c'));
    }
    queue.append("a");
    queue.append("b");
    QCOMPARE(queue.takeFirst().size(), Framing::kMaxLength);
    QVERIFY(queue.isEmpty());
    QCOMPARE(queue.takeLosses().tooLong, qint64(1));
}

void tst_FrameQueue::lengthBeyondTheLimitLosesStep()
{
    FrameQueue queue(prefixed("4 big"), kRoomy);
    queue.notePause();
    queue.append(QByteArray("\0\0\0\x01"
                            "a\xff\xff\xff\xff"
                            "abc",
                            12));
    QVERIFY(!queue.isInStep());
    queue.append(QByteArray("\0\0\0\x01"
                            "b",
                            5));
    queue.notePause();
    queue.append(QByteArray("\0\0\0\x01"
                            "c",
                            5));
    QCOMPARE(takeAll(queue), (QByteArrayList{"a", "c"}));
    const auto losses = queue.takeLosses();
    QCOMPARE(losses.tooLong, qint64(1));
    QCOMPARE(losses.stray, qint64(5));
}

void tst_FrameQueue::oldestGoWhenThereAreTooMany()
{
    FrameQueue few(lines(), {3, 1000});
    few.notePause();
    few.append("1\n2\n3\n4\n5\n");
    QCOMPARE(takeAll(few), (QByteArrayList{"3", "4", "5"}));
    QCOMPARE(few.takeLosses().dropped, qint64(2));

    FrameQueue small(lines(), {1000, 10});
    small.notePause();
    small.append("12345\n67890\nx\n");
    QCOMPARE(takeAll(small), (QByteArrayList{"67890", "x"}));
    small.append(QByteArray(50, 'x') + '\n');
    QCOMPARE(takeAll(small), QByteArrayList{QByteArray(50, 'x')});
    QCOMPARE(small.takeLosses().dropped, qint64(1));
}

void tst_FrameQueue::restartForgetsWhatHasCome()
{
    FrameQueue queue(lines(), kRoomy);
    queue.notePause();
    queue.append("one\ntw");
    queue.restart();
    QVERIFY(queue.isEmpty());
    QVERIFY(!queue.isInStep());
    QCOMPARE(queue.takeLosses().dropped, qint64(1));
    queue.append("o\nthree\n");
    QCOMPARE(takeAll(queue), QByteArrayList{"three"});
}

NORVO_APPLESS_TEST(tst_FrameQueue)
#include "tst_FrameQueue.moc"
