// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/modbus/ModbusPoint.h"
#include "TestMain.h"

#include <QtTest>

#include <cmath>
#include <limits>

using norvo::ModbusPoint;
using norvo::RegisterFormat;
using Registers = RegisterFormat::Registers;

Q_DECLARE_METATYPE(Registers)

namespace {

RegisterFormat formatOf(const QString& words)
{
    ModbusPoint point;
    const QString error = point.define("holding 0 " + words);
    return error.isEmpty() ? point.format : throw std::runtime_error(error.toStdString());
}

} // namespace

/// Numbers in registers, both ways.
class tst_RegisterFormat : public QObject
{
    Q_OBJECT

private slots:
    void numberAndRegistersStandForEachOther_data();
    void numberAndRegistersStandForEachOther();
    void scaledNumberHasNoDigitsOfItsOwn();
    void numberIsRoundedToTheNearest();
    void numberThatDoesNotFitIsRefused_data();
    void numberThatDoesNotFitIsRefused();
    void rangeIsThatOfTheScaledNumbers();
};

void tst_RegisterFormat::numberAndRegistersStandForEachOther_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<double>("number");
    QTest::addColumn<Registers>("registers");

    QTest::newRow("uint16") << "uint16" << 65535.0 << Registers{0xffff};
    QTest::newRow("int16") << "int16" << -2.0 << Registers{0xfffe};
    QTest::newRow("lowest int16") << "int16" << -32768.0 << Registers{0x8000};
    QTest::newRow("bytes of one register") << "uint16 badc" << double(0x1234) << Registers{0x3412};
    QTest::newRow("uint32") << "uint32" << 4294967295.0 << Registers{0xffff, 0xffff};
    QTest::newRow("abcd") << "uint32 abcd" << double(0x12345678) << Registers{0x1234, 0x5678};
    QTest::newRow("cdab") << "uint32 cdab" << double(0x12345678) << Registers{0x5678, 0x1234};
    QTest::newRow("badc") << "uint32 badc" << double(0x12345678) << Registers{0x3412, 0x7856};
    QTest::newRow("dcba") << "uint32 dcba" << double(0x12345678) << Registers{0x7856, 0x3412};
    QTest::newRow("int32") << "int32" << -2147483648.0 << Registers{0x8000, 0};
    QTest::newRow("int32 of -2") << "int32 cdab" << -2.0 << Registers{0xfffe, 0xffff};
    QTest::newRow("float32") << "float32" << -1.5 << Registers{0xbfc0, 0};
    QTest::newRow("float32 cdab") << "float32 cdab" << -1.5 << Registers{0, 0xbfc0};
    QTest::newRow("float64") << "float64" << 1.1 << Registers{0x3ff1, 0x9999, 0x9999, 0x999a};
    QTest::newRow("float64 dcba") << "float64 dcba" << 1.1
                                  << Registers{0x9a99, 0x9999, 0x9999, 0xf13f};
    QTest::newRow("scale") << "uint16 x0.1" << 21.5 << Registers{215};
    QTest::newRow("offset") << "uint16 -40" << -40.0 << Registers{0};
    QTest::newRow("scale and offset") << "int16 x0.5 +100" << 99.5 << Registers{0xffff};
    QTest::newRow("negative scale") << "int16 x-2" << 6.0 << Registers{0xfffd};
}

void tst_RegisterFormat::numberAndRegistersStandForEachOther()
{
    QFETCH(QString, format);
    QFETCH(double, number);
    QFETCH(Registers, registers);

    const RegisterFormat subject = formatOf(format);
    QCOMPARE(subject.size(), registers.size());
    QCOMPARE(subject.decode(registers.constData()), number);
    const auto encoded = subject.encode(number);
    QVERIFY(encoded);
    QCOMPARE(*encoded, registers);
}

void tst_RegisterFormat::scaledNumberHasNoDigitsOfItsOwn()
{
    const RegisterFormat tenths = formatOf("x0.1");
    const RegisterFormat thousandths = formatOf("x0.001");
    for (int raw = 0; raw < 65536; ++raw) {
        const auto word = quint16(raw);
        QVERIFY(tenths.decode(&word) == QString("%1e-1").arg(raw).toDouble());
        QVERIFY(thousandths.decode(&word) == QString("%1e-3").arg(raw).toDouble());
    }
}

void tst_RegisterFormat::numberIsRoundedToTheNearest()
{
    QCOMPARE(*formatOf("uint16").encode(2.5), Registers{3});
    QCOMPARE(*formatOf("int16").encode(-2.4), Registers{0xfffe});
    QCOMPARE(*formatOf("uint16").encode(-0.4), Registers{0});
    QCOMPARE(*formatOf("uint16").encode(65535.4), Registers{65535});
    QCOMPARE(*formatOf("uint16 x0.1").encode(0.29), Registers{3});
}

void tst_RegisterFormat::numberThatDoesNotFitIsRefused_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<double>("number");

    QTest::newRow("above uint16") << "uint16" << 65535.5;
    QTest::newRow("below uint16") << "uint16" << -0.5;
    QTest::newRow("above int16") << "int16" << 32768.0;
    QTest::newRow("below int16") << "int16" << -32769.0;
    QTest::newRow("above int32") << "int32" << 2147483648.0;
    QTest::newRow("above uint32") << "uint32" << 4294967296.0;
    QTest::newRow("above float32") << "float32" << 1e39;
    QTest::newRow("scaled") << "uint16 x0.1" << 6553.6;
    for (const QString& type : RegisterFormat::typeNames()) {
        QTest::newRow(qPrintable("NaN for " + type)) << type << std::nan("");
        QTest::newRow(qPrintable("infinity for " + type))
            << type << std::numeric_limits<double>::infinity();
    }
}

void tst_RegisterFormat::numberThatDoesNotFitIsRefused()
{
    QFETCH(QString, format);
    QFETCH(double, number);

    QVERIFY(!formatOf(format).encode(number));
}

void tst_RegisterFormat::rangeIsThatOfTheScaledNumbers()
{
    QCOMPARE(formatOf("uint16 x0.1").range(), QString("0 to 6553.5"));
    QCOMPARE(formatOf("int16 x-1 +10").range(), QString("-32757 to 32778"));
    QCOMPARE(formatOf("uint32").range(), QString("0 to 4294967295"));
}

NORVO_APPLESS_TEST(tst_RegisterFormat)
#include "tst_RegisterFormat.moc"
