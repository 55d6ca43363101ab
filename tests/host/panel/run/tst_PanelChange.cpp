// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/run/Panel.h"

#include "host/panel/Descriptions.h"
#include "host/panel/plan/PanelPlan.h"
#include "host/panel/plan/Placement.h"
#include "host/panel/plan/TalkerDevice.h"
#include "host/panel/run/PanelSurface.h"

#include "fixtures/relays/Lifecycle.h"
#include "norvo/BaseGuiDevice.h"
#include "norvo/BaseWidget.h"
#include "norvo/DeviceManager.h"
#include "TestMain.h"

#include <QtTest>

namespace {

class NotedWidget : public BaseWidget
{
public:
    using BaseWidget::BaseWidget;

    ~NotedWidget() override { recordStep(objectName(), "widget deleted"); }
    void initialise() override { recordStep(objectName(), "widget initialise"); }
    void deinitialise() override { recordStep(objectName(), "widget deinitialise"); }
};

} // namespace

/// Notes the steps of its life that a change of the panel may touch, and the values that it hears.
class NotedDevice : public BaseGuiDevice
{
    Q_OBJECT

public:
    static DeviceTypeInfo typeInfo() { return {"", "", {"General"}, 1, 0, ""}; }

    void postInitialisation() override { recordStep(objectName(), "begins"); }
    void preShutdown() override { recordStep(objectName(), "ends"); }
    BaseWidget* createWidget() override { return new NotedWidget(this, nullptr); }

signals:
    void output(double value);

public slots:
    void input(double value) { recordStep(objectName(), QString("hears %1").arg(value)); }
};

class KnownTalkerDevice : public TalkerDevice
{
    Q_OBJECT

public:
    static DeviceTypeInfo typeInfo() { return {}; }
};

/// Starts at the second attempt.
class LateComerDevice : public NotedDevice
{
    Q_OBJECT

public:
    static int attempts;

    bool initialise() override { return ++attempts > 1; }
};

int LateComerDevice::attempts = 0;

/// Notes what it is told to show, and where.
class NotedSurface : public norvo::PanelSurface
{
    Q_OBJECT

public:
    void setAreas(const QStringList& areas) override
    {
        recordStep("surface", "areas " + areas.join(','));
    }
    void place(QWidget* widget, const norvo::Cells& cells) override
    {
        recordStep("surface", QString("places %1 at %2,%3")
                                  .arg(widget->objectName())
                                  .arg(cells.row)
                                  .arg(cells.column));
    }
    void placeError(const QString& id, const QString& text, const norvo::Cells& cells) override
    {
        recordStep("surface", QString("says of %1 at %2: %3").arg(id).arg(cells.row).arg(text));
    }
    void endPlacing() override {}
    void release() override { recordStep("surface", "release"); }
    void clear() override { recordStep("surface", "clear"); }
};

/// What a second plan does to a panel that runs, and to what it is shown on.
class tst_PanelChange : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_manager.registerDeviceType<NotedDevice>("noted");
        m_manager.registerDeviceType<KnownTalkerDevice>("talker");
        m_manager.registerDeviceType<LateComerDevice>("late comer");
    }
    void init() { takeSteps(); }
    void surfaceIsGivenUpBeforeWidgetsAreDeletedAndClearedThen();
    void surfaceIsNotGivenUpWhileADeviceStays();
    void runningDeviceWithANewConnectionDoesNotBeginAgain();
    void eachConnectionIsMadeOnceWhateverTheNewOrder_data();
    void eachConnectionIsMadeOnceWhateverTheNewOrder();
    void panelRunsOnWithoutItsSurface();
    void failedDeviceGetsATileInItsCells();
    void failedDeviceIsTriedAgainWithTheNextPlan();
    void cycleOfValuesThatCannotBeStoredIsRefused();
    void valuesThatCannotBeStoredPassOutsideOfACycle();

private:
    static QStringList takeSteps()
    {
        const QStringList steps = qApp->property("lifecycle").toStringList();
        qApp->setProperty("lifecycle", QStringList());
        return steps;
    }
    QStringList apply(norvo::Panel& panel, const norvo::PanelDescription& description)
    {
        norvo::Diagnostics diagnostics("p");
        panel.apply(norvo::PanelPlan::make(description, m_manager, {}, diagnostics, panel.nodes()),
                    diagnostics);
        return describe::lines(diagnostics);
    }
    static norvo::DeviceSetting noted(const QString& id) { return describe::device(id, "noted"); }

    DeviceManager m_manager;
};

void tst_PanelChange::surfaceIsGivenUpBeforeWidgetsAreDeletedAndClearedThen()
{
    NotedSurface surface;
    norvo::Panel panel(surface);
    apply(panel, describe::panel({noted("a"), noted("b")}));
    QCOMPARE(takeSteps(), (QStringList{"surface areas ", "surface places a at 0,0",
                                       "a widget initialise", "surface places b at 1,0",
                                       "b widget initialise", "a begins", "b begins"}));
    panel.stop();
    QCOMPARE(takeSteps(), (QStringList{"b ends", "a ends", "b widget deinitialise",
                                       "a widget deinitialise", "surface release",
                                       "b widget deleted", "a widget deleted", "surface clear"}));
}

void tst_PanelChange::surfaceIsNotGivenUpWhileADeviceStays()
{
    NotedSurface surface;
    norvo::Panel panel(surface);
    apply(panel, describe::panel({noted("a"), noted("b")}));
    takeSteps();
    apply(panel, describe::panel({noted("b")}));
    QCOMPARE(takeSteps(), (QStringList{"a ends", "a widget deinitialise", "a widget deleted",
                                       "surface areas ", "surface places b at 0,0"}));
}

void tst_PanelChange::runningDeviceWithANewConnectionDoesNotBeginAgain()
{
    NotedSurface surface;
    norvo::Panel panel(surface);
    apply(panel, describe::panel({noted("a"), noted("b")}));
    takeSteps();
    apply(panel, describe::panel({noted("a"), noted("b")}, {"a.output -> b.input"}));
    const QStringList steps = takeSteps();
    QCOMPARE(steps.filter("begins"), QStringList());
    QCOMPARE(steps.filter("widget"),
             (QStringList{"a widget deinitialise", "a widget deleted", "a widget initialise"}));
    apply(panel, describe::panel({noted("a"), noted("b"), noted("c")}, {"a.output -> b.input"}));
    QCOMPARE(takeSteps().filter("begins"), QStringList("c begins"));
}

void tst_PanelChange::eachConnectionIsMadeOnceWhateverTheNewOrder_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    for (const char* order : {"bac", "acb", "cba", "ab", "bc", "c", "aabc", ""}) {
        QTest::addRow("abc to %s", order) << "abc" << order;
        QTest::addRow("%s to abc", order) << order << "abc";
    }
    QTest::newRow("one of two alike") << "aba"
                                      << "ab";
}

void tst_PanelChange::eachConnectionIsMadeOnceWhateverTheNewOrder()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    const QVector<norvo::DeviceSetting> devices{noted("s"), noted("a"), noted("b"), noted("c")};
    const auto panelTo = [&devices](const QString& receivers) {
        QStringList arrows;
        for (const QChar receiver : receivers) {
            arrows += QString("s.output -> %1.input").arg(receiver);
        }
        return describe::panel(devices, arrows);
    };
    NotedSurface surface;
    norvo::Panel panel(surface);
    apply(panel, panelTo(before));
    apply(panel, panelTo(after));
    takeSteps();
    emit static_cast<NotedDevice*>(panel.device("s"))->output(1);
    QStringList expected;
    for (const QChar receiver : after) {
        expected += QString("%1 hears 1").arg(receiver);
    }
    QCOMPARE(takeSteps(), expected);
}

void tst_PanelChange::panelRunsOnWithoutItsSurface()
{
    auto surface = std::make_unique<NotedSurface>();
    norvo::Panel panel(*surface);
    apply(panel, describe::panel({noted("a")}));
    surface.reset();
    takeSteps();
    QCOMPARE(apply(panel, describe::panel({noted("a"), noted("b")}, {"a.output -> b.input"})),
             QStringList());
    emit static_cast<NotedDevice*>(panel.device("a"))->output(1);
    QCOMPARE(takeSteps(), QStringList("b hears 1"));
    panel.stop();
    QVERIFY(!panel.isStarted());
}

void tst_PanelChange::failedDeviceGetsATileInItsCells()
{
    NotedSurface surface;
    norvo::Panel panel(surface);
    apply(panel, describe::panel({noted("a"), describe::device("b", "no such")}));
    QCOMPARE(takeSteps().filter("surface says"),
             QStringList("surface says of b at 1: unknown device type \"no such\""));
}

void tst_PanelChange::failedDeviceIsTriedAgainWithTheNextPlan()
{
    NotedSurface surface;
    norvo::Panel panel(surface);
    const auto description = describe::panel({describe::device("a", "late comer")});
    QCOMPARE(apply(panel, description).size(), 1);
    QCOMPARE(takeSteps().filter("surface says").size(), 1);
    QCOMPARE(apply(panel, description), QStringList());
    QCOMPARE(takeSteps(), (QStringList{"surface areas ", "surface places a at 0,0",
                                       "a widget initialise", "a begins"}));
}

void tst_PanelChange::cycleOfValuesThatCannotBeStoredIsRefused()
{
    NotedSurface surface;
    norvo::Panel panel(surface);
    const QVector<norvo::DeviceSetting> devices{describe::device("a", "talker"),
                                                describe::device("b", "talker")};
    const QStringList lines =
        apply(panel, describe::panel(devices, {"a.raw -> b.takeRaw", "b.raw -> a.takeRaw"}));
    QCOMPARE(lines.filter("error"),
             QStringList("p:2:1: error: \"b.raw -> a.takeRaw\" closes a cycle, and its values are "
                         "of a type that cannot go round one"));
    QCOMPARE(panel.device("b")->getIncomingConnections(), QStringList("a.raw(Unheard)"));
    QCOMPARE(panel.device("a")->getIncomingConnections(), QStringList());
}

void tst_PanelChange::valuesThatCannotBeStoredPassOutsideOfACycle()
{
    NotedSurface surface;
    norvo::Panel panel(surface);
    const QVector<norvo::DeviceSetting> devices{describe::device("a", "talker"),
                                                describe::device("b", "talker")};
    QCOMPARE(apply(panel, describe::panel(devices, {"a.raw -> b.takeRaw"})), QStringList());
}

NORVO_TEST(tst_PanelChange)
#include "tst_PanelChange.moc"
