// SPDX-License-Identifier: GPL-3.0-or-later

#include "SettleSubject.h"
#include "TestMain.h"

#include <QSignalSpy>

#include <memory>

/// What ends the waiting of a value, from the start of the device to its end.
class tst_SettleDeviceLife : public QObject
{
    Q_OBJECT

private slots:
    void cancelDropsWhatWaits();
    void flushPassesOnOnce();
    void flushModeWaitsForFlush();
    void nothingLeavesAtTheStop();
    void nextStartKnowsNothingOfTheLast();
    void nothingIsTakenUnlessRunning();
    void wrongParametersAreErrors_data();
    void wrongParametersAreErrors();
    void receiverMayFeedItAgain();
    void receiverMayDeleteIt();
};

void tst_SettleDeviceLife::cancelDropsWhatWaits()
{
    SettleSubject subject({{"time", "1"}});
    subject.device.input(5.0);
    subject.device.cancel();
    subject.device.cancel();
    QTest::qWait(50);
    QCOMPARE(subject.notes.take(), (QStringList{"pending", "done"}));
}

void tst_SettleDeviceLife::flushPassesOnOnce()
{
    SettleSubject subject({{"time", "20"}});
    subject.device.flush();
    subject.device.input(5.0);
    subject.device.flush();
    subject.device.flush();
    QTest::qWait(100);
    QCOMPARE(subject.notes.take(), (QStringList{"pending", "done", "number 5", "text 5"}));
}

void tst_SettleDeviceLife::flushModeWaitsForFlush()
{
    SettleSubject subject({{"mode", "flush"}, {"time", "1"}});
    subject.device.input(5.0);
    QTest::qWait(50);
    QCOMPARE(subject.notes.take(), QStringList("pending"));
}

void tst_SettleDeviceLife::nothingLeavesAtTheStop()
{
    SettleSubject subject({{"time", "1"}});
    subject.device.input(5.0);
    QCOMPARE(subject.notes.take(), QStringList("pending"));
    subject.device.setRunning(false);
    subject.device.preShutdown();
    subject.device.flush();
    QTest::qWait(50);
    QCOMPARE(subject.notes.take(), QStringList());
    QVERIFY(subject.device.initialise());
    subject.device.setRunning(true);
    subject.device.flush();
    QCOMPARE(subject.notes.take(), QStringList());
}

void tst_SettleDeviceLife::nextStartKnowsNothingOfTheLast()
{
    SettleSubject subject({{"mode", "flush"}, {"max", "80"}});
    const QStringList first = subject.pass(5.0);
    subject.pass(90.0); // Refused.
    subject.device.setRunning(false);
    subject.device.preShutdown();
    subject.device.setRunning(subject.device.initialise());
    QCOMPARE(subject.pass(5.0), first);
}

void tst_SettleDeviceLife::nothingIsTakenUnlessRunning()
{
    SettleSubject subject;
    subject.device.setRunning(false);
    subject.device.input(5.0);
    subject.device.setRunning(true);
    subject.device.flush();
    QCOMPARE(subject.notes.take(), QStringList());
}

void tst_SettleDeviceLife::wrongParametersAreErrors_data()
{
    QTest::addColumn<QString>("param");
    QTest::addColumn<QString>("value");
    QTest::newRow("time") << "time"
                          << "long";
    QTest::newRow("least number") << "min"
                                  << "low";
    QTest::newRow("no bound") << "max"
                              << "nan";
    QTest::newRow("wrong way round") << "max"
                                     << "-1";
    QTest::newRow("changes") << "changes"
                             << "sometimes";
}

void tst_SettleDeviceLife::wrongParametersAreErrors()
{
    QFETCH(QString, param);
    QFETCH(QString, value);
    SettleDevice device;
    device.setParam("min", "0");
    device.setParam(param, value);
    QSignalSpy errors(&device, &BaseDevice::errorOccurred);
    QVERIFY(!device.initialise());
    QCOMPARE(errors.count(), 1);
    QVERIFY(errors[0][0].toString().contains('"' + param + '"'));
}

void tst_SettleDeviceLife::receiverMayFeedItAgain()
{
    SettleSubject subject;
    bool isFed = false;
    subject.notes.onNote = [&] {
        if (subject.notes.all().last() == "number 5" && !isFed) {
            isFed = true;
            subject.device.input(6.0);
        }
    };
    QCOMPARE(subject.pass(5.0), (QStringList{"pending", "done", "number 5", "pending", "text 5"}));
    subject.device.flush();
    QCOMPARE(subject.notes.take(), (QStringList{"done", "number 6", "text 6"}));
}

void tst_SettleDeviceLife::receiverMayDeleteIt()
{
    for (const char* last : {"done", "refused ", "number 1", "text 1", "yes"}) {
        auto device = std::make_unique<SettleDevice>();
        device->setParam("max", "80");
        device->setRunning(device->initialise());
        SettleNotes notes(*device);
        device->input(90.0);
        device->flush();
        notes.take();
        device->input(1.0);
        notes.onNote = [&] {
            if (notes.all().last() == last) {
                device.reset();
            }
        };
        device->flush();
        QVERIFY(!device);
        QCOMPARE(notes.all().last(), QString(last));
    }
}

NORVO_GUILESS_TEST(tst_SettleDeviceLife)
#include "tst_SettleDeviceLife.moc"
