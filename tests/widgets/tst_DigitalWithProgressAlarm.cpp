// SPDX-License-Identifier: GPL-3.0-or-later

#include "ProgressReadout.h"
#include "Recorder.h"
#include "TestMain.h"

#include <QtTest>

namespace {

const QStringList kOn{"alarmAlert(true)"};
const QStringList kOff{"alarmAlert(false)"};

struct Alarmed : ProgressReadout
{
    explicit Alarmed(Params params = {}) : ProgressReadout(withAlarm(params)) {}

    void click() { QTest::mouseClick(value(), Qt::LeftButton); }
    QString captionLook() const { return caption()->styleSheet(); }

    Recorder recorder{widget.get(), BaseWidget::staticMetaObject};

private:
    static Params withAlarm(Params params)
    {
        if (!params.contains("alarm")) {
            params["alarm"] = "true";
        }
        return params;
    }
};

} // namespace

class tst_DigitalWithProgressAlarm : public QObject
{
    Q_OBJECT

private slots:
    void firstValueEndsTheNominalAlarm();
    void firstValueOutOfRangeEndsItAndStartsARealOne();
    void initialisedAgainItIsQuietAndGreyAsAtFirst();
    void timeoutBeforeTheFirstValueIsQuiet();
    void outOfRangeBlinksTheCaption();
    void blinkPeriodIsThreeTenths();
    void blinkGoesOnInThePhaseOfTheLastAlarm();
    void secondValueOutOfRangeIsNoNewAlarm();
    void backInRangeEndsTheAlarm();
    void timeoutStartsTheAlarmOnce();
    void timeoutWhileOutOfRangeRestartsTheAlarm();

    void clickSilencesUntilTheCauseIsGone();
    void clickWithoutAlarmDoesNothing();
    void clickBeforeTheFirstValueIsOneToo();
    void timeoutWhileOutOfRangeRestartsAClickedAlarm();

    void disabledAlarmBlinksWithoutSignals();
    void textOutOfRangeRaisesTheWidgetsAlarm();
    void stopAlarmLeavesItRunning();
};

void tst_DigitalWithProgressAlarm::firstValueEndsTheNominalAlarm()
{
    Alarmed readout;
    QCOMPARE(readout.recorder.take(), QStringList());
    QCOMPARE(readout.captionLook(), QString());
    readout.device.input(50.0);
    QCOMPARE(readout.recorder.take(), kOff);
    QCOMPARE(readout.captionLook(), ReadoutLooks::kDarkCaption);
    readout.device.input(50.0);
    QCOMPARE(readout.recorder.take(), QStringList());
}

void tst_DigitalWithProgressAlarm::firstValueOutOfRangeEndsItAndStartsARealOne()
{
    Alarmed readout;
    readout.device.input(101.0);
    QCOMPARE(readout.recorder.take(), kOff + kOn);
}

void tst_DigitalWithProgressAlarm::timeoutBeforeTheFirstValueIsQuiet()
{
    Alarmed readout({{"timeout", "10"}});
    QSignalSpy timeouts(&readout.device, &OutputWithProgress::timeoutAlert);
    QTRY_VERIFY(timeouts.size() >= 3);
    QCOMPARE(readout.recorder.take(), QStringList());
    QCOMPARE(readout.captionLook(), QString());
    readout.device.input(50.0);
    QCOMPARE(readout.recorder.take(), kOff);
}

void tst_DigitalWithProgressAlarm::outOfRangeBlinksTheCaption()
{
    Alarmed readout;
    readout.device.input(-1.0);
    QTRY_COMPARE(readout.captionLook(), ReadoutLooks::kRedCaption);
    QTRY_COMPARE(readout.captionLook(), ReadoutLooks::kDarkCaption);
    QTRY_COMPARE(readout.captionLook(), ReadoutLooks::kRedCaption);
    QCOMPARE(readout.value()->styleSheet(), ReadoutLooks::kRed);
    QCOMPARE(readout.bar()->styleSheet(), ReadoutLooks::kRedBar);
}

void tst_DigitalWithProgressAlarm::blinkPeriodIsThreeTenths()
{
    Alarmed readout;
    QElapsedTimer sinceStart;
    sinceStart.start();
    readout.device.input(-1.0);
    QTRY_COMPARE(readout.captionLook(), ReadoutLooks::kRedCaption);
    // The second tick turns it red; a timer of 300 ms may come 5 % early.
    QVERIFY2(sinceStart.elapsed() >= 570, qPrintable(QString::number(sinceStart.elapsed())));
}

void tst_DigitalWithProgressAlarm::secondValueOutOfRangeIsNoNewAlarm()
{
    Alarmed readout;
    readout.device.input(-1.0);
    readout.recorder.take();
    readout.device.input(-2.0);
    readout.device.input(102.0);
    QCOMPARE(readout.recorder.take(), QStringList());
}

void tst_DigitalWithProgressAlarm::backInRangeEndsTheAlarm()
{
    Alarmed readout;
    readout.device.input(-1.0);
    QTRY_COMPARE(readout.captionLook(), ReadoutLooks::kRedCaption);
    readout.recorder.take();
    readout.device.input(0.0);
    QCOMPARE(readout.recorder.take(), kOff);
    QCOMPARE(readout.captionLook(), ReadoutLooks::kDarkCaption);
    readout.device.input(100.0);
    QCOMPARE(readout.recorder.take(), QStringList());
}

void tst_DigitalWithProgressAlarm::timeoutStartsTheAlarmOnce()
{
    Alarmed readout({{"timeout", "20"}});
    readout.device.input(50.0);
    readout.recorder.take();
    QSignalSpy timeouts(&readout.device, &OutputWithProgress::timeoutAlert);
    QTRY_VERIFY(timeouts.size() >= 3);
    QCOMPARE(readout.recorder.take(), kOn);
    QTRY_COMPARE(readout.captionLook(), ReadoutLooks::kRedCaption);
    readout.device.input(50.0);
    QCOMPARE(readout.recorder.take(), kOff);
}

void tst_DigitalWithProgressAlarm::timeoutWhileOutOfRangeRestartsTheAlarm()
{
    Alarmed readout;
    readout.device.input(-1.0);
    readout.recorder.take();
    readout.digital().timeout();
    QCOMPARE(readout.recorder.take(), kOn);
    readout.digital().timeout(); // no longer counted as out of range
    QCOMPARE(readout.recorder.take(), QStringList());
    readout.device.input(-1.0);
    QCOMPARE(readout.recorder.take(), kOff + kOn);
}

void tst_DigitalWithProgressAlarm::clickSilencesUntilTheCauseIsGone()
{
    Alarmed readout;
    readout.widget->show();
    readout.device.input(-1.0);
    QTRY_COMPARE(readout.captionLook(), ReadoutLooks::kRedCaption);
    readout.recorder.take();

    readout.click();
    QCOMPARE(readout.recorder.take(), kOff);
    QCOMPARE(readout.captionLook(), ReadoutLooks::kDarkCaption);
    readout.device.input(-2.0);
    QCOMPARE(readout.recorder.take(), QStringList());

    // The time in which another readout's caption turns red twice.
    Alarmed clock;
    clock.device.input(-1.0);
    for (int i = 0; i < 2; ++i) {
        QTRY_COMPARE(clock.captionLook(), ReadoutLooks::kRedCaption);
        QCOMPARE(readout.captionLook(), ReadoutLooks::kDarkCaption);
        QTRY_COMPARE(clock.captionLook(), ReadoutLooks::kDarkCaption);
    }

    readout.device.input(50.0);
    QCOMPARE(readout.recorder.take(), kOff);
    readout.device.input(-1.0);
    QCOMPARE(readout.recorder.take(), kOn);
    QTRY_COMPARE(readout.captionLook(), ReadoutLooks::kRedCaption);
}

void tst_DigitalWithProgressAlarm::clickWithoutAlarmDoesNothing()
{
    Alarmed readout;
    readout.widget->show();
    readout.device.input(50.0);
    readout.recorder.take();
    readout.click();
    QCOMPARE(readout.recorder.take(), QStringList());
}

void tst_DigitalWithProgressAlarm::clickBeforeTheFirstValueIsOneToo()
{
    Alarmed readout;
    readout.widget->show();
    readout.click();
    QCOMPARE(readout.recorder.take(), kOff);
    readout.device.input(50.0);
    QCOMPARE(readout.recorder.take(), kOff);
}

void tst_DigitalWithProgressAlarm::timeoutWhileOutOfRangeRestartsAClickedAlarm()
{
    Alarmed readout;
    readout.widget->show();
    readout.device.input(-1.0);
    readout.click();
    readout.recorder.take();
    readout.digital().timeout();
    QCOMPARE(readout.recorder.take(), kOn);
    QTRY_COMPARE(readout.captionLook(), ReadoutLooks::kRedCaption);
}

void tst_DigitalWithProgressAlarm::disabledAlarmBlinksWithoutSignals()
{
    Alarmed readout({{"alarm", "false"}});
    readout.widget->show();
    readout.device.input(-1.0);
    QTRY_COMPARE(readout.captionLook(), ReadoutLooks::kRedCaption);
    readout.click();
    QCOMPARE(readout.captionLook(), ReadoutLooks::kDarkCaption);
    readout.device.input(50.0);
    readout.digital().timeout();
    QCOMPARE(readout.recorder.take(), QStringList());
}

void tst_DigitalWithProgressAlarm::textOutOfRangeRaisesTheWidgetsAlarm()
{
    Alarmed readout;
    Recorder deviceRecorder(&readout.device);
    readout.device.input(QString("500"));
    QCOMPARE(readout.recorder.take(), kOff + kOn);
    QCOMPARE(deviceRecorder.take(), QStringList({"output(\"500\")", "output(500)"}));
}

void tst_DigitalWithProgressAlarm::stopAlarmLeavesItRunning()
{
    Alarmed readout;
    readout.device.input(-1.0);
    readout.recorder.take();
    readout.digital().stopAlarm();
    QCOMPARE(readout.recorder.take(), kOff);
    readout.digital().checkForAlarm();
    QCOMPARE(readout.recorder.take(), QStringList());
    readout.digital().startAlarm();
    QCOMPARE(readout.recorder.take(), kOn);
}

void tst_DigitalWithProgressAlarm::initialisedAgainItIsQuietAndGreyAsAtFirst()
{
    Alarmed readout;
    readout.device.input(50.0);
    readout.device.input(101.0);
    readout.widget->initialise();
    readout.recorder.take();
    QTest::qWait(400); // longer than a blink
    const QList<QLabel*> labels = readout.widget->findChildren<QLabel*>();
    for (const QLabel* label : labels) {
        QVERIFY(label->styleSheet() != ReadoutLooks::kRedCaption);
    }
    readout.device.input(50.0);
    QCOMPARE(readout.recorder.take().first(), kOff.first());
    readout.device.input(50.0);
    QCOMPARE(readout.recorder.take(), QStringList());
}

void tst_DigitalWithProgressAlarm::blinkGoesOnInThePhaseOfTheLastAlarm()
{
    Alarmed readout;
    readout.device.input(101.0);
    readout.digital().blinkTimerExpired();
    QCOMPARE(readout.captionLook(), ReadoutLooks::kDarkCaption);
    readout.device.input(50.0);
    readout.device.input(101.0);
    readout.digital().blinkTimerExpired();
    QCOMPARE(readout.captionLook(), ReadoutLooks::kRedCaption);
}

NORVO_TEST(tst_DigitalWithProgressAlarm)
#include "tst_DigitalWithProgressAlarm.moc"
