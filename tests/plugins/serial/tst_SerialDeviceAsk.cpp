// SPDX-License-Identifier: GPL-3.0-or-later

#include "SerialStand.h"
#include "TestMain.h"

#include <QtTest>

#include <chrono>

/// Ask and answer.
class tst_SerialDeviceAsk : public QObject
{
    Q_OBJECT

private slots:
    void answerConnects();
    void pollsDoNotPileUp();
    void missingAnswersAreAFaultAndThenDisconnect();
    void lateAndUnaskedAnswersLeaveAsFrames();
    void writesWhileItIsMissingNeverArrive();
    void onlyAnswersMissedInARowCount();
    void waitsForAnAnswerThatThisThreadHasNotRead();
    void answerThatAReceiverKeepsFromBeingReadIsWaitedFor();
};

namespace {

/// Waits for a question.
bool isAsked(PseudoPort& port, const QByteArray& question = "W\n")
{
    QByteArray asked;
    return QTest::qWaitFor([&] { return (asked += port.read()) == question; });
}

} // namespace

void tst_SerialDeviceAsk::answerConnects()
{
    PseudoPort port;
    SerialSubject subject(port.path(), {{"ask", "W"}, {"every", "50"}, {"timeout", "5000"}});
    subject.start();
    QVERIFY(isAsked(port));
    QCOMPARE(subject.notes, QStringList());
    port.write("12\n");
    QTRY_COMPARE(subject.notes, QStringList({"connected", "text 12", "number 12"}));
    QVERIFY(isAsked(port));
    port.write("13\n");
    QTRY_COMPARE(subject.notes.mid(3), QStringList({"text 13", "number 13"}));
    QCOMPARE(subject.faults, QStringList());
}

void tst_SerialDeviceAsk::pollsDoNotPileUp()
{
    PseudoPort port;
    SerialSubject subject(port.path(), {{"ask", "W"}, {"every", "1"}, {"timeout", "60000"}});
    subject.start();
    QVERIFY(isAsked(port));
    QTest::qWait(300);
    QCOMPARE(port.read(), QByteArray()); // Not before the answer.
    port.write("1\n");
    QVERIFY(isAsked(port));
}

void tst_SerialDeviceAsk::missingAnswersAreAFaultAndThenDisconnect()
{
    PseudoPort port;
    QByteArray unanswered;
    SerialSubject subject(port.path(), {{"ask", "W"}, {"every", "100"}, {"timeout", "500"}});
    QObject::connect(&subject.device, &SerialDevice::connected, &subject.device, [&](bool isThere) {
        unanswered = port.read();
        if (isThere) { // A busy machine may have been late with the first answer.
            subject.faults.clear();
        }
    });
    subject.start();
    QVERIFY(isAsked(port));
    port.write("1\n");
    QTRY_COMPARE(subject.notes, QStringList({"connected", "text 1", "number 1", "away"}));
    QCOMPARE(subject.faults, QStringList("no answer within 500 ms"));
    QCOMPARE(unanswered, QByteArray("W\nW\nW\n"));
    port.write("2\n");
    QTRY_COMPARE(subject.notes.mid(4), QStringList({"connected", "text 2", "number 2"}));
}

void tst_SerialDeviceAsk::lateAndUnaskedAnswersLeaveAsFrames()
{
    PseudoPort port;
    SerialSubject subject(port.path(), {{"ask", "W"}, {"every", "60000"}, {"timeout", "50"}});
    subject.start();
    QVERIFY(isAsked(port));
    QTRY_COMPARE(subject.faults.size(), 1);
    port.write("late\nunasked\n");
    QTRY_COMPARE(subject.notes, QStringList({"connected", "text late", "text unasked"}));
    QCOMPARE(port.read(), QByteArray()); // They change nothing of when the next question is due.
}

void tst_SerialDeviceAsk::writesWhileItIsMissingNeverArrive()
{
    PseudoPort port;
    SerialSubject subject(port.path(), {{"ask", "W"}, {"every", "50"}, {"timeout", "50"}});
    subject.start();
    subject.device.input("never 1");
    QTRY_COMPARE(subject.notes, QStringList("away"));
    subject.device.input("never 2");
    QByteArray written = port.read();
    port.write("1\n");
    QTRY_COMPARE(subject.notes.size(), 4);
    subject.device.input("now");
    QTRY_VERIFY((written += port.read()).contains("now\n"));
    QVERIFY(!written.contains("never"));
    QTRY_COMPARE(subject.alerts.filter("inputs lost"),
                 QStringList("inputs lost, the device is not connected: 2"));
}

void tst_SerialDeviceAsk::onlyAnswersMissedInARowCount()
{
    norvo::Poll poll(std::chrono::milliseconds(5), std::chrono::milliseconds(5));
    int asked = 0;
    QVector<int> missed;
    QObject::connect(&poll, &norvo::Poll::ask, [&] {
        if (++asked == 3) {
            poll.noteAnswer();
        }
    });
    QObject::connect(&poll, &norvo::Poll::missed, [&](int inARow) { missed.append(inARow); });
    poll.start();
    QTRY_VERIFY(missed.size() >= 4);
    QCOMPARE(missed.mid(0, 4), QVector<int>({1, 2, 1, 2}));
}

void tst_SerialDeviceAsk::waitsForAnAnswerThatThisThreadHasNotRead()
{
    norvo::Poll poll(std::chrono::milliseconds(10), std::chrono::milliseconds(10));
    bool hasUnread = true;
    int asked = 0;
    QVector<int> missed;
    qint64 firstMissed = 0;
    QElapsedTimer clock;
    poll.setUnreadQuery([&] { return hasUnread; });
    QObject::connect(&poll, &norvo::Poll::ask, [&] { ++asked; });
    QObject::connect(&poll, &norvo::Poll::missed, [&](int inARow) {
        firstMissed = missed.isEmpty() ? clock.elapsed() : firstMissed;
        missed.append(inARow);
        hasUnread = false;
    });
    clock.start();
    poll.start();
    QTRY_VERIFY(missed.size() >= 2);
    QCOMPARE(missed.mid(0, 2), QVector<int>({1, 2}));
    QVERIFY(firstMissed >= 60); // The answer's 10 ms, and 50 ms for what is unread.
    QVERIFY(asked >= 2);
    poll.stop();
    QVERIFY(!poll.isActive());
}

/// A receiver that runs an event loop, as a dialogue does: until it returns nothing more is read.
void tst_SerialDeviceAsk::answerThatAReceiverKeepsFromBeingReadIsWaitedFor()
{
    constexpr int timeoutMs = 1000;
    constexpr int extensionMs = 50;

    PseudoPort port;
    qint64 missedAfterMs = 0;
    SerialSubject subject(port.path(),
                          {{"ask", "W"}, {"every", "1"}, {"timeout", QString::number(timeoutMs)}});
    subject.start();
    QVERIFY(isAsked(port));
    QObject::connect(&subject.device, qOverload<QString>(&SerialDevice::output), &subject.device,
                     [&](const QString& text) {
                         if (text == "1") {
                             QElapsedTimer clock;
                             clock.start();
                             QVERIFY(isAsked(port));
                             port.write("2\n");
                             QTRY_COMPARE(subject.faults.size(), 1);
                             missedAfterMs = clock.elapsed();
                         }
                     });
    port.write("1\n");
    QTRY_VERIFY(subject.notes.contains("text 2"));
    QVERIFY2(missedAfterMs >= timeoutMs + extensionMs, qPrintable(QString::number(missedAfterMs)));
}

NORVO_GUILESS_TEST(tst_SerialDeviceAsk)
#include "tst_SerialDeviceAsk.moc"
