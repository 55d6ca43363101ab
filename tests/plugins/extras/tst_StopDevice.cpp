// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/extras/StopDevice.h"
#include "Declarations.h"
#include "Recorder.h"
#include "TickingTimers.h"
#include "TestMain.h"

#include <memory>

class tst_StopDevice : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsParameters();
    void declaresItsSignalsAndSlots();
    void stateAloneIsKeptAcrossStarts();
    void stateIsEmittedAtTheStart_data();
    void stateIsEmittedAtTheStart();
    void hitLatchesAndAnotherSendsAgain();
    void inputLatchesOnce();
    void noInputReleases();
    void yesIsSentUntilItIsAcknowledged_data();
    void yesIsSentUntilItIsAcknowledged();
    void noIsRepeatedOnlyWhereAnAnswerIsWired();
    void laterWiresDoNotHideThatAnAnswerIsWired();
    void stopOfThePanelEndsTheRepeat();
    void repeatHasALeastInterval();
    void onlyTheEqualStateConfirms();
    void freeKeyKeepsItsConfirmation();
    void newStateIsUnconfirmed();
    void newStartIsUnconfirmed();
    void machineThatRunsAgainIsToldAgain();
    void unlatchIsWrittenAndSent();
    void deviceThatDoesNotRunTakesNothing();
    void lastIsYesWhereAReceiverStops();
    void receiverMayDeleteTheDevice_data();
    void receiverMayDeleteTheDevice();

private:
    /// Running, repeating so rarely that no test sees it unless it says otherwise.
    static std::unique_ptr<StopDevice> running(bool stopped = false, const char* repeat = "100000")
    {
        auto device = std::make_unique<StopDevice>();
        device->setParam("repeat", repeat);
        device->setParam("stopped", stopped ? "true" : "false");
        device->setRunning(device->initialise());
        return device;
    }
    static void wireAnswer(StopDevice& device)
    {
        QString signature;
        QVERIFY(device.getReceiver("acknowledged(bool)", signature));
    }
};

void tst_StopDevice::declaresItsParameters()
{
    StopDevice device;
    QCOMPARE(parameterTable(device),
             QStringList({"text = STOP", "stopped = false", "repeat = 500 in ms",
                          "release = 1500 in ms", "widget/fontSize = 20"}));
}

void tst_StopDevice::declaresItsSignalsAndSlots()
{
    QCOMPARE(methodTable(StopDevice::staticMetaObject),
             QStringList({"signal stopped(bool)", "signal pressed()", "signal released()",
                          "signal confirmed(bool)", "slot stop()", "slot acknowledged(bool)",
                          "slot acknowledged()"}));
}

void tst_StopDevice::stateAloneIsKeptAcrossStarts()
{
    StopDevice device;
    for (const QString& name : device.paramNames()) {
        QCOMPARE(device.getParam(name).isPersistent(), name == "stopped");
    }
}

void tst_StopDevice::stateIsEmittedAtTheStart_data()
{
    QTest::addColumn<bool>("stopped");
    QTest::newRow("yes") << true;
    QTest::newRow("no") << false;
}

void tst_StopDevice::stateIsEmittedAtTheStart()
{
    QFETCH(bool, stopped);
    const auto device = running(stopped);
    QCOMPARE(device->isStopped(), stopped);
    Recorder recorder(device.get());
    device->postInitialisation();
    QCOMPARE(recorder.take(), QStringList(stopped ? "stopped(true)" : "stopped(false)"));
}

void tst_StopDevice::hitLatchesAndAnotherSendsAgain()
{
    const auto device = running();
    Recorder recorder(device.get(), QObject::staticMetaObject);
    device->hit();
    QCOMPARE(recorder.take(),
             QStringList({"stopped(true)", "paramChanged(\"stopped\", \"true\")", "pressed()"}));
    QVERIFY(device->isStopped());
    device->acknowledged();
    recorder.take();
    device->hit();
    QCOMPARE(recorder.take(), QStringList({"stopped(true)", "pressed()"}));
}

void tst_StopDevice::inputLatchesOnce()
{
    const auto device = running();
    Recorder recorder(device.get());
    device->stop();
    device->stop();
    QCOMPARE(recorder.take(), QStringList("stopped(true)"));
    QCOMPARE(device->getParam("stopped").value(), QString("true"));
}

void tst_StopDevice::noInputReleases()
{
    const auto device = running(true);
    for (const QString& slot : device->grabMethods("", QMetaMethod::Slot, true)) {
        const QByteArray name = slot.left(slot.indexOf('(')).toLatin1();
        if (slot.contains("bool")) {
            QVERIFY(QMetaObject::invokeMethod(device.get(), name, Q_ARG(bool, false)));
        } else {
            QVERIFY(QMetaObject::invokeMethod(device.get(), name));
        }
    }
    QVERIFY(device->isStopped());
}

void tst_StopDevice::yesIsSentUntilItIsAcknowledged_data()
{
    QTest::addColumn<bool>("byPulse");
    QTest::newRow("state") << false;
    QTest::newRow("pulse") << true;
}

void tst_StopDevice::yesIsSentUntilItIsAcknowledged()
{
    QFETCH(bool, byPulse);
    const auto device = running(false, "50");
    Recorder recorder(device.get());
    device->stop();
    QTRY_VERIFY(recorder.count() >= 4);
    const QStringList events = recorder.take();
    QCOMPARE(events.count("stopped(true)"), events.size());
    if (byPulse) {
        device->acknowledged();
    } else {
        device->acknowledged(true);
    }
    QCOMPARE(recorder.take(), QStringList("confirmed(true)"));
    QTest::qWait(200);
    QCOMPARE(recorder.take(), QStringList());
}

void tst_StopDevice::noIsRepeatedOnlyWhereAnAnswerIsWired()
{
    const auto device = running(false, "50");
    QString signature;
    QVERIFY(device->getReceiver("stop()", signature));
    Recorder recorder(device.get());
    device->postInitialisation();
    QTest::qWait(200);
    QCOMPARE(recorder.take(), QStringList("stopped(false)"));
    wireAnswer(*device);
    device->postInitialisation();
    QTRY_VERIFY(recorder.count() >= 3);
    QCOMPARE(recorder.take().last(), QString("stopped(false)"));
}

void tst_StopDevice::onlyTheEqualStateConfirms()
{
    const auto device = running();
    wireAnswer(*device);
    device->stop();
    Recorder recorder(device.get());
    device->acknowledged(false);
    QVERIFY(device->isUnconfirmed());
    QCOMPARE(recorder.take(), QStringList());
    device->acknowledged(true);
    device->acknowledged(true);
    QVERIFY(!device->isUnconfirmed());
    QCOMPARE(recorder.take(), QStringList("confirmed(true)"));
}

void tst_StopDevice::newStateIsUnconfirmed()
{
    const auto device = running();
    wireAnswer(*device);
    device->acknowledged(false);
    QVERIFY(!device->isUnconfirmed());
    Recorder recorder(device.get());
    device->stop();
    QCOMPARE(recorder.take(), QStringList({"stopped(true)", "confirmed(false)"}));
    QVERIFY(device->isUnconfirmed());
}

void tst_StopDevice::machineThatRunsAgainIsToldAgain()
{
    const auto device = running(false, "50");
    wireAnswer(*device);
    device->stop();
    device->acknowledged(true);
    Recorder recorder(device.get());
    device->acknowledged(false);
    QCOMPARE(recorder.take(), QStringList("confirmed(false)"));
    QTRY_VERIFY(recorder.count() >= 2);
    QCOMPARE(recorder.take().first(), QString("stopped(true)"));
}

void tst_StopDevice::unlatchIsWrittenAndSent()
{
    const auto device = running(true);
    Recorder recorder(device.get(), QObject::staticMetaObject);
    device->unlatch();
    device->unlatch();
    QCOMPARE(recorder.take(),
             QStringList({"stopped(false)", "paramChanged(\"stopped\", \"false\")", "released()"}));
}

void tst_StopDevice::deviceThatDoesNotRunTakesNothing()
{
    const auto device = running();
    device->setRunning(false);
    Recorder recorder(device.get());
    device->hit();
    device->stop();
    device->acknowledged();
    QCOMPARE(recorder.take(), QStringList());
    QVERIFY(!device->isStopped());
    const auto latched = running(true);
    latched->setRunning(false);
    Recorder ofLatched(latched.get());
    latched->unlatch();
    QCOMPARE(ofLatched.take(), QStringList());
    QVERIFY(latched->isStopped());
}

void tst_StopDevice::lastIsYesWhereAReceiverStops()
{
    const auto device = running(true);
    connect(device.get(), &StopDevice::stopped, device.get(), [&](bool on) {
        if (!on) {
            device->stop();
        }
    });
    QSignalSpy behind(device.get(), &StopDevice::stopped);
    device->unlatch();
    QCOMPARE(behind.last().first().toBool(), true);
    QVERIFY(device->isStopped());
}

void tst_StopDevice::receiverMayDeleteTheDevice_data()
{
    QTest::addColumn<QString>("event");
    for (const char* event : {"yes", "pressed", "no", "released"}) {
        QTest::newRow(event) << QString(event);
    }
}

void tst_StopDevice::receiverMayDeleteTheDevice()
{
    QFETCH(QString, event);
    const QPointer<StopDevice> device = running().release();
    const auto deleteAt = [&](const char* at) {
        if (event == at) {
            delete device;
        }
    };
    connect(device, &StopDevice::pressed, this, [&] { deleteAt("pressed"); });
    connect(device, &StopDevice::released, this, [&] { deleteAt("released"); });
    connect(device, &StopDevice::stopped, this, [&](bool on) { deleteAt(on ? "yes" : "no"); });
    device->hit();
    if (device) {
        device->unlatch();
    }
    QVERIFY(!device);
}

void tst_StopDevice::repeatHasALeastInterval()
{
    const auto device = running(true, "0");
    TickingTimers timers;
    device->postInitialisation();
    QTRY_VERIFY(!timers.intervals.isEmpty());
    QCOMPARE(timers.intervals, QSet<int>{50});
}

void tst_StopDevice::stopOfThePanelEndsTheRepeat()
{
    const auto device = running(true, "50");
    device->postInitialisation();
    device->preShutdown();
    Recorder recorder(device.get());
    QTest::qWait(200);
    QCOMPARE(recorder.take(), QStringList());
}

void tst_StopDevice::laterWiresDoNotHideThatAnAnswerIsWired()
{
    const auto device = running(true);
    wireAnswer(*device);
    QString signature;
    QVERIFY(device->getReceiver("stop()", signature));
    QVERIFY(device->isUnconfirmed());
}

void tst_StopDevice::freeKeyKeepsItsConfirmation()
{
    const auto device = running();
    wireAnswer(*device);
    device->acknowledged(false);
    Recorder recorder(device.get());
    device->acknowledged(true); // a machine that stands while it may run
    QCOMPARE(recorder.take(), QStringList());
    QVERIFY(!device->isUnconfirmed());
}

void tst_StopDevice::newStartIsUnconfirmed()
{
    const auto device = running(true, "50");
    wireAnswer(*device);
    device->acknowledged(true);
    device->preShutdown();
    device->setRunning(device->initialise());
    QVERIFY(device->isUnconfirmed());
    Recorder recorder(device.get());
    device->postInitialisation();
    QTRY_VERIFY(recorder.count() >= 3);
    const QStringList events = recorder.take();
    QCOMPARE(events.count("stopped(true)"), events.size());
}

NORVO_TEST(tst_StopDevice)
#include "tst_StopDevice.moc"
