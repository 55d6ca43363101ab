// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/EditDistance.h"
#include "TestMain.h"

#include <QtTest>

using norvo::didYouMean;
using norvo::didYouMeanDevice;
using norvo::nearestName;

class tst_EditDistance : public QObject
{
    Q_OBJECT

private slots:
    void nearest_data()
    {
        QTest::addColumn<QString>("wanted");
        QTest::addColumn<QStringList>("known");
        QTest::addColumn<QString>("expected");

        const QStringList types{"button", "label", "system"};
        QTest::newRow("the name itself") << "label" << types << "label";
        QTest::newRow("a letter missing") << "labl" << types << "label";
        QTest::newRow("a letter too many") << "labbel" << types << "label";
        QTest::newRow("a wrong letter") << "lapel" << types << "label";
        QTest::newRow("two wrong letters") << "bottom" << types << "button";
        QTest::newRow("two letters missing") << "butn" << types << "button";
        QTest::newRow("three wrong letters are too many") << "bottim" << types << "";
        QTest::newRow("three letters missing are too many") << "but" << types << "";
        QTest::newRow("case does not count") << "SYSTEM" << types << "system";
        QTest::newRow("case does not count beside a distance of 2") << "SYTM" << types << "system";
        QTest::newRow("the case of the known name is kept")
            << "value" << QStringList{"Value"} << "Value";
        QTest::newRow("a swap at the end of many changes is too many")
            << "xylbae" << QStringList{"label"} << "";
        const QStringList paths{"name", "widget/step", "widget/minValue"};
        QTest::newRow("the folder left out") << "minValu" << paths << "widget/minValue";
        QTest::newRow("a folder too many") << "widget/name" << paths << "name";
        QTest::newRow("another folder") << "window/step" << paths << "widget/step";
        QTest::newRow("whole names go before their last parts")
            << "widget/names" << QStringList{"a/names", "widget/name"} << "widget/name";
        QTest::newRow("nothing known") << "label" << QStringList() << "";
        QTest::newRow("nothing near") << "thermometer" << types << "";
        QTest::newRow("the nearer wins over the earlier")
            << "input" << QStringList{"inpuuu", "inputs"} << "inputs";
        QTest::newRow("of equally near ones the first")
            << "inpot" << QStringList{"input", "inpat"} << "input";
        QTest::newRow("an empty text is near to two letters")
            << "" << QStringList{"abc", "ab"} << "ab";
        QTest::newRow("letters beyond ASCII")
            << QString::fromUtf8("wärme") << QStringList{QString::fromUtf8("WÄRMER")}
            << QString::fromUtf8("WÄRMER");
    }
    void nearest()
    {
        QFETCH(QString, wanted);
        QFETCH(QStringList, known);
        QTEST(nearestName(wanted, known), "expected");
    }

    void swappedNeighboursCountOne_data()
    {
        QTest::addColumn<QString>("wanted");
        QTest::addColumn<QString>("expected");
        QTest::newRow("once") << "lable"
                              << "label";
        QTest::newRow("at the start") << "albel"
                                      << "label";
        QTest::newRow("twice") << "alble"
                               << "label";
        QTest::newRow("twice and a wrong letter are too many") << "alxle"
                                                               << "";
    }
    void swappedNeighboursCountOne()
    {
        QFETCH(QString, wanted);
        QTEST(nearestName(wanted, {"label"}), "expected");
        // A distance of 1 is nearer than 2, in any order.
        QCOMPARE(nearestName("inptu", {"inxxu", "input"}), QString("input"));
    }

    void didYouMeanEndsAnError()
    {
        QCOMPARE(didYouMean("labl", {"label"}), QString("; did you mean \"label\"?"));
        QCOMPARE(didYouMean("thermometer", {"label"}), QString());
    }

    void deviceOfAUseStandsForTheUse()
    {
        QCOMPARE(didYouMeanDevice("p1", {"p10-motor", "p1-motor", "p1-lamp"}),
                 QString("; did you mean \"p1-motor\"?"));
        QCOMPARE(didYouMeanDevice("pump", {"pumping-station"}), QString());
    }

    void longNamesCostLittle()
    {
        const QString text(4 * 1024 * 1024, 'x');
        QCOMPARE(nearestName(text, {"label", "xx"}), QString());
        const QString name(2000, 'x');
        QCOMPARE(nearestName('a' + name, {QString(2000, 'y'), name}), name);
    }
};

NORVO_GUILESS_TEST(tst_EditDistance)
#include "tst_EditDistance.moc"
