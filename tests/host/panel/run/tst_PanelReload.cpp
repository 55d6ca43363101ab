// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/Descriptions.h"
#include "host/panel/TestPanel.h"

#include "CountedDevice.h"
#include "GridPlace.h"
#include "MessageLog.h"
#include "devices/QmlGuiDevice.h"
#include "fixtures/relays/RecorderDevice.h"
#include "norvo/BaseWidget.h"
#include "norvo/DeviceManager.h"
#include "TestMain.h"

#include <QTabWidget>
#include <QtTest>

/// Of which a plan, too, wants to know what it can send.
class LateCountedDevice : public CountedDevice
{
    Q_OBJECT

public:
    static DeviceTypeInfo typeInfo() { return {"", "", {"General"}, 2, 1, ""}; }
};

/// One plan after the other applied to one panel.
class tst_PanelReload : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { takeSteps(); }
    void startMakesAndInitialisesEachDeviceOnce();
    void startRunsADocumentOnce();
    void equalDevicesStay();
    void otherPlacesInTheFileMakeNoDifference();
    void changedDevicesAreReplaced();
    void planThatIsNotAppliedChangesNothing();
    void savedValuesAreForNewDevicesOnly();
    void wiresOfDevicesThatStayGoOnInTheirOrder();
    void newConnectionsAreHeardBeforeTheOwnWidget();
    void cutConnectionsCarryNothing();
    void wiresToAReplacedDeviceLeadToTheNewOne();
    void widgetsGoToTheirNewCells();
    void tilesGoWithTheirDevices();

private:
    static QStringList takeSteps();
    static QStringList heard(TestPanel& panel, const QString& from);

    DeviceManager m_manager;
    QWidget m_page;
};

void tst_PanelReload::initTestCase()
{
    m_manager.registerDeviceType<CountedDevice>("counted");
    m_manager.registerDeviceType<LateCountedDevice>("late");
    m_manager.registerDeviceType<RecorderDevice>("recorder");
    m_manager.registerDeviceType<QmlGuiDevice>("qml_widget");
}

QStringList tst_PanelReload::takeSteps()
{
    const QStringList steps = qApp->property("lifecycle").toStringList();
    qApp->setProperty("lifecycle", QStringList());
    return steps;
}

QStringList tst_PanelReload::heard(TestPanel& panel, const QString& from)
{
    takeSteps();
    emit static_cast<CountedDevice*>(panel.device(from))->output(1);
    return takeSteps();
}

void tst_PanelReload::startMakesAndInitialisesEachDeviceOnce()
{
    TestPanel panel(
        m_manager, describe::panel({describe::device("a", "counted"), describe::device("b", "late"),
                                    describe::device("c", "counted")},
                                   {"a.output -> b.input", "b.output -> c.input"}));
    panel.start(&m_page);
    QCOMPARE(describe::lines(panel.diagnostics()), QStringList());
    const QStringList steps = takeSteps();
    QCOMPARE(steps.filter("made").size(), 3);
    // What is needed to resolve the connections comes first.
    QCOMPARE(steps.filter("initialise"),
             QStringList({"b initialise", "a initialise", "c initialise"}));
    for (const char* id : {"a", "b", "c"}) {
        QVERIFY(panel.device(id)->isRunning());
        QVERIFY(panel.widget(id));
    }
}

void tst_PanelReload::startRunsADocumentOnce()
{
    const QString code = "import QtQuick 2.0\nItem { signal output(real v)\n"
                         "Component.onCompleted: console.warn('loaded once more') }";
    TestPanel panel(
        m_manager,
        describe::panel({describe::device("face", "qml_widget",
                                          {{"sourceType", "parameter"}, {"sourceCode", code}}),
                         describe::device("r", "recorder")},
                        {"face.output -> r.input"}));
    MessageLog log;
    panel.start(&m_page);
    QCOMPARE(log.take().filter("loaded once more").size(), 1);
    QCOMPARE(describe::lines(panel.diagnostics()), QStringList());
    panel.change(describe::panel({describe::device(
        "face", "qml_widget", {{"sourceType", "parameter"}, {"sourceCode", code}})}));
    QCOMPARE(log.take().filter("loaded once more").size(), 0);
}

void tst_PanelReload::equalDevicesStay()
{
    const auto both = describe::panel(
        {describe::device("a", "counted", {{"text", "x"}}), describe::device("b", "late")});
    TestPanel panel(m_manager, both);
    panel.start(&m_page);
    const auto* const a = panel.device("a");
    const auto* const widget = panel.widget("a");
    const auto* const b = panel.device("b");
    takeSteps();
    panel.change(both);
    QCOMPARE(takeSteps(), QStringList());
    panel.change(describe::panel({both.devices[1], both.devices[0]}));
    QCOMPARE(takeSteps(), QStringList());
    QCOMPARE(panel.device("a"), a);
    QCOMPARE(panel.widget("a"), widget);
    QCOMPARE(panel.device("b"), b);
    QVERIFY(a->isRunning());
    panel.change(describe::panel({both.devices[1]}));
    QCOMPARE(takeSteps(), QStringList("a deleted"));
    QVERIFY(!panel.device("a"));
    QVERIFY(b->isRunning());
}

void tst_PanelReload::otherPlacesInTheFileMakeNoDifference()
{
    TestPanel panel(m_manager,
                    describe::panel({describe::device("a", "counted", {{"text", "x"}}, 3)}));
    panel.start(&m_page);
    const auto* const a = panel.device("a");
    panel.change(describe::panel({describe::device("a", "counted", {{"text", "x"}}, 7)}));
    QCOMPARE(panel.device("a"), a);
}

void tst_PanelReload::changedDevicesAreReplaced()
{
    const auto before = describe::device("a", "counted", {{"text", "x"}});
    auto open = before;
    open.network = true;
    auto renamed = before;
    renamed.id.text = "b";
    for (const auto& after :
         {describe::device("a", "counted", {{"TEXT", "x"}}),
          describe::device("a", "counted", {{"text", "y"}}), describe::device("a", "counted"),
          describe::device("a", "late", {{"text", "x"}}), open, renamed}) {
        TestPanel panel(m_manager, describe::panel({before}));
        panel.start(&m_page);
        takeSteps();
        panel.change(describe::panel({after}));
        const QStringList steps = takeSteps();
        QCOMPARE(steps.filter("made").size(), 1);
        QCOMPARE(steps.filter("deleted"), QStringList("a deleted"));
        QVERIFY(panel.device(after.id.text)->isRunning());
        QVERIFY(panel.widget(after.id.text)->isInitialised());
    }
}

void tst_PanelReload::planThatIsNotAppliedChangesNothing()
{
    TestPanel panel(m_manager, describe::panel({describe::device("a", "counted")}));
    panel.start(&m_page);
    takeSteps();
    norvo::Diagnostics diagnostics("panel.yaml");
    norvo::PanelPlan::make(
        describe::panel({describe::device("a", "counted"), describe::device("b", "no such")}),
        m_manager, {}, diagnostics, panel.nodes());
    QVERIFY(diagnostics.hasErrors());
    QCOMPARE(takeSteps(), QStringList());
    QVERIFY(panel.device("a")->isRunning());
}

void tst_PanelReload::savedValuesAreForNewDevicesOnly()
{
    const auto a = describe::device("a", "counted", {{"text", "newer"}});
    TestPanel panel(m_manager, describe::panel({a}));
    panel.start(&m_page);
    norvo::Diagnostics diagnostics("panel.yaml");
    const norvo::SavedState saved{"state.yaml", {{"a", {{"text", "a"}}}, {"b", {{"text", "b"}}}}};
    const auto plan = norvo::PanelPlan::make(describe::panel({a, describe::device("b", "counted")}),
                                             m_manager, saved, diagnostics, panel.nodes());
    QCOMPARE(panel.device("a")->getParam("text").value(), QString("newer"));
    QCOMPARE(plan.nodes.at(1)->device()->getParam("text").value(), QString("b"));
}

void tst_PanelReload::wiresOfDevicesThatStayGoOnInTheirOrder()
{
    const QVector<norvo::DeviceSetting> devices{
        describe::device("a", "counted"), describe::device("x", "counted"),
        describe::device("y", "counted"), describe::device("z", "counted")};
    TestPanel panel(m_manager,
                    describe::panel(devices, {"a.output -> x.input", "a.output -> y.input"}));
    panel.start(&m_page);
    const QStringList order{"x hears", "x widget hears", "y hears", "y widget hears",
                            "a widget hears"};
    QCOMPARE(heard(panel, "a"), order);
    panel.change(describe::panel(
        devices, {"a.output -> x.input", "a.output -> y.input", "y.output -> z.input"}));
    QCOMPARE(heard(panel, "a"),
             QStringList({"x hears", "x widget hears", "y hears", "z hears", "z widget hears",
                          "y widget hears", "a widget hears"}));
    // Another order in the file is another order of arrival.
    panel.change(describe::panel(devices, {"a.output -> y.input", "a.output -> x.input"}));
    QCOMPARE(heard(panel, "a"), QStringList({"y hears", "y widget hears", "x hears",
                                             "x widget hears", "a widget hears"}));
}

void tst_PanelReload::newConnectionsAreHeardBeforeTheOwnWidget()
{
    const auto a = describe::device("a", "counted");
    const auto x = describe::device("x", "counted");
    const auto y = describe::device("y", "counted");
    TestPanel panel(m_manager, describe::panel({a, x}, {"a.output -> x.input"}));
    panel.start(&m_page);
    const auto* const kept = panel.device("a");
    panel.change(describe::panel({a, x, y}, {"a.output -> x.input", "a.output -> y.input"}));
    QCOMPARE(panel.device("a"), kept);
    QCOMPARE(heard(panel, "a"), QStringList({"x hears", "x widget hears", "y hears",
                                             "y widget hears", "a widget hears"}));
    QCOMPARE(panel.device("y")->getIncomingConnections(), QStringList("a.output(double)"));
}

void tst_PanelReload::cutConnectionsCarryNothing()
{
    const QVector<norvo::DeviceSetting> devices{describe::device("a", "counted"),
                                                describe::device("x", "counted")};
    TestPanel panel(m_manager, describe::panel(devices, {"a.output -> x.input"}));
    panel.start(&m_page);
    panel.change(describe::panel(devices));
    QCOMPARE(heard(panel, "a"), QStringList("a widget hears"));
}

void tst_PanelReload::wiresToAReplacedDeviceLeadToTheNewOne()
{
    const auto a = describe::device("a", "counted");
    TestPanel panel(
        m_manager, describe::panel({a, describe::device("x", "counted")}, {"a.output -> x.input"}));
    panel.start(&m_page);
    panel.change(describe::panel({a, describe::device("x", "counted", {{"text", "new"}})},
                                 {"a.output -> x.input"}));
    QCOMPARE(heard(panel, "a"), QStringList({"x hears", "x widget hears", "a widget hears"}));
}

void tst_PanelReload::widgetsGoToTheirNewCells()
{
    const auto a = describe::device("a", "counted");
    const auto b = describe::device("b", "counted");
    const auto onTab = describe::device("c", "counted", {{"widget/area", "Tab"}});
    TestPanel panel(m_manager, describe::panel({a, b}));
    panel.start(&m_page);
    const auto* const widget = panel.widget("b");
    QCOMPARE(placeOf(m_page, "b"), "1,0,1,1");
    panel.change(describe::panel({b, a}));
    QCOMPARE(placeOf(m_page, "b"), "0,0,1,1");
    QCOMPARE(placeOf(m_page, "a"), "1,0,1,1");
    panel.change(describe::panel({b, onTab}));
    QCOMPARE(panel.widget("b"), widget);
    QCOMPARE(m_page.findChildren<QTabWidget*>().size(), 1);
    QCOMPARE(panel.widget("b")->parentWidget(), panel.widget("c")->parentWidget());
    m_page.show();
    QTRY_VERIFY(panel.widget("b")->isVisible());
    panel.change(describe::panel({b}));
    QVERIFY(m_page.findChildren<QTabWidget*>().isEmpty());
    QTRY_VERIFY(panel.widget("b")->isVisible());
    m_page.hide();
}

void tst_PanelReload::tilesGoWithTheirDevices()
{
    const auto a = describe::device("a", "counted");
    TestPanel panel(m_manager, describe::panel({a, describe::device("b", "no such")}));
    panel.start(&m_page);
    QVERIFY(m_page.findChild<QWidget*>("b"));
    panel.change(describe::panel({a}));
    QVERIFY(!m_page.findChild<QWidget*>("b"));
    QVERIFY(panel.widget("a"));
}

NORVO_TEST(tst_PanelReload)
#include "tst_PanelReload.moc"
