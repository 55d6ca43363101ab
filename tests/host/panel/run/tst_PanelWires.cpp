// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/run/Panel.h"

#include "host/panel/Descriptions.h"
#include "host/panel/TestPanel.h"

#include "fixtures/relays/RecorderDevice.h"
#include "fixtures/relays/StepsDevice.h"
#include "norvo/DeviceManager.h"
#include "TestMain.h"

#include <QtTest>

class tst_PanelWires : public QObject
{
    Q_OBJECT

private slots:
    void otherDevicesHearAValueInTheOrderOfTheWiringAndBeforeTheOwnWidget();
    void firstOutputsReachOtherDevices();
    void cutWiresCarryNothing();
    void repeatedConnectionIsNotedOnce();

private:
    QWidget m_page;
};

void tst_PanelWires::otherDevicesHearAValueInTheOrderOfTheWiringAndBeforeTheOwnWidget()
{
    class EchoDevice : public StepsDevice
    {
    public:
        BaseWidget* createWidget() override
        {
            class EchoWidget : public BaseWidget
            {
            public:
                using BaseWidget::BaseWidget;
                void initialise() override
                {
                    connect(static_cast<StepsDevice*>(device()), &StepsDevice::output, this,
                            [] { recordStep("widget", "hears"); });
                }
            };
            return new EchoWidget(this, nullptr);
        }
    };
    class HearingDevice : public StepsDevice
    {
    public:
        HearingDevice()
        {
            connect(this, &StepsDevice::output, [this] { recordStep(objectName(), "hears"); });
        }
        void postInitialisation() override {}
    };
    DeviceManager manager;
    manager.registerDeviceType<EchoDevice>("echo");
    manager.registerDeviceType<HearingDevice>("hearing");
    TestPanel panel(
        manager, describe::panel({describe::device("x", "hearing"), describe::device("e", "echo"),
                                  describe::device("y", "hearing")},
                                 {"e.output -> y.input", "e.output -> x.input"}));
    panel.start(&m_page);
    QCOMPARE(qApp->property("lifecycle").toStringList().filter("hears"),
             QStringList({"y hears", "x hears", "widget hears"}));
}

void tst_PanelWires::firstOutputsReachOtherDevices()
{
    DeviceManager manager;
    manager.registerDeviceType<StepsDevice>("steps");
    manager.registerDeviceType<RecorderDevice>("recorder");
    TestPanel panel(manager,
                    describe::panel({describe::device("a", "steps"), describe::device("b", "steps"),
                                     describe::device("r", "recorder")},
                                    {"b.output -> r.input(double)", "a.output -> b.input"}));
    panel.start(&m_page);
    // b passes on what a emits first, then emits its own first output.
    QCOMPARE(panel.device("r")->property("lines").toStringList(),
             QStringList({"input(double) 1", "input(double) 1"}));
    QCOMPARE(panel.device("r")->getIncomingConnections(), QStringList("b.output(double)"));
    QCOMPARE(panel.device("b")->getIncomingConnections(), QStringList("a.output(double)"));
}

void tst_PanelWires::cutWiresCarryNothing()
{
    class LateDevice : public StepsDevice
    {
    public:
        void preShutdown() override { emit output(2); }
        void deinitialise() override { emit output(3); }
    };
    class HeardDevice : public RecorderDevice
    {
    public:
        ~HeardDevice() override { qApp->setProperty("heard", lines()); }
    };
    DeviceManager manager;
    manager.registerDeviceType<LateDevice>("late");
    manager.registerDeviceType<HeardDevice>("heard");
    TestPanel panel(manager,
                    describe::panel({describe::device("l", "late"), describe::device("h", "heard")},
                                    {"l.output -> h.input(double)"}));
    panel.start(&m_page);
    panel.stop();
    QCOMPARE(qApp->property("heard").toStringList(),
             QStringList({"input(double) 1", "input(double) 2"}));
}

void tst_PanelWires::repeatedConnectionIsNotedOnce()
{
    DeviceManager manager;
    manager.registerDeviceType<StepsDevice>("steps");
    TestPanel panel(
        manager, describe::panel({describe::device("a", "steps"), describe::device("b", "steps")},
                                 {"a.output -> b.input", "a.output(double) -> b.input"}));
    panel.start(&m_page);
    QCOMPARE(panel.device("b")->getIncomingConnections(), QStringList("a.output(double)"));
}

NORVO_TEST(tst_PanelWires)
#include "tst_PanelWires.moc"
