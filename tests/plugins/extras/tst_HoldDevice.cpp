// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/extras/HoldDevice.h"
#include "Declarations.h"
#include "MessageLog.h"
#include "Recorder.h"
#include "TickingTimers.h"
#include "TestMain.h"

#include <QThread>

#include <memory>
#include <utility>

class tst_HoldDevice : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsParameters();
    void declaresItsSignalsAndSlots();
    void noInputPresses();
    void startSaysNotHeld();
    void pressAndReleaseFrameTheYeses();
    void heartbeatIsRepeated();
    void heartbeatHasALeastInterval();
    void deviceThatDoesNotRunIsNotPressed();
    void stopOfThePanelReleases();
    void destructionReleases();
    void lateHeartbeatReleasesAndSaysBy();
    void receiverThatBlocksTooLongReleases();
    void delayWithinTheLimitIsForgiven();
    void delayBelowTheLeastLimitIsForgiven();
    void badNumberIsAnError();
    void lastIsNoWhereAReceiverReleases();
    void receiverMayDeleteTheDevice_data();
    void receiverMayDeleteTheDevice();

private:
    /// A running device that is pressed.
    static std::unique_ptr<HoldDevice> running(const QString& heartbeat = "100000")
    {
        auto device = std::make_unique<HoldDevice>();
        device->setParam("heartbeat", heartbeat);
        device->setRunning(device->initialise());
        return device;
    }
};

void tst_HoldDevice::declaresItsParameters()
{
    HoldDevice device;
    QCOMPARE(parameterTable(device), QStringList({"text = ", "heartbeat = 100 in ms",
                                                  "limit = 300 in ms", "widget/fontSize = 14"}));
}

void tst_HoldDevice::declaresItsSignalsAndSlots()
{
    QCOMPARE(methodTable(HoldDevice::staticMetaObject),
             QStringList(
                 {"signal held(bool)", "signal pressed()", "signal released()", "slot release()"}));
}

void tst_HoldDevice::noInputPresses()
{
    HoldDevice device;
    QCOMPARE(device.grabMethods("", QMetaMethod::Slot, true), QStringList("release()"));
}

void tst_HoldDevice::startSaysNotHeld()
{
    const auto device = running();
    Recorder recorder(device.get());
    device->postInitialisation();
    QCOMPARE(recorder.take(), QStringList("held(false)"));
}

void tst_HoldDevice::pressAndReleaseFrameTheYeses()
{
    const auto device = running();
    Recorder recorder(device.get());
    device->press();
    device->press();
    QVERIFY(device->isHeld());
    QCOMPARE(recorder.take(), QStringList({"pressed()", "held(true)"}));
    device->release();
    device->release();
    QVERIFY(!device->isHeld());
    QCOMPARE(recorder.take(), QStringList({"held(false)", "released()"}));
}

void tst_HoldDevice::heartbeatIsRepeated()
{
    const auto device = running("30");
    device->setParam("limit", "60000");
    device->setRunning(device->initialise());
    Recorder recorder(device.get());
    device->press();
    QTRY_VERIFY(recorder.count() >= 5);
    QStringList events = recorder.take();
    QCOMPARE(events.takeFirst(), QString("pressed()"));
    QCOMPARE(events.count("held(true)"), events.size());
    device->release();
    QCOMPARE(recorder.take(), QStringList({"held(false)", "released()"}));
    QTest::qWait(100);
    QCOMPARE(recorder.take(), QStringList());
}

void tst_HoldDevice::heartbeatHasALeastInterval()
{
    const auto device = running("0");
    device->setParam("limit", "60000");
    device->setRunning(device->initialise());
    TickingTimers timers;
    device->press();
    QTRY_VERIFY(!timers.intervals.isEmpty());
    QCOMPARE(timers.intervals, QSet<int>{20});
}

void tst_HoldDevice::deviceThatDoesNotRunIsNotPressed()
{
    const auto device = running();
    device->setRunning(false);
    Recorder recorder(device.get());
    device->press();
    QCOMPARE(recorder.take(), QStringList());
}

void tst_HoldDevice::stopOfThePanelReleases()
{
    const auto device = running();
    device->press();
    Recorder recorder(device.get());
    device->setRunning(false);
    device->preShutdown();
    QCOMPARE(recorder.take(), QStringList({"held(false)", "released()"}));
}

void tst_HoldDevice::destructionReleases()
{
    auto device = running();
    device->press();
    Recorder recorder(device.get());
    device.reset();
    QCOMPARE(recorder.take(), QStringList({"held(false)", "released()"}));
}

void tst_HoldDevice::lateHeartbeatReleasesAndSaysBy()
{
    const auto device = running("50");
    device->setObjectName("jog");
    device->press();
    Recorder recorder(device.get(), QObject::staticMetaObject);
    MessageLog log;
    QThread::msleep(900); // the event loop stands still
    QTRY_VERIFY(recorder.count() >= 3);
    const QStringList events = recorder.take();
    QCOMPARE(events.mid(0, 2), QStringList({"held(false)", "released()"}));
    const QRegularExpression text(
        R"(^alertRaised\("Released: .* (\d+) ms late and may be 300\. Press again to go on"\)$)");
    const QRegularExpressionMatch match = text.match(events[2]);
    QVERIFY2(match.hasMatch(), qPrintable(events[2]));
    QVERIFY(match.captured(1).toInt() >= 850);
    QTest::qWait(150);
    QCOMPARE(recorder.take(), QStringList());
    device->press();
    QCOMPARE(recorder.take(), QStringList({"pressed()", "held(true)"}));
}

void tst_HoldDevice::delayWithinTheLimitIsForgiven()
{
    const auto device = running("50");
    device->setParam("limit", "60000");
    QVERIFY(device->initialise());
    device->press();
    Recorder recorder(device.get());
    QThread::msleep(400);
    QTRY_VERIFY(recorder.count() > 0);
    QCOMPARE(recorder.take().first(), QString("held(true)"));
    QVERIFY(device->isHeld());
}

void tst_HoldDevice::badNumberIsAnError()
{
    HoldDevice device;
    device.setParam("heartbeat", "often");
    MessageLog log;
    QVERIFY(!device.initialise());
    QVERIFY(log.take().first().contains("heartbeat"));
}

void tst_HoldDevice::lastIsNoWhereAReceiverReleases()
{
    const auto device = running();
    connect(device.get(), &HoldDevice::held, device.get(), [&](bool on) {
        if (on) {
            device->release();
        }
    });
    Recorder recorder(device.get()); // behind the one that releases
    device->press();
    QCOMPARE(recorder.take(),
             QStringList({"pressed()", "held(false)", "released()", "held(true)", "held(false)"}));
}

void tst_HoldDevice::receiverMayDeleteTheDevice_data()
{
    QTest::addColumn<QString>("event");
    for (const char* event : {"pressed", "yes", "no", "released"}) {
        QTest::newRow(event) << QString(event);
    }
}

void tst_HoldDevice::receiverMayDeleteTheDevice()
{
    QFETCH(QString, event);
    const QPointer<HoldDevice> device = running().release();
    const auto deleteAt = [&](const char* at) {
        if (event == at) {
            delete device;
        }
    };
    connect(device, &HoldDevice::pressed, this, [&] { deleteAt("pressed"); });
    connect(device, &HoldDevice::released, this, [&] { deleteAt("released"); });
    connect(device, &HoldDevice::held, this, [&](bool on) { deleteAt(on ? "yes" : "no"); });
    device->press();
    if (device) {
        device->release();
    }
    QVERIFY(!device);
}

void tst_HoldDevice::receiverThatBlocksTooLongReleases()
{
    const auto device = running("20");
    device->setParam("limit", "20");
    QVERIFY(device->initialise());
    bool isFirst = true;
    connect(device.get(), &HoldDevice::held, this, [&](bool on) {
        if (on && std::exchange(isFirst, false)) {
            QThread::msleep(300);
        }
    });
    Recorder recorder(device.get());
    MessageLog log;
    device->press();
    QTRY_VERIFY(!device->isHeld());
    QCOMPARE(recorder.take(),
             QStringList({"pressed()", "held(true)", "held(false)", "released()"}));
}

void tst_HoldDevice::delayBelowTheLeastLimitIsForgiven()
{
    const auto device = running("20");
    device->setParam("limit", "0"); // counts as 20
    QVERIFY(device->initialise());
    MessageLog log;
    QElapsedTimer clock;
    bool wasForgiven = false;
    for (int i = 0; i < 50 && !wasForgiven; ++i) { // unless the machine stood still itself
        Recorder recorder(device.get());
        device->press();
        clock.start();
        QThread::msleep(25);
        QCoreApplication::processEvents();
        wasForgiven = clock.elapsed() < 35 && recorder.take().count("held(true)") == 2;
        device->release();
    }
    QVERIFY(wasForgiven);
}

NORVO_TEST(tst_HoldDevice)
#include "tst_HoldDevice.moc"
