// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "MessageLog.h"
#include "Recorder.h"

#include "devices/DropDownListDevice.h"
#include "TestMain.h"

#include <QtTest>

#include <cmath>
#include <limits>

namespace {

constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kHighest = std::numeric_limits<int>::max();

} // namespace

class tst_DropDownListDevice : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsParameters();
    void declaresItsSignalsAndSlots();
    void holdsNothingAtFirst();

    void optionsAreSplit_data();
    void optionsAreSplit();
    void noChoicesAreAnError_data();
    void noChoicesAreAnError();

    void indexLeavesAsIntThenAsDouble();
    void heldIndexIsNotPassedOnAgain();
    void indexIsNotComparedWithTheList();
    void numberIsRounded_data();
    void numberIsRounded();
    void numberIsRoundedAsTheFormulaSays();
    void itemLeavesAsTextOnly();
    void heldItemIsNotPassedOnAgain();
    void emptyItemIsAnItem();

    void indexThatComesBackIsDropped();
    void itemThatComesBackIsDropped();
    void choiceIsHeldByTheTimeItLeaves();
    void indexAndItemDoNotHinderEachOther();
    void outlivesItsStop();
};

void tst_DropDownListDevice::declaresItsParameters()
{
    DropDownListDevice device;
    QCOMPARE(parameterTable(device),
             QStringList({"options = value1|value2", "separator = |", "emitOnInit = false",
                          "widget/label = ", "widget/labelSize = 12", "widget/size = 16"}));
}

void tst_DropDownListDevice::declaresItsSignalsAndSlots()
{
    QCOMPARE(methodTable(DropDownListDevice::staticMetaObject),
             QStringList({"signal output(int)", "signal output(double)", "signal output(QString)",
                          "signal currentTextChanged(QString)", "slot input(int)",
                          "slot input(double)", "slot input(QString)"}));
}

void tst_DropDownListDevice::holdsNothingAtFirst()
{
    DropDownListDevice device;
    Recorder recorder(&device);
    QVERIFY(device.initialise());
    device.postInitialisation();
    QVERIFY(!device.getIndex());
    QVERIFY(!device.getItem());
    QCOMPARE(recorder.take(), QStringList());
}

void tst_DropDownListDevice::optionsAreSplit_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("separator");
    QTest::addColumn<QStringList>("choices");
    QTest::newRow("one") << "a"
                         << "|" << QStringList{"a"};
    QTest::newRow("empty parts are skipped") << "a||b"
                                             << "|" << QStringList{"a", "b"};
    QTest::newRow("at the ends too") << "|a|b|"
                                     << "|" << QStringList{"a", "b"};
    QTest::newRow("upper-case separator, lower-case options") << "1x2x3"
                                                              << "X" << QStringList{"1", "2", "3"};
    QTest::newRow("lower-case separator, upper-case options") << "1AND2"
                                                              << "and" << QStringList{"1", "2"};
    QTest::newRow("spaces are kept") << " a ; b"
                                     << ";" << QStringList{" a ", " b"};
    QTest::newRow("no pattern") << "a.*b"
                                << ".*" << QStringList{"a", "b"};
    QTest::newRow("same choice twice") << "a|a"
                                       << "|" << QStringList{"a", "a"};
    QTest::newRow("empty separator") << "abc"
                                     << "" << QStringList{"a", "b", "c"};
    QTest::newRow("separator that does not occur") << "a|b"
                                                   << ";" << QStringList{"a|b"};
}

void tst_DropDownListDevice::optionsAreSplit()
{
    QFETCH(QString, options);
    QFETCH(QString, separator);
    QFETCH(QStringList, choices);
    DropDownListDevice device;
    device.setParam("options", options);
    device.setParam("separator", separator);
    QVERIFY(device.initialise());
    QCOMPARE(device.choices(), choices);
}

void tst_DropDownListDevice::noChoicesAreAnError_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("separator");
    QTest::newRow("no options") << ""
                                << "|";
    QTest::newRow("separators only") << "|||"
                                     << "|";
    QTest::newRow("nothing at all") << ""
                                    << "";
}

void tst_DropDownListDevice::noChoicesAreAnError()
{
    QFETCH(QString, options);
    QFETCH(QString, separator);
    DropDownListDevice device;
    device.setObjectName("list");
    device.setParam("options", options);
    device.setParam("separator", separator);
    QSignalSpy errors(&device, &BaseDevice::errorOccurred);
    MessageLog log;
    QVERIFY(!device.initialise());
    QCOMPARE(errors.size(), 1);
    QCOMPARE(errors[0][0].toString(), QString("Cant't parse options string"));
    QCOMPARE(log.take(), QStringList("warning: list: Cant't parse options string"));
}

void tst_DropDownListDevice::indexLeavesAsIntThenAsDouble()
{
    DropDownListDevice device;
    Recorder recorder(&device);
    QSignalSpy doubles(&device, QOverload<double>::of(&DropDownListDevice::output));
    device.input(1);
    QCOMPARE(recorder.take(), QStringList({"output(1)", "output(1)"}));
    QCOMPARE(doubles.size(), 1);
    QCOMPARE(device.getIndex(), std::optional<int>(1));
    QVERIFY(!device.getItem());
}

void tst_DropDownListDevice::heldIndexIsNotPassedOnAgain()
{
    DropDownListDevice device;
    Recorder recorder(&device);
    device.input(2);
    device.input(2);
    device.input(2.2);
    QCOMPARE(recorder.take(), QStringList({"output(2)", "output(2)"}));
    device.input(0);
    device.input(2);
    QCOMPARE(recorder.take(), QStringList({"output(0)", "output(0)", "output(2)", "output(2)"}));
}

void tst_DropDownListDevice::indexIsNotComparedWithTheList()
{
    DropDownListDevice device;
    QVERIFY(device.initialise());
    Recorder recorder(&device);
    device.input(-7);
    device.input(1000);
    QCOMPARE(recorder.take(),
             QStringList({"output(-7)", "output(-7)", "output(1000)", "output(1000)"}));
    QCOMPARE(device.getIndex(), std::optional<int>(1000));
}

void tst_DropDownListDevice::numberIsRounded_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<int>("index");
    QTest::newRow("1.5") << 1.5 << 2;
    QTest::newRow("-1.5") << -1.5 << -1;
    QTest::newRow("-1.51") << -1.51 << -2;
    QTest::newRow("0.5") << 0.5 << 1;
    QTest::newRow("-0.5") << -0.5 << 0;
    QTest::newRow("-2.5") << -2.5 << -2;
    QTest::newRow("1.4999") << 1.4999 << 1;
    QTest::newRow("sum that rounds up") << 0.49999999999999994 << 1;
    QTest::newRow("highest") << 2147483647.0 << kHighest;
    QTest::newRow("above the highest") << 2147483647.5 << kHighest;
    QTest::newRow("next to lowest") << -2147483647.0 << -2147483647;
    QTest::newRow("lowest") << -2147483648.0 << kLowest;
    QTest::newRow("below the lowest") << -2147483649.0 << kLowest;
    QTest::newRow("far above") << 1e300 << kHighest;
    QTest::newRow("far below") << -1e300 << kLowest;
    QTest::newRow("infinity") << qInf() << kHighest;
    QTest::newRow("minus infinity") << -qInf() << kLowest;
    QTest::newRow("NaN") << qQNaN() << 0;
}

void tst_DropDownListDevice::numberIsRounded()
{
    QFETCH(double, number);
    QFETCH(int, index);
    DropDownListDevice device;
    device.input(number);
    QVERIFY(device.getIndex());
    QCOMPARE(*device.getIndex(), index);
}

void tst_DropDownListDevice::numberIsRoundedAsTheFormulaSays()
{
    const auto byFormula = [](double v) {
        if (v >= 0.0) {
            return int(v + 0.5);
        }
        const int k = int(v - 1.0);
        return k + int(v - k + 0.5);
    };
    DropDownListDevice device;
    for (const double base : {0.0, 1000.0, -1000.0, 1e9, -1e9, 2147483640.0, -2147483640.0}) {
        for (int sixteenth = -100; sixteenth <= 100; ++sixteenth) {
            const double tie = base + sixteenth / 16.0;
            for (const double number :
                 {std::nextafter(tie, -1e10), tie, std::nextafter(tie, 1e10)}) {
                device.input(number);
                QCOMPARE(*device.getIndex(), byFormula(number));
            }
        }
    }
}

void tst_DropDownListDevice::itemLeavesAsTextOnly()
{
    DropDownListDevice device;
    QVERIFY(device.initialise());
    Recorder recorder(&device);
    device.input(QString("no such value"));
    QCOMPARE(recorder.take(), QStringList("output(\"no such value\")"));
    QCOMPARE(device.getItem(), std::optional<QString>("no such value"));
    QVERIFY(!device.getIndex());
}

void tst_DropDownListDevice::heldItemIsNotPassedOnAgain()
{
    DropDownListDevice device;
    Recorder recorder(&device);
    device.input(QString("value1"));
    device.input(QString("value1"));
    device.input(QString("Value1"));
    QCOMPARE(recorder.take(), QStringList({"output(\"value1\")", "output(\"Value1\")"}));
}

void tst_DropDownListDevice::emptyItemIsAnItem()
{
    DropDownListDevice device;
    Recorder recorder(&device);
    device.input(QString());
    device.input(QString(""));
    QCOMPARE(recorder.take(), QStringList("output(\"\")"));
    QVERIFY(device.getItem());
}

void tst_DropDownListDevice::indexThatComesBackIsDropped()
{
    DropDownListDevice device;
    connect(&device, QOverload<int>::of(&DropDownListDevice::output), &device,
            [&](int index) { device.input(index + 1); });
    connect(&device, QOverload<double>::of(&DropDownListDevice::output), &device,
            [&](double index) { device.input(index + 1.0); });
    Recorder recorder(&device);
    device.input(3);
    QCOMPARE(recorder.take(), QStringList({"output(3)", "output(3)"}));
    QCOMPARE(*device.getIndex(), 3);
    device.input(5.0);
    QCOMPARE(recorder.take(), QStringList({"output(5)", "output(5)"}));
}

void tst_DropDownListDevice::itemThatComesBackIsDropped()
{
    DropDownListDevice device;
    connect(&device, QOverload<QString>::of(&DropDownListDevice::output), &device,
            [&](const QString& item) { device.input(item + "x"); });
    Recorder recorder(&device);
    device.input(QString("a"));
    QCOMPARE(recorder.take(), QStringList("output(\"a\")"));
    QCOMPARE(*device.getItem(), QString("a"));
    device.input(QString("b"));
    QCOMPARE(recorder.take(), QStringList("output(\"b\")"));
}

void tst_DropDownListDevice::choiceIsHeldByTheTimeItLeaves()
{
    DropDownListDevice device;
    QStringList held;
    connect(&device, QOverload<int>::of(&DropDownListDevice::output), this,
            [&] { held << QString::number(*device.getIndex()); });
    connect(&device, QOverload<QString>::of(&DropDownListDevice::output), this,
            [&] { held << *device.getItem(); });
    device.input(2);
    device.input(QString("value2"));
    QCOMPARE(held, QStringList({"2", "value2"}));
}

void tst_DropDownListDevice::indexAndItemDoNotHinderEachOther()
{
    DropDownListDevice device;
    connect(&device, QOverload<int>::of(&DropDownListDevice::output), &device,
            [&](int index) { device.input(QString::number(index)); });
    Recorder recorder(&device);
    device.input(4);
    QCOMPARE(recorder.take(), QStringList({"output(\"4\")", "output(4)", "output(4)"}));
}

void tst_DropDownListDevice::outlivesItsStop()
{
    DropDownListDevice device;
    QVERIFY(device.initialise());
    device.input(1);
    device.input(QString("value1"));
    device.deinitialise();
    QVERIFY(device.initialise());
    QCOMPARE(device.getIndex(), std::optional<int>(1));
    QCOMPARE(device.getItem(), std::optional<QString>("value1"));
}

NORVO_TEST(tst_DropDownListDevice)
#include "tst_DropDownListDevice.moc"
