// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/alarms/AlarmCondition.h"

#include "TestMain.h"

using namespace norvo;
using Kind = AlarmLimit::Kind;

class tst_AlarmCondition : public QObject
{
    Q_OBJECT

    static AlarmLimit limit(Kind kind, double number, double deadband = 0)
    {
        AlarmLimit made;
        made.kind = kind;
        made.number = number;
        made.deadband = deadband;
        made.text = QString::number(number);
        return made;
    }

    /// What is said of each value in turn: "x" beyond, "-" within, "?" nothing.
    static QString said(const AlarmLimit& limit, const QVariantList& values)
    {
        QString text;
        bool isBeyond = false;
        for (const QVariant& value : values) {
            const auto now = isBeyondLimit(limit, value, isBeyond);
            isBeyond = now.value_or(isBeyond);
            text += !now ? '?' : *now ? 'x' : '-';
        }
        return text;
    }

private slots:
    void valueOnTheLimitIsWithin()
    {
        QCOMPARE(said(limit(Kind::Above, 80), {79.9, 80., 80.1, 80.}), QString("--x-"));
        QCOMPARE(said(limit(Kind::Below, 5), {5.1, 5., 4.9, 5.}), QString("--x-"));
    }

    void deadbandHoldsUntilTheNumberIsBack()
    {
        QCOMPARE(said(limit(Kind::Above, 80, 2), {79., 81., 79., 78.1, 78., 79.}),
                 QString("-xxx--"));
        QCOMPARE(said(limit(Kind::Below, 5, 2), {6., 4., 6., 6.9, 7., 6.}), QString("-xxx--"));
    }

    void whatIsNoNumberSaysNothing()
    {
        QCOMPARE(said(limit(Kind::Above, 80), {81., qQNaN(), QVariant(), "text", true}),
                 QString("x????"));
        QCOMPARE(said(limit(Kind::Below, 5), {qQNaN(), 6., qQNaN()}), QString("?-?"));
    }

    void infiniteNumbersAreBeyond()
    {
        QCOMPARE(said(limit(Kind::Above, 80), {qInf(), -qInf()}), QString("x-"));
        QCOMPARE(said(limit(Kind::Below, 80), {qInf(), -qInf()}), QString("-x"));
    }

    void wholeNumbersCount()
    {
        QCOMPARE(said(limit(Kind::Above, 80), {80, 81, 81u, 81LL}), QString("-xxx"));
    }

    void equalsComparesNumbersAndTexts()
    {
        QCOMPARE(said(limit(Kind::Equals, 3), {2., 3., 3, "3", "3.0", qQNaN()}), QString("-xxx-?"));
        AlarmLimit text = limit(Kind::Equals, qQNaN());
        text.text = "broken";
        QCOMPARE(said(text, {"fine", "broken", "Broken", 3.}), QString("-x-?"));
    }

    void isComparesYesAndNo()
    {
        AlarmLimit yes = limit(Kind::Is, 0);
        yes.isYes = true;
        QCOMPARE(said(yes, {false, true, "true", 1}), QString("-x??"));
        yes.isYes = false;
        QCOMPARE(said(yes, {false, true}), QString("x-"));
    }
};

NORVO_TEST(tst_AlarmCondition)

#include "tst_AlarmCondition.moc"
