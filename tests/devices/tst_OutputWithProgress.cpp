// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "Recorder.h"

#include "devices/OutputDigitalDevice.h"
#include "devices/OutputWithProgress.h"
#include "TestMain.h"

#include <QtTest>

class tst_OutputWithProgress : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsParameters();
    void declaresItsSignalsAndSlots();

    void gettersGiveTheParameters();
    void gettersGiveTheDefaults();
    void rangeFollowsTheThresholdsForNoOnly_data();
    void rangeFollowsTheThresholdsForNoOnly();
    void emptyNameIsTheObjectNameAndWrittenBack();
    void badParameterFailsAfterTheNameIsSet();

    void thresholdAlertsFollowTheOutputs_data();
    void thresholdAlertsFollowTheOutputs();
    void valueBeyondBothOfSwappedThresholdsRaisesBothAlerts();
    void textRaisesNoAlerts();
    void numberWithSenderIsEmittedNamedBeforeTheAlerts();
    void textWithSenderIsEmittedNamedTextFirst();
    void inputWhileNotRunningIsDropped();

    void timeoutAlertsAndThenAlarms();
    void valuesHoldTheTimeoutBack();
    void timeoutBeginsWhenAllAlertsOfTheValueAreOut_data();
    void timeoutBeginsWhenAllAlertsOfTheValueAreOut();
    void timeoutBeginsWhenTheTextIsPassedOn();
    void timeoutOfZeroOrLessIsNone();
    void initialiseAgainWithoutTimeoutEndsTheAlerts();

private:
    using Params = QMap<QString, QString>;

    struct Running
    {
        explicit Running(Params params = {})
        {
            if (!params.contains("timeout")) {
                params["timeout"] = "0";
            }
            for (auto param = params.cbegin(); param != params.cend(); ++param) {
                device.setParam(param.key(), param.value());
            }
            device.setObjectName("readout");
            device.setRunning(device.initialise());
        }
        OutputWithProgress device;
    };

    /// Lets as much time pass as a device with that time-out takes to alert several times.
    static bool letAlertsPass(int count, const QString& timeout)
    {
        Running clock(Params{{"timeout", timeout}});
        QSignalSpy alerts(&clock.device, &OutputWithProgress::timeoutAlert);
        return QTest::qWaitFor([&] { return alerts.size() >= count; });
    }
};

void tst_OutputWithProgress::declaresItsParameters()
{
    OutputWithProgress device;
    QCOMPARE(
        parameterTable(device),
        QStringList({"name = ", "minThreshold = 0", "maxThreshold = 100", "timeout = 1000",
                     "precision = 0", "minValue = no", "maxValue = no", "alarm = false",
                     "alarmFile = ", "digitsStep = 0.5", "dashesStep = 0.1", "type = digital"}));
}

void tst_OutputWithProgress::declaresItsSignalsAndSlots()
{
    QCOMPARE(methodTable(OutputWithProgress::staticMetaObject),
             QStringList({"signal output(double)", "signal output(QString)",
                          "signal output(double,QString)", "signal output(QString,QString)",
                          "signal minThresholdAlert()", "signal maxThresholdAlert()",
                          "signal timeoutAlert()", "signal alarmAlert()",
                          "slot timerTimeout() (not public)", "slot input(double)",
                          "slot input(QString)"}));
}

void tst_OutputWithProgress::gettersGiveTheParameters()
{
    Running running({{"name", "Pressure"},
                     {"minThreshold", "1.5"},
                     {"maxThreshold", "8"},
                     {"timeout", "250"},
                     {"precision", "2"},
                     {"minValue", "-1"},
                     {"maxValue", "10.25"},
                     {"alarm", "true"},
                     {"alarmFile", "horn.wav"},
                     {"digitsStep", "2"},
                     {"dashesStep", "0.25"},
                     {"type", "dial"}});
    const OutputWithProgress& device = running.device;
    QCOMPARE(device.getName(), QString("Pressure"));
    QCOMPARE(device.description(), QString("Pressure"));
    QCOMPARE(device.getMinThreshold(), 1.5);
    QCOMPARE(device.getMaxThreshold(), 8.0);
    QCOMPARE(device.getTimeout(), 250);
    QCOMPARE(device.getPrecision(), 2);
    QCOMPARE(device.getMinValue(), -1.0);
    QCOMPARE(device.getMaxValue(), 10.25);
    QCOMPARE(device.getAlarmEnabled(), true);
    QCOMPARE(device.getAlarmFile(), QString("horn.wav"));
    QCOMPARE(device.getDigitsStep(), 2.0);
    QCOMPARE(device.getDashesStep(), 0.25);
    QCOMPARE(device.getType(), QString("dial"));
}

void tst_OutputWithProgress::gettersGiveTheDefaults()
{
    OutputWithProgress device;
    QVERIFY(device.initialise());
    QCOMPARE(device.getTimeout(), 1000);
    QCOMPARE(device.getAlarmEnabled(), false);
    QCOMPARE(device.getDigitsStep(), 0.5);
    QCOMPARE(device.getDashesStep(), 0.1);
    QCOMPARE(device.getType(), QString("digital"));
}

void tst_OutputWithProgress::rangeFollowsTheThresholdsForNoOnly_data()
{
    QTest::addColumn<QString>("minValue");
    QTest::addColumn<QString>("maxValue");
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::newRow("no and no") << "no"
                               << "no" << 20.0 << 80.0;
    QTest::newRow("own lower end") << "-10"
                                   << "no" << -10.0 << 80.0;
    QTest::newRow("own upper end") << "no"
                                   << "1e3" << 20.0 << 1000.0;
    QTest::newRow("No reads as a number, as 0") << "No"
                                                << "NO" << 0.0 << 0.0;
}

void tst_OutputWithProgress::rangeFollowsTheThresholdsForNoOnly()
{
    QFETCH(QString, minValue);
    QFETCH(QString, maxValue);
    Running running({{"minThreshold", "20"},
                     {"maxThreshold", "80"},
                     {"minValue", minValue},
                     {"maxValue", maxValue}});
    QTEST(running.device.getMinValue(), "from");
    QTEST(running.device.getMaxValue(), "to");
}

void tst_OutputWithProgress::emptyNameIsTheObjectNameAndWrittenBack()
{
    OutputWithProgress device;
    device.setObjectName("bar");
    Recorder recorder(&device, QObject::staticMetaObject);
    QVERIFY(device.initialise());
    QCOMPARE(recorder.take(),
             QStringList({"paramChanged(\"name\", \"bar\")", "descriptionChanged(\"bar\")"}));
    QCOMPARE(device.getName(), QString("bar"));
}

void tst_OutputWithProgress::badParameterFailsAfterTheNameIsSet()
{
    Running running({{"precision", "many"}, {"timeout", "10"}});
    QVERIFY(!running.device.isRunning());
    QCOMPARE(running.device.description(), QString("readout"));
    Recorder recorder(&running.device);
    QVERIFY(letAlertsPass(3, "10"));
    QCOMPARE(recorder.take(), QStringList());
}

void tst_OutputWithProgress::thresholdAlertsFollowTheOutputs_data()
{
    QTest::addColumn<QString>("alarm");
    QTest::addColumn<double>("value");
    QTest::addColumn<QStringList>("emitted");
    const QString off = "false";
    const QString on = "true";
    QTest::newRow("on the lower edge") << on << 10.0 << QStringList{"output(10)", "output(\"10\")"};
    QTest::newRow("on the upper edge") << on << 20.0 << QStringList{"output(20)", "output(\"20\")"};
    QTest::newRow("below") << off << 9.5
                           << QStringList{"output(9.5)", "output(\"9.5\")", "minThresholdAlert()"};
    QTest::newRow("above") << off << 20.5
                           << QStringList{"output(20.5)", "output(\"20.5\")",
                                          "maxThresholdAlert()"};
    QTest::newRow("below, with alarm")
        << on << 9.5
        << QStringList{"output(9.5)", "output(\"9.5\")", "minThresholdAlert()", "alarmAlert()"};
    QTest::newRow("above, with alarm")
        << on << 20.5
        << QStringList{"output(20.5)", "output(\"20.5\")", "maxThresholdAlert()", "alarmAlert()"};
    QTest::newRow("not a number") << on << qQNaN() << QStringList{"output(nan)", "output(\"nan\")"};
    QTest::newRow("infinity") << on << qInf()
                              << QStringList{"output(inf)", "output(\"inf\")",
                                             "maxThresholdAlert()", "alarmAlert()"};
}

void tst_OutputWithProgress::thresholdAlertsFollowTheOutputs()
{
    QFETCH(QString, alarm);
    QFETCH(double, value);
    QFETCH(QStringList, emitted);
    Running running({{"minThreshold", "10"}, {"maxThreshold", "20"}, {"alarm", alarm}});
    Recorder recorder(&running.device);
    running.device.input(value);
    QCOMPARE(recorder.take(), emitted);
}

void tst_OutputWithProgress::valueBeyondBothOfSwappedThresholdsRaisesBothAlerts()
{
    Running running({{"minThreshold", "20"}, {"maxThreshold", "10"}, {"alarm", "true"}});
    Recorder recorder(&running.device);
    running.device.input(15.0);
    QCOMPARE(recorder.take(), QStringList({"output(15)", "output(\"15\")", "minThresholdAlert()",
                                           "alarmAlert()", "maxThresholdAlert()", "alarmAlert()"}));
}

void tst_OutputWithProgress::textRaisesNoAlerts()
{
    Running running({{"alarm", "true"}});
    Recorder recorder(&running.device);
    running.device.input(QString("-5"));
    running.device.input(QString("500"));
    running.device.input(QString("many"));
    QCOMPARE(recorder.take(), QStringList({"output(\"-5\")", "output(-5)", "output(\"500\")",
                                           "output(500)", "output(\"many\")", "output(0)"}));
}

void tst_OutputWithProgress::numberWithSenderIsEmittedNamedBeforeTheAlerts()
{
    OutputDigitalDevice upstream;
    upstream.setObjectName("upstream");
    upstream.setRunning(true);
    Running running({{"alarm", "true"}});
    connect(&upstream, SIGNAL(output(double)), &running.device, SLOT(input(double)));
    Recorder recorder(&running.device);
    upstream.input(-2.5);
    QCOMPARE(
        recorder.take(),
        QStringList({"output(-2.5)", "output(\"-2.5\")", "output(-2.5, \"upstream\")",
                     "output(\"-2.5\", \"upstream\")", "minThresholdAlert()", "alarmAlert()"}));
}

void tst_OutputWithProgress::textWithSenderIsEmittedNamedTextFirst()
{
    OutputDigitalDevice upstream;
    upstream.setObjectName("upstream");
    upstream.setRunning(true);
    Running running({{"alarm", "true"}});
    connect(&upstream, SIGNAL(output(QString)), &running.device, SLOT(input(QString)));
    Recorder recorder(&running.device);
    upstream.input(QString("-2.50"));
    QCOMPARE(recorder.take(),
             QStringList({"output(\"-2.50\")", "output(-2.5)", "output(\"-2.50\", \"upstream\")",
                          "output(-2.5, \"upstream\")"}));
}

void tst_OutputWithProgress::inputWhileNotRunningIsDropped()
{
    Running running({{"alarm", "true"}});
    running.device.setRunning(false);
    Recorder recorder(&running.device);
    running.device.input(-1.0);
    running.device.input(QString("1"));
    QCOMPARE(recorder.take(), QStringList());
}

void tst_OutputWithProgress::timeoutAlertsAndThenAlarms()
{
    Running quiet({{"timeout", "10"}});
    Running loud({{"timeout", "10"}, {"alarm", "true"}});
    Recorder quietRecorder(&quiet.device);
    Recorder loudRecorder(&loud.device);
    QTRY_VERIFY(loudRecorder.count() >= 6 && quietRecorder.count() >= 2);
    QCOMPARE(loudRecorder.take().mid(0, 4),
             QStringList({"timeoutAlert()", "alarmAlert()", "timeoutAlert()", "alarmAlert()"}));
    QCOMPARE(quietRecorder.take().mid(0, 2), QStringList({"timeoutAlert()", "timeoutAlert()"}));
    quiet.device.deinitialise();
    quietRecorder.take();
    QVERIFY(letAlertsPass(3, "10"));
    QCOMPARE(quietRecorder.take(), QStringList());
}

void tst_OutputWithProgress::valuesHoldTheTimeoutBack()
{
    for (const bool asText : {false, true}) {
        Running running({{"timeout", "100"}});
        QTimer feed;
        connect(&feed, &QTimer::timeout, this,
                [&] { asText ? running.device.input(QString("1")) : running.device.input(1.0); });
        feed.start(5);
        QSignalSpy alerts(&running.device, &OutputWithProgress::timeoutAlert);
        QVERIFY(letAlertsPass(3, "100"));
        QCOMPARE(alerts.size(), 0);
        feed.stop();
        QTRY_VERIFY(!alerts.isEmpty());
    }
}

void tst_OutputWithProgress::timeoutBeginsWhenAllAlertsOfTheValueAreOut_data()
{
    QTest::addColumn<double>("value");

    QTest::newRow("below") << -1.0;
    QTest::newRow("above") << 101.0;
}

/// A receiver that takes longer than the time-out does not use it up.
void tst_OutputWithProgress::timeoutBeginsWhenAllAlertsOfTheValueAreOut()
{
    QFETCH(double, value);
    Running running({{"timeout", "500"}, {"alarm", "true"}});
    connect(&running.device, &OutputWithProgress::alarmAlert, this, [] { QTest::qSleep(600); });
    QSignalSpy timeouts(&running.device, &OutputWithProgress::timeoutAlert);
    running.device.input(value);
    QCoreApplication::processEvents();
    QVERIFY(timeouts.isEmpty());
}

void tst_OutputWithProgress::timeoutBeginsWhenTheTextIsPassedOn()
{
    Running running({{"timeout", "500"}});
    connect(&running.device, qOverload<double>(&OutputWithProgress::output), this,
            [] { QTest::qSleep(600); });
    QSignalSpy timeouts(&running.device, &OutputWithProgress::timeoutAlert);
    running.device.input(QString("1"));
    QCoreApplication::processEvents();
    QVERIFY(timeouts.isEmpty());
}

void tst_OutputWithProgress::timeoutOfZeroOrLessIsNone()
{
    Running zero({{"timeout", "0"}});
    Running negative({{"timeout", "-1"}});
    QVERIFY(zero.device.isRunning() && negative.device.isRunning());
    Recorder recorder(&zero.device);
    recorder.listen(&negative.device);
    QVERIFY(letAlertsPass(3, "5"));
    QCOMPARE(recorder.take(), QStringList());
}

void tst_OutputWithProgress::initialiseAgainWithoutTimeoutEndsTheAlerts()
{
    for (const QString& timeout : {QString("0"), QString("abc")}) {
        OutputWithProgress device;
        device.setParam("timeout", "5");
        device.setRunning(device.initialise());
        device.setParam("timeout", timeout);
        device.initialise();
        device.input(1.0);
        QSignalSpy alerts(&device, &OutputWithProgress::timeoutAlert);
        QTest::qWait(50);
        QCOMPARE(alerts.size(), 0);
    }
}

NORVO_GUILESS_TEST(tst_OutputWithProgress)
#include "tst_OutputWithProgress.moc"
