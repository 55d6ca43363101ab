// SPDX-License-Identifier: GPL-3.0-or-later

#include "../ListenedPanel.h"
#include "TestMain.h"
#include "host/services/status/SourceWatch.h"
#include "host/services/values/ValueTable.h"
#include "host/services/view/ValuesJson.h"

#include "norvo/BaseDevice.h"
#include "norvo/DoubleVec.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <limits>

namespace {

class Bench : public BaseDevice
{
    Q_OBJECT

public:
    static DeviceTypeInfo typeInfo() { return {}; }

signals:
    void connected(bool there);
    void number(double value);
    void words(const QString& text);
    void state(bool on);
    void pulse();
    void pair(double x, double y);
    void row(const DoubleVec& numbers);

public slots:
    void input(double /*value*/) {}
};

class Sink : public BaseDevice
{
    Q_OBJECT

public:
    static DeviceTypeInfo typeInfo() { return {}; }

signals:
    void output(double value);

public slots:
    void input(double value) { emit output(value); }
};

/// A source with every kind of output, and a device behind it.
class Told : public ListenedPanel
{
public:
    Told()
    {
        manager.registerDeviceType<Bench>("bench");
        manager.registerDeviceType<Sink>("sink");
        start(
            describe::panel({describe::device("bench", "bench"), describe::device("sink", "sink")},
                            {"bench.number(double) -> sink.input(double)"}),
            *this);
        values.hearAll(panel);
    }

    void listen(const norvo::PanelPlan& plan)
    {
        values.listen(plan);
        sources.listen(plan);
    }
    void complete(const norvo::Panel& running)
    {
        values.complete(running);
        sources.complete(running);
    }

    Bench& bench() const { return device<Bench>("bench"); }
    QJsonObject json() const
    {
        return QJsonDocument::fromJson(norvo::valuesJson("Title", values, sources)).object();
    }
    QJsonObject value(const QString& device, const QString& output) const
    {
        for (const QJsonValue& entry : json()["values"].toArray()) {
            if (entry["device"] == device && entry["output"] == output) {
                return entry.toObject();
            }
        }
        return {};
    }

    norvo::ValueTable values;
    norvo::SourceWatch sources;
};

} // namespace

class tst_ValuesJson : public QObject
{
    Q_OBJECT

private slots:
    void valueKeepsItsKind();
    void whatIsNoNumberIsNull();
    void valueThatNeverCameIsNull();
    void ageGrows();
    void valueBehindALostSourceIsStale();
    void sourcesAreListed();
    void headTellsPanelAndTime();
};

void tst_ValuesJson::valueKeepsItsKind()
{
    Told told;
    emit told.bench().number(-1.5);
    emit told.bench().words("a \"b\"");
    emit told.bench().state(true);
    emit told.bench().pulse();
    emit told.bench().pair(1, 2);
    emit told.bench().row(DoubleVec{1, 2.5});
    QCOMPARE(told.value("bench", "number(double)")["value"], QJsonValue(-1.5));
    QCOMPARE(told.value("bench", "words(QString)")["value"], QJsonValue("a \"b\""));
    QCOMPARE(told.value("bench", "state(bool)")["value"], QJsonValue(true));
    QCOMPARE(told.value("bench", "pulse()")["value"], QJsonValue(QJsonArray()));
    QCOMPARE(told.value("bench", "pair(double,double)")["value"], QJsonValue(QJsonArray{1, 2}));
    QCOMPARE(told.value("bench", "row(DoubleVec)")["value"], QJsonValue(QJsonArray{1, 2.5}));
    QCOMPARE(told.value("sink", "output(double)")["value"], QJsonValue(-1.5));
    QCOMPARE(told.value("bench", "number(double)")["count"], QJsonValue(1));
}

void tst_ValuesJson::whatIsNoNumberIsNull()
{
    Told told;
    for (const double number :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        emit told.bench().number(number);
        const QJsonObject entry = told.value("bench", "number(double)");
        QVERIFY(entry["value"].isNull());
        QCOMPARE(entry["state"], QJsonValue("fresh"));
    }
}

void tst_ValuesJson::valueThatNeverCameIsNull()
{
    Told told;
    const QJsonObject entry = told.value("bench", "number(double)");
    QVERIFY(entry["value"].isNull());
    QVERIFY(entry["ageMs"].isNull());
    QCOMPARE(entry["state"], QJsonValue("never"));
    QCOMPARE(entry["count"], QJsonValue(0));
}

void tst_ValuesJson::ageGrows()
{
    Told told;
    emit told.bench().number(1);
    QTest::qWait(30);
    QVERIFY(told.value("bench", "number(double)")["ageMs"].toDouble(-1) >= 25);
}

void tst_ValuesJson::valueBehindALostSourceIsStale()
{
    Told told;
    emit told.bench().connected(true);
    emit told.bench().number(1);
    QCOMPARE(told.value("sink", "output(double)")["state"], QJsonValue("fresh"));
    emit told.bench().connected(false);
    QCOMPARE(told.value("sink", "output(double)")["state"], QJsonValue("stale"));
    QCOMPARE(told.value("bench", "number(double)")["state"], QJsonValue("stale"));
    emit told.bench().connected(true);
    QCOMPARE(told.value("sink", "output(double)")["state"], QJsonValue("fresh"));
}

void tst_ValuesJson::sourcesAreListed()
{
    Told told;
    const auto source = [&told] { return told.json()["sources"].toArray().at(0).toObject(); };
    QCOMPARE(source()["id"], QJsonValue("bench"));
    QCOMPARE(source()["state"], QJsonValue("unknown"));
    emit told.bench().connected(true);
    QCOMPARE(source()["state"], QJsonValue("well"));
    emit told.bench().connected(false);
    QCOMPARE(source()["state"], QJsonValue("lost"));
    QVERIFY(QDateTime::fromString(source()["since"].toString(), Qt::ISODateWithMs).isValid());
}

void tst_ValuesJson::headTellsPanelAndTime()
{
    const QJsonObject all = Told().json();
    QCOMPARE(all["panel"], QJsonValue("Title"));
    const QDateTime time = QDateTime::fromString(all["time"].toString(), Qt::ISODateWithMs);
    QVERIFY(qAbs(time.msecsTo(QDateTime::currentDateTimeUtc())) < 60000);
    QVERIFY(all["time"].toString().endsWith('Z'));
}

NORVO_TEST(tst_ValuesJson)
#include "tst_ValuesJson.moc"
