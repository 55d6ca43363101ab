// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/modbus/ModbusSettings.h"
#include "TestMain.h"

#include "norvo/BaseDevice.h"

#include <QtTest>

using norvo::ModbusSettings;

namespace {

using Params = QVector<QPair<QString, QString>>;

/// What is wrong with such parameters; the others have their defaults.
QString read(ModbusSettings& settings, const Params& params)
{
    BaseDevice device;
    ModbusSettings::declare(device);
    for (const auto& [name, value] : params) {
        device.setParam(name, value);
    }
    return settings.read(device);
}

const QPair<QString, QString> kLine{"target", "rtu:///dev/ttyUSB0"};

} // namespace

class tst_ModbusSettings : public QObject
{
    Q_OBJECT

private slots:
    void serverOfANetwork();
    void serialLine();
    void parityIsTheOneThatIsNamed_data();
    void parityIsTheOneThatIsNamed();
    void numbersHaveTheirRanges_data();
    void numbersHaveTheirRanges();
};

void tst_ModbusSettings::serverOfANetwork()
{
    ModbusSettings settings;
    QCOMPARE(read(settings, {{"target", "tcp://plc:1502"}, {"unit", "0"}}), QString());
    QVERIFY(!settings.isSerial());
    QCOMPARE(settings.host, QString("plc"));
    QCOMPARE(int(settings.port), 1502);
    QCOMPARE(settings.unit, 0);
    QCOMPARE(settings.pollMs, 500);
    QCOMPARE(settings.timeoutMs, 500);
    QCOMPARE(settings.retries, 1);
    QCOMPARE(read(settings, {{"target", "tcp://plc"}}), QString());
    QCOMPARE(int(settings.port), 502);
}

void tst_ModbusSettings::serialLine()
{
    ModbusSettings settings;
    QCOMPARE(read(settings, {kLine, {"baud", "9600"}, {"stopBits", "2"}}), QString());
    QVERIFY(settings.isSerial());
    QCOMPARE(settings.serial.path, QString("/dev/ttyUSB0"));
    QCOMPARE(settings.serial.baud, 9600);
    QCOMPARE(settings.serial.stopBits, QSerialPort::TwoStop);
    QCOMPARE(read(settings, {kLine}), QString());
    QCOMPARE(settings.serial.baud, 19200);
    QCOMPARE(settings.serial.stopBits, QSerialPort::OneStop);
}

void tst_ModbusSettings::parityIsTheOneThatIsNamed_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("parity");
    QTest::newRow("even") << "even" << int(QSerialPort::EvenParity);
    QTest::newRow("odd") << "odd" << int(QSerialPort::OddParity);
    QTest::newRow("none") << "none" << int(QSerialPort::NoParity);
    QTest::newRow("any other is the first") << "mark" << int(QSerialPort::EvenParity);
}

void tst_ModbusSettings::parityIsTheOneThatIsNamed()
{
    QFETCH(QString, text);
    ModbusSettings settings;
    QCOMPARE(read(settings, {kLine, {"parity", text}}), QString());
    QTEST(int(settings.serial.parity), "parity");
}

void tst_ModbusSettings::numbersHaveTheirRanges_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("least");
    QTest::addColumn<int>("greatest");
    QTest::newRow("unit") << "unit" << 1 << 247;
    QTest::newRow("poll") << "poll" << 10 << 3600000;
    QTest::newRow("timeout") << "timeout" << 10 << 60000;
    QTest::newRow("retries") << "retries" << 0 << 10;
    QTest::newRow("baud") << "baud" << 50 << 4000000;
}

void tst_ModbusSettings::numbersHaveTheirRanges()
{
    QFETCH(QString, name);
    QFETCH(int, least);
    QFETCH(int, greatest);
    ModbusSettings settings;
    for (const int number : {least, greatest}) {
        QCOMPARE(read(settings, {kLine, {name, QString::number(number)}}), QString());
    }
    for (const QString& text :
         {QString::number(least - 1), QString::number(greatest + 1), QString("many")}) {
        const QString wrong = read(settings, {kLine, {name, text}});
        QVERIFY2(wrong.contains(name) && wrong.contains(text), qPrintable(wrong));
    }
}

NORVO_APPLESS_TEST(tst_ModbusSettings)
#include "tst_ModbusSettings.moc"
