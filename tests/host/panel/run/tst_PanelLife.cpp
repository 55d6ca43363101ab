// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/run/Panel.h"

#include "host/panel/Descriptions.h"
#include "host/panel/TestPanel.h"

#include "fixtures/relays/RecorderDevice.h"
#include "fixtures/relays/StepsDevice.h"
#include "norvo/DeviceManager.h"
#include "Effort.h"
#include "TestMain.h"

#include <QtTest>

/// Notes how many of its kind are running at each step of its life.
class FlagDevice : public BaseDevice
{
    Q_OBJECT

public:
    FlagDevice() { all.append(this); }
    ~FlagDevice() override { all.removeOne(this); }

    static DeviceTypeInfo typeInfo() { return {}; }

    bool initialise() override { return note("initialise"); }
    void postInitialisation() override { note("postInitialisation"); }
    void preShutdown() override { note("preShutdown"); }
    void deinitialise() override { note("deinitialise"); }

    static QStringList log;

private:
    bool note(const QString& step)
    {
        const auto running =
            std::count_if(all.cbegin(), all.cend(), [](auto* one) { return one->isRunning(); });
        log.append(QString("%1 %2: %3").arg(objectName(), step).arg(running));
        return true;
    }

    static QVector<FlagDevice*> all;
};

QVector<FlagDevice*> FlagDevice::all;
QStringList FlagDevice::log;

/// As light as a device with a widget can be.
class PlainDevice : public BaseGuiDevice
{
    Q_OBJECT

public:
    BaseWidget* createWidget() override { return new BaseWidget(this, nullptr); }

signals:
    void output(double value);

public slots:
    void input(double) {}
};

class tst_PanelLife : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void allTakeEachStepBeforeAnyTakesTheNext();
    void stopIsTheWayBack();
    void devicesAreDeletedFromTheLastToTheFirst();
    void runningFlagStandsFromBeforeTheFirstPostInitialisationToTheStop();
    void startAndStopTwiceAreOne();
    void startsAgainAfterAStop();
    void destructorStops();
    void pageMayDieFirst();
    void thousandsOfDevicesStartAndStopQuickly();

private:
    static QStringList takeSteps();
    norvo::PanelDescription chain() const;

    DeviceManager m_manager;
    QWidget m_page;
};

void tst_PanelLife::initTestCase()
{
    m_manager.registerDeviceType<StepsDevice>("steps");
    m_manager.registerDeviceType<RecorderDevice>("recorder");
    m_manager.registerDeviceType<FlagDevice>("flag");
}

void tst_PanelLife::init()
{
    takeSteps();
    FlagDevice::log.clear();
}

QStringList tst_PanelLife::takeSteps()
{
    const QStringList steps = qApp->property("lifecycle").toStringList();
    qApp->setProperty("lifecycle", QStringList());
    return steps;
}

norvo::PanelDescription tst_PanelLife::chain() const
{
    return describe::panel({describe::device("a", "steps"), describe::device("b", "Steps"),
                            describe::device("r", "recorder")},
                           {"b.output -> r.input(double)", "a.output -> b.input"});
}

void tst_PanelLife::allTakeEachStepBeforeAnyTakesTheNext()
{
    TestPanel panel(m_manager, chain());
    QCOMPARE(takeSteps(), QStringList());
    panel.start(&m_page);
    QCOMPARE(takeSteps(),
             QStringList({"a initialise", "b initialise", "r initialise", //
                          "b wired", "a wired",                           //
                          "a createWidget", "a widget initialise",        //
                          "b createWidget", "b widget initialise",        //
                          "a postInitialisation", "b postInitialisation", "r postInitialisation"}));
    QCOMPARE(describe::lines(panel.diagnostics()), QStringList());
}

void tst_PanelLife::stopIsTheWayBack()
{
    TestPanel panel(m_manager, chain());
    panel.start(&m_page);
    takeSteps();
    panel.stop();
    QCOMPARE(takeSteps(), QStringList({"r preShutdown", "b preShutdown", "a preShutdown", //
                                       "a unwired", "b unwired",                          //
                                       "b widget deinitialise", "a widget deinitialise",  //
                                       "r deinitialise", "b deinitialise", "a deinitialise",
                                       "b widget destructor", "a widget destructor", //
                                       "r destructor", "b destructor", "a destructor"}));
    QVERIFY(m_page.findChildren<QWidget*>().isEmpty());
}

void tst_PanelLife::devicesAreDeletedFromTheLastToTheFirst()
{
    QVector<norvo::DeviceSetting> devices;
    QStringList expected;
    for (char id = 'a'; id <= 'p'; ++id) {
        devices.append(describe::device(QChar(id), "steps"));
        expected.prepend(QChar(id) + QString(" destructor"));
    }
    TestPanel panel(m_manager, describe::panel(devices));
    panel.start(&m_page);
    takeSteps();
    panel.stop();
    const QStringList steps = takeSteps();
    QCOMPARE(steps.mid(steps.size() - expected.size()), expected);
}

void tst_PanelLife::runningFlagStandsFromBeforeTheFirstPostInitialisationToTheStop()
{
    TestPanel panel(
        m_manager, describe::panel({describe::device("a", "flag"), describe::device("b", "flag")}));
    panel.start(&m_page);
    panel.stop();
    QCOMPARE(FlagDevice::log,
             QStringList({"a initialise: 0", "b initialise: 1", "a postInitialisation: 2",
                          "b postInitialisation: 2", "b preShutdown: 0", "a preShutdown: 0",
                          "b deinitialise: 0", "a deinitialise: 0"}));
}

void tst_PanelLife::startAndStopTwiceAreOne()
{
    TestPanel panel(m_manager, chain());
    panel.stop();
    QVERIFY(!panel.isStarted());
    panel.start(&m_page);
    panel.start(&m_page);
    QVERIFY(panel.isStarted());
    QCOMPARE(takeSteps().filter("createWidget").size(), 2);
    panel.stop();
    panel.stop();
    QVERIFY(!panel.isStarted());
    QCOMPARE(takeSteps().filter("a destructor").size(), 1);
}

void tst_PanelLife::startsAgainAfterAStop()
{
    TestPanel panel(m_manager, chain());
    panel.start(&m_page);
    panel.stop();
    QVERIFY(!panel.device("a"));
    panel.start(&m_page);
    QVERIFY(panel.device("a"));
    QCOMPARE(m_page.findChildren<BaseWidget*>().size(), 2);
}

void tst_PanelLife::destructorStops()
{
    {
        TestPanel panel(m_manager, chain());
        panel.start(&m_page);
        takeSteps();
    }
    QCOMPARE(takeSteps().size(), 15);
    QVERIFY(m_page.findChildren<QWidget*>().isEmpty());
}

void tst_PanelLife::pageMayDieFirst()
{
    auto* page = new QWidget;
    TestPanel panel(m_manager, chain());
    panel.start(page);
    takeSteps();
    delete page;
    QVERIFY(!panel.widget("a"));
    panel.stop();
    QCOMPARE(takeSteps().filter("deinitialise"),
             QStringList({"r deinitialise", "b deinitialise", "a deinitialise"}));
}

void tst_PanelLife::thousandsOfDevicesStartAndStopQuickly()
{
    DeviceManager manager;
    manager.registerDeviceType<PlainDevice>("plain");
    const int count = 5000;
    QVector<norvo::DeviceSetting> devices;
    QStringList arrows;
    for (int i = 0; i < count; ++i) {
        devices.append(describe::device(QString::number(i), "plain"));
        arrows.append(QString("%1.output -> %2.input").arg(i).arg((i + 1) % count));
    }
    TestPanel panel(manager, describe::panel(devices, arrows));
    const norvo::ProcessorTimer time;
    panel.start(&m_page);
    const auto started = time.elapsedMs();
    panel.stop();
    const auto stopped = time.elapsedMs() - started;
    qInfo("%d devices: start %lld ms, stop %lld ms", count, started, stopped);
    QVERIFY(started < 3000);
    QVERIFY(stopped < 3000);
}

NORVO_TEST(tst_PanelLife)
#include "tst_PanelLife.moc"
