// SPDX-License-Identifier: GPL-3.0-or-later

#include "norvo/DynamicPorts.h"

#include "norvo/DoubleVec.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QtTest>

namespace {

/// Lets a test see what an object alone may ask.
class OpenPorts : public DynamicPorts
{
public:
    using QObject::receivers;
};

/// Sends and takes values by methods that its class declares.
class Fixed : public QObject
{
    Q_OBJECT

signals:
    void number(double value);
    void pair(QString name, DoubleVec values);

public slots:
    void takeNumber(double value)
    {
        taken.append(value);
        from = sender();
    }

public:
    QVector<double> taken;
    QObject* from = nullptr;
};

} // namespace

class tst_DynamicPorts : public QObject
{
    Q_OBJECT

private slots:
    void signalIsHeardByName();
    void slotIsCalledByName();
    void slotIsCalledByInvocation();
    void slotTakesFewerValuesThanTheSignalBrings();
    void signalCanBeConnectedToASignal();
    void disconnectedPortIsSilent();
    void queuedValueArrivesWithTheEventLoop();
    void spyRecordsValuesOfEveryType();
    void receiversAreCounted();
    void slotMayDeleteItsObject();
    void slotWithinASlotMayDeleteTheirObject();
    void receiverMayDeleteTheSender();
    void hundredThousandAreCreatedAndDeleted();
};

void tst_DynamicPorts::signalIsHeardByName()
{
    DynamicPorts ports;
    ports.addSignal<int>("other");
    const int x = ports.addSignal<double>("x");
    ports.build();
    Fixed fixed;
    QVERIFY(!ports.isHeard(x));
    QVERIFY(connect(&ports, SIGNAL(x(double)), &fixed, SLOT(takeNumber(double))));
    QVERIFY(ports.isHeard(x));
    QVERIFY(!ports.isHeard(0));
    ports.send(x, 2.5);
    ports.send(0, 7);
    QCOMPARE(fixed.taken, QVector<double>({2.5}));
    QCOMPARE(fixed.from, &ports);
}

void tst_DynamicPorts::slotIsCalledByName()
{
    QString seen;
    QObject* from = nullptr;
    class Named : public DynamicPorts
    {
    public:
        using QObject::sender;
    } ports;
    ports.addSignal<double>("x");
    ports.addSlot<QString, DoubleVec>("set", [&](const QString& name, const DoubleVec& values) {
        seen = QString("%1 %2").arg(name).arg(values.value(1));
        from = ports.sender();
    });
    ports.build();
    Fixed fixed;
    QVERIFY(
        connect(&fixed, SIGNAL(pair(QString, DoubleVec)), &ports, SLOT(set(QString, DoubleVec))));
    emit fixed.pair("pump", {1, 2.5});
    QCOMPARE(seen, QString("pump 2.5"));
    QCOMPARE(from, &fixed);
}

void tst_DynamicPorts::slotIsCalledByInvocation()
{
    DynamicPorts ports;
    QStringList seen;
    ports.addSlot<double>("set", [&seen](double v) { seen.append(QString::number(v)); });
    ports.addSlot<QString>("set", [&seen](const QString& v) { seen.append(v); });
    ports.addSlot("set", [&seen] { seen.append("pulse"); });
    ports.build();
    QVERIFY(QMetaObject::invokeMethod(&ports, "set", Q_ARG(QString, "text")));
    QVERIFY(QMetaObject::invokeMethod(&ports, "set"));
    QVERIFY(QMetaObject::invokeMethod(&ports, "set", Q_ARG(double, 1.5)));
    QCOMPARE(seen, QStringList({"text", "pulse", "1.5"}));
}

void tst_DynamicPorts::slotTakesFewerValuesThanTheSignalBrings()
{
    DynamicPorts ports;
    int pulses = 0;
    ports.addSlot("set", [&pulses] { ++pulses; });
    ports.build();
    Fixed fixed;
    QVERIFY(connect(&fixed, SIGNAL(number(double)), &ports, SLOT(set())));
    emit fixed.number(1);
    QCOMPARE(pulses, 1);
}

void tst_DynamicPorts::signalCanBeConnectedToASignal()
{
    DynamicPorts ports;
    ports.addSignal<QString>("other");
    ports.addSignal<double>("x");
    ports.build();
    Fixed fixed;
    QVERIFY(connect(&fixed, SIGNAL(number(double)), &ports, SIGNAL(x(double))));
    QVERIFY(connect(&ports, SIGNAL(x(double)), &fixed, SLOT(takeNumber(double))));
    emit fixed.number(4);
    QCOMPARE(fixed.taken, QVector<double>({4}));
}

void tst_DynamicPorts::disconnectedPortIsSilent()
{
    DynamicPorts ports;
    int calls = 0;
    const int x = ports.addSignal<double>("x");
    ports.addSlot<double>("set", [&calls](double) { ++calls; });
    ports.build();
    Fixed fixed;
    connect(&ports, SIGNAL(x(double)), &fixed, SLOT(takeNumber(double)));
    connect(&fixed, SIGNAL(number(double)), &ports, SLOT(set(double)));
    QVERIFY(disconnect(&ports, SIGNAL(x(double)), &fixed, SLOT(takeNumber(double))));
    QVERIFY(disconnect(&fixed, SIGNAL(number(double)), &ports, SLOT(set(double))));
    QVERIFY(!ports.isHeard(x));
    ports.send(x, 1.0);
    emit fixed.number(1);
    QCOMPARE(fixed.taken, QVector<double>());
    QCOMPARE(calls, 0);
}

void tst_DynamicPorts::queuedValueArrivesWithTheEventLoop()
{
    DynamicPorts ports;
    DoubleVec seen;
    const int x = ports.addSignal<double>("x");
    ports.addSlot<QString, DoubleVec>("set", [&](const QString&, const DoubleVec& v) { seen = v; });
    ports.build();
    Fixed fixed;
    QVERIFY(
        connect(&ports, SIGNAL(x(double)), &fixed, SLOT(takeNumber(double)), Qt::QueuedConnection));
    QVERIFY(connect(&fixed, SIGNAL(pair(QString, DoubleVec)), &ports, SLOT(set(QString, DoubleVec)),
                    Qt::QueuedConnection));
    ports.send(x, 3.0);
    emit fixed.pair("a", {1, 2});
    QVERIFY(fixed.taken.isEmpty() && seen.isEmpty());
    QCoreApplication::processEvents();
    QCOMPARE(fixed.taken, QVector<double>({3}));
    QCOMPARE(seen, DoubleVec({1, 2}));
}

void tst_DynamicPorts::spyRecordsValuesOfEveryType()
{
    DynamicPorts ports;
    const int all = ports.addSignal<double, int, bool, QString, QByteArray, DoubleVec>("all");
    ports.build();
    QSignalSpy spy(&ports, SIGNAL(all(double, int, bool, QString, QByteArray, DoubleVec)));
    QVERIFY(spy.isValid());
    ports.send(all, 1.5, 2, true, QString("t"), QByteArray("b"), DoubleVec{3});
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy[0].mid(0, 5), QVariantList({1.5, 2, true, "t", QByteArray("b")}));
    QCOMPARE(spy[0][5].value<DoubleVec>(), DoubleVec{3});
}

void tst_DynamicPorts::receiversAreCounted()
{
    OpenPorts ports;
    const int x = ports.addSignal<double>("x");
    ports.addSignal<QString>("x");
    ports.build();
    QCOMPARE(ports.receivers(SIGNAL(x(double))), 0);
    Fixed fixed;
    connect(&ports, SIGNAL(x(double)), &fixed, SLOT(takeNumber(double)));
    connect(&ports, SIGNAL(x(double)), &fixed, SLOT(takeNumber(double)));
    QCOMPARE(ports.receivers(SIGNAL(x(double))), 2);
    QCOMPARE(ports.receivers(SIGNAL(x(QString))), 0);
    ports.send(x, 1.0);
    QCOMPARE(fixed.taken.size(), 2);
}

void tst_DynamicPorts::slotMayDeleteItsObject()
{
    const QString text = "held by the slot, and by nothing else";
    QString seen;
    auto* const ports = new DynamicPorts;
    ports->addSlot("go", [&seen, ports, copy = text + "."] {
        delete ports;
        seen = copy; // what the slot holds must still be there
    });
    ports->build();
    QVERIFY(QMetaObject::invokeMethod(ports, "go"));
    QCOMPARE(seen, text + ".");
}

void tst_DynamicPorts::slotWithinASlotMayDeleteTheirObject()
{
    auto* const ports = new DynamicPorts;
    const QString text = "a text that is long enough for the heap";
    QString seen;
    ports->addSlot("outer", [ports, text, &seen] {
        QMetaObject::invokeMethod(ports, "inner");
        seen = text; // what this slot holds must still be there
    });
    ports->addSlot("inner", [ports] { delete ports; });
    ports->build();
    QVERIFY(QMetaObject::invokeMethod(ports, "outer"));
    QCOMPARE(seen, text);
}

void tst_DynamicPorts::receiverMayDeleteTheSender()
{
    auto* const ports = new DynamicPorts;
    const int x = ports->addSignal<double>("x");
    ports->build();
    DynamicPorts receiver;
    QVector<double> taken;
    receiver.addSlot<double>("first", [&](double v) {
        taken.append(v);
        delete ports;
    });
    receiver.addSlot<double>("second", [&taken](double v) { taken.append(v); });
    receiver.build();
    connect(ports, SIGNAL(x(double)), &receiver, SLOT(first(double)));
    connect(ports, SIGNAL(x(double)), &receiver, SLOT(second(double)));
    ports->send(x, 1.0);
    QCOMPARE(taken, QVector<double>({1})); // as with any sender that dies meanwhile
}

void tst_DynamicPorts::hundredThousandAreCreatedAndDeleted()
{
    Fixed fixed;
    int calls = 0;
    for (int i = 0; i < 100000; ++i) {
        DynamicPorts ports;
        const int x = ports.addSignal<double>("x");
        ports.addSignal<QString, DoubleVec>("x");
        ports.addSlot<double>("set", [&calls](double) { ++calls; });
        ports.build();
        connect(&ports, SIGNAL(x(double)), &fixed, SLOT(takeNumber(double)));
        connect(&fixed, SIGNAL(number(double)), &ports, SLOT(set(double)));
        if (i % 3 == 0) {
            disconnect(&fixed, nullptr, &ports, nullptr);
        }
        ports.send(x, double(i));
        emit fixed.number(1);
    }
    QCOMPARE(fixed.taken.size(), 100000);
    QCOMPARE(fixed.taken.last(), 99999.0);
    QCOMPARE(calls, 66666);
}

NORVO_GUILESS_TEST(tst_DynamicPorts)
#include "tst_DynamicPorts.moc"
