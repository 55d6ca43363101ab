// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/run/Panel.h"

#include "host/panel/Descriptions.h"
#include "host/panel/TestPanel.h"
#include "GridPlace.h"

#include "fixtures/relays/RecorderDevice.h"
#include "fixtures/relays/TickerDevice.h"
#include "norvo/BaseGuiDevice.h"
#include "norvo/BaseWidget.h"
#include "norvo/DeviceManager.h"
#include "TestMain.h"

#include <QTabWidget>
#include <QtTest>

using norvo::Panel;
using norvo::PanelState;

/// Writes its parameter "written" at each step of its life, and whatever it hears.
class WritingDevice : public BaseGuiDevice
{
    Q_OBJECT

public:
    WritingDevice()
    {
        addParam("given", "default");
        addParam("Written", "");
        addParam("stored", "default");
        getParam("written").setPersistent();
        getParam("stored").setPersistent();
    }

    bool initialise() override
    {
        setParam("written", "initialise");
        return true;
    }
    void postInitialisation() override { setParam("WRITTEN", "postInitialisation"); }
    void preShutdown() override { setParam("written", "preShutdown"); }
    void deinitialise() override { setParam("written", "deinitialise"); }
    BaseWidget* createWidget() override { return new BaseWidget(this, nullptr); }
    bool alert(QString text) override
    {
        qApp->setProperty("alert", text);
        return true;
    }

public slots:
    void input(QString text)
    {
        setParam("written", text);
        setParam("given", text);
    }
};

class tst_Panel : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void idIsTheNameOfDeviceAndWidget();
    void savedStateGoesOverTheFile();
    void stateSetsOnlyWhatADeviceStoresByItself();
    void onlyWhatADeviceStoresWhileRunningIsReported();
    void connectionThatCannotBeMadeIsAnError();
    void widgetsStandInTheirCells();
    void areasAreTabs();

private:
    DeviceManager m_manager;
    QWidget m_page;
};

void tst_Panel::initTestCase()
{
    m_manager.registerDeviceType<WritingDevice>("writing");
    m_manager.registerDeviceType<RecorderDevice>("recorder");
    m_manager.registerDeviceType<TickerDevice>("ticker");
}

void tst_Panel::idIsTheNameOfDeviceAndWidget()
{
    TestPanel panel(m_manager, describe::panel({describe::device("Öl pump.1", "WRITING"),
                                                describe::device("r", "recorder")}));
    panel.start(&m_page);
    QCOMPARE(panel.device("Öl pump.1")->objectName(), "Öl pump.1");
    QCOMPARE(panel.widget("Öl pump.1")->objectName(), "Öl pump.1");
    QVERIFY(panel.device("r"));
    QVERIFY(!panel.widget("r"));
    QVERIFY(!panel.device("nobody"));
    QVERIFY(!panel.widget("nobody"));
}

void tst_Panel::savedStateGoesOverTheFile()
{
    TestPanel panel(m_manager,
                    describe::panel({describe::device("a", "writing", {{"stored", "by file"}}),
                                     describe::device("b", "writing", {{"STORED", "by file"}}),
                                     describe::device("c", "writing")}),
                    PanelState{{"a", {{"Stored", "by state"}}}});
    panel.start(&m_page);
    QCOMPARE(panel.device("a")->getParam("stored").value(), "by state");
    QCOMPARE(panel.device("b")->getParam("stored").value(), "by file");
    QCOMPARE(panel.device("c")->getParam("stored").value(), "default");
    QCOMPARE(describe::lines(panel.diagnostics()), QStringList());
}

void tst_Panel::stateSetsOnlyWhatADeviceStoresByItself()
{
    qApp->setProperty("alert", QVariant());
    TestPanel panel(
        m_manager, describe::panel({describe::device("a", "writing")}),
        PanelState{{"a", {{"given", "1"}, {"gone", "1"}}}, {"nobody", {{"stored", "1"}}}});
    panel.start(&m_page);
    const QString file = "panel.state.yaml: warning: ";
    QCOMPARE(describe::lines(panel.diagnostics()),
             QStringList({file + "\"a\" does not store a parameter \"given\" by itself; its saved "
                                 "value is left aside",
                          file + "\"a\" does not store a parameter \"gone\" by itself; its saved "
                                 "value is left aside",
                          file + "there is no device \"nobody\"; its saved values are left "
                                 "aside"}));
    QCOMPARE(panel.device("a")->getParam("given").value(), "default");
    QVERIFY(!qApp->property("alert").isValid());
    QVERIFY(!panel.device("nobody"));
}

void tst_Panel::onlyWhatADeviceStoresWhileRunningIsReported()
{
    TestPanel panel(m_manager,
                    describe::panel({describe::device("a", "writing", {{"given", "x"}})}));
    QSignalSpy written(&panel, &Panel::parameterWritten);
    panel.start(&m_page);
    QCOMPARE(written.size(), 1);
    QCOMPARE(written[0], QVariantList({"a", "Written", "postInitialisation"}));
    QMetaObject::invokeMethod(panel.device("a"), "input", Q_ARG(QString, "heard"));
    QMetaObject::invokeMethod(panel.device("a"), "input", Q_ARG(QString, "heard"));
    QCOMPARE(written.size(), 2);
    QCOMPARE(written[1], QVariantList({"a", "Written", "heard"}));
    panel.change(describe::panel({describe::device("a", "writing", {{"given", "x"}})}));
    QMetaObject::invokeMethod(panel.device("a"), "input", Q_ARG(QString, "after a reload"));
    QCOMPARE(written.size(), 3);
    panel.stop();
    QCOMPARE(written.size(), 3);
}

void tst_Panel::connectionThatCannotBeMadeIsAnError()
{
    TestPanel panel(m_manager, describe::panel({describe::device("tick", "ticker"),
                                                describe::device("r", "recorder")},
                                               {"tick.value -> r.input", "tock.value -> r.input",
                                                "tick.value -> r.inputs"}));
    panel.start(&m_page);
    QCOMPARE(describe::lines(panel.diagnostics()),
             QStringList({"panel.yaml:2:1: error: there is no device \"tock\"; did you mean "
                          "\"tick\"?",
                          "panel.yaml:3:17: error: \"r\" has no slot \"inputs\"; it has "
                          "input(double), input(QString), input(bool); did you mean \"input\"?"}));
    QCOMPARE(panel.device("r")->getIncomingConnections(), QStringList("tick.value(double)"));
}

void tst_Panel::widgetsStandInTheirCells()
{
    TestPanel panel(m_manager, describe::panel({describe::device("below", "writing"),
                                                describe::device("r", "recorder"),
                                                describe::device("wide", "writing",
                                                                 {{"widget/row", "0"},
                                                                  {"widget/column", "1"},
                                                                  {"widget/rowspan", "2"},
                                                                  {"widget/colspan", "3"}})}));
    panel.start(&m_page);
    QVERIFY(!m_page.findChild<QTabWidget*>());
    QCOMPARE(placeOf(m_page, "wide"), "0,1,2,3");
    QCOMPARE(placeOf(m_page, "below"), "2,0,1,1");
}

void tst_Panel::areasAreTabs()
{
    TestPanel panel(
        m_manager,
        describe::panel({describe::device("none", "writing"),
                         describe::device("m", "writing", {{"widget/area", "Motors"}}),
                         describe::device("a", "writing", {{"widget/area", "Air"}}),
                         describe::device("n", "writing", {{"widget/area", "Motors"}})}));
    panel.start(&m_page);
    const auto* tabs = m_page.findChild<QTabWidget*>();
    QVERIFY(tabs);
    QCOMPARE(tabs->count(), 2);
    QCOMPARE(tabs->tabText(0), "Motors");
    QCOMPARE(tabs->tabText(1), "Air");
    for (const char* id : {"none", "m", "n"}) {
        QVERIFY(tabs->widget(0)->isAncestorOf(panel.widget(id)));
    }
    QVERIFY(tabs->widget(1)->isAncestorOf(panel.widget("a")));
    QCOMPARE(placeOf(m_page, "none"), "0,0,1,1");
    QCOMPARE(placeOf(m_page, "n"), "2,0,1,1");
    QCOMPARE(placeOf(m_page, "a"), "0,0,1,1");
}

NORVO_TEST(tst_Panel)
#include "tst_Panel.moc"
