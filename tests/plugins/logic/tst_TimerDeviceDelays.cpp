// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"
#include "TimerSubject.h"

#include <QElapsedTimer>
#include <QSignalSpy>

#include <cmath>

/// How long a timer holds back values, and yes or no.
class tst_TimerDeviceDelays : public QObject
{
    Q_OBJECT

private slots:
    void valuesAreDelayedInTheirOrder();
    void valuesThatWaitAreBounded();
    void yesLeavesAfterTheOnDelayIfItLasts();
    void yesThatIsRepeatedDoesNotDelayTheOnDelay();
    void noLeavesAfterTheOffDelay();
    void pulseLastsItsTime();
    void pulseIsNotProlonged();
    void otherValuesCountAsYesOrNo_data();
    void otherValuesCountAsYesOrNo();
    void pulseInputIsAYesAndANo();
};

void tst_TimerDeviceDelays::valuesAreDelayedInTheirOrder()
{
    TimerSubject subject("delay", 100);
    QElapsedTimer timer;
    timer.start();
    subject.device.input(2.5);
    subject.device.input(QString("abc"));
    subject.device.input(true);
    subject.device.input();
    subject.device.input(2.5);
    QCOMPARE(subject.notes.all(), QStringList());
    QTRY_COMPARE(subject.notes.all().size(), 5);
    QVERIFY(timer.elapsed() >= 100);
    QCOMPARE(subject.notes.take(),
             (QStringList{"number 2.5", "text abc", "yes", "tick", "number 2.5"}));
    subject.device.input(1.0);
    QTest::qWait(20);
    subject.device.input(2.0);
    QTRY_COMPARE(subject.notes.all(), (QStringList{"number 1", "number 2"}));
}

void tst_TimerDeviceDelays::valuesThatWaitAreBounded()
{
    TimerSubject subject("delay", 200);
    QSignalSpy alerts(&subject.device, &BaseDevice::alertRaised);
    for (int i = 0; i < 10010; ++i) {
        subject.device.input(double(i));
    }
    QCOMPARE(alerts.count(), 1);
    QTRY_COMPARE(subject.notes.all().size(), 10000);
    QCOMPARE(subject.notes.all().last(), QString("number 9999"));
    subject.notes.take();
    subject.device.input(7.0);
    QTRY_COMPARE(subject.notes.all(), QStringList("number 7"));
    subject.notes.take();
}

void tst_TimerDeviceDelays::yesLeavesAfterTheOnDelayIfItLasts()
{
    TimerSubject subject("on-delay", 100);
    subject.device.input(true);
    subject.device.input(false);
    QTest::qWait(200);
    QCOMPARE(subject.notes.take(), QStringList());
    QElapsedTimer timer;
    timer.start();
    subject.device.input(true);
    QCOMPARE(subject.notes.take(), QStringList());
    QTRY_COMPARE(subject.notes.all(), QStringList("yes"));
    subject.notes.take();
    QVERIFY(timer.elapsed() >= 95); // A coarse clock may be early by a millisecond or so.
    subject.device.input(false);
    QCOMPARE(subject.notes.take(), QStringList("no"));
}

void tst_TimerDeviceDelays::yesThatIsRepeatedDoesNotDelayTheOnDelay()
{
    TimerSubject subject("on-delay", 100);
    QElapsedTimer timer;
    timer.start();
    while (subject.notes.all().isEmpty() && timer.elapsed() < 5000) {
        subject.device.input(true);
        QTest::qWait(10);
    }
    QCOMPARE(subject.notes.take(), QStringList("yes"));
}

void tst_TimerDeviceDelays::noLeavesAfterTheOffDelay()
{
    TimerSubject subject("off-delay", 100);
    subject.device.input(true);
    QCOMPARE(subject.notes.take(), QStringList("yes"));
    subject.device.input(false);
    subject.device.input(true); // In time.
    QTest::qWait(200);
    QCOMPARE(subject.notes.take(), QStringList());
    subject.device.input(false);
    QCOMPARE(subject.notes.take(), QStringList());
    QTRY_COMPARE(subject.notes.all(), QStringList("no"));
    subject.notes.take();
}

void tst_TimerDeviceDelays::pulseLastsItsTime()
{
    TimerSubject subject("pulse", 100);
    subject.device.input(true);
    QCOMPARE(subject.notes.take(), QStringList("yes"));
    subject.device.input(false);
    subject.device.input(true);
    QCOMPARE(subject.notes.take(), QStringList());
    QTRY_COMPARE(subject.notes.all(), QStringList("no"));
    subject.notes.take();
    subject.device.input(true); // It has not been no since.
    QCOMPARE(subject.notes.take(), QStringList());
    subject.device.input(false);
    subject.device.input(true);
    QCOMPARE(subject.notes.take(), QStringList("yes"));
}

void tst_TimerDeviceDelays::pulseIsNotProlonged()
{
    TimerSubject subject("pulse", 100);
    QElapsedTimer timer;
    timer.start();
    while (!subject.notes.all().contains("no") && timer.elapsed() < 5000) {
        subject.device.input();
        QTest::qWait(10);
    }
    QCOMPARE(subject.notes.all().mid(0, 2), (QStringList{"yes", "no"}));
}

void tst_TimerDeviceDelays::otherValuesCountAsYesOrNo_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("isYes");
    QTest::newRow("number") << QVariant(0.5) << true;
    QTest::newRow("negative number") << QVariant(-1.0) << true;
    QTest::newRow("zero") << QVariant(0.0) << false;
    QTest::newRow("no number") << QVariant(std::nan("")) << false;
    QTest::newRow("on") << QVariant("On") << true;
    QTest::newRow("off") << QVariant("off") << false;
    QTest::newRow("number as text") << QVariant("2") << true;
    QTest::newRow("other text") << QVariant("abc") << false;
}

void tst_TimerDeviceDelays::otherValuesCountAsYesOrNo()
{
    QFETCH(QVariant, value);
    TimerSubject subject("off-delay", kLongMs);
    if (value.userType() == QMetaType::Double) {
        subject.device.input(value.toDouble());
    } else {
        subject.device.input(value.toString());
    }
    QTEST(subject.notes.take() == QStringList("yes"), "isYes");
}

void tst_TimerDeviceDelays::pulseInputIsAYesAndANo()
{
    TimerSubject onDelay("on-delay", 1);
    onDelay.device.input();
    QTest::qWait(50);
    QCOMPARE(onDelay.notes.take(), QStringList());
    for (const char* mode : {"off-delay", "pulse"}) {
        TimerSubject subject(mode, 20);
        subject.device.input();
        QCOMPARE(subject.notes.take(), QStringList("yes"));
        QTRY_COMPARE(subject.notes.all(), QStringList("no"));
        subject.notes.take();
    }
}

NORVO_GUILESS_TEST(tst_TimerDeviceDelays)
#include "tst_TimerDeviceDelays.moc"
