// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/logic/TimerDevice.h"
#include "EventCounter.h"
#include "TestMain.h"

#include <QSignalSpy>

/// A timer that has nothing to do does not wake the program.
class tst_TimerDeviceRest : public QObject
{
    Q_OBJECT

private slots:
    void wakesNobodyBehindItsValue_data();
    void wakesNobodyBehindItsValue();
};

void tst_TimerDeviceRest::wakesNobodyBehindItsValue_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<bool>("last");
    QTest::newRow("delay") << "delay" << true;
    QTest::newRow("on-delay") << "on-delay" << true;
    QTest::newRow("off-delay") << "off-delay" << false;
    QTest::newRow("pulse") << "pulse" << false;
}

void tst_TimerDeviceRest::wakesNobodyBehindItsValue()
{
    QFETCH(QString, mode);
    QFETCH(bool, last);
    TimerDevice device;
    device.setParam("mode", mode);
    device.setParam("time", "5");
    device.setRunning(device.initialise());
    device.postInitialisation();
    QSignalSpy values(&device, qOverload<bool>(&TimerDevice::output));
    const auto isLastSent = [&] { return !values.isEmpty() && values.last().first() == last; };

    EventCounter events(QCoreApplication::instance());
    device.input(true);
    if (mode == "off-delay") {
        device.input(false);
    }
    QTRY_VERIFY_WITH_TIMEOUT(isLastSent(), 60000);
    QVERIFY(events.take(QEvent::Timer) > 0);
    QTest::qWait(100);
    QCOMPARE(events.take(QEvent::Timer), 0);
}

NORVO_GUILESS_TEST(tst_TimerDeviceRest)
#include "tst_TimerDeviceRest.moc"
