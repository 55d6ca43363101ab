// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "RunningGraph.h"
#include "TestMain.h"
#include "devices/OutputDigitalDevice.h"

#include <QtTest>

#include <cmath>

namespace {

/// Passes the time of arrival on, which no comparison can know beforehand.
class TimeKeeper : public QObject
{
public:
    explicit TimeKeeper(OutputGraphDevice& device)
    {
        connect(&device, qOverload<double, QString, double>(&OutputGraphDevice::output), this,
                [this](double, const QString&, double time) { times.append(time); });
    }
    QVector<double> times;
};

double secondsNow()
{
    return double(QDateTime::currentMSecsSinceEpoch()) * 0.001;
}

/// What was emitted, each time of arrival as "now".
QStringList taken(Recorder& recorder)
{
    return recorder.take().replaceInStrings(QRegularExpression(", [0-9.e+]+\\)$"), ", now)");
}

} // namespace

class tst_OutputGraphDevice : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsParameters();
    void declaresItsSignalsAndSlots();

    void nameIsTheDescription();
    void emptyNameIsTheObjectNameAndWrittenBack();
    void badParameterFailsAfterTheNameIsSet();

    void numberFromASenderGoesOutAsTextThenPointThenNamedText();
    void textFromASenderGoesOutNamedBeforeThePoint_data();
    void textFromASenderGoesOutNamedBeforeThePoint();
    void numberBecomesTextWithSixDigits_data();
    void numberBecomesTextWithSixDigits();
    void timeIsSecondsSinceTheEpochWithAFraction();
    void directCallGoesOutAsTextOnly();
    void whileNotRunningEverythingIsDropped();
};

void tst_OutputGraphDevice::declaresItsParameters()
{
    OutputGraphDevice device;
    QCOMPARE(parameterTable(device),
             QStringList({"name = ", "widget/minThreshold = 0", "widget/maxThreshold = 100",
                          "widget/timePeriod = 10", "widget/timeFormat = hh:mm:ss",
                          "widget/minValue = 0", "widget/maxValue = 1", "widget/autoscale = true",
                          "widget/timeout = 1"}));
}

void tst_OutputGraphDevice::declaresItsSignalsAndSlots()
{
    QCOMPARE(methodTable(OutputGraphDevice::staticMetaObject),
             QStringList({"signal output(QString)", "signal output(double,QString,double)",
                          "signal output(QString,QString)", "signal outputFill(QString,bool)",
                          "signal outputColor(QString,QString)",
                          "signal outputName(QString,QString)", "slot input(double)",
                          "slot input(QString)", "slot setFilled(bool)", "slot setColor(QString)",
                          "slot setName(QString)", "slot resendData() (not public)"}));
}

void tst_OutputGraphDevice::nameIsTheDescription()
{
    OutputGraphDevice device;
    device.setObjectName("graph");
    device.setParam("name", "Boiler");
    QVERIFY(device.initialise());
    QCOMPARE(device.description(), QString("Boiler"));
    QCOMPARE(device.getParam("name").value(), QString("Boiler"));
}

void tst_OutputGraphDevice::emptyNameIsTheObjectNameAndWrittenBack()
{
    OutputGraphDevice device;
    device.setObjectName("graph");
    QSignalSpy changes(&device, &BaseDevice::paramChanged);
    QVERIFY(device.initialise());
    QCOMPARE(device.description(), QString("graph"));
    QCOMPARE(changes, QList<QVariantList>({{"name", "graph"}}));
}

void tst_OutputGraphDevice::badParameterFailsAfterTheNameIsSet()
{
    OutputGraphDevice device;
    device.setParam("name", "Boiler");
    device.setParam("widget/timePeriod", "long");
    QVERIFY(!device.initialise());
    QCOMPARE(device.description(), QString("Boiler"));
}

void tst_OutputGraphDevice::numberFromASenderGoesOutAsTextThenPointThenNamedText()
{
    RunningGraph running;
    GraphSettingsDevice relay;
    running.feedFrom(relay, "pump");
    Recorder recorder(&running.device);
    relay.input(2.5);
    QCOMPARE(taken(recorder), QStringList({"output(\"2.5\")", "output(2.5, \"pump\", now)",
                                           "output(\"2.5\", \"pump\")"}));
}

void tst_OutputGraphDevice::textFromASenderGoesOutNamedBeforeThePoint_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("point");
    QTest::newRow("number") << "2.50"
                            << "output(2.5, \"upstream\", now)";
    QTest::newRow("no number is 0") << "open"
                                    << "output(0, \"upstream\", now)";
    QTest::newRow("comma is no number") << "2,5"
                                        << "output(0, \"upstream\", now)";
    QTest::newRow("empty is 0") << ""
                                << "output(0, \"upstream\", now)";
}

void tst_OutputGraphDevice::textFromASenderGoesOutNamedBeforeThePoint()
{
    QFETCH(QString, text);
    QFETCH(QString, point);
    RunningGraph running;
    OutputDigitalDevice upstream;
    upstream.setObjectName("upstream");
    upstream.setRunning(true);
    connect(&upstream, SIGNAL(output(QString)), &running.device, SLOT(input(QString)));
    Recorder recorder(&running.device);
    upstream.input(text);
    const QString quoted = "\"" + text + "\"";
    QCOMPARE(taken(recorder), QStringList({"output(" + quoted + ")",
                                           "output(" + quoted + ", \"upstream\")", point}));
}

void tst_OutputGraphDevice::numberBecomesTextWithSixDigits_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("six digits") << 1.23456789 << "1.23457";
    QTest::newRow("exponent") << 1234567.0 << "1.23457e+06";
    QTest::newRow("not a number") << qQNaN() << "nan";
    QTest::newRow("infinity") << -qInf() << "-inf";
}

void tst_OutputGraphDevice::numberBecomesTextWithSixDigits()
{
    QFETCH(double, value);
    QFETCH(QString, text);
    RunningGraph running;
    GraphSettingsDevice relay;
    running.feedFrom(relay, "pump");
    Recorder recorder(&running.device);
    relay.input(value);
    const QStringList emitted = recorder.take();
    QCOMPARE(emitted.first(), "output(\"" + text + "\")");
    QCOMPARE(emitted.last(), "output(\"" + text + "\", \"pump\")");
}

void tst_OutputGraphDevice::timeIsSecondsSinceTheEpochWithAFraction()
{
    RunningGraph running;
    GraphSettingsDevice relay;
    running.feedFrom(relay, "pump");
    TimeKeeper keeper(running.device);
    const double before = secondsNow();
    bool fraction = false;
    while (!fraction && secondsNow() < before + 5) {
        relay.input(1);
        fraction = keeper.times.last() != std::floor(keeper.times.last());
    }
    QVERIFY(fraction);
    QVERIFY(keeper.times.first() >= before);
    QVERIFY(keeper.times.last() <= secondsNow());
}

void tst_OutputGraphDevice::directCallGoesOutAsTextOnly()
{
    RunningGraph running;
    Recorder recorder(&running.device);
    running.device.input(2.5);
    running.device.input(QString("open"));
    QCOMPARE(recorder.take(), QStringList({"output(\"2.5\")", "output(\"open\")"}));
}

void tst_OutputGraphDevice::whileNotRunningEverythingIsDropped()
{
    RunningGraph running;
    GraphSettingsDevice relay;
    relay.setParam("name", "Pump");
    relay.initialise();
    running.feedFrom(relay, "pump");
    running.device.setRunning(false);
    Recorder recorder(&running.device);
    relay.input(1);
    relay.postInitialisation();
    running.device.input(2.5);
    running.device.input(QString("open"));
    QCOMPARE(recorder.take(), QStringList());
    running.device.setRunning(true);
    QCOMPARE(running.resent(), QStringList());
}

NORVO_TEST(tst_OutputGraphDevice)
#include "tst_OutputGraphDevice.moc"
