// SPDX-License-Identifier: GPL-3.0-or-later

#include "SettleSubject.h"
#include "TestMain.h"

#include <QElapsedTimer>

#include <cmath>
#include <limits>

class tst_SettleDevice : public QObject
{
    Q_OBJECT

private slots:
    void valueLeavesInTheFormsItReadsAs_data();
    void valueLeavesInTheFormsItReadsAs();
    void lastOfSeveralLeavesOnceStill();
    void valuesThatKeepComingAreNotStill();
    void entryThatIsTypedLeavesOnce();
    void entryThatIsEmptiedDoesNotLeave();
    void numbersOutOfRangeAreRefused_data();
    void numbersOutOfRangeAreRefused();
    void refusalIsTakenBackByTheNextValue();
    void valueEqualToTheLastIsLeftOut_data();
    void valueEqualToTheLastIsLeftOut();
    void everyValueLeavesWhereThatIsAskedFor();
    void refusedValueIsNoLastValue();
    void forgottenValueLeavesAgain();
};

void tst_SettleDevice::valueLeavesInTheFormsItReadsAs_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QStringList>("notes");
    QTest::newRow("number") << QVariant(35.5) << QStringList{"number 35.5", "text 35.5"};
    QTest::newRow("one") << QVariant(1.0) << QStringList{"number 1", "text 1", "yes"};
    QTest::newRow("text") << QVariant("abc") << QStringList{"text abc"};
    QTest::newRow("empty text") << QVariant("") << QStringList{"text "};
    QTest::newRow("number as text")
        << QVariant("35.50") << QStringList{"number 35.5", "text 35.50"};
    QTest::newRow("decimal comma") << QVariant("3,75") << QStringList{"number 3.75", "text 3,75"};
    QTest::newRow("yes") << QVariant(true) << QStringList{"number 1", "text true", "yes"};
    QTest::newRow("no") << QVariant(false) << QStringList{"number 0", "text false", "no"};
    QTest::newRow("no as text") << QVariant("off") << QStringList{"text off", "no"};
    QTest::newRow("infinite text") << QVariant("inf") << QStringList{"text inf"};
}

void tst_SettleDevice::valueLeavesInTheFormsItReadsAs()
{
    QFETCH(QVariant, value);
    QFETCH(QStringList, notes);
    SettleSubject subject;
    const QStringList got = value.userType() == QMetaType::Double ? subject.pass(value.toDouble())
                            : value.userType() == QMetaType::Bool ? subject.pass(value.toBool())
                                                                  : subject.pass(value.toString());
    QCOMPARE(got, QStringList({"pending", "done"}) + notes);
}

void tst_SettleDevice::lastOfSeveralLeavesOnceStill()
{
    SettleSubject subject({{"time", "50"}});
    QElapsedTimer timer;
    for (const double value : {3.0, 35.0, 350.0}) {
        timer.start();
        subject.device.input(value);
    }
    QCOMPARE(subject.notes.take(), QStringList("pending"));
    QTRY_VERIFY(!subject.notes.isEmpty());
    QVERIFY(timer.elapsed() >= 50);
    QCOMPARE(subject.notes.take(), (QStringList{"done", "number 350", "text 350"}));
    QTest::qWait(150);
    QCOMPARE(subject.notes.take(), QStringList());
}

void tst_SettleDevice::valuesThatKeepComingAreNotStill()
{
    SettleSubject quick({{"time", "400"}});
    QElapsedTimer whole;
    whole.start();
    int count = 0;
    while (whole.elapsed() < 1000) {
        QElapsedTimer gap;
        gap.start();
        QTest::qWait(20);
        if (gap.elapsed() > 300) {
            QSKIP("the machine stood still");
        }
        quick.device.input(double(++count));
    }
    QCOMPARE(quick.notes.all(), QStringList("pending"));
    QTRY_COMPARE(quick.notes.all().value(2), "number " + QString::number(count));
}

/// As an input field sends it: each key as text and as number, and some values twice.
void tst_SettleDevice::entryThatIsTypedLeavesOnce()
{
    SettleSubject subject;
    for (const char* text : {"3", "35", "35.", "35.5"}) {
        subject.device.input(QString(text));
        subject.device.input(QString(text).toDouble());
    }
    subject.device.input(QString("35.5"));
    subject.device.flush();
    QCOMPARE(subject.notes.take(), (QStringList{"pending", "done", "number 35.5", "text 35.5"}));
    QCOMPARE(subject.pass(35.5), (QStringList{"pending", "done"}));
}

void tst_SettleDevice::entryThatIsEmptiedDoesNotLeave()
{
    SettleSubject subject({{"mode", "flush"}, {"min", "0"}});
    subject.device.input(QString("3"));
    QCOMPARE(subject.pass(QString()),
             (QStringList{"pending", "done", "refused \"\" is not a number"}));
    QCOMPARE(subject.pass(QString("-")),
             (QStringList{"pending", "done", "refused \"-\" is not a number"}));
}

void tst_SettleDevice::numbersOutOfRangeAreRefused_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("reason");
    QTest::newRow("lower end") << QVariant(20.0) << "";
    QTest::newRow("upper end") << QVariant("80") << "";
    QTest::newRow("below") << QVariant(19.999) << "19.999 is below 20";
    QTest::newRow("above") << QVariant("80,5") << "80.5 is above 80";
    QTest::newRow("not a number") << QVariant(std::nan("")) << "\"nan\" is not a number";
    QTest::newRow("infinite") << QVariant(std::numeric_limits<double>::infinity())
                              << "\"inf\" is not a number";
    QTest::newRow("text") << QVariant("warm") << "\"warm\" is not a number";
    QTest::newRow("yes") << QVariant(true) << "";
}

void tst_SettleDevice::numbersOutOfRangeAreRefused()
{
    QFETCH(QVariant, value);
    QFETCH(QString, reason);
    SettleSubject subject({{"mode", "flush"}, {"min", "20"}, {"max", "80"}});
    const QStringList got = value.userType() == QMetaType::Double ? subject.pass(value.toDouble())
                            : value.userType() == QMetaType::Bool ? subject.pass(value.toBool())
                                                                  : subject.pass(value.toString());
    if (reason.isEmpty()) {
        QVERIFY(got.size() > 2 && got.filter("refused").isEmpty());
    } else {
        QCOMPARE(got, (QStringList{"pending", "done", "refused " + reason}));
    }
}

void tst_SettleDevice::refusalIsTakenBackByTheNextValue()
{
    SettleSubject subject({{"mode", "flush"}, {"max", "80"}});
    subject.pass(50.0);
    QCOMPARE(subject.pass(90.0), (QStringList{"pending", "done", "refused 90 is above 80"}));
    QCOMPARE(subject.pass(50.0), (QStringList{"pending", "done", "refused "}));
    QCOMPARE(subject.pass(60.0), (QStringList{"pending", "done", "number 60", "text 60"}));
}

void tst_SettleDevice::valueEqualToTheLastIsLeftOut_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<bool>("isEqual");
    QTest::newRow("same text") << "abc"
                               << "abc" << true;
    QTest::newRow("another text") << "abc"
                                  << "abd" << false;
    QTest::newRow("same number") << "35"
                                 << "35.00" << true;
    QTest::newRow("same number with a comma") << "3.5"
                                              << "3,5" << true;
    QTest::newRow("neighbours") << "0.1"
                                << "0.10000000000000002" << false;
    QTest::newRow("number and text") << "1"
                                     << "yes" << false;
}

void tst_SettleDevice::valueEqualToTheLastIsLeftOut()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    SettleSubject subject;
    subject.pass(first);
    QTEST(subject.pass(second) == QStringList({"pending", "done"}), "isEqual");
}

void tst_SettleDevice::everyValueLeavesWhereThatIsAskedFor()
{
    SettleSubject subject({{"mode", "flush"}, {"changes", "false"}});
    QCOMPARE(subject.pass(5.0), subject.pass(5.0));
}

void tst_SettleDevice::refusedValueIsNoLastValue()
{
    SettleSubject subject({{"mode", "flush"}, {"max", "80"}});
    subject.pass(50.0);
    subject.pass(90.0);
    subject.pass(50.0);
    QCOMPARE(subject.pass(50.0), (QStringList{"pending", "done"}));
}

void tst_SettleDevice::forgottenValueLeavesAgain()
{
    SettleSubject subject;
    subject.pass(5.0);
    subject.device.forget();
    QCOMPARE(subject.pass(5.0), (QStringList{"pending", "done", "number 5", "text 5"}));
}

NORVO_GUILESS_TEST(tst_SettleDevice)
#include "tst_SettleDevice.moc"
