#include "host/panel/run/QueuedWire.h"

#include "host/panel/Descriptions.h"

#include "devices/ButtonDevice.h"
#include "fixtures/relays/RecorderDevice.h"
#include "fixtures/relays/RelayDevice.h"
#include "host/panel/run/Panel.h"
#include "norvo/BaseWidget.h"
#include "norvo/DeviceManager.h"
#include "TestMain.h"

#include <QPushButton>
#include <QtTest>

using norvo::Panel;
using norvo::QueuedWire;
using norvo::Wire;

class tst_QueuedWire : public QObject
{
    Q_OBJECT

private slots:
    void valuesArriveLaterAndInOrder();
    void cutWireCarriesNothing();
    void onlySoManyAreUnderWay();
    void panelWithACircleStaysResponsive_data();
    void panelWithACircleStaysResponsive();
    void arrowsOutsideOfTheCircleAreDirect();
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
    send(QueuedWire::kLimit);
    QCOMPARE(to.passes(), QueuedWire::kLimit);
    // Told once, however many are lost.
    QTest::ignoreMessage(QtWarningMsg, "from.output(double) -> to.input(double) goes round a circle"
                                       " that multiplies its values; some are lost");
    send(3 * QueuedWire::kLimit);
    QCOMPARE(to.passes(), 2 * QueuedWire::kLimit);
    send(QueuedWire::kLimit);
    QCOMPARE(to.passes(), 3 * QueuedWire::kLimit);
    send(QueuedWire::kLimit + 1);
    QCOMPARE(to.passes(), 4 * QueuedWire::kLimit);
}

void tst_QueuedWire::panelWithACircleStaysResponsive_data()
{
    QTest::addColumn<QStringList>("arrows");
    QTest::newRow("toItself") << QStringList{"a.output -> a.input"};
    QTest::newRow("threeRelays") << QStringList{"a.output -> b.input", "b.output -> c.input",
                                                "c.output -> a.input"};
    QTest::newRow("twoCirclesThroughOneRelayMultiplyTheirValues") << QStringList{
        "a.output -> b.input", "b.output -> a.input", "a.output -> c.input", "c.output -> a.input"};
}

void tst_QueuedWire::panelWithACircleStaysResponsive()
{
    QFETCH(QStringList, arrows);
    DeviceManager manager;
    manager.registerDeviceType<RelayDevice>("relay");
    manager.registerDeviceType<RecorderDevice>("recorder");
    manager.registerDeviceType<ButtonDevice>("button");
    Panel panel(manager,
                describe::panel({describe::device("a", "relay"), describe::device("b", "relay"),
                                 describe::device("c", "relay"), describe::device("r", "recorder"),
                                 describe::device("button", "button")},
                                arrows + QStringList{"button.toggled -> r.input"}));
    if (QTest::currentDataTag() == QString("twoCirclesThroughOneRelayMultiplyTheirValues")) {
        const QRegularExpression told("goes round a circle that multiplies its values; some are");
        QTest::ignoreMessage(QtWarningMsg, told);
        QTest::ignoreMessage(QtWarningMsg, told);
    }
    QWidget page;
    panel.start(&page);
    QCOMPARE(describe::lines(panel.diagnostics()), QStringList());
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
    QElapsedTimer time;
    time.start();
    loop.exec();

    QVERIFY2(time.elapsed() < 2000, qPrintable(QString::number(time.elapsed())));
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

void tst_QueuedWire::arrowsOutsideOfTheCircleAreDirect()
{
    DeviceManager manager;
    manager.registerDeviceType<RelayDevice>("relay");
    manager.registerDeviceType<RecorderDevice>("recorder");
    Panel panel(
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
