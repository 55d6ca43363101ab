// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/PanelPlan.h"

#include "host/panel/Descriptions.h"

#include "devices/Label.h"
#include "devices/OutputDigitalDevice.h"
#include "devices/QmlGuiDevice.h"
#include "fixtures/relays/StepsDevice.h"
#include "norvo/DeviceManager.h"
#include "TestMain.h"

#include <QtTest>

using norvo::PanelPlan;

/// Says so when it is started, unless it is told to fail; only then it offers its slot.
class LateDevice : public BaseDevice
{
    Q_OBJECT

public:
    LateDevice() { addParam("error", ""); }

    static DeviceTypeInfo typeInfo() { return {"", "", {}, 0, 1, ""}; }

    bool initialise() override
    {
        recordStep(objectName(), "initialise");
        const QString reason = getParam("error").value();
        m_known = reason.isEmpty();
        return m_known || error(reason);
    }
    void deinitialise() override { recordStep(objectName(), "deinitialise"); }
    QStringList grabMethods(const QString& name, QMetaMethod::MethodType type,
                            bool flag) const override
    {
        return m_known ? BaseDevice::grabMethods(name, type, flag) : QStringList();
    }

public slots:
    void input(QString) {}

private:
    bool m_known = false;
};

/// Starts nothing; fails, as a device may, with the name of the parameter that is to blame.
class PickyDevice : public BaseDevice
{
    Q_OBJECT

public:
    PickyDevice()
    {
        addParam("command", "");
        addParam("count", "1");
    }

    static DeviceTypeInfo typeInfo() { return {}; }

    bool initialise() override
    {
        return error(
            QString("parameter \"command\": there is no \"%1\"").arg(getParam("command").value()));
    }

signals:
    void output();

public slots:
    void input() {}
};

namespace {

QStringList check(const norvo::PanelDescription& description, const DeviceManager& manager,
                  const norvo::TypeKnowledge& knowledge = {})
{
    norvo::Diagnostics diagnostics(description.file);
    PanelPlan::make(description, manager, {}, diagnostics, {}, knowledge);
    return describe::lines(diagnostics);
}

/// Knows of one type that it starts nothing and breaks cycles.
class KnowledgeOfOne : public norvo::TypeKnowledge
{
public:
    explicit KnowledgeOfOne(const QString& type) : m_type(type) {}

    bool breaksCycles(const QString& type) const override { return type == m_type; }
    bool startsNothing(const QString& type) const override { return type == m_type; }

private:
    QString m_type;
};

} // namespace

/// Which devices a plan initialises, and what it asks about their types.
class tst_PanelPlanStarts : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void noDeviceIsStarted();
    void typeThatShowsItsMethodsLateIsInitialisedAlone();
    void lateTypeThatFailsIsAnErrorAndItsConnectionsAreNotChecked();
    void eachDocumentHasItsOwnSlots();
    void documentsBeyondAllBoundsAreAnError();
    void typeThatStartsNothingIsInitialised();
    void typeThatStartsNothingAndFailsIsAnErrorAtTheValueThatItNames();
    void valueThatDoesNotConvertIsReportedOnce();
    void cycleThroughATypeThatBreaksItIsQueuedWithoutAWarning();
};

void tst_PanelPlanStarts::init()
{
    qApp->setProperty("lifecycle", QStringList());
}

void tst_PanelPlanStarts::noDeviceIsStarted()
{
    DeviceManager manager;
    manager.registerDeviceType<StepsDevice>("steps");
    const auto description = describe::panel(
        {describe::device("a", "steps"), describe::device("b", "steps")}, {"a.output -> b.input"});
    QCOMPARE(check(description, manager), QStringList());
    QStringList steps = qApp->property("lifecycle").toStringList();
    steps.sort();
    QCOMPARE(steps, QStringList({"a destructor", "b destructor"}));
}

void tst_PanelPlanStarts::typeThatShowsItsMethodsLateIsInitialisedAlone()
{
    DeviceManager manager;
    manager.registerDeviceType<StepsDevice>("steps");
    manager.registerDeviceType<Label>("label");
    manager.registerDeviceType<LateDevice>("late");
    const auto description =
        describe::panel({describe::device("a", "steps"), describe::device("l", "label"),
                         describe::device("late", "late")},
                        {"l.output -> late.input", "a.output -> late.input"});
    QCOMPARE(
        check(description, manager),
        QStringList("panel.yaml:2:1: error: a.output(double) does not fit late.input(QString); "
                    "nothing that \"a\" sends fits \"late\""));
    QCOMPARE(qApp->property("lifecycle").toStringList().filter("initialise"),
             QStringList({"late initialise", "late deinitialise"}));
}

void tst_PanelPlanStarts::lateTypeThatFailsIsAnErrorAndItsConnectionsAreNotChecked()
{
    DeviceManager manager;
    manager.registerDeviceType<LateDevice>("late");
    const auto description = describe::panel(
        {describe::device("a", "late", {{"error", "no face"}}, 4), describe::device("b", "late")},
        {"a.output -> b.input", "b.output -> a.input"});
    QTest::ignoreMessage(QtWarningMsg, "a: no face");
    norvo::Diagnostics diagnostics(description.file);
    PanelPlan::make(description, manager, {}, diagnostics);
    const QStringList lines = describe::lines(diagnostics);
    QCOMPARE(lines.filter("error"),
             QStringList("panel.yaml:4:1: error: device \"a\" does not start, and its connections "
                         "cannot be checked: no face"));
    QVERIFY2(!diagnostics.preventsStart(), "a tile takes the place of the device");
}

void tst_PanelPlanStarts::eachDocumentHasItsOwnSlots()
{
    DeviceManager manager;
    manager.registerDeviceType<Label>("label");
    manager.registerDeviceType<QmlGuiDevice>("qml_widget");
    const auto face = [](const QString& id, const QString& slot) {
        const QString code = "import QtQuick 2.0\nItem {" + slot + "}";
        return describe::device(id, "qml_widget",
                                {{"sourceType", "parameter"}, {"sourceCode", code}});
    };
    const auto description = describe::panel(
        {describe::device("l", "label"), face("a", "function show(x) {}"), face("b", "")},
        {"l.output -> a.show", "l.output -> b.show"});
    QCOMPARE(check(description, manager),
             QStringList("panel.yaml:2:15: error: \"b\" has no slot \"show\"; it has none"));
}

void tst_PanelPlanStarts::documentsBeyondAllBoundsAreAnError()
{
    DeviceManager manager;
    manager.registerDeviceType<LateDevice>("late");
    QVector<norvo::DeviceSetting> devices;
    for (int i = 1; i <= 302; ++i) {
        devices.append(describe::device(QString("d%1").arg(i), "late", {}, i));
    }
    QCOMPARE(check(describe::panel(devices.mid(0, 300)), manager), QStringList());
    const QString error =
        "panel.yaml:301:1: error: more than 300 devices that are shown by documents";
    QCOMPARE(check(describe::panel(devices, {"d302.output -> d1.input"}), manager).filter("error"),
             QStringList(error));
}

void tst_PanelPlanStarts::typeThatStartsNothingIsInitialised()
{
    DeviceManager manager;
    manager.registerDeviceType<StepsDevice>("steps");
    manager.registerDeviceType<LateDevice>("late");
    const auto description =
        describe::panel({describe::device("a", "steps"), describe::device("b", "STEPS")});
    QCOMPARE(check(description, manager, KnowledgeOfOne("steps")), QStringList());
    QCOMPARE(qApp->property("lifecycle").toStringList().filter(" initialise"),
             QStringList("a initialise"));
}

void tst_PanelPlanStarts::typeThatStartsNothingAndFailsIsAnErrorAtTheValueThatItNames()
{
    DeviceManager manager;
    manager.registerDeviceType<PickyDevice>("picky");
    const auto description = describe::panel({describe::device("a", "picky", {{"Command", "x"}}, 4),
                                              describe::device("b", "picky", {}, 5)},
                                             {"a.output -> b.input", "a.outputs -> b.input"});
    QTest::ignoreMessage(QtWarningMsg, "a: parameter \"command\": there is no \"x\"");
    QTest::ignoreMessage(QtWarningMsg, "b: parameter \"command\": there is no \"\"");
    QCOMPARE(
        check(description, manager, KnowledgeOfOne("picky")),
        QStringList({"panel.yaml:2:3: error: \"a\" has no signal \"outputs\"; it has output(); "
                     "did you mean \"output\"?",
                     "panel.yaml:4:4: error: device \"a\" does not start: parameter "
                     "\"command\": there is no \"x\"",
                     "panel.yaml:5:1: error: device \"b\" does not start: parameter "
                     "\"command\": there is no \"\""}));
    QCOMPARE(check(description, manager).size(), 1);
}

void tst_PanelPlanStarts::valueThatDoesNotConvertIsReportedOnce()
{
    DeviceManager manager;
    manager.registerDeviceType<PickyDevice>("picky");
    const auto description =
        describe::panel({describe::device("a", "picky", {{"count", "many"}}, 4)});
    QCOMPARE(check(description, manager, KnowledgeOfOne("picky")),
             QStringList("panel.yaml:4:4: error: parameter \"count\": \"many\" is not a number"));
}

void tst_PanelPlanStarts::cycleThroughATypeThatBreaksItIsQueuedWithoutAWarning()
{
    DeviceManager manager;
    manager.registerDeviceType<Label>("label");
    manager.registerDeviceType<OutputDigitalDevice>("output_digital");
    const auto description = describe::panel(
        {describe::device("a", "label"), describe::device("b", "output_digital")},
        {"a.output(QString) -> b.input(QString)", "b.output(QString) -> a.input(QString)"});
    norvo::Diagnostics diagnostics(description.file);
    const PanelPlan plan = PanelPlan::make(description, manager, {}, diagnostics, {},
                                           KnowledgeOfOne("output_digital"));
    QCOMPARE(describe::lines(diagnostics), QStringList());
    QVERIFY(!plan.wires[0].isQueued);
    QVERIFY(plan.wires[1].isQueued);
    QCOMPARE(check(description, manager, KnowledgeOfOne("button")).size(), 1);
}

NORVO_TEST(tst_PanelPlanStarts)
#include "tst_PanelPlanStarts.moc"
