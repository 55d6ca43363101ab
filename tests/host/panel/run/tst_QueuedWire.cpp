// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/run/QueuedWire.h"

#include "host/panel/Descriptions.h"
#include "host/panel/TestPanel.h"

#include "devices/ButtonDevice.h"
#include "fixtures/relays/RecorderDevice.h"
#include "fixtures/relays/RelayDevice.h"
#include "host/panel/run/Panel.h"
#include "norvo/BaseWidget.h"
#include "norvo/DeviceManager.h"
#include "Effort.h"
#include "MessageLog.h"
#include "TestMain.h"

#include <QPushButton>
#include <QtTest>

#include <functional>

using norvo::QueuedWire;
using norvo::Wire;

class tst_QueuedWire : public QObject
{
    Q_OBJECT

private slots:
    void valuesArriveLaterAndInOrder();
    void cutWireCarriesNothing();
    void onlySoManyAreUnderWay();
    void afterALossItWaitsUntilHalfHaveArrived();
    void panelWithACycleStaysResponsive_data();
    void panelWithACycleStaysResponsive();
    void connectionsOutsideOfTheCycleAreDirect();
};

void tst_QueuedWire::valuesArriveLaterAndInOrder()
{
    RelayDevice from;
    RecorderDevice to;
    const QueuedWire wire(Wire{&from, "output(double)", &to, "input(double)"});
    QVERIFY(wire.isConnected());
    from.input(1);
    from.input(2);
    QCOMPARE(to.lines(), QStringList());
    QCoreApplication::processEvents();
    QCOMPARE(to.lines(), QStringList({"input(double) 1", "input(double) 2"}));
}

void tst_QueuedWire::cutWireCarriesNothing()
{
    RelayDevice from;
    RecorderDevice to;
    auto wire = std::make_unique<QueuedWire>(Wire{&from, "output(double)", &to, "input(double)"});
    wire.reset();
    from.input(1);
    QCoreApplication::processEvents();
    QCOMPARE(to.lines(), QStringList());
}

void tst_QueuedWire::onlySoManyAreUnderWay()
{
    RelayDevice from;
    RelayDevice to;
    from.setObjectName("from");
    to.setObjectName("to");
    const QueuedWire wire(Wire{&from, "output(double)", &to, "input(double)"});
    const auto send = [&from](int count) {
        for (int i = 0; i < count; ++i) {
            from.input(i);
        }
        QCoreApplication::processEvents();
    };
    send(QueuedWire::kMaxUnderway);
    QCOMPARE(to.passes(), QueuedWire::kMaxUnderway);
    MessageLog log;
    send(3 * QueuedWire::kMaxUnderway);
    QCOMPARE(to.passes(), 2 * QueuedWire::kMaxUnderway);
    send(QueuedWire::kMaxUnderway);
    QCOMPARE(to.passes(), 3 * QueuedWire::kMaxUnderway);
    send(QueuedWire::kMaxUnderway + 1);
    QCOMPARE(to.passes(), 4 * QueuedWire::kMaxUnderway);
    // Reported once, however many are lost and however often.
    QCOMPARE(log.take(), QStringList("warning: from.output(double) -> to.input(double) goes round "
                                     "a cycle that multiplies its values; some are lost"));
}

void tst_QueuedWire::afterALossItWaitsUntilHalfHaveArrived()
{
    class NotingDevice : public RelayDevice
    {
    public:
        std::function<void()> onInput;
        NotingDevice()
        {
            connect(this, &RelayDevice::output, [this] { onInput(); });
        }
    };
    constexpr int kHalf = QueuedWire::kMaxUnderway / 2;
    RelayDevice from;
    NotingDevice to;
    const QueuedWire wire(Wire{&from, "output(double)", &to, "input(double)"});
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("some are lost"));
    // One more value is sent as soon as so many have arrived: it is passed on from half of them on.
    for (const int arrived : {kHalf, kHalf + 1}) {
        const int before = to.passes();
        to.onInput = [&] {
            if (to.passes() - before == arrived) {
                from.input(0);
            }
        };
        for (int i = 0; i <= QueuedWire::kMaxUnderway; ++i) {
            from.input(i);
        }
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
        QCOMPARE(to.passes() - before, QueuedWire::kMaxUnderway + (arrived > kHalf ? 1 : 0));
    }
}

void tst_QueuedWire::panelWithACycleStaysResponsive_data()
{
    QTest::addColumn<QStringList>("arrows");
    QTest::newRow("toItself") << QStringList{"a.output -> a.input"};
    QTest::newRow("threeRelays") << QStringList{"a.output -> b.input", "b.output -> c.input",
                                                "c.output -> a.input"};
    QTest::newRow("twoCyclesThroughOneRelayMultiplyTheirValues") << QStringList{
        "a.output -> b.input", "b.output -> a.input", "a.output -> c.input", "c.output -> a.input"};
}

void tst_QueuedWire::panelWithACycleStaysResponsive()
{
    QFETCH(QStringList, arrows);
    DeviceManager manager;
    manager.registerDeviceType<RelayDevice>("relay");
    manager.registerDeviceType<RecorderDevice>("recorder");
    manager.registerDeviceType<ButtonDevice>("button");
    TestPanel panel(
        manager, describe::panel({describe::device("a", "relay"), describe::device("b", "relay"),
                                  describe::device("c", "relay"), describe::device("r", "recorder"),
                                  describe::device("button", "button")},
                                 arrows + QStringList{"button.toggled -> r.input"}));
    if (QTest::currentDataTag() == QString("twoCyclesThroughOneRelayMultiplyTheirValues")) {
        const QRegularExpression told("goes round a cycle that multiplies its values; some are");
        QTest::ignoreMessage(QtWarningMsg, told);
        QTest::ignoreMessage(QtWarningMsg, told);
    }
    QWidget page;
    panel.start(&page);
    QVERIFY(!panel.diagnostics().hasErrors());
    page.show();
    auto* a = static_cast<RelayDevice*>(panel.device("a"));
    a->input(1);

    // A whole event loop, as the program has it: a timer that clicks must get its turns.
    int clicks = 0;
    QTimer timer;
    QEventLoop loop;
    connect(&timer, &QTimer::timeout, [&] {
        QTest::mouseClick(panel.widget("button")->findChild<QPushButton*>(), Qt::LeftButton);
        if (++clicks == 10) {
            timer.stop();
            loop.quit();
        }
    });
    timer.start(10);
    const norvo::OwnTimer timeOfClicks;
    loop.exec();

    const auto taken = timeOfClicks.elapsed();
    QVERIFY2(taken.ownMs < 2000, qPrintable(QString::number(taken.clockMs)));
    QCOMPARE(panel.device("r")->property("lines").toStringList().size(), 11); // and the first state
    QVERIFY(a->passes() > 100);
    for (const char* id : {"a", "b", "c"}) {
        QVERIFY(static_cast<RelayDevice*>(panel.device(id))->depth() <= 1);
    }
    const int passes = a->passes();
    QTRY_VERIFY(a->passes() > passes); // still going round
    panel.stop();
    QCoreApplication::processEvents();
}

void tst_QueuedWire::connectionsOutsideOfTheCycleAreDirect()
{
    DeviceManager manager;
    manager.registerDeviceType<RelayDevice>("relay");
    manager.registerDeviceType<RecorderDevice>("recorder");
    TestPanel panel(
        manager,
        describe::panel({describe::device("a", "relay"), describe::device("b", "relay"),
                         describe::device("r", "recorder")},
                        {"a.output -> b.input", "b.output -> a.input", "b.output -> r.input"}));
    QWidget page;
    panel.start(&page);
    static_cast<RelayDevice*>(panel.device("a"))->input(7);
    QCOMPARE(panel.device("r")->property("lines").toStringList(), QStringList("input(double) 7"));
    QCOMPARE(static_cast<RelayDevice*>(panel.device("a"))->passes(), 1);
    QCoreApplication::processEvents();
    QVERIFY(static_cast<RelayDevice*>(panel.device("a"))->passes() > 1);
}

NORVO_TEST(tst_QueuedWire)
#include "tst_QueuedWire.moc"
