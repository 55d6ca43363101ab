// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/history/HistoryFilter.h"

#include "TestMain.h"

#include <limits>

using namespace norvo;

class tst_HistoryFilter : public QObject
{
    Q_OBJECT

    struct Kept
    {
        explicit Kept(std::optional<double> deadband = {}, qint64 every = 0)
            : filter(deadband, every, [this](const HistoryPoint& point) {
                  texts.append(QString("%1@%2").arg(point.value.kind == HistoryValue::Kind::Gap
                                                        ? "-"
                                                    : point.value.kind == HistoryValue::Kind::Text
                                                        ? point.value.text
                                                        : QString::number(point.value.number),
                                                    QString::number(point.time)));
              })
        {}

        template <typename Value>
        void take(qint64 time, const Value& value)
        {
            filter.take({time, HistoryValue::of(value)});
        }

        QStringList texts;
        HistoryFilter filter;
    };

private slots:
    void allIsKeptWithoutSettings()
    {
        Kept kept;
        kept.take(1, 5.0);
        kept.take(2, 5.0);
        kept.filter.end();
        QCOMPARE(kept.texts, QStringList({"5@1", "5@2"}));
    }

    void changeByNoMoreThanTheDeadbandIsLeftOut()
    {
        Kept kept(0.5);
        kept.take(1, 5.0);
        kept.take(2, 5.5);
        kept.take(3, 5.6);
        QCOMPARE(kept.texts, QStringList({"5@1", "5.5@2", "5.6@3"}));
    }

    void lastOfManyThatWereLeftOutIsKeptBeforeAChange()
    {
        Kept kept(0.5);
        for (int time = 1; time < 100; ++time) {
            kept.take(time, 5.0);
        }
        kept.take(100, 9.0);
        QCOMPARE(kept.texts, QStringList({"5@1", "5@99", "9@100"}));
    }

    void noBandAtAllKeepsChangesOfTextAndYesNo()
    {
        Kept kept(0.0);
        kept.take(1, QString("a"));
        kept.take(2, QString("a"));
        kept.take(3, QString("b"));
        kept.take(4, true);
        kept.take(5, true);
        QCOMPARE(kept.texts, QStringList({"a@1", "a@2", "b@3", "1@4"}));
    }

    void oneValueIsKeptInEachInterval()
    {
        Kept kept({}, 10);
        for (int time = 0; time < 30; ++time) {
            kept.take(time, double(time));
        }
        QCOMPARE(kept.texts, QStringList({"0@0", "10@10", "20@20"}));
    }

    void valueThatCameTooSoonIsKeptOnceTheIntervalHasPassed()
    {
        Kept kept({}, 10);
        kept.take(0, 1.0);
        kept.take(4, 2.0);
        kept.filter.advance(9);
        QCOMPARE(kept.texts, QStringList("1@0"));
        kept.filter.advance(10);
        kept.filter.advance(30);
        QCOMPARE(kept.texts, QStringList({"1@0", "2@4"}));
    }

    void valueThatIsBackInTheBandBeforeTheIntervalIsOverIsNoChange()
    {
        Kept kept(0.5, 10);
        kept.take(0, 1.0);
        kept.take(4, 9.0);
        kept.take(5, 1.0);
        kept.filter.advance(30);
        QCOMPARE(kept.texts, QStringList("1@0"));
    }

    void endKeepsTheLastValue()
    {
        Kept kept(0.5);
        kept.take(0, 1.0);
        kept.take(50, 1.1);
        kept.filter.end();
        kept.filter.end();
        QCOMPARE(kept.texts, QStringList({"1@0", "1.1@50"}));
    }

    void whatIsNoFiniteNumberIsOneGap()
    {
        Kept kept;
        kept.take(0, 1.0);
        kept.take(1, std::numeric_limits<double>::quiet_NaN());
        kept.take(2, std::numeric_limits<double>::infinity());
        kept.take(3, 2.0);
        QCOMPARE(kept.texts.filter("-").size(), 1);
        QCOMPARE(kept.texts.constFirst(), QString("1@0"));
        QCOMPARE(kept.texts.constLast(), QString("2@3"));
    }
};

NORVO_APPLESS_TEST(tst_HistoryFilter)

#include "tst_HistoryFilter.moc"
