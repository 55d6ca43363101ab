// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "Recorder.h"

#include "devices/OutputDigitalDevice.h"
#include "TestMain.h"

#include <QtTest>

#include <limits>

class tst_OutputDigitalDevice : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsParameters();
    void declaresItsSignalsAndSlots();

    void nameIsTheDescription();
    void emptyNameIsTheObjectNameAndWrittenBack();
    void badParameterFailsAfterTheNameIsSet();

    void numberWithoutSenderIsEmittedUnnamed_data();
    void numberWithoutSenderIsEmittedUnnamed();
    void textWithoutSenderGoesOutTextFirst_data();
    void textWithoutSenderGoesOutTextFirst();
    void numberWithSenderIsEmittedNamedToo();
    void textWithSenderIsEmittedNamedTextFirst();
    void senderWithoutANameIsASender();
    void namedTextAloneCanBeConnected();
    void inputWhileNotRunningIsDropped();

    void captionOfSpacesIsNotReplaced();

    void timeoutRepeatsUntilDeinitialise();
    void valuesHoldTheTimeoutBack();
    void droppedValuesDoNotHoldTheTimeoutBack();
    void timeoutOfOneMillisecondAlerts();
    void timeoutBelowOneIsNone_data();
    void timeoutBelowOneIsNone();
    void initialiseAgainReplacesTheTimer();
    void initialiseAgainWithoutTimeoutEndsTheAlerts_data();
    void initialiseAgainWithoutTimeoutEndsTheAlerts();

private:
    /// A device that has its parameters and runs.
    struct Running
    {
        explicit Running(const QString& timeout = "0", const QString& objectName = "readout")
        {
            device.setObjectName(objectName);
            device.setParam("timeout", timeout);
            device.setRunning(device.initialise());
        }
        OutputDigitalDevice device;
    };

    /// Lets as much time pass as a device with that time-out takes to alert several times.
    static bool letAlertsPass(int count, const QString& timeout)
    {
        Running clock(timeout);
        QSignalSpy alerts(&clock.device, &OutputDigitalDevice::timeoutAlert);
        return QTest::qWaitFor([&] { return alerts.size() >= count; });
    }
};

void tst_OutputDigitalDevice::declaresItsParameters()
{
    OutputDigitalDevice device;
    QCOMPARE(parameterTable(device),
             QStringList({"name = ", "timeout = 1000", "widget/units = ", "widget/minThreshold = 0",
                          "widget/maxThreshold = 100", "widget/precision = 0",
                          "widget/labelSize = 16", "widget/valueSize = 60"}));
}

void tst_OutputDigitalDevice::declaresItsSignalsAndSlots()
{
    QCOMPARE(methodTable(OutputDigitalDevice::staticMetaObject),
             QStringList({"signal output(double)", "signal output(QString)",
                          "signal output(double,QString)", "signal output(QString,QString)",
                          "signal timeoutAlert()", "slot timerTimeout() (not public)",
                          "slot input(double)", "slot input(QString)"}));
}

void tst_OutputDigitalDevice::nameIsTheDescription()
{
    OutputDigitalDevice device;
    device.setObjectName("volts");
    device.setParam("name", "Voltage");
    QVERIFY(device.initialise());
    QCOMPARE(device.description(), QString("Voltage"));
    QCOMPARE(device.getParam("name").value(), QString("Voltage"));
}

void tst_OutputDigitalDevice::emptyNameIsTheObjectNameAndWrittenBack()
{
    OutputDigitalDevice device;
    device.setObjectName("volts");
    Recorder recorder(&device, QObject::staticMetaObject);
    QVERIFY(device.initialise());
    QCOMPARE(recorder.take(),
             QStringList({"paramChanged(\"name\", \"volts\")", "descriptionChanged(\"volts\")"}));
    QCOMPARE(device.getParam("name").value(), QString("volts"));
}

void tst_OutputDigitalDevice::badParameterFailsAfterTheNameIsSet()
{
    OutputDigitalDevice device;
    device.setObjectName("volts");
    device.setParam("timeout", "10");
    device.setParam("widget/precision", "many");
    QVERIFY(!device.initialise());
    QCOMPARE(device.description(), QString("volts"));
    QCOMPARE(device.getParam("name").value(), QString("volts"));

    Recorder recorder(&device);
    QVERIFY(letAlertsPass(3, "10"));
    QCOMPARE(recorder.take(), QStringList());
}

void tst_OutputDigitalDevice::numberWithoutSenderIsEmittedUnnamed_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QStringList>("emitted");
    constexpr double infinity = std::numeric_limits<double>::infinity();
    QTest::newRow("half") << 2.5 << QStringList{"output(2.5)", "output(\"2.5\")"};
    QTest::newRow("six digits") << 1.23456789
                                << QStringList{"output(1.23456789)", "output(\"1.23457\")"};
    QTest::newRow("exponent") << 1234567.0
                              << QStringList{"output(1234567)", "output(\"1.23457e+06\")"};
    QTest::newRow("negative") << -0.5 << QStringList{"output(-0.5)", "output(\"-0.5\")"};
    QTest::newRow("infinity") << infinity << QStringList{"output(inf)", "output(\"inf\")"};
    QTest::newRow("not a number") << qQNaN() << QStringList{"output(nan)", "output(\"nan\")"};
}

void tst_OutputDigitalDevice::numberWithoutSenderIsEmittedUnnamed()
{
    QFETCH(double, value);
    QFETCH(QStringList, emitted);
    Running running;
    Recorder recorder(&running.device);
    running.device.input(value);
    QCOMPARE(recorder.take(), emitted);
}

void tst_OutputDigitalDevice::textWithoutSenderGoesOutTextFirst_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("emitted");
    QTest::newRow("number") << "2.50" << QStringList{"output(\"2.50\")", "output(2.5)"};
    QTest::newRow("no number is 0") << "two" << QStringList{"output(\"two\")", "output(0)"};
    QTest::newRow("comma is no number") << "2,5" << QStringList{"output(\"2,5\")", "output(0)"};
    QTest::newRow("empty") << "" << QStringList{"output(\"\")", "output(0)"};
}

void tst_OutputDigitalDevice::textWithoutSenderGoesOutTextFirst()
{
    QFETCH(QString, text);
    QFETCH(QStringList, emitted);
    Running running;
    Recorder recorder(&running.device);
    running.device.input(text);
    QCOMPARE(recorder.take(), emitted);
}

void tst_OutputDigitalDevice::numberWithSenderIsEmittedNamedToo()
{
    Running upstream("0", "upstream");
    Running running;
    connect(&upstream.device, SIGNAL(output(double)), &running.device, SLOT(input(double)));
    Recorder recorder(&running.device);
    upstream.device.input(2.5);
    QCOMPARE(recorder.take(),
             QStringList({"output(2.5)", "output(\"2.5\")", "output(2.5, \"upstream\")",
                          "output(\"2.5\", \"upstream\")"}));
}

void tst_OutputDigitalDevice::textWithSenderIsEmittedNamedTextFirst()
{
    Running upstream("0", "upstream");
    Running running;
    connect(&upstream.device, SIGNAL(output(QString)), &running.device, SLOT(input(QString)));
    Recorder recorder(&running.device);
    upstream.device.input(QString("two"));
    QCOMPARE(recorder.take(),
             QStringList({"output(\"two\")", "output(0)", "output(\"two\", \"upstream\")",
                          "output(0, \"upstream\")"}));
}

void tst_OutputDigitalDevice::senderWithoutANameIsASender()
{
    Running upstream("0", "");
    Running running;
    connect(&upstream.device, SIGNAL(output(double)), &running.device, SLOT(input(double)));
    Recorder recorder(&running.device);
    upstream.device.input(2.5);
    QCOMPARE(recorder.take(), QStringList({"output(2.5)", "output(\"2.5\")", "output(2.5, \"\")",
                                           "output(\"2.5\", \"\")"}));
}

void tst_OutputDigitalDevice::namedTextAloneCanBeConnected()
{
    Running upstream("0", "upstream");
    Running running;
    connect(&upstream.device, SIGNAL(output(double)), &running.device, SLOT(input(double)));
    QSignalSpy named(&running.device, SIGNAL(output(QString, QString)));
    upstream.device.input(0.25);
    QCOMPARE(named, QList<QVariantList>({{"0.25", "upstream"}}));
}

void tst_OutputDigitalDevice::inputWhileNotRunningIsDropped()
{
    OutputDigitalDevice device;
    QVERIFY(device.initialise());
    Recorder recorder(&device);
    device.input(1.0);
    device.input(QString("1"));
    QCOMPARE(recorder.take(), QStringList());
}

void tst_OutputDigitalDevice::captionOfSpacesIsNotReplaced()
{
    OutputDigitalDevice device;
    device.setObjectName("readout");
    device.setParam("name", " ");
    QVERIFY(device.initialise());
    QCOMPARE(device.getParam("name").value(), QString(" "));
    QCOMPARE(device.description(), QString(" "));
}

void tst_OutputDigitalDevice::timeoutRepeatsUntilDeinitialise()
{
    Running running("10");
    Recorder recorder(&running.device);
    QTRY_VERIFY(recorder.count() >= 3);
    running.device.deinitialise();
    QStringList emitted = recorder.take();
    emitted.removeDuplicates();
    QCOMPARE(emitted, QStringList("timeoutAlert()"));
    QVERIFY(letAlertsPass(3, "10"));
    QCOMPARE(recorder.take(), QStringList());
    running.device.input(1.0);
    QCOMPARE(recorder.take(), QStringList({"output(1)", "output(\"1\")"}));
}

void tst_OutputDigitalDevice::valuesHoldTheTimeoutBack()
{
    for (const bool asText : {false, true}) {
        Running running("100");
        QTimer feed;
        connect(&feed, &QTimer::timeout, this,
                [&] { asText ? running.device.input(QString("1")) : running.device.input(1.0); });
        feed.start(5);
        QSignalSpy alerts(&running.device, &OutputDigitalDevice::timeoutAlert);
        QVERIFY(letAlertsPass(3, "100"));
        QCOMPARE(alerts.size(), 0);
        feed.stop();
        QTRY_VERIFY(!alerts.isEmpty());
    }
}

void tst_OutputDigitalDevice::droppedValuesDoNotHoldTheTimeoutBack()
{
    Running running("50");
    running.device.setRunning(false);
    QTimer feed;
    connect(&feed, &QTimer::timeout, this, [&] { running.device.input(1.0); });
    feed.start(5);
    QSignalSpy alerts(&running.device, &OutputDigitalDevice::timeoutAlert);
    QTRY_VERIFY(alerts.size() >= 2);
}

void tst_OutputDigitalDevice::timeoutOfOneMillisecondAlerts()
{
    QVERIFY(letAlertsPass(2, "1"));
}

void tst_OutputDigitalDevice::timeoutBelowOneIsNone_data()
{
    QTest::addColumn<QString>("timeout");
    QTest::newRow("zero") << "0";
    QTest::newRow("negative") << "-5";
    QTest::newRow("part of a millisecond") << "0.9";
}

void tst_OutputDigitalDevice::timeoutBelowOneIsNone()
{
    QFETCH(QString, timeout);
    Running running(timeout);
    QVERIFY(running.device.isRunning());
    Recorder recorder(&running.device);
    QVERIFY(letAlertsPass(3, "5"));
    QCOMPARE(recorder.take(), QStringList());
}

void tst_OutputDigitalDevice::initialiseAgainReplacesTheTimer()
{
    Running running("40");
    QVERIFY(running.device.initialise());
    QVERIFY(running.device.initialise());
    QSignalSpy alerts(&running.device, &OutputDigitalDevice::timeoutAlert);
    QVERIFY(letAlertsPass(4, "40"));
    QVERIFY2(alerts.size() <= 5, qPrintable(QString::number(alerts.size())));
}

void tst_OutputDigitalDevice::initialiseAgainWithoutTimeoutEndsTheAlerts_data()
{
    QTest::addColumn<QString>("timeout");
    QTest::addColumn<bool>("succeeds");
    QTest::newRow("switched off") << "0" << true;
    QTest::newRow("not a number") << "abc" << false;
}

void tst_OutputDigitalDevice::initialiseAgainWithoutTimeoutEndsTheAlerts()
{
    QFETCH(QString, timeout);
    QFETCH(bool, succeeds);
    Running running("5");
    running.device.setParam("timeout", timeout);
    QCOMPARE(running.device.initialise(), succeeds);
    running.device.input(1.0);
    QSignalSpy alerts(&running.device, &OutputDigitalDevice::timeoutAlert);
    QVERIFY(letAlertsPass(4, "5"));
    QCOMPARE(alerts.size(), 0);
}

NORVO_GUILESS_TEST(tst_OutputDigitalDevice)
#include "tst_OutputDigitalDevice.moc"
