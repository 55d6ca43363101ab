// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"
#include "TimerSubject.h"

#include <QElapsedTimer>
#include <QThread>
#include <QVector>

#include <algorithm>
#include <memory>

class tst_TimerDevice : public QObject
{
    Q_OBJECT

private slots:
    void ticksCarryTheirNumber();
    void ticksDoNotDrift();
    void ticksThatAreTooLateAreLeftOut();
    void ticksBeginAndEndByWire();
    void receiverMayEndTheTicks();
    void stopTakesAYesBack();
    void nothingLeavesAfterTheEnd_data();
    void nothingLeavesAfterTheEnd();
    void nextStartKnowsNothingOfTheLast();
    void receiverMayDeleteIt_data();
    void receiverMayDeleteIt();
};

void tst_TimerDevice::ticksCarryTheirNumber()
{
    QElapsedTimer timer;
    timer.start();
    TimerSubject subject("ticks", 20);
    QCOMPARE(subject.notes.take(), QStringList());
    QTRY_VERIFY(subject.notes.all().size() >= 2);
    QVERIFY(timer.elapsed() >= 20);
    QCOMPARE(subject.notes.all().mid(0, 1), QStringList("tick"));
    QVERIFY(subject.notes.all()[1].startsWith("number "));
}

/// The second tick is held up, and yet those behind it are where they should be. One for which the
/// machine was late says nothing, so the best of ten counts.
void tst_TimerDevice::ticksDoNotDrift()
{
    TimerSubject subject("ticks", 100);
    QElapsedTimer timer;
    timer.start();
    QVector<int> lateMs;
    subject.notes.onNote = [&] {
        const QString note = subject.notes.all().last();
        if (note == "number 1") {
            QThread::msleep(160);
        } else if (note != "tick") {
            lateMs.append(int(timer.elapsed()) - 100 * note.section(' ', 1).toInt());
        }
    };
    QTRY_VERIFY_WITH_TIMEOUT(lateMs.size() >= 11, 20000);
    QVERIFY(*std::min_element(lateMs.cend() - 10, lateMs.cend()) < 40);
}

void tst_TimerDevice::ticksThatAreTooLateAreLeftOut()
{
    TimerSubject subject("ticks", 50);
    QThread::msleep(1020); // As a machine that sleeps.
    QElapsedTimer timer;
    timer.start();
    QTRY_VERIFY(!subject.notes.all().isEmpty());
    QTest::qWait(1);
    QVERIFY(subject.notes.all().count("tick") <= 1 + timer.elapsed() / 50);
    QVERIFY(subject.notes.all()[1].section(' ', 1).toInt() >= 20);
}

void tst_TimerDevice::ticksBeginAndEndByWire()
{
    TimerSubject subject("ticks", 10, "false");
    QTest::qWait(100);
    QCOMPARE(subject.notes.take(), QStringList());
    subject.device.input(true);
    QTRY_VERIFY(!subject.notes.all().filter("number").isEmpty()); // Late ones are left out.
    subject.device.stop();
    subject.notes.take();
    QTest::qWait(50);
    QCOMPARE(subject.notes.take(), QStringList());
    subject.device.start();
    QTRY_VERIFY(!subject.notes.all().isEmpty());
    subject.device.input(false);
    subject.notes.take();
    QTest::qWait(50);
    QCOMPARE(subject.notes.take(), QStringList());
}

void tst_TimerDevice::receiverMayEndTheTicks()
{
    TimerSubject subject("ticks", 10);
    subject.notes.onNote = [&subject] { subject.device.stop(); };
    QTRY_COMPARE(subject.notes.all(), QStringList("tick"));
    QTest::qWait(50);
    QCOMPARE(subject.notes.all(), QStringList("tick"));
}

void tst_TimerDevice::stopTakesAYesBack()
{
    for (const char* mode : {"off-delay", "pulse"}) {
        TimerSubject subject(mode, kLongMs);
        subject.device.input(true);
        subject.device.stop();
        QCOMPARE(subject.notes.take(), (QStringList{"yes", "no"}));
        subject.device.input(true);
        QCOMPARE(subject.notes.take(), QStringList("yes"));
    }
}

void tst_TimerDevice::nothingLeavesAfterTheEnd_data()
{
    QTest::addColumn<QString>("mode");
    for (const char* mode : {"ticks", "delay", "on-delay", "off-delay", "pulse"}) {
        QTest::newRow(mode) << mode;
    }
}

void tst_TimerDevice::nothingLeavesAfterTheEnd()
{
    QFETCH(QString, mode);
    TimerSubject subject(mode, 5);
    subject.device.input(true);
    if (mode == "off-delay") {
        subject.device.input(false);
    }
    subject.notes.take();
    subject.end();
    subject.device.input(true);
    subject.device.start();
    subject.device.stop();
    QTest::qWait(50);
    QCOMPARE(subject.notes.take(), QStringList());
}

void tst_TimerDevice::nextStartKnowsNothingOfTheLast()
{
    TimerSubject subject("pulse", kLongMs);
    subject.device.input(true);
    subject.end();
    subject.notes.take();
    subject.start();
    subject.device.input(true);
    QCOMPARE(subject.notes.take(), QStringList("yes"));
}

void tst_TimerDevice::receiverMayDeleteIt_data()
{
    nothingLeavesAfterTheEnd_data();
}

void tst_TimerDevice::receiverMayDeleteIt()
{
    QFETCH(QString, mode);
    auto device = std::make_unique<TimerDevice>();
    device->setParam("mode", mode);
    device->setParam("time", "1");
    device->setRunning(device->initialise());
    TimerNotes notes(*device);
    notes.onNote = [&device] { device.reset(); };
    device->postInitialisation();
    if (mode == "pulse" || mode == "off-delay") {
        device->input();
    } else {
        device->input(true);
    }
    QTRY_VERIFY(!device);
    QCOMPARE(notes.all().size(), 1);
}

NORVO_GUILESS_TEST(tst_TimerDevice)
#include "tst_TimerDevice.moc"
