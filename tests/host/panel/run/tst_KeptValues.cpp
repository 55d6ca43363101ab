// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/Descriptions.h"

#include "devices/CheckBoxDevice.h"
#include "devices/DropDownListDevice.h"
#include "devices/InputDevice.h"
#include "devices/SliderDevice.h"
#include "fixtures/relays/RecorderDevice.h"
#include "fixtures/relays/RelayDevice.h"
#include "host/catalogue/Catalogue.h"
#include "host/catalogue/SenseCheck.h"
#include "host/panel/plan/KeptValue.h"
#include "host/panel/plan/PanelPlan.h"
#include "host/panel/run/Panel.h"
#include "host/window/PanelPages.h"
#include "norvo/BaseWidget.h"
#include "norvo/DeviceManager.h"
#include "TestMain.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QSlider>
#include <QtTest>

#include <functional>

using norvo::Keep;
using norvo::KeptValue;

namespace {

using Hand = std::function<void(QWidget& face)>;
using Look = std::function<QString(QWidget& face)>;

struct Control
{
    norvo::DeviceSetting setting;
    QString arrow; ///< To a recorder.
    Hand hand;     ///< Gives it a value.
    Look look;     ///< What it shows.
};

template <typename W>
W& partOf(QWidget& face)
{
    return *face.findChild<W*>();
}

/// One of each type that keeps what it is given; the recorder is "seen", by "d".
const QMap<QString, Control>& controls()
{
    static const QMap<QString, Control> all{
        {"slider",
         {describe::device("d", "slider"), "d.output -> seen.input(double)",
          [](QWidget& face) { QTest::keyClick(&partOf<QSlider>(face), Qt::Key_End); },
          [](QWidget& face) { return QString::number(partOf<QSlider>(face).value()); }}},
        {"checkbox",
         {describe::device("d", "checkbox"), "d.output(bool) -> seen.input(bool)",
          [](QWidget& face) { QTest::keyClick(&partOf<QCheckBox>(face), Qt::Key_Space); },
          [](QWidget& face) { return partOf<QCheckBox>(face).isChecked() ? "yes" : "no"; }}},
        {"dropdownlist",
         {describe::device("d", "dropdownlist", {{"options", "red|green|blue"}}),
          "d.output(double) -> seen.input(double)",
          [](QWidget& face) { QTest::keyClick(&partOf<QComboBox>(face), Qt::Key_End); },
          [](QWidget& face) { return partOf<QComboBox>(face).currentText(); }}},
        {"input",
         {describe::device("d", "input", {{"type", "string"}}),
          "d.output(QString) -> seen.input(QString)",
          [](QWidget& face) { QTest::keyClicks(&partOf<QLineEdit>(face), "ab"); },
          [](QWidget& face) { return partOf<QLineEdit>(face).text(); }}}};
    return all;
}

/// A panel from its start to its end, with what was saved before and what it saves.
class Run
{
public:
    Run(const DeviceManager& manager, const norvo::PanelDescription& description,
        norvo::PanelState& state)
        : m_panel(*m_pages), m_diagnostics("panel.yaml")
    {
        QObject::connect(&m_panel, &norvo::Panel::parameterWritten, &m_panel,
                         [&state](const QString& device, const QString& param,
                                  const QString& value) { state[device][param] = value; });
        const norvo::Catalogue catalogue(manager);
        m_panel.apply(norvo::PanelPlan::make(description, manager, {"panel.state.yaml", state},
                                             m_diagnostics, {}, norvo::SenseCheck(catalogue)),
                      m_diagnostics);
        m_pages->show();
    }
    ~Run()
    {
        m_panel.stop();
        delete m_pages;
    }

    QWidget& face() { return *m_panel.widget("d"); }
    BaseDevice& device() { return *m_panel.device("d"); }
    RelayDevice& relay() { return *static_cast<RelayDevice*>(m_panel.device("relay")); }
    QStringList seen() { return m_panel.device("seen")->property("lines").toStringList(); }
    QStringList said() const { return describe::lines(m_diagnostics); }

private:
    norvo::PanelPages* const m_pages = new norvo::PanelPages;
    norvo::Panel m_panel;
    norvo::Diagnostics m_diagnostics;
};

} // namespace

/// What an operator gave to a control stands in it again at the next start.
class tst_KeptValues : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void valueOfAHandIsPutBackSilently_data() { eachControl(); }
    void valueOfAHandIsPutBackSilently();
    void valueIsSentAtTheStartWhereThatIsSaid_data() { eachControl(); }
    void valueIsSentAtTheStartWhereThatIsSaid();
    void nothingIsKeptWhereThatIsSaid_data() { eachControl(); }
    void nothingIsKeptWhereThatIsSaid();
    void valueThatAWireGaveIsNotKept_data() { eachControl(); }
    void valueThatAWireGaveIsNotKept();
    void valueThatGoesRoundACycleIsNotKept();
    void handsGoOnAfterAWire();
    void whatWasPutBackIsChangedByTheNextHand();
    void valueOfOtherSettingsIsNotPutBack();
    void otherPlaceIsNoOtherSetting();
    void valueThatDoesNotReadIsLeftAside_data();
    void valueThatDoesNotReadIsLeftAside();
    void keepAtATypeWithoutOneIsAWarning();
    void changedKeepMakesTheDeviceNew();
    void nothingIsKeptDuringTheStart();

private:
    static void eachControl();
    norvo::PanelDescription panelOf(const QString& type, Keep keep, const QStringList& arrows = {},
                                    const QMap<QString, QString>& params = {}) const;

    DeviceManager m_manager;
};

void tst_KeptValues::initTestCase()
{
    m_manager.registerDeviceType<CheckBoxDevice>("checkbox");
    m_manager.registerDeviceType<DropDownListDevice>("dropdownlist");
    m_manager.registerDeviceType<InputDevice>("input");
    m_manager.registerDeviceType<SliderDevice>("slider");
    m_manager.registerDeviceType<RecorderDevice>("recorder");
    m_manager.registerDeviceType<RelayDevice>("relay");
}

void tst_KeptValues::eachControl()
{
    QTest::addColumn<QString>("type");
    for (const QString& type : controls().keys()) {
        QTest::newRow(qPrintable(type)) << type;
    }
}

norvo::PanelDescription tst_KeptValues::panelOf(const QString& type, Keep keep,
                                                const QStringList& arrows,
                                                const QMap<QString, QString>& params) const
{
    norvo::DeviceSetting control = controls()[type].setting;
    control.keep = keep;
    control.keepPlace = {7, 3};
    control.params += describe::device("", "", params).params;
    return describe::panel({control, describe::device("seen", "recorder", {{"log", "false"}}),
                            describe::device("relay", "relay")},
                           QStringList(controls()[type].arrow) + arrows);
}

void tst_KeptValues::valueOfAHandIsPutBackSilently()
{
    QFETCH(QString, type);
    const Control& control = controls()[type];
    for (const Keep keep : {Keep::Unsaid, Keep::Silently}) {
        norvo::PanelState state;
        QString shown;
        {
            Run run(m_manager, panelOf(type, keep), state);
            const QString before = control.look(run.face());
            QCOMPARE(state, norvo::PanelState());
            control.hand(run.face());
            shown = control.look(run.face());
            QVERIFY(shown != before);
            QVERIFY(!run.seen().isEmpty());
        }
        Run run(m_manager, panelOf(type, keep), state);
        QCOMPARE(control.look(run.face()), shown);
        QCOMPARE(run.seen(), QStringList());
        QCOMPARE(run.said(), QStringList());
    }
}

void tst_KeptValues::valueIsSentAtTheStartWhereThatIsSaid()
{
    QFETCH(QString, type);
    const Control& control = controls()[type];
    norvo::PanelState state;
    QString shown;
    QString last;
    {
        Run run(m_manager, panelOf(type, Keep::Sending), state);
        control.hand(run.face());
        shown = control.look(run.face());
        last = run.seen().constLast();
    }
    const norvo::PanelState before = state;
    Run run(m_manager, panelOf(type, Keep::Sending), state);
    QCOMPARE(control.look(run.face()), shown);
    QCOMPARE(run.seen().value(0), last);
    QCOMPARE(state, before);
}

void tst_KeptValues::nothingIsKeptWhereThatIsSaid()
{
    QFETCH(QString, type);
    const Control& control = controls()[type];
    norvo::PanelState state;
    Run run(m_manager, panelOf(type, Keep::No), state);
    control.hand(run.face());
    QCOMPARE(state, norvo::PanelState());
}

void tst_KeptValues::valueThatAWireGaveIsNotKept()
{
    QFETCH(QString, type);
    const Control& control = controls()[type];
    norvo::PanelState state;
    Run run(m_manager, panelOf(type, Keep::Unsaid, {"relay.output -> d.input(double)"}), state);
    const QString before = control.look(run.face());
    run.relay().input(1);
    QVERIFY(type == "dropdownlist" || control.look(run.face()) != before);
    QCOMPARE(state, norvo::PanelState());
}

/// Where a queued wire brings it back.
void tst_KeptValues::valueThatGoesRoundACycleIsNotKept()
{
    norvo::PanelState state;
    Run run(m_manager,
            panelOf("slider", Keep::Unsaid,
                    {"d.output -> relay.input(double)", "relay.output -> d.input"}),
            state);
    run.relay().input(1);
    QTRY_VERIFY(run.relay().passes() > 1);
    QCoreApplication::processEvents();
    QCOMPARE(state, norvo::PanelState());
    QTest::keyClick(run.face().findChild<QSlider*>(), Qt::Key_End);
    QCOMPARE(state["d"][KeptValue::kValue], QString("100"));
}

void tst_KeptValues::handsGoOnAfterAWire()
{
    norvo::PanelState state;
    Run run(m_manager, panelOf("slider", Keep::Unsaid, {"relay.output -> d.input"}), state);
    run.relay().input(1);
    QTest::keyClick(run.face().findChild<QSlider*>(), Qt::Key_End);
    QCOMPARE(state["d"][KeptValue::kValue], QString("100"));
}

void tst_KeptValues::whatWasPutBackIsChangedByTheNextHand()
{
    norvo::PanelState state;
    {
        Run run(m_manager, panelOf("dropdownlist", Keep::Unsaid), state);
        controls()["dropdownlist"].hand(run.face());
    }
    QCOMPARE(state["d"][KeptValue::kValue], QString("2"));
    Run run(m_manager, panelOf("dropdownlist", Keep::Unsaid), state);
    QTest::keyClick(run.face().findChild<QComboBox*>(), Qt::Key_Up);
    QCOMPARE(run.seen(), QStringList("input(double) 1"));
    QTest::keyClick(run.face().findChild<QComboBox*>(), Qt::Key_Down);
    QCOMPARE(run.seen().size(), 2);
    QCOMPARE(state["d"][KeptValue::kValue], QString("2"));
}

void tst_KeptValues::valueOfOtherSettingsIsNotPutBack()
{
    norvo::PanelState state;
    {
        Run run(m_manager, panelOf("slider", Keep::Unsaid), state);
        controls()["slider"].hand(run.face());
    }
    Run run(m_manager, panelOf("slider", Keep::Unsaid, {}, {{"widget/maxValue", "1000"}}), state);
    QCOMPARE(controls()["slider"].look(run.face()), QString("0"));
    QCOMPARE(run.said(), QStringList());
}

void tst_KeptValues::otherPlaceIsNoOtherSetting()
{
    norvo::PanelState state;
    {
        Run run(m_manager, panelOf("slider", Keep::Unsaid), state);
        controls()["slider"].hand(run.face());
    }
    Run run(m_manager,
            panelOf("slider", Keep::Unsaid, {}, {{"widget/row", "3"}, {"widget/area", "x"}}),
            state);
    QCOMPARE(controls()["slider"].look(run.face()), QString("100"));
}

void tst_KeptValues::valueThatDoesNotReadIsLeftAside_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("text");
    QTest::newRow("no number") << "slider"
                               << "much";
    QTest::newRow("nan") << "slider"
                         << "nan";
    QTest::newRow("no yes") << "checkbox"
                            << "1";
    QTest::newRow("fraction") << "dropdownlist"
                              << "1.5";
}

void tst_KeptValues::valueThatDoesNotReadIsLeftAside()
{
    QFETCH(QString, type);
    QFETCH(QString, text);
    norvo::PanelState state;
    {
        Run run(m_manager, panelOf(type, Keep::Unsaid), state);
        controls()[type].hand(run.face());
    }
    state["d"][KeptValue::kValue] = text;
    Run run(m_manager, panelOf(type, Keep::Unsaid), state);
    QCOMPARE(run.said(),
             QStringList(QString("panel.state.yaml: warning: the kept value \"%1\" does "
                                 "not read; it is left aside")
                             .arg(text)));
    Run fresh(m_manager, panelOf(type, Keep::No), state);
    QCOMPARE(controls()[type].look(run.face()), controls()[type].look(fresh.face()));
}

void tst_KeptValues::keepAtATypeWithoutOneIsAWarning()
{
    norvo::PanelState state;
    norvo::DeviceSetting relay = describe::device("d", "relay");
    relay.keep = Keep::Sending;
    relay.keepPlace = {7, 3};
    Run run(m_manager, describe::panel({relay}), state);
    QCOMPARE(run.said(),
             QStringList("panel.yaml:7:3: warning: relay takes no value from an operator "
                         "that could be kept"));
}

void tst_KeptValues::changedKeepMakesTheDeviceNew()
{
    const norvo::PanelDescription description = panelOf("slider", Keep::Silently);
    norvo::Node node(description.devices[0], std::make_unique<SliderDevice>());
    QVERIFY(node.isMadeFrom(description.devices[0]));
    QVERIFY(!node.isMadeFrom(panelOf("slider", Keep::Sending).devices[0]));
}

void tst_KeptValues::nothingIsKeptDuringTheStart()
{
    norvo::PanelState state;
    Run run(m_manager, panelOf("dropdownlist", Keep::Unsaid, {}, {{"emitOnInit", "true"}}), state);
    QVERIFY(!run.seen().isEmpty());
    QCOMPARE(state, norvo::PanelState());
}

NORVO_TEST(tst_KeptValues)
#include "tst_KeptValues.moc"
