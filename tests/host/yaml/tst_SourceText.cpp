// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/SourceText.h"
#include "TestMain.h"

#include <QtTest>

using norvo::Place;
using norvo::SourceText;

namespace {

QString shown(const Place& place)
{
    return QString("%1:%2").arg(place.line).arg(place.column);
}

} // namespace

class tst_SourceText : public QObject
{
    Q_OBJECT

private slots:
    void placesCountCharacters()
    {
        const SourceText text("ab\nä\xf0\x9f\x98\x80x\r\n\ny");
        QStringList places;
        for (int i = 0; i <= text.size(); ++i) {
            places += shown(text.placeAt(i));
        }
        QCOMPARE(places[0], QString("1:1"));
        QCOMPARE(places[2], QString("1:3"));
        QCOMPARE(places[3], QString("2:1"));
        QCOMPARE(places[5], QString("2:2"));
        QCOMPARE(places[9], QString("2:3"));
        QCOMPARE(places[10], QString("2:4"));
        QCOMPARE(places[12], QString("3:1"));
        QCOMPARE(places[13], QString("4:1"));
        QCOMPARE(places[14], QString("4:2"));
        QCOMPARE(shown(text.placeAt(-5)), QString("1:1"));
        QCOMPARE(shown(text.placeAt(1000)), QString("4:2"));
    }

    void placesInLongLines()
    {
        QByteArray line;
        for (int i = 0; i < 2000; ++i) {
            line += "xä";
        }
        const SourceText text("x\n" + line);
        for (int i = 0; i < 2000; ++i) {
            QCOMPARE(text.placeAt(2 + 3 * i).column, 2 * i + 1);
            QCOMPARE(text.placeAt(2 + 3 * i + 1).column, 2 * i + 2);
        }
        QCOMPARE(text.lineStart(5000), 2);
        QCOMPARE(text.lineStart(1), 0);
    }

    void byteOrderMarkCountsAsNothing()
    {
        const SourceText text("\xef\xbb\xbf"
                              "ab\nc");
        QCOMPARE(text.start(), 3);
        QCOMPARE(shown(text.placeAt(3)), QString("1:1"));
        QCOMPARE(shown(text.placeAt(4)), QString("1:2"));
        QCOMPARE(shown(text.placeAt(6)), QString("2:1"));
        QVERIFY(!text.firstBadByte());
        QCOMPARE(shown(SourceText("\xef\xbb\xbf").placeAt(3)), QString("1:1"));
    }

    void nothingStandsBeyondTheEnd()
    {
        QCOMPARE(SourceText("a").at(0), 'a');
        QCOMPARE(SourceText("a").at(1), '\0');
        QCOMPARE(SourceText("").at(0), '\0');
    }

    void soundTexts_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("tab and line ends") << QByteArray("\ta\r\n\n");
        QTest::newRow("first and last of two bytes") << QByteArray("\xc2\x80\xdf\xbf");
        QTest::newRow("first and last of three bytes") << QByteArray("\xe0\xa0\x80\xef\xbf\xbf");
        QTest::newRow("around the surrogates") << QByteArray("\xed\x9f\xbf\xee\x80\x80");
        QTest::newRow("first and last of four bytes")
            << QByteArray("\xf0\x90\x80\x80\xf4\x8f\xbf\xbf");
        QTest::newRow("byte order mark within") << QByteArray("a\xef\xbb\xbf");
    }
    void soundTexts()
    {
        QFETCH(QByteArray, text);
        QVERIFY(!SourceText(text).firstBadByte());
    }

    void firstBadByte_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("place");
        QTest::addColumn<QString>("kind");
        const QString utf8 = "UTF-8";
        QTest::newRow("continuation alone") << QByteArray("a\n\x80") << "2:1" << utf8;
        QTest::newRow("longer than needed, two") << QByteArray("ab\xc1\xbf") << "1:3" << utf8;
        QTest::newRow("longer than needed, three") << QByteArray("\xe0\x9f\xbf") << "1:1" << utf8;
        QTest::newRow("longer than needed, four")
            << QByteArray("\xf0\x8f\xbf\xbf") << "1:1" << utf8;
        QTest::newRow("surrogate") << QByteArray("ä\xed\xa0\x80") << "1:2" << utf8;
        QTest::newRow("beyond Unicode") << QByteArray("\xf4\x90\x80\x80") << "1:1" << utf8;
        QTest::newRow("no such first byte") << QByteArray("\xf5\x80\x80\x80") << "1:1" << utf8;
        QTest::newRow("cut at the end") << QByteArray("a\xf0\x9f\x98") << "1:2" << utf8;
        QTest::newRow("cut by a letter") << QByteArray("\xe2\x82x") << "1:1" << utf8;
        QTest::newRow("UTF-16") << QByteArray("\xff\xfe"
                                              "a\0",
                                              4)
                                << "1:1" << utf8;
        QTest::newRow("Latin-1") << QByteArray("W\xe4rme") << "1:2" << utf8;
        QTest::newRow("NUL") << QByteArray("a\0b", 3) << "1:2"
                             << "NUL byte";
        QTest::newRow("NUL at the end") << QByteArray("ab\n\0", 4) << "2:1"
                                        << "NUL byte";
        QTest::newRow("escape") << QByteArray("\x1b[1m") << "1:1"
                                << "(U+001b)";
        QTest::newRow("delete") << QByteArray("a\x7f") << "1:2"
                                << "(U+007f)";
        QTest::newRow("carriage return alone") << QByteArray("a\r\r\n") << "1:2"
                                               << "carriage return";
        QTest::newRow("carriage return at the end") << QByteArray("a\r") << "1:2"
                                                    << "carriage return";
        QTest::newRow("the first of several") << QByteArray("a\xff\0", 3) << "1:2" << utf8;
    }
    void firstBadByte()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, kind);
        const auto bad = SourceText(text).firstBadByte();
        QVERIFY(bad);
        QTEST(shown(bad->place), "place");
        QVERIFY2(bad->text.contains(kind), qPrintable(bad->text));
    }
};

NORVO_GUILESS_TEST(tst_SourceText)
#include "tst_SourceText.moc"
