// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "Recorder.h"

#include "devices/MultilineDevice.h"
#include "TestMain.h"

#include <QtTest>

#include <functional>
#include <limits>

namespace {

using Feed = std::function<void(MultilineDevice&)>;

template <class T>
Feed feed(T value)
{
    return [value](MultilineDevice& device) { device.input(value); };
}

} // namespace

Q_DECLARE_METATYPE(Feed)

class tst_MultilineDevice : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsParameters();
    void declaresItsSignalsAndSlots();
    void initialiseChangesNothing();
    void valueBecomesText_data();
    void valueBecomesText();
    void inputWhileNotRunningIsDropped_data();
    void inputWhileNotRunningIsDropped();
};

void tst_MultilineDevice::declaresItsParameters()
{
    MultilineDevice device;
    QCOMPARE(parameterTable(device),
             QStringList({"widget/fontSize = 30", "widget/disableScrolling = false"}));
}

void tst_MultilineDevice::declaresItsSignalsAndSlots()
{
    QCOMPARE(methodTable(MultilineDevice::staticMetaObject),
             QStringList({"signal output(QString)", "slot input(uchar)", "slot input(int)",
                          "slot input(QString)", "slot input(double)", "slot input(QByteArray)",
                          "slot input(bool)"}));
}

void tst_MultilineDevice::initialiseChangesNothing()
{
    MultilineDevice device;
    device.setParam("widget/fontSize", "large");
    Recorder recorder(&device, QObject::staticMetaObject);
    QVERIFY(device.initialise());
    QCOMPARE(recorder.take(), QStringList());
    QCOMPARE(device.description(), QString());
}

void tst_MultilineDevice::valueBecomesText_data()
{
    QTest::addColumn<Feed>("value");
    QTest::addColumn<QString>("text");
    using uchar_t = unsigned char;
    QTest::newRow("unsigned char 7") << feed(uchar_t(7)) << "7";
    QTest::newRow("unsigned char 0") << feed(uchar_t(0)) << "0";
    QTest::newRow("unsigned char 255") << feed(uchar_t(255)) << "255";
    QTest::newRow("int") << feed(-42) << "-42";
    QTest::newRow("smallest int") << feed(std::numeric_limits<int>::min()) << "-2147483648";
    QTest::newRow("double 1e-7") << feed(1e-7) << "1e-07";
    QTest::newRow("double, six digits") << feed(3.14159265) << "3.14159";
    QTest::newRow("double, large") << feed(1234567.0) << "1.23457e+06";
    QTest::newRow("double, whole") << feed(2.0) << "2";
    QTest::newRow("double, NaN") << feed(qQNaN()) << "nan";
    QTest::newRow("double, infinite") << feed(-qInf()) << "-inf";
    QTest::newRow("false") << feed(false) << "false";
    QTest::newRow("true") << feed(true) << "true";
    QTest::newRow("one byte is followed by a space") << feed(QByteArray("\x05")) << "05 ";
    QTest::newRow("two bytes") << feed(QByteArray("\x0a\xff")) << "0A FF ";
    QTest::newRow("zero byte") << feed(QByteArray("a\0b", 3)) << "61 00 62 ";
    QTest::newRow("no bytes") << feed(QByteArray()) << "";
    QTest::newRow("text") << feed(QString(" any text\n")) << " any text\n";
    QTest::newRow("empty text") << feed(QString()) << "";
}

void tst_MultilineDevice::valueBecomesText()
{
    QFETCH(Feed, value);
    QFETCH(QString, text);
    MultilineDevice device;
    QVERIFY(device.initialise());
    device.setRunning(true);
    Recorder recorder(&device);
    value(device);
    value(device);
    const QString emitted = "output(\"" + text + "\")";
    QCOMPARE(recorder.take(), QStringList({emitted, emitted}));
}

void tst_MultilineDevice::inputWhileNotRunningIsDropped_data()
{
    valueBecomesText_data();
}

void tst_MultilineDevice::inputWhileNotRunningIsDropped()
{
    QFETCH(Feed, value);
    MultilineDevice device;
    QVERIFY(device.initialise());
    Recorder recorder(&device);
    value(device);
    device.setRunning(true);
    device.setRunning(false);
    value(device);
    QCOMPARE(recorder.take(), QStringList());
}

NORVO_TEST(tst_MultilineDevice)
#include "tst_MultilineDevice.moc"
