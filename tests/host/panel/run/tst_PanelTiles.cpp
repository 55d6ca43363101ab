// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/run/Panel.h"

#include "host/panel/Descriptions.h"
#include "host/panel/TestPanel.h"
#include "GridPlace.h"

#include "fixtures/relays/FailingDevice.h"
#include "fixtures/relays/RecorderDevice.h"
#include "fixtures/relays/StepsDevice.h"
#include "fixtures/relays/TickerDevice.h"
#include "host/window/ErrorTile.h"
#include "norvo/DeviceManager.h"
#include "TestMain.h"

#include <QLabel>
#include <QtTest>

using norvo::ErrorTile;

class WidgetlessDevice : public BaseGuiDevice
{
    Q_OBJECT

public:
    BaseWidget* createWidget() override { return nullptr; }
};

/// Has more than one reason.
class UnwillingDevice : public BaseGuiDevice
{
    Q_OBJECT

public:
    UnwillingDevice() { addParam("count", "1"); }
    bool initialise() override
    {
        error("first");
        return error("second");
    }
    BaseWidget* createWidget() override { return new BaseWidget(this, nullptr); }
};

/// Cannot show a file that is not there; starts all the same.
class BlankWidget : public BaseWidget
{
    Q_OBJECT

public:
    using BaseWidget::BaseWidget;
    void initialise() override
    {
        const QString file = getParam("file").value();
        if (file.isEmpty()) {
            qCritical("BlankWidget: Cannot load: no such file");
        } else {
            setInitialised(true);
        }
    }
};

class BlankDevice : public BaseGuiDevice
{
    Q_OBJECT

public:
    BlankDevice() { addParam("file", ""); }
    BaseWidget* createWidget() override { return new BlankWidget(this, nullptr); }
};

/// Its widget never says that it is initialised, and has nothing to report.
class QuietDevice : public BaseGuiDevice
{
    Q_OBJECT

public:
    BaseWidget* createWidget() override { return new BaseWidget(this, nullptr); }
};

class tst_PanelTiles : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void failedDeviceLeavesATileAndTheRestRuns();
    void tileTellsWhichParameterDoesNotRead();
    void tileTellsEveryReason();
    void nothingIsConnectedToAFailedDevice();
    void failedDeviceWithoutWidgetLeavesATileToo();
    void unknownTypeLeavesATileInItsPlace();
    void deviceThatMakesNoWidgetLeavesATile();
    void widgetThatCannotShowItselfLeavesATile();
    void widgetWithoutAReportIsLeftAlone();
    void widgetThatCannotShowItselfIsTriedAgainAtAReload();

private:
    DeviceManager m_manager;
    QWidget m_page;
};

void tst_PanelTiles::initTestCase()
{
    m_manager.registerDeviceType<StepsDevice>("steps");
    m_manager.registerDeviceType<WidgetlessDevice>("widgetless");
    m_manager.registerDeviceType<FailingDevice>("failing");
    m_manager.registerDeviceType<RecorderDevice>("recorder");
    m_manager.registerDeviceType<TickerDevice>("ticker");
    m_manager.registerDeviceType<UnwillingDevice>("unwilling");
    m_manager.registerDeviceType<BlankDevice>("blank");
    m_manager.registerDeviceType<QuietDevice>("quiet");
}

void tst_PanelTiles::failedDeviceLeavesATileAndTheRestRuns()
{
    QTest::ignoreMessage(QtWarningMsg, "bad: told to fail");
    TestPanel panel(m_manager, describe::panel({describe::device("a", "steps"),
                                                describe::device("bad", "failing",
                                                                 {{"widget/row", "4"},
                                                                  {"widget/column", "2"},
                                                                  {"widget/colspan", "3"}},
                                                                 9),
                                                describe::device("r", "recorder")},
                                               {"bad.output -> r.input(double)"}));
    panel.start(&m_page);
    QCOMPARE(describe::lines(panel.diagnostics()),
             QStringList("panel.yaml:9:1: error: device \"bad\" did not start: told to fail"));
    QCOMPARE(placeOf(m_page, "bad"), "4,2,1,3");
    const auto* tile = m_page.findChild<ErrorTile*>("bad");
    QVERIFY(tile);
    QCOMPARE(tile->findChildren<QLabel*>()[0]->text(), "bad");
    QCOMPARE(tile->findChildren<QLabel*>()[1]->text(), "told to fail");
    QVERIFY(!panel.widget("bad"));
    QVERIFY(!panel.device("bad")->isRunning());
    QVERIFY(panel.device("a")->isRunning());
    QVERIFY(panel.widget("a"));
    QCOMPARE(panel.device("r")->getIncomingConnections(), QStringList());
    panel.stop();
    QVERIFY(m_page.findChildren<QWidget*>().isEmpty());
}

void tst_PanelTiles::tileTellsWhichParameterDoesNotRead()
{
    TestPanel panel(m_manager,
                    describe::panel({describe::device("t", "ticker", {{"interval", "often"}})}));
    panel.start(&m_page);
    const QString reason = "parameter \"interval\": \"often\" is not a number";
    QCOMPARE(describe::lines(panel.diagnostics()),
             QStringList({"panel.yaml: error: device \"t\" did not start: " + reason,
                          "panel.yaml: error: " + reason}));
    QCOMPARE(m_page.findChild<ErrorTile*>("t")->findChildren<QLabel*>()[1]->text(), reason);
}

void tst_PanelTiles::tileTellsEveryReason()
{
    TestPanel panel(m_manager,
                    describe::panel({describe::device("u", "unwilling", {{"count", "many"}})}));
    QTest::ignoreMessage(QtWarningMsg, "u: first");
    QTest::ignoreMessage(QtWarningMsg, "u: second");
    panel.start(&m_page);
    const QStringList reasons{"first", "second", "parameter \"count\": \"many\" is not a number"};
    QCOMPARE(m_page.findChild<ErrorTile*>("u")->findChildren<QLabel*>()[1]->text(),
             reasons.join('\n'));
    QCOMPARE(describe::lines(panel.diagnostics()).first(),
             "panel.yaml: error: device \"u\" did not start: " + reasons.join("; "));
}

void tst_PanelTiles::nothingIsConnectedToAFailedDevice()
{
    QTest::ignoreMessage(QtWarningMsg, "bad: told to fail");
    TestPanel panel(m_manager, describe::panel({describe::device("a", "steps"),
                                                describe::device("bad", "failing")},
                                               {"a.output -> bad.input"}));
    panel.start(&m_page);
    QCOMPARE(panel.device("bad")->getIncomingConnections(), QStringList());
    QCOMPARE(qApp->property("lifecycle").toStringList().filter("a wired"), QStringList());
}

void tst_PanelTiles::failedDeviceWithoutWidgetLeavesATileToo()
{
    TestPanel panel(m_manager,
                    describe::panel({describe::device("t", "ticker", {{"interval", "often"}}),
                                     describe::device("a", "steps")}));
    panel.start(&m_page);
    QCOMPARE(placeOf(m_page, "t"), "0,0,1,1");
    QCOMPARE(placeOf(m_page, "a"), "1,0,1,1");
}

void tst_PanelTiles::unknownTypeLeavesATileInItsPlace()
{
    TestPanel panel(
        m_manager, describe::panel({describe::device("x", "no such",
                                                     {{"widget/Row", "3"}, {"widget/column", "1"}}),
                                    describe::device("r", "recorder")},
                                   {"x.output -> r.input"}));
    panel.start(&m_page);
    QCOMPARE(describe::lines(panel.diagnostics()),
             QStringList("panel.yaml: error: unknown device type \"no such\"; valid names: "
                         "\"blank\", \"failing\", \"quiet\", \"recorder\", \"steps\", "
                         "\"ticker\", \"unwilling\", \"widgetless\""));
    QCOMPARE(placeOf(m_page, "x"), "3,1,1,1");
    QVERIFY(!panel.device("x"));
    QVERIFY(panel.device("r")->isRunning());
}

void tst_PanelTiles::deviceThatMakesNoWidgetLeavesATile()
{
    TestPanel panel(m_manager, describe::panel({describe::device("w", "widgetless")}));
    panel.start(&m_page);
    QVERIFY(m_page.findChild<ErrorTile*>("w"));
    QCOMPARE(describe::lines(panel.diagnostics()),
             QStringList("panel.yaml: error: device \"w\" is not shown: it made no widget"));
    QVERIFY(!panel.widget("w"));
}

void tst_PanelTiles::widgetThatCannotShowItselfLeavesATile()
{
    TestPanel panel(
        m_manager, describe::panel({describe::device("b", "blank",
                                                     {{"widget/row", "2"}, {"widget/column", "1"}}),
                                    describe::device("full", "blank", {{"file", "x"}})}));
    QTest::ignoreMessage(QtCriticalMsg, "BlankWidget: Cannot load: no such file");
    panel.start(&m_page);
    const auto* tile = m_page.findChild<ErrorTile*>("b");
    QVERIFY(tile);
    QCOMPARE(tile->findChildren<QLabel*>()[1]->text(), "Cannot load: no such file");
    QCOMPARE(placeOf(m_page, "b"), "2,1,1,1");
    QVERIFY(!panel.widget("b"));
    QVERIFY(panel.device("b")->isRunning());
    QVERIFY(panel.widget("full"));
    panel.stop();
    QVERIFY(m_page.findChildren<QWidget*>().isEmpty());
}

void tst_PanelTiles::widgetWithoutAReportIsLeftAlone()
{
    TestPanel panel(m_manager, describe::panel({describe::device("q", "quiet")}));
    panel.start(&m_page);
    QVERIFY(!m_page.findChild<ErrorTile*>());
    QVERIFY(panel.widget("q"));
}

void tst_PanelTiles::widgetThatCannotShowItselfIsTriedAgainAtAReload()
{
    const auto description = describe::panel({describe::device("b", "blank")});
    TestPanel panel(m_manager, description);
    QTest::ignoreMessage(QtCriticalMsg, "BlankWidget: Cannot load: no such file");
    panel.start(&m_page);
    const QPointer<BaseDevice> first = panel.device("b");
    QTest::ignoreMessage(QtCriticalMsg, "BlankWidget: Cannot load: no such file");
    panel.change(description);
    QVERIFY(!first);
    QCOMPARE(m_page.findChildren<ErrorTile*>("b").size(), 1);
}

NORVO_TEST(tst_PanelTiles)
#include "tst_PanelTiles.moc"
