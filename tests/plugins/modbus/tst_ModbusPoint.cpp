// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/modbus/ModbusPoint.h"
#include "TestMain.h"

#include <QtTest>

using norvo::ModbusPoint;
using norvo::RegisterFormat;

Q_DECLARE_METATYPE(RegisterFormat::Type)

/// The small language in which outputs and inputs are defined.
class tst_ModbusPoint : public QObject
{
    Q_OBJECT

private slots:
    void definitionSaysWhereAndHow_data();
    void definitionSaysWhereAndHow();
    void optionsSayTheSameAsWords();
    void bitIsOneOfARegister();
    void errorsNameWhatWouldBeRight_data();
    void errorsNameWhatWouldBeRight();
    void onlyCoilsAndHoldingRegistersAreWritten();
};

void tst_ModbusPoint::definitionSaysWhereAndHow_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("place");
    QTest::addColumn<int>("size");
    QTest::addColumn<RegisterFormat::Type>("type");
    QTest::addColumn<QString>("order");
    QTest::addColumn<double>("scale");
    QTest::addColumn<double>("offset");

    using Type = RegisterFormat::Type;
    QTest::newRow("coil") << "coil 3"
                          << "coil 3" << 1 << Type::Uint16 << "" << 1.0 << 0.0;
    QTest::newRow("discrete") << "  Discrete   65535 "
                              << "discrete 65535" << 1 << Type::Uint16 << "" << 1.0 << 0.0;
    QTest::newRow("default type") << "input 0"
                                  << "input 0" << 1 << Type::Uint16 << "" << 1.0 << 0.0;
    QTest::newRow("as designed") << "holding 100 uint16 x0.1"
                                 << "holding 100" << 1 << Type::Uint16 << "" << 0.1 << 0.0;
    QTest::newRow("hexadecimal") << "holding 0x64 int16"
                                 << "holding 100" << 1 << Type::Int16 << "" << 1.0 << 0.0;
    QTest::newRow("leading zeros") << "holding 010"
                                   << "holding 10" << 1 << Type::Uint16 << "" << 1.0 << 0.0;
    QTest::newRow("any order of words")
        << "holding 7 -40 x-2 cdab int32"
        << "holding 7" << 2 << Type::Int32 << "words " << -2.0 << -40.0;
    QTest::newRow("uint32") << "holding 7 uint32 dcba"
                            << "holding 7" << 2 << Type::Uint32 << "words bytes " << 1.0 << 0.0;
    QTest::newRow("float32") << "holding 65534 float32 badc +5"
                             << "holding 65534" << 2 << Type::Float32 << "bytes " << 1.0 << 5.0;
    QTest::newRow("float64") << "input 7 float64 abcd"
                             << "input 7" << 4 << Type::Float64 << "" << 1.0 << 0.0;
}

void tst_ModbusPoint::definitionSaysWhereAndHow()
{
    QFETCH(QString, text);

    ModbusPoint point;
    QCOMPARE(point.define(text), QString());
    QTEST(point.place(), "place");
    QTEST(point.size(), "size");
    QTEST(point.format.type, "type");
    QTEST(QString(point.format.isLowWordFirst ? "words " : "") +
              (point.format.areBytesSwapped ? "bytes " : ""),
          "order");
    QTEST(point.format.scale, "scale");
    QTEST(point.format.offset, "offset");
    QVERIFY(!point.bit);
}

void tst_ModbusPoint::optionsSayTheSameAsWords()
{
    ModbusPoint point;
    QCOMPARE(point.define({"holding 7",
                           {{"type", "float32"},
                            {"order", "cdab"},
                            {"scale", "0.5"},
                            {"offset", "-1"},
                            {"send", "changes"}}}),
             QString());
    QCOMPARE(point.format.type, RegisterFormat::Type::Float32);
    QVERIFY(point.format.isLowWordFirst && !point.format.areBytesSwapped);
    QCOMPARE(point.format.scale, 0.5);
    QCOMPARE(point.format.offset, -1.0);
}

void tst_ModbusPoint::bitIsOneOfARegister()
{
    ModbusPoint point;
    QCOMPARE(point.define(QString("holding 100 bit 15")), QString());
    QCOMPARE(point.bit, std::optional(15));
    QVERIFY(point.isYesNo() && !point.isOfBits());
    ModbusPoint second;
    QCOMPARE(second.define({"input 100", {{"bit", "0"}}}), QString());
    QCOMPARE(second.bit, std::optional(0));
}

void tst_ModbusPoint::errorsNameWhatWouldBeRight_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("error");

    const QString notARegister = "; addresses count from 0, so that register 40101 of a manual is "
                                 "holding 100";
    QTest::newRow("empty") << ""
                           << ""
                           << "\"\" is no table and address; write for instance holding 100 uint16 "
                              "x0.1 or coil 3";
    QTest::newRow("no address") << "coil"
                                << ""
                                << "\"coil\" is no table and address; write for instance holding "
                                   "100 uint16 x0.1 or coil 3";
    QTest::newRow("table") << "register 4"
                           << ""
                           << "there is no table \"register\"; valid names: coil, discrete, input, "
                              "holding";
    QTest::newRow("address") << "holding uint16"
                             << ""
                             << "the address \"uint16\" is not a whole number from 0 to 65535" +
                                    notARegister;
    QTest::newRow("six digits") << "holding 400101"
                                << ""
                                << "the address \"400101\" is not a whole number from 0 to 65535" +
                                       notARegister;
    QTest::newRow("negative") << "coil -1"
                              << ""
                              << "the address \"-1\" is not a whole number from 0 to 65535" +
                                     notARegister;
    QTest::newRow("beyond the end") << "holding 65535 int32"
                                    << ""
                                    << "it needs 2 registers, and the last one there is has the "
                                       "address 65535";
    QTest::newRow("word") << "holding 1 float"
                          << ""
                          << "\"float\" is no type (int16, uint16, int32, uint32, float32, "
                             "float64), no order (abcd, cdab, badc, dcba), no scale (such as "
                             "x0.1), no offset (such as +5) and no bit (such as bit 3)";
    QTest::newRow("type twice") << "holding 1 int16 uint16"
                                << ""
                                << "the type is given twice";
    QTest::newRow("text and option") << "holding 1 x0.1"
                                     << "scale=0.1"
                                     << "the scale is given twice";
    QTest::newRow("type option") << "holding 1"
                                 << "type=real"
                                 << "there is no type \"real\"; valid names: int16, uint16, int32, "
                                    "uint32, float32, float64";
    QTest::newRow("order option") << "holding 1 int32"
                                  << "order=big"
                                  << "there is no order \"big\"; valid names: abcd, cdab, badc, "
                                     "dcba";
    QTest::newRow("scale") << "holding 1 xten"
                           << ""
                           << "the scale \"ten\" is not a number";
    QTest::newRow("scale 0") << "holding 1 x0"
                             << ""
                             << "the scale is 0; without a scale leave it out";
    QTest::newRow("endless scale") << "holding 1 xinf"
                                   << ""
                                   << "the scale \"inf\" is not a number";
    QTest::newRow("offset") << "holding 1 +-"
                            << ""
                            << "the offset \"+-\" is not a number";
    QTest::newRow("bit without number") << "holding 1 bit"
                                        << ""
                                        << "the number of the bit is missing; write bit 3";
    QTest::newRow("bit 16") << "holding 1 bit 16"
                            << ""
                            << "the bit \"16\" is not a whole number from 0 to 15";
    QTest::newRow("bit with type") << "holding 1 uint16 bit 3"
                                   << ""
                                   << "a bit is yes or no; it has no type, order, scale or offset";
    QTest::newRow("coil with type") << "coil 1 uint16"
                                    << ""
                                    << "a coil is yes or no by itself; leave out the type";
    QTest::newRow("words of one register") << "holding 1 int16 cdab"
                                           << ""
                                           << "a value of one register has the order abcd or badc";
}

void tst_ModbusPoint::errorsNameWhatWouldBeRight()
{
    QFETCH(QString, text);
    QFETCH(QString, options);

    QMap<QString, QString> map;
    if (!options.isEmpty()) {
        map.insert(options.section('=', 0, 0), options.section('=', 1));
    }
    ModbusPoint point;
    QTEST(point.define({text, map}), "error");
}

void tst_ModbusPoint::onlyCoilsAndHoldingRegistersAreWritten()
{
    const auto errorOf = [](const char* text) {
        ModbusPoint point;
        point.define(QString(text));
        return point.writeError();
    };
    QCOMPARE(errorOf("coil 1"), QString());
    QCOMPARE(errorOf("holding 1 bit 2"), QString());
    QCOMPARE(errorOf("discrete 1"), QString("nothing can be written to \"discrete\"; an input is a "
                                            "coil or a holding register"));
    QCOMPARE(errorOf("input 1"), QString("nothing can be written to \"input\"; an input is a coil "
                                         "or a holding register"));
}

NORVO_APPLESS_TEST(tst_ModbusPoint)
#include "tst_ModbusPoint.moc"
