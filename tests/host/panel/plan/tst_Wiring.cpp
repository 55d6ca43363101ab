// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/Wiring.h"

#include "host/panel/Descriptions.h"
#include "TalkerDevice.h"
#include "TestMain.h"

#include <QtTest>

using namespace norvo;

/// Offers one thing only, of a kind that nothing else fits.
class PointDevice : public BaseDevice
{
    Q_OBJECT

signals:
    void point(QPointF point);

public slots:
    void move(QPointF) {}
};

/// Three signals that fit four slots, and a slot that none fits: twelve pairs, as many as are
/// named.
class TwelvePairsDevice : public BaseDevice
{
    Q_OBJECT

signals:
    void first();
    void second();
    void third();

public slots:
    void north() {}
    void east() {}
    void south() {}
    void west() {}
    void move(QPointF) {}
};

/// Takes a value of any kind, but lists it as one.
class ConvertingDevice : public BaseDevice
{
    Q_OBJECT

public:
    QStringList grabMethods(const QString& name, QMetaMethod::MethodType type, bool) const override
    {
        const bool isAsked = type == QMetaMethod::Slot && (name.isEmpty() || name == "show");
        return isAsked ? QStringList("show(QVariant)") : QStringList();
    }

public slots:
    void show(QVariant) {}
    void show(double) {}
};

/// Lists an input that it does not have.
class BoastingDevice : public BaseDevice
{
    Q_OBJECT

public:
    QStringList grabMethods(const QString&, QMetaMethod::MethodType type, bool) const override
    {
        return type == QMetaMethod::Slot ? QStringList{"input(int)", "input(double)"}
                                         : QStringList();
    }

public slots:
    void input(double) {}
};

class tst_Wiring : public QObject
{
    Q_OBJECT

private slots:
    void resolves_data();
    void resolves();
    void refuses_data();
    void refuses();
    void longListsAreCut();
    void listThatJustFitsIsNotCut();
    void receiverThatConvertsIsAskedForTheSignalsArguments();
    void listedMethodThatDoesNotExistIsLeftOut();
    void connects();
    void queuedConnectionsStoreArrays();
    void queuedConnectionsRefuseWhatCannotBeStored();

private:
    std::optional<Wire> resolve(const QString& text, Diagnostics& diagnostics);

    TalkerDevice m_a;
    TalkerDevice m_b;
    PointDevice m_point;
};

std::optional<Wire> tst_Wiring::resolve(const QString& text, Diagnostics& diagnostics)
{
    const ConnectionSetting arrow = describe::arrow(text);
    const auto deviceOf = [this](const QString& id) -> BaseDevice& {
        if (id == "p") {
            return m_point;
        }
        return id == "a" ? m_a : m_b;
    };
    return resolveConnection(arrow, deviceOf(arrow.from.device.text),
                             deviceOf(arrow.to.device.text), diagnostics);
}

void tst_Wiring::resolves_data()
{
    QTest::addColumn<QString>("arrow");
    QTest::addColumn<QString>("signal");
    QTest::addColumn<QString>("slot");

    QTest::newRow("bothInFull") << "a.number(double) -> b.input(double)"
                                << "number(double)"
                                << "input(double)";
    QTest::newRow("spacesDoNotMatter") << "a.named( double ,QString) -> b.either(double, QString)"
                                       << "named(double,QString)"
                                       << "either(double,QString)";
    QTest::newRow("constReferenceIsTheValue") << "a.text(const QString&) -> b.input(QString)"
                                              << "text(QString)"
                                              << "input(QString)";
    QTest::newRow("slotChosenByTheSignal") << "a.number -> b.input"
                                           << "number(double)"
                                           << "input(double)";
    QTest::newRow("signalChosenByTheSlot") << "a.output -> b.input(QString)"
                                           << "output(QString)"
                                           << "input(QString)";
    QTest::newRow("slotTakesTheFirstArguments") << "a.named -> b.input"
                                                << "named(double,QString)"
                                                << "input(double)";
    QTest::newRow("slotTakesNone") << "a.text -> b.clear"
                                   << "text(QString)"
                                   << "clear()";
    QTest::newRow("equalArgumentsGoFirst") << "a.named -> b.either"
                                           << "named(double,QString)"
                                           << "either(double,QString)";
    QTest::newRow("equalArgumentsGoFirstWithADefault") << "a.pressed -> b.setFlag"
                                                       << "pressed()"
                                                       << "setFlag()";
    QTest::newRow("inFullEvenIfAnotherWereEqual") << "a.named -> b.either(double)"
                                                  << "named(double,QString)"
                                                  << "either(double)";
}

void tst_Wiring::resolves()
{
    QFETCH(QString, arrow);
    Diagnostics diagnostics("panel.yaml");
    const auto wire = resolve(arrow, diagnostics);
    QCOMPARE(describe::lines(diagnostics), QStringList());
    QVERIFY(wire);
    QCOMPARE(wire->provider, &m_a);
    QCOMPARE(wire->receiver, &m_b);
    QTEST(wire->signal, "signal");
    QTEST(wire->slot, "slot");
}

void tst_Wiring::refuses_data()
{
    QTest::addColumn<QString>("arrow");
    QTest::addColumn<QStringList>("expected");

    const QString signalList = "pressed(), number(double), text(QString), output(double), "
                               "output(QString), named(double,QString), array(DoubleVec), "
                               "raw(Unheard)";
    const QString slotList = "clear(), input(double), input(QString), setFlag(bool), setFlag(), "
                             "either(double), either(double,QString), take(DoubleVec), "
                             "takeRaw(Unheard)";
    QTest::newRow("unknownSignal")
        << "a.nubmer -> b.input"
        << QStringList("panel.yaml:1:3: error: \"a\" has no signal \"nubmer\"; it has " +
                       signalList + "; did you mean \"number\"?");
    QTest::newRow("unknownSignalLikeNone")
        << "a.temperature -> b.input"
        << QStringList("panel.yaml:1:3: error: \"a\" has no signal \"temperature\"; it has " +
                       signalList);
    QTest::newRow("unknownSlot")
        << "a.number -> b.imput"
        << QStringList("panel.yaml:1:15: error: \"b\" has no slot \"imput\"; it has " + slotList +
                       "; did you mean \"input\"?");
    QTest::newRow("unknownOverloads")
        << "a.output(int) -> b.input(bool)"
        << QStringList({"panel.yaml:1:3: error: \"a\" has no signal \"output(int)\"; it has "
                        "output(double), output(QString)",
                        "panel.yaml:1:20: error: \"b\" has no slot \"input(bool)\"; it has "
                        "input(double), input(QString)"});
    QTest::newRow("slotIsNoSignal")
        << "p.move -> b.clear"
        << QStringList("panel.yaml:1:3: error: \"p\" has no signal \"move\"; it has "
                       "point(QPointF)");
    QTest::newRow("severalPairs")
        << "a.output -> b.input"
        << QStringList("panel.yaml:1:1: error: \"a.output -> b.input\" can mean several pairs; "
                       "choose one of: a.output(double) -> b.input(double), "
                       "a.output(QString) -> b.input(QString)");
    QTest::newRow("severalPairsNoneEqual")
        << "a.output -> b.clear"
        << QStringList("panel.yaml:1:1: error: \"a.output -> b.clear\" can mean several pairs; "
                       "choose one of: a.output(double) -> b.clear(), "
                       "a.output(QString) -> b.clear()");
    QTest::newRow("noPairFits")
        << "p.point -> b.input"
        << QStringList("panel.yaml:1:1: error: p.point(QPointF) does not fit b.input(double) or "
                       "input(QString); what fits: p.point(QPointF) -> b.clear(), "
                       "p.point(QPointF) -> b.setFlag()");
    QTest::newRow("nothingFitsAtAll")
        << "a.number -> p.move"
        << QStringList("panel.yaml:1:1: error: a.number(double) does not fit p.move(QPointF); "
                       "nothing that \"a\" sends fits \"p\"");
}

void tst_Wiring::refuses()
{
    QFETCH(QString, arrow);
    Diagnostics diagnostics("panel.yaml");
    QVERIFY(!resolve(arrow, diagnostics));
    QTEST(describe::lines(diagnostics), "expected");
}

void tst_Wiring::longListsAreCut()
{
    Diagnostics diagnostics("panel.yaml");
    QVERIFY(!resolve("a.text -> b.input(double)", diagnostics));
    // What has the same names and equal arguments comes first.
    QCOMPARE(
        describe::lines(diagnostics),
        QStringList("panel.yaml:1:1: error: a.text(QString) does not fit b.input(double); "
                    "what fits: a.text(QString) -> b.input(QString), "
                    "a.number(double) -> b.input(double), a.output(double) -> b.input(double), "
                    "a.output(QString) -> b.input(QString), a.pressed() -> b.clear(), "
                    "a.pressed() -> b.setFlag(), a.number(double) -> b.either(double), "
                    "a.text(QString) -> b.clear(), a.text(QString) -> b.setFlag(), "
                    "a.output(double) -> b.either(double), "
                    "a.named(double,QString) -> b.input(double), "
                    "a.named(double,QString) -> b.either(double,QString) and 15 more"));
}

void tst_Wiring::listThatJustFitsIsNotCut()
{
    TwelvePairsDevice twelve;
    Diagnostics diagnostics("panel.yaml");
    QVERIFY(!resolveConnection(describe::arrow("t.first -> t.move"), twelve, twelve, diagnostics));
    const QString line = describe::lines(diagnostics).join('\n');
    QCOMPARE(line.count(" -> "), 12);
    QVERIFY2(line.endsWith("t.third() -> t.west()"), qPrintable(line));
}

void tst_Wiring::receiverThatConvertsIsAskedForTheSignalsArguments()
{
    ConvertingDevice converting;
    Diagnostics diagnostics("panel.yaml");
    const auto wire =
        resolveConnection(describe::arrow("a.number -> c.show"), m_a, converting, diagnostics);
    QCOMPARE(describe::lines(diagnostics), QStringList());
    QVERIFY(wire);
    QCOMPARE(wire->slot, "show(double)");
}

void tst_Wiring::listedMethodThatDoesNotExistIsLeftOut()
{
    BoastingDevice boasting;
    Diagnostics diagnostics("panel.yaml");
    const auto wire =
        resolveConnection(describe::arrow("a.pressed -> c.input"), m_a, boasting, diagnostics);
    QVERIFY(!wire);
    QCOMPARE(describe::lines(diagnostics).first().section(';', 0, 0),
             QString("panel.yaml:1:1: error: a.pressed() does not fit c.input(double)"));
}

void tst_Wiring::connects()
{
    const Wire wire{&m_a, "named(double,QString)", &m_b, "input(double)"};
    const auto connection = connectWire(wire, Qt::AutoConnection);
    QVERIFY(connection);
    emit m_a.named(1.5, "x");
    QVERIFY(QObject::disconnect(connection));
    emit m_a.named(2.5, "x");
    QCOMPARE(m_b.heard, QStringList("double 1.5"));
    m_b.heard.clear();
}

void tst_Wiring::queuedConnectionsStoreArrays()
{
    const auto connection =
        connectWire({&m_a, "array(DoubleVec)", &m_b, "take(DoubleVec)"}, Qt::QueuedConnection);
    QVERIFY(connection);
    emit m_a.array({1, 2, 3});
    QCOMPARE(m_b.heard, QStringList());
    QTRY_COMPARE(m_b.heard, QStringList("array 3"));
    QObject::disconnect(connection);
    m_b.heard.clear();
}

void tst_Wiring::queuedConnectionsRefuseWhatCannotBeStored()
{
    const Wire wire{&m_a, "raw(Unheard)", &m_b, "takeRaw(Unheard)"};
    const auto direct = connectWire(wire, Qt::AutoConnection);
    QVERIFY(direct);
    QObject::disconnect(direct);
    QVERIFY(!connectWire(wire, Qt::QueuedConnection));
}

NORVO_GUILESS_TEST(tst_Wiring)
#include "tst_Wiring.moc"
