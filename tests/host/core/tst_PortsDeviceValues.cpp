// SPDX-License-Identifier: LGPL-3.0-or-later

#include "PortsEnds.h"
#include "PortsSubject.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QtTest>

#include <cmath>
#include <limits>

namespace {

using Received = QVector<QPair<int, QVariant>>;

} // namespace

/// What leaves the outputs and comes in by the inputs that a panel's author has named.
class tst_PortsDeviceValues : public QObject
{
    Q_OBJECT

private slots:
    void numberLeavesInEveryFormThatItReadsAs_data();
    void numberLeavesInEveryFormThatItReadsAs();
    void textLeavesInEveryFormThatItReadsAs_data();
    void textLeavesInEveryFormThatItReadsAs();
    void textMayWriteItsNumberAnotherWay();
    void yesAndNoLeaveInEveryForm();
    void inputTakesEveryForm();
    void nothingGoesInOrOutUnlessRunning();
    void onlyWhatIsConnectedIsHeard();
    void senderHasTheNameOfTheDevice();
    void queuedValueArrivesWithTheEventLoop();
    void connectedIsSentWhereItIsNews();
    void faultIsAnAlertToo();
};

void tst_PortsDeviceValues::numberLeavesInEveryFormThatItReadsAs_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<QStringList>("notes");

    QTest::newRow("fraction") << 23.5 << QStringList{"number 23.5", "text 23.5"};
    QTest::newRow("one") << 1.0 << QStringList{"number 1", "text 1", "yes"};
    QTest::newRow("nought") << 0.0 << QStringList{"number 0", "text 0", "no"};
    QTest::newRow("million") << 1e6 << QStringList{"number 1000000", "text 1000000"};
    QTest::newRow("a tenth") << 0.1 << QStringList{"number 0.10000000000000001", "text 0.1"};
    QTest::newRow("tiny") << 1e-9 << QStringList{"number 1.0000000000000001e-09", "text 1e-09"};
    QTest::newRow("huge") << -1e300
                          << QStringList{"number -1.0000000000000001e+300", "text -1e+300"};
    QTest::newRow("infinity") << std::numeric_limits<double>::infinity()
                              << QStringList{"number inf", "text inf"};
    QTest::newRow("no number") << std::nan("") << QStringList{"number nan", "text nan"};
}

void tst_PortsDeviceValues::numberLeavesInEveryFormThatItReadsAs()
{
    QFETCH(double, number);

    PortsSubject device;
    device.addOutput("before", {});
    device.addOutput("x", {});
    device.setRunning(true);
    Listener listener;
    listener.listenTo(device, "x");
    device.sendNumber(1, number);
    device.sendNumber(0, 5);
    QTEST(listener.notes, "notes");
    QCOMPARE("text " + PortsSubject::textOf(number), listener.notes[1]);
}

void tst_PortsDeviceValues::textLeavesInEveryFormThatItReadsAs_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QStringList>("notes");

    QTest::newRow("word") << "hot" << QStringList{"text hot"};
    QTest::newRow("nothing") << "" << QStringList{"text "};
    QTest::newRow("number") << " -2.5e1 " << QStringList{"number -25", "text  -2.5e1 "};
    QTest::newRow("comma") << "2,5" << QStringList{"text 2,5"};
    QTest::newRow("on") << "ON" << QStringList{"text ON", "yes"};
    QTest::newRow("off") << "off" << QStringList{"text off", "no"};
    QTest::newRow("1") << "1" << QStringList{"number 1", "text 1", "yes"};
}

void tst_PortsDeviceValues::textLeavesInEveryFormThatItReadsAs()
{
    QFETCH(QString, value);

    PortsSubject device;
    device.addOutput("x", {});
    device.setRunning(true);
    Listener listener;
    listener.listenTo(device, "x");
    device.sendText(0, value);
    QTEST(listener.notes, "notes");
}

void tst_PortsDeviceValues::textMayWriteItsNumberAnotherWay()
{
    PortsSubject device;
    device.addOutput("x", {});
    device.setRunning(true);
    Listener listener;
    listener.listenTo(device, "x");
    device.sendText(0, "2,5", "2.5");
    QCOMPARE(listener.notes, QStringList({"number 2.5", "text 2,5"}));
    listener.notes.clear();
    device.sendText(0, "on", "7"); // yes or no is read from the text itself
    device.sendText(0, "hot", "1");
    QCOMPARE(listener.notes, QStringList({"number 7", "text on", "yes", "number 1", "text hot"}));
}

void tst_PortsDeviceValues::yesAndNoLeaveInEveryForm()
{
    PortsSubject device;
    device.addOutput("x", {});
    device.setRunning(true);
    Listener listener;
    listener.listenTo(device, "x");
    device.sendBool(0, true);
    device.sendBool(0, false);
    QCOMPARE(listener.notes,
             QStringList({"number 1", "text true", "yes", "number 0", "text false", "no"}));
}

void tst_PortsDeviceValues::inputTakesEveryForm()
{
    PortsSubject device;
    device.addInput("a", {});
    device.addInput("b", {});
    device.setRunning(true);
    Sender sender;
    sender.sendTo(device, "b");
    emit sender.value(2.5);
    emit sender.value(3);
    emit sender.value(true);
    emit sender.value(QString("t"));
    emit sender.value();
    QCOMPARE(device.received,
             (Received{{1, 2.5}, {1, 3}, {1, true}, {1, QString("t")}, {1, QVariant()}}));
    QStringList texts;
    for (const auto& one : qAsConst(device.received)) {
        texts.append(PortsSubject::textOf(one.second));
    }
    QCOMPARE(texts, QStringList({"2.5", "3", "true", "t", ""}));
}

void tst_PortsDeviceValues::nothingGoesInOrOutUnlessRunning()
{
    PortsSubject device;
    device.addOutput("x", {});
    device.addInput("set", {});
    Listener listener;
    listener.listenTo(device, "x");
    Sender sender;
    sender.sendTo(device, "set");
    device.sendNumber(0, 1);
    device.sendText(0, "1");
    device.sendBool(0, true);
    emit sender.value(1);
    QCOMPARE(listener.notes, QStringList());
    QVERIFY(device.received.isEmpty());
    device.setRunning(true);
    device.sendBool(0, true);
    emit sender.value(1);
    QCOMPARE(listener.notes.size(), 3);
    QCOMPARE(device.received.size(), 1);
}

void tst_PortsDeviceValues::onlyWhatIsConnectedIsHeard()
{
    PortsSubject device;
    device.addOutput("x", {});
    device.addOutput("y", {});
    QVERIFY(!device.isHeard(0));
    Listener listener;
    listener.listenTo(device, "y");
    QVERIFY(!device.isHeard(0));
    QVERIFY(device.isHeard(1));
    for (const QString form : {"x(double)", "x(QString)", "x(bool)"}) {
        QString signature;
        QObject* const provider = device.getProvider(form, signature);
        const auto one =
            connect(provider, ("2" + form.toUtf8()).constData(), &device, SLOT(restart()));
        QVERIFY(device.isHeard(0));
        disconnect(one);
        QVERIFY(!device.isHeard(0));
    }
}

void tst_PortsDeviceValues::senderHasTheNameOfTheDevice()
{
    PortsSubject device;
    device.setObjectName("bench");
    device.addOutput("x", {});
    device.setRunning(true);
    Listener listener;
    listener.listenTo(device, "x");
    device.sendText(0, "a");
    QCOMPARE(listener.senderName, QString("bench"));
}

void tst_PortsDeviceValues::queuedValueArrivesWithTheEventLoop()
{
    PortsSubject device;
    device.addInput("set", {});
    device.setRunning(true);
    Sender sender;
    sender.sendTo(device, "set", Qt::QueuedConnection);
    emit sender.value(2.5);
    emit sender.value(QString("t"));
    QVERIFY(device.received.isEmpty());
    QCoreApplication::processEvents();
    QCOMPARE(device.received, (Received{{0, 2.5}, {0, QString("t")}}));
}

void tst_PortsDeviceValues::connectedIsSentWhereItIsNews()
{
    PortsSubject device;
    QSignalSpy spy(&device, &PortsSubject::connected);
    QVERIFY(!device.isConnected());
    for (const bool on : {false, false, true, true, false}) {
        device.setConnected(on);
        QCOMPARE(device.isConnected(), on);
    }
    QCOMPARE(spy, QList<QVariantList>({{false}, {true}, {false}}));
    // A receiver already sees it, and may bring the next news.
    connect(&device, &PortsSubject::connected, &device, [&device](bool on) {
        QCOMPARE(device.isConnected(), on);
        device.setConnected(false);
    });
    device.setConnected(true);
    QVERIFY(!device.isConnected());
    QCOMPARE(spy.size(), 5);
}

void tst_PortsDeviceValues::faultIsAnAlertToo()
{
    PortsSubject device;
    device.setObjectName("bench");
    QSignalSpy faults(&device, &PortsSubject::fault);
    QSignalSpy alerts(&device, &PortsSubject::alertRaised);
    QTest::ignoreMessage(QtWarningMsg, "bench: it is gone");
    device.reportFault("it is gone");
    QCOMPARE(faults, QList<QVariantList>({{"it is gone"}}));
    QCOMPARE(alerts, QList<QVariantList>({{"it is gone"}}));
    // The alert is out before a receiver can end the device.
    connect(&device, &PortsSubject::fault, this, [&alerts] { QCOMPARE(alerts.size(), 2); });
    QTest::ignoreMessage(QtWarningMsg, "bench: again");
    device.reportFault("again");
}

NORVO_TEST(tst_PortsDeviceValues)
#include "tst_PortsDeviceValues.moc"
