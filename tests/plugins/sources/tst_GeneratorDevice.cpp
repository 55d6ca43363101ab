// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/sources/GeneratorDevice.h"
#include "TestMain.h"

#include <QtTest>

#include <algorithm>
#include <cmath>

namespace {

using Params = QMap<QString, QString>;

struct Subject
{
    explicit Subject(const Params& params)
    {
        device.setObjectName("waves");
        for (auto param = params.cbegin(); param != params.cend(); ++param) {
            device.setParam(param.key(), param.value());
        }
        QObject::connect(&device, qOverload<double>(&GeneratorDevice::output),
                         [this](double value) {
                             values << value;
                             order += 'n';
                         });
        QObject::connect(&device, qOverload<DoubleVec>(&GeneratorDevice::output),
                         [this](const DoubleVec& window) {
                             windows << window;
                             order += 'w';
                         });
        initialised = device.initialise();
        device.setRunning(initialised);
        if (initialised) {
            device.postInitialisation();
        }
    }

    GeneratorDevice device;
    bool initialised = false;
    QVector<double> values;
    QVector<DoubleVec> windows;
    QString order;
};

} // namespace

class tst_GeneratorDevice : public QObject
{
    Q_OBJECT

private slots:
    void emitsTheFirstValueAtOnce();
    void followsTheWaveform();
    void equalSeedsGiveEqualRuns();
    void noiseIsAddedToTheWave();
    void startedAgainItBeginsAtTheStartOfTheWave();
    void unknownWaveformIsASine();
    void windowFollowsTheNumber();
    void windowIsFullFromTheStart();
    void receivedWindowStaysAsItWas();
    void noWindowByDefault();
    void dropOutsAreSilent();
    void intervalIsAMillisecondAtLeast();
    void oddParametersDoNoHarm_data();
    void oddParametersDoNoHarm();
    void textForANumberIsAnError();
    void staysSilentWhenNotRunning();
    void stopsBeforeTheShutdown();
    void declaresItsParameters();
};

void tst_GeneratorDevice::emitsTheFirstValueAtOnce()
{
    Subject subject({{"waveform", "square"}, {"amplitude", "3"}, {"offset", "1"}});
    QCOMPARE(subject.values, QVector<double>{4.0});
}

void tst_GeneratorDevice::followsTheWaveform()
{
    Subject subject({{"waveform", "ramp"}, {"period", "0.04"}, {"interval", "10"}});
    QTRY_VERIFY(subject.values.size() >= 9);
    QCOMPARE(subject.values.mid(0, 9), (QVector<double>{-1, -0.5, 0, 0.5, -1, -0.5, 0, 0.5, -1}));
}

void tst_GeneratorDevice::equalSeedsGiveEqualRuns()
{
    const Params params{{"waveform", "noise"}, {"interval", "1"}, {"seed", "7"}, {"noise", "2"}};
    Subject one(params);
    Subject same(params);
    Params otherParams = params;
    otherParams["seed"] = "8";
    Subject other(otherParams);
    QTRY_VERIFY(one.values.size() >= 20 && same.values.size() >= 20 && other.values.size() >= 20);
    QCOMPARE(one.values.mid(0, 20), same.values.mid(0, 20));
    QVERIFY(one.values.mid(0, 20) != other.values.mid(0, 20));
}

void tst_GeneratorDevice::noiseIsAddedToTheWave()
{
    Subject subject({{"waveform", "square"}, {"noise", "0.5"}, {"length", "1000"}});
    const DoubleVec values = subject.windows.constFirst();
    const auto [lowest, highest] = std::minmax_element(values.cbegin(), values.cend());
    QVERIFY(*lowest >= -1.5 && *lowest < -1.4);
    QVERIFY(*highest <= 1.5 && *highest > 1.4);
}

void tst_GeneratorDevice::startedAgainItBeginsAtTheStartOfTheWave()
{
    Subject subject({{"waveform", "ramp"}, {"period", "1"}, {"interval", "250"}});
    QTRY_VERIFY(subject.values.size() >= 2);
    subject.device.preShutdown();
    subject.values.clear();
    QVERIFY(subject.device.initialise());
    subject.device.postInitialisation();
    QCOMPARE(subject.values, QVector<double>{-1.0});
}

void tst_GeneratorDevice::unknownWaveformIsASine()
{
    Subject subject({{"waveform", "Ramp"}, {"period", "0.04"}, {"interval", "10"}});
    QTRY_VERIFY(subject.values.size() >= 2);
    QCOMPARE(subject.values[0], 0.0);
    QCOMPARE(subject.values[1], 1.0);
}

void tst_GeneratorDevice::windowFollowsTheNumber()
{
    Subject subject({{"length", "3"}, {"interval", "5"}});
    QTRY_VERIFY(subject.windows.size() >= 3);
    QVERIFY2(subject.order.startsWith("nwnwnw"), qPrintable(subject.order));
    for (int i = 0; i < subject.windows.size(); ++i) {
        QCOMPARE(subject.windows[i].last(), subject.values[i]);
    }
}

void tst_GeneratorDevice::windowIsFullFromTheStart()
{
    Subject subject({{"waveform", "ramp"}, {"period", "0.4"}, {"length", "3"}});
    QCOMPARE(subject.windows, QVector<DoubleVec>{(DoubleVec{0.0, 0.5, -1.0})});
    QTRY_VERIFY(subject.windows.size() >= 2);
    QCOMPARE(subject.windows[1], (DoubleVec{0.5, -1.0, -0.5}));
}

void tst_GeneratorDevice::receivedWindowStaysAsItWas()
{
    Subject subject({{"waveform", "ramp"}, {"length", "5"}, {"interval", "5"}});
    const QVector<double> first = subject.windows.first();
    const QVector<double> copy(first.constBegin(), first.constEnd());
    QTRY_VERIFY(subject.windows.size() >= 3);
    QCOMPARE(first, copy);
}

void tst_GeneratorDevice::noWindowByDefault()
{
    Subject subject({{"interval", "5"}});
    QTRY_VERIFY(subject.values.size() >= 3);
    QVERIFY(subject.windows.isEmpty());
}

void tst_GeneratorDevice::dropOutsAreSilent()
{
    Subject subject({{"waveform", "ramp"},
                     {"period", "0.2"},
                     {"interval", "20"},
                     {"on", "0.04"},
                     {"off", "0.06"},
                     {"length", "2"}});
    QTRY_VERIFY(subject.values.size() >= 4);
    // Of ten ticks a period, the first two of each five.
    const QVector<double> expected{-1.0, -0.8, 0.0, 0.2};
    for (int i = 0; i < expected.size(); ++i) {
        QVERIFY(std::abs(subject.values[i] - expected[i]) < 1e-9);
    }
    QCOMPARE(subject.windows.size(), subject.values.size());
    QVERIFY(std::abs(subject.windows[2].first() + 0.2) < 1e-9); // The window ran on.
}

void tst_GeneratorDevice::intervalIsAMillisecondAtLeast()
{
    for (const char* interval : {"0", "-5", "nan"}) {
        Subject subject({{"waveform", "ramp"}, {"period", "0.004"}, {"interval", interval}});
        QTRY_VERIFY(subject.values.size() >= 3);
        QCOMPARE(subject.values.mid(0, 3), (QVector<double>{-1.0, -0.5, 0.0}));
    }
}

void tst_GeneratorDevice::oddParametersDoNoHarm_data()
{
    QTest::addColumn<QString>("name");

    for (const char* name :
         {"period", "amplitude", "offset", "noise", "interval", "on", "off", "seed", "length"}) {
        QTest::newRow(name) << name;
    }
}

void tst_GeneratorDevice::oddParametersDoNoHarm()
{
    QFETCH(QString, name);

    for (const char* value : {"0", "-1", "nan", "inf", "-inf", "1e308", "-1e308", "5e-324"}) {
        Params params{{"waveform", "sine"}, {"interval", "1"}, {"noise", "0.1"}};
        params[name] = value;
        Subject subject(params);
        QVERIFY2(subject.initialised, value);
        QVERIFY2(!subject.values.isEmpty(), value);
        QCoreApplication::processEvents();
        for (const DoubleVec& window : qAsConst(subject.windows)) {
            QVERIFY(window.size() <= 100000);
        }
    }
}

void tst_GeneratorDevice::textForANumberIsAnError()
{
    QTest::ignoreMessage(QtWarningMsg, "waves: parameter \"period\": \"long\" is not a number");
    Subject subject({{"period", "long"}});
    QVERIFY(!subject.initialised);
}

void tst_GeneratorDevice::staysSilentWhenNotRunning()
{
    GeneratorDevice device;
    QSignalSpy values(&device, SIGNAL(output(double)));
    device.setParam("interval", "1");
    QVERIFY(device.initialise());
    device.postInitialisation();
    QTest::qWait(30);
    QCOMPARE(values.count(), 0);
}

void tst_GeneratorDevice::stopsBeforeTheShutdown()
{
    Subject subject({{"interval", "1"}});
    QTRY_VERIFY(subject.values.size() >= 3);
    subject.device.setRunning(false);
    subject.device.preShutdown();
    subject.values.clear();
    QTest::qWait(30);
    QVERIFY(subject.values.isEmpty());
}

void tst_GeneratorDevice::declaresItsParameters()
{
    GeneratorDevice device;
    QCOMPARE(device.paramNames(), (QStringList{"waveform", "period", "amplitude", "offset", "noise",
                                               "interval", "on", "off", "seed", "length"}));
    QCOMPARE(device.getParam("waveform").options(),
             (QStringList{"sine", "ramp", "square", "noise"}));
    for (const QString& name : device.paramNames()) {
        QVERIFY2(!device.getParam(name).description().isEmpty(), qPrintable(name));
    }
    QCOMPARE(device.getParam("period").unit(), "s");
    QCOMPARE(device.getParam("interval").unit(), "ms");
    QCOMPARE(device.getParam("amplitude").unit(), "");
    QCOMPARE(device.getParam("length").value(), "0");
    QCOMPARE(device.getParam("off").value(), "0");
    QCOMPARE(device.grabMethods({}, QMetaMethod::Signal, true),
             (QStringList{"output(double)", "output(DoubleVec)"}));
}

NORVO_GUILESS_TEST(tst_GeneratorDevice)
#include "tst_GeneratorDevice.moc"
