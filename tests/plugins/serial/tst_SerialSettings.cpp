// SPDX-License-Identifier: GPL-3.0-or-later

#include "SerialStand.h"
#include "plugins/serial/SerialSettings.h"
#include "TestMain.h"

#include <QtTest>

using norvo::FrameText;
using norvo::Framing;

/// Baud, frame, ends, prefixes, encodings and port names. A pseudo terminal takes any rate and
/// frame and ignores them, so what reaches the port is read back from QSerialPort.
class tst_SerialSettings : public QObject
{
    Q_OBJECT

private slots:
    void settingsReachThePort_data();
    void settingsReachThePort();
    void refusedBaudIsNamed();
    void endsHaveNames_data();
    void endsHaveNames();
    void framesAreWrapped_data();
    void framesAreWrapped();
    void bytesHaveATextInEachEncoding_data();
    void bytesHaveATextInEachEncoding();
    void textsThatAreNoBytesAreRefused();
    void usbPortIsFoundByItsIdentity_data();
    void usbPortIsFoundByItsIdentity();
    void wrongParametersAreErrors_data();
    void wrongParametersAreErrors();
};

void tst_SerialSettings::settingsReachThePort_data()
{
    QTest::addColumn<QString>("frame");
    QTest::addColumn<int>("dataBits");
    QTest::addColumn<int>("parity");
    QTest::addColumn<int>("stopBits");

    QTest::newRow("8N1") << "8N1" << 8 << int(QSerialPort::NoParity) << int(QSerialPort::OneStop);
    QTest::newRow("7e2") << " 7e2 " << 7 << int(QSerialPort::EvenParity)
                         << int(QSerialPort::TwoStop);
    QTest::newRow("5O1.5") << "5O1.5" << 5 << int(QSerialPort::OddParity)
                           << int(QSerialPort::OneAndHalfStop);
    QTest::newRow("6M1") << "6M1" << 6 << int(QSerialPort::MarkParity) << int(QSerialPort::OneStop);
    QTest::newRow("8S1") << "8S1" << 8 << int(QSerialPort::SpaceParity)
                         << int(QSerialPort::OneStop);
}

void tst_SerialSettings::settingsReachThePort()
{
    QFETCH(QString, frame);
    norvo::SerialSettings settings;
    QCOMPARE(settings.readFrame(frame), QString());
    settings.baud = 250000;
    settings.flow = QSerialPort::HardwareControl;
    QSerialPort port;
    QCOMPARE(settings.applyTo(port), QString());
    QCOMPARE(port.baudRate(), 250000);
    QCOMPARE(port.flowControl(), QSerialPort::HardwareControl);
    QTEST(int(port.dataBits()), "dataBits");
    QTEST(int(port.parity()), "parity");
    QTEST(int(port.stopBits()), "stopBits");
}

void tst_SerialSettings::refusedBaudIsNamed()
{
    PseudoPort pseudo;
    QSerialPort port;
    port.setPortName(pseudo.node());
    QVERIFY(port.open(QIODevice::ReadWrite));
    norvo::SerialSettings settings;
    settings.baud = -5; // A pseudo terminal takes all that are above 0.
    QCOMPARE(settings.applyTo(port), QString("the port refuses -5 baud"));
}

void tst_SerialSettings::endsHaveNames_data()
{
    QTest::addColumn<QByteArray>("end");

    QTest::newRow("LF") << QByteArray("\n");
    QTest::newRow("cr") << QByteArray("\r");
    QTest::newRow("CRLF") << QByteArray("\r\n");
    QTest::newRow(";") << QByteArray(";");
    QTest::newRow("END") << QByteArray("END");
    QTest::newRow("0x03") << QByteArray("\x03");
    QTest::newRow("0x0D0a00") << QByteArray("\r\n\0", 3);
    QTest::newRow("0x3") << QByteArray("0x3");
}

void tst_SerialSettings::endsHaveNames()
{
    Framing framing;
    QVERIFY(framing.readEnd(QTest::currentDataTag()));
    QTEST(framing.end, "end");
    QVERIFY(!framing.readEnd(QString()));
    QTEST(framing.end, "end");
}

void tst_SerialSettings::framesAreWrapped_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("detail"); // end, or prefix
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("bytes"); // null: refused

    const int line = int(Framing::Kind::Line);
    const int fixed = int(Framing::Kind::Fixed);
    const int prefixed = int(Framing::Kind::Prefixed);
    QTest::newRow("LF") << line << "LF" << QByteArray("a") << QByteArray("a\n");
    QTest::newRow("empty line") << line << "CRLF" << QByteArray("") << QByteArray("\r\n");
    QTest::newRow("two lines") << line << "LF" << QByteArray("a\nb") << QByteArray();
    QTest::newRow("CR in LF") << line << "LF" << QByteArray("a\rb") << QByteArray();
    QTest::newRow("LF in CRLF") << line << "CRLF" << QByteArray("a\nb") << QByteArray();
    QTest::newRow("LF in ;") << line << ";" << QByteArray("a\nb") << QByteArray("a\nb;");
    QTest::newRow("; in ;") << line << ";" << QByteArray("a;b") << QByteArray();
    QTest::newRow("half an end") << line << "::" << QByteArray("a:") << QByteArray();
    QTest::newRow("fixed") << fixed << "" << QByteArray("a\nb") << QByteArray("a\nb");
    QTest::newRow("empty fixed") << fixed << "" << QByteArray("") << QByteArray();
    QTest::newRow("1") << prefixed << "1" << QByteArray("a\nb")
                       << QByteArray("\x03"
                                     "a\nb");
    QTest::newRow("1, long") << prefixed << "1" << QByteArray(256, 'x') << QByteArray();
    QTest::newRow("2 big") << prefixed << "2 big" << QByteArray(258, 'x')
                           << QByteArray("\x01\x02") + QByteArray(258, 'x');
    QTest::newRow("2 little") << prefixed << "2 little" << QByteArray(258, 'x')
                              << QByteArray("\x02\x01") + QByteArray(258, 'x');
    QTest::newRow("4 big") << prefixed << "4 big" << QByteArray("x") << QByteArray("\0\0\0\1x", 5);
    QTest::newRow("too long") << prefixed << "4 big" << QByteArray(Framing::kMaxLength + 1, 'x')
                              << QByteArray();
}

void tst_SerialSettings::framesAreWrapped()
{
    QFETCH(int, kind);
    QFETCH(QString, detail);
    QFETCH(QByteArray, content);
    Framing framing;
    framing.kind = Framing::Kind(kind);
    framing.readEnd(detail);
    framing.readPrefix(detail);
    QTEST(framing.wrap(content).value_or(QByteArray()), "bytes");
}

void tst_SerialSettings::bytesHaveATextInEachEncoding_data()
{
    QTest::addColumn<int>("form");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");

    QTest::newRow("utf-8") << int(FrameText::Utf8)
                           << QByteArray("21 \xc2\xb0"
                                         "C")
                           << QString::fromUtf8("21 °C");
    QTest::newRow("zero byte") << int(FrameText::Utf8) << QByteArray("a\0b", 3)
                               << QString::fromUtf8("a\0b", 3);
    QTest::newRow("latin-1") << int(FrameText::Latin1) << QByteArray("\0\xb0\xff", 3)
                             << QString::fromLatin1("\0\xb0\xff", 3);
    QTest::newRow("hex") << int(FrameText::Hex) << QByteArray("\0\xb0\xff\n", 4) << "00b0ff0a";
}

void tst_SerialSettings::bytesHaveATextInEachEncoding()
{
    QFETCH(int, form);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    QCOMPARE(norvo::readFrameText(FrameText(form), bytes), text);
    QCOMPARE(norvo::writeFrameText(FrameText(form), text), std::optional(bytes));
}

void tst_SerialSettings::textsThatAreNoBytesAreRefused()
{
    QCOMPARE(norvo::writeFrameText(FrameText::Hex, " 00 B0ff "),
             std::optional(QByteArray("\0\xb0\xff", 3)));
    for (const QString text : {"0", "0g", "00b", "0 0", "0x00"}) {
        QVERIFY2(!norvo::writeFrameText(FrameText::Hex, text), qPrintable(text));
    }
    QVERIFY(!norvo::writeFrameText(FrameText::Latin1, QString(QChar(0x20ac))));
    QCOMPARE(norvo::readFrameText(FrameText::Utf8, "a\xff"), QString("a") + QChar(0xfffd));
}

void tst_SerialSettings::usbPortIsFoundByItsIdentity_data()
{
    QTest::addColumn<QString>("found"); // a path or an error

    QTest::newRow("usb:2341:0043") << "/dev/ttyACM0";
    QTest::newRow("usb:2341:0044") << "there is no port with the identity usb:2341:0044";
    QTest::newRow("USB:0403:6001:B2") << "/dev/ttyUSB1";
    QTest::newRow("usb:0403:6001:C3") << "there is no port with the identity usb:0403:6001:C3";
    QTest::newRow("usb:0403:6001") << "/dev/ttyUSB0 and /dev/ttyUSB1 are all usb:0403:6001; write "
                                      "the path, or the serial number behind the identity";
}

void tst_SerialSettings::usbPortIsFoundByItsIdentity()
{
    norvo::PortName name;
    QCOMPARE(name.define(QTest::currentDataTag()), QString());
    QString error;
    const QString path = name.findAmong({{0x0403, 0x6001, "A1", "/dev/ttyUSB0"},
                                         {0x2341, 0x0043, "", "/dev/ttyACM0"},
                                         {0x0403, 0x6001, "B2", "/dev/ttyUSB1"}},
                                        error);
    QTEST(path.isEmpty() ? error : path, "found");
}

void tst_SerialSettings::wrongParametersAreErrors_data()
{
    QTest::addColumn<QString>("param");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("error");

    QTest::newRow("no port") << "port"
                             << ""
                             << "\"\" is no port; write a path such as /dev/ttyUSB0, or a USB "
                                "identity such as usb:0403:6001";
    QTest::newRow("usb") << "port"
                         << "usb:403:6001"
                         << "\"usb:403:6001\" is no USB identity; write vendor and product in four "
                            "hexadecimal digits each, such as usb:0403:6001, and :SERIALNUMBER "
                            "where there are several";
    QTest::newRow("baud") << "baud"
                          << "0"
                          << "it is at least 1";
    QTest::newRow("frame") << "frame"
                           << "9N1"
                           << "\"9N1\" is no frame; write data bits, parity (N, E, O, M or S) and "
                              "stop bits, such as 8N1 or 7E2";
    QTest::newRow("length") << "length"
                            << "0"
                            << "it is between 1 and 65536";
    QTest::newRow("end") << "end"
                         << ""
                         << "it is empty";
    QTest::newRow("ask") << "ask"
                         << "a\nb"
                         << "it is no single frame";
    QTest::newRow("silence") << "silence"
                             << "5"
                             << "\"5\" is not a time; write one such as 500 ms, 5 s or 2 min";
}

void tst_SerialSettings::wrongParametersAreErrors()
{
    QFETCH(QString, param);
    QFETCH(QString, value);
    QFETCH(QString, error);
    SerialSubject subject("/dev/nothing", {{param, value}});
    QVERIFY(!subject.device.initialise());
    QCOMPARE(subject.errors, QStringList(QString("parameter \"%1\": %2").arg(param, error)));
}

NORVO_GUILESS_TEST(tst_SerialSettings)
#include "tst_SerialSettings.moc"
