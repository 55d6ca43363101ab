// SPDX-License-Identifier: GPL-3.0-or-later

#include "ListenedPanel.h"
#include "TestMain.h"
#include "host/services/values/ValueTable.h"

#include "norvo/BaseDevice.h"
#include "norvo/DoubleVec.h"

#include <QtTest>

using norvo::Reading;
using norvo::ValueTable;

namespace {

class Many : public BaseDevice
{
    Q_OBJECT

public:
    static DeviceTypeInfo typeInfo() { return {}; }

signals:
    void output(double value);
    void output(const QString& text);
    void state(bool on);
    void pulse();
    void pair(double x, double y);

public slots:
    void input(double /*value*/) {}
};

class TabledPanel : public ListenedPanel
{
public:
    explicit TabledPanel(const QStringList& arrows)
    {
        manager.registerDeviceType<Many>("many");
        start(
            describe::panel({describe::device("a", "many"), describe::device("b", "many")}, arrows),
            table);
    }

    Many& many(const QString& id) const { return device<Many>(id); }
    QStringList texts()
    {
        QStringList texts;
        for (const Reading& one : table.look()) {
            texts.append(
                QString("%1.%2 = %3 (%4)").arg(one.device, one.output, one.value).arg(one.count));
        }
        return texts;
    }

    ValueTable table;
};

} // namespace

class tst_ValueTable : public QObject
{
    Q_OBJECT

private slots:
    void wiredOutputsAreHeardFromTheStart();
    void othersAreHeardOnceAskedForEachNameOnce();
    void askingAgainHearsNothingTwice();
    void ageIsThatOfTheLastValue();
    void rateIsThatBetweenTheLastTwoLooks();
    void textOfEachKindOfValue_data();
    void textOfEachKindOfValue();
};

void tst_ValueTable::wiredOutputsAreHeardFromTheStart()
{
    TabledPanel panel({"a.output(double) -> b.input", "a.output(double) -> a.input"});
    emit panel.many("a").output(1);
    emit panel.many("a").output(2.5);
    emit panel.many("a").state(true);
    QCOMPARE(panel.texts(), QStringList("a.output(double) = 2.5 (2)"));
}

void tst_ValueTable::othersAreHeardOnceAskedForEachNameOnce()
{
    TabledPanel panel({"a.output(double) -> b.input"});
    panel.table.hearAll(panel.panel);
    emit panel.many("b").pulse();
    emit panel.many("b").pair(1, 2);
    QCOMPARE(panel.texts(),
             (QStringList{"a.output(double) =  (0)", "a.pair(double,double) =  (0)",
                          "a.pulse() =  (0)", "a.state(bool) =  (0)", "b.output(QString) =  (0)",
                          "b.pair(double,double) = 1, 2 (1)", "b.pulse() =  (1)",
                          "b.state(bool) =  (0)"}));
}

void tst_ValueTable::askingAgainHearsNothingTwice()
{
    TabledPanel panel({});
    panel.table.hearAll(panel.panel);
    const int before = panel.texts().size();
    panel.table.hearAll(panel.panel);
    QCOMPARE(panel.texts().size(), before);
    emit panel.many("a").state(false);
    QVERIFY(panel.texts().contains("a.state(bool) = no (1)"));
}

void tst_ValueTable::ageIsThatOfTheLastValue()
{
    TabledPanel panel({"a.output(double) -> b.input"});
    QCOMPARE(panel.table.look()[0].ageMs, -1LL);
    emit panel.many("a").output(1);
    QTest::qWait(30);
    const qint64 age = panel.table.look()[0].ageMs;
    QVERIFY2(age >= 20 && age < 20000, QByteArray::number(age));
    emit panel.many("a").output(1);
    QVERIFY(panel.table.look()[0].ageMs <= age);
}

void tst_ValueTable::rateIsThatBetweenTheLastTwoLooks()
{
    TabledPanel panel({"a.output(double) -> b.input"});
    panel.table.look();
    for (int i = 0; i < 100; ++i) {
        emit panel.many("a").output(1);
    }
    QTest::qWait(100);
    const double rate = panel.table.look()[0].perSecond;
    QVERIFY2(rate > 1 && rate <= 1010, QByteArray::number(rate));
    QTest::qWait(5);
    QCOMPARE(panel.table.look()[0].perSecond, 0.0);
}

void tst_ValueTable::textOfEachKindOfValue_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("number") << QVariant(0.1) << "0.1";
    QTest::newRow("large") << QVariant(123456789012.0) << "123456789012";
    QTest::newRow("whole") << QVariant(7) << "7";
    QTest::newRow("yes") << QVariant(true) << "yes";
    QTest::newRow("text") << QVariant("a\n b") << "a b";
    QTest::newRow("long") << QVariant(QString(500, 'x')) << QString(197, 'x') + "...";
    QTest::newRow("array") << QVariant::fromValue(DoubleVec{1, 2.5}) << "2: [1, 2.5]";
    QTest::newRow("long array") << QVariant::fromValue(DoubleVec(1000))
                                << "1000: [0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "
                                   "0, 0, ...]";
    QTest::newRow("picture") << QVariant(QImage(1, 1, QImage::Format_RGB32)) << "(QImage)";
    QTest::newRow("nothing") << QVariant() << "";
}

void tst_ValueTable::textOfEachKindOfValue()
{
    QFETCH(QVariant, value);
    QTEST(norvo::shownText(value), "text");
}

NORVO_TEST(tst_ValueTable)
#include "tst_ValueTable.moc"
