// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/core/PortsSubject.h"
#include "host/panel/Descriptions.h"
#include "host/panel/TestPanel.h"
#include "host/panel/file/PanelFile.h"
#include "host/panel/file/PanelTexts.h"
#include "host/panel/plan/PanelPlan.h"

#include "devices/IndicatorDevice.h"
#include "devices/Label.h"
#include "norvo/DeviceManager.h"
#include "TestMain.h"

#include <QtTest>

using namespace norvo;

/// Outputs and inputs that a panel's author names, from the file to the wires.
class tst_NamedPorts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void portsAreReadWithPlaces();
    void formIsChecked_data();
    void formIsChecked();
    void definitionsAreChecked_data();
    void definitionsAreChecked();
    void connectionsAreCheckedAsToAnyOther_data();
    void connectionsAreCheckedAsToAnyOther();
    void errorKeepsThePanelFromStarting();
    void valuesRunAlong();
    void templatesFillNamesAndDefinitions();
    void errorInATemplateNamesTheUse();
    void changedDefinitionMakesTheDeviceAgain();

private:
    QStringList check(const QByteArray& text)
    {
        Diagnostics diagnostics("p");
        PanelPlan::make(panels::parse(text, diagnostics), m_manager, {}, diagnostics);
        return describe::lines(diagnostics);
    }
    PortsSubject* subject(const Panel& panel, const QString& id)
    {
        return dynamic_cast<PortsSubject*>(panel.device(id));
    }

    DeviceManager m_manager;
};

void tst_NamedPorts::initTestCase()
{
    m_manager.registerDeviceType<PortsSubject>("subject");
    m_manager.registerDeviceType<Label>("label");
    m_manager.registerDeviceType<IndicatorDevice>("indicator");
}

void tst_NamedPorts::portsAreReadWithPlaces()
{
    const PanelDescription panel = panels::sound("devices:\n"
                                                 "  a:\n"
                                                 "    inputs: {set: \"set %1\", off: }\n"
                                                 "    device: subject\n"
                                                 "    outputs:\n"
                                                 "      t: {keep: true, as: T (.*)}\n"
                                                 "      u: {keep: no}\n");
    QCOMPARE(panel.devices.size(), 1);
    QStringList ports;
    for (const PortSetting& port : panel.devices[0].ports) {
        ports.append(QString("%1 %2 = %3 %4")
                         .arg(port.isOutput ? "out" : "in", panels::shown(port.name),
                              panels::shown(port.definition),
                              QStringList(port.options.keys() + port.options.values()).join(':')));
    }
    QCOMPARE(ports,
             QStringList({"in 3:14 set = 3:19 set %1 ", "in 3:29 off = 3:29  ",
                          "out 6:7 t = 6:27 T (.*) keep:true", "out 7:7 u = 7:10  keep:no"}));
}

void tst_NamedPorts::formIsChecked_data()
{
    QTest::addColumn<QByteArray>("ports");
    QTest::addColumn<QString>("error");
    const auto row = [](const char* name, const QByteArray& ports, const QString& error) {
        QTest::newRow(name) << ports << error;
    };
    row("a text", "outputs: x",
        "1:41: error: outputs must be a map: the name of each, and its definition");
    row("a list", "inputs: [x]",
        "1:40: error: inputs must be a map: the name of each, and its definition");
    row("nothing", "inputs: ", "");
    row("definition, a list", "inputs: {x: [a]}",
        "1:44: error: the definition of \"x\" must be a text or a map, such as {as: TEXT}, not a "
        "list");
    row("option, a list", "inputs: {x: {as: a, keep: [b]}}",
        "1:58: error: \"keep\" must be a text");
    row("as, a map", "inputs: {x: {as: {b: c}}}", "1:49: error: \"as\" must be a text");
    row("name twice", "inputs: {x: a, x: b}",
        "1:47: error: the key \"x\" is given twice; it is already in line 1, column 41");
    row("key misspelt", "output: {x: a}",
        "1:32: error: unknown key \"output\" of the device \"a\"; did you mean \"outputs\"?");
}

void tst_NamedPorts::formIsChecked()
{
    QFETCH(QByteArray, ports);

    QTEST(panels::errorsOf("devices: {a: {device: subject, " + ports + "}}\n"), "error");
}

void tst_NamedPorts::definitionsAreChecked_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("errors");

    QTest::newRow("sound") << QByteArray("devices:\n  a:\n    device: subject\n    outputs:\n"
                                         "      t: good\n      u: {as: good, keep: 1}\n")
                           << QStringList();
    QTest::newRow("all of them, in their order")
        << QByteArray("devices:\n  a:\n    device: subject\n    outputs:\n"
                      "      t: bad 1\n      u: {kep: 1, as: good}\n      \"a b\": good\n"
                      "    inputs:\n      Command: x\n      ready: y\n      v: good\n"
                      "  b: {device: subject, inputs: {w: bad 2}}\n")
        << QStringList{
               "p:5:10: error: output \"t\": \"bad 1\" is bad",
               "p:6:23: error: output \"u\": unknown option \"kep\"; valid names: \"as\", "
               "\"keep\"",
               "p:7:14: error: output \"a b\": the name \"a b\" holds more than letters, "
               "digits, \"_\" and \"-\"",
               "p:9:16: error: input \"Command\": \"Command\" is the name of a parameter of "
               "the device; choose another",
               "p:10:14: error: input \"ready\": \"ready\" is the name of an output or "
               "input that the device has by itself; choose another",
               "p:12:36: error: input \"w\": \"bad 2\" is bad"};
    QTest::newRow("output and input of one name")
        << QByteArray("devices:\n  a:\n    device: subject\n    inputs: {x: a}\n"
                      "    outputs: {x: b}\n")
        << QStringList("p:5:18: error: output \"x\": there is an input \"x\" already; a device has "
                       "each name once");
    QTest::newRow("outputs after the inputs, wherever they stand")
        << QByteArray("devices:\n  a:\n    device: subject\n    outputs: {x: b}\n"
                      "    inputs: {x: a}\n")
        << QStringList("p:4:18: error: output \"x\": there is an input \"x\" already; a device has "
                       "each name once");
    QTest::newRow("type that takes none")
        << QByteArray("devices:\n  a: {device: label, outputs: {x: a, y: b}, inputs: {z: c}}\n"
                      "  b: {device: label}\nconnections:\n  - a.x -> b.input\n")
        << QStringList("p:2:32: error: a device of type \"label\" takes no outputs and inputs of "
                       "its author's; leave the key away");
}

void tst_NamedPorts::definitionsAreChecked()
{
    QFETCH(QByteArray, text);

    QTEST(check(text), "errors");
}

void tst_NamedPorts::connectionsAreCheckedAsToAnyOther_data()
{
    QTest::addColumn<QString>("connection");
    QTest::addColumn<QStringList>("errors");

    for (const char* good : {"a.temp(double) -> l.input", "a.temp -> b.set", "a.temp -> i.input",
                             "l.output -> a.set", "i.output -> a.set(bool)", "b.ready -> a.set",
                             "a.connected -> i.input", "a.temp(QString) -> b.set()"}) {
        QTest::newRow(good) << good << QStringList();
    }
    QTest::newRow("misspelt") << "a.tmp -> i.input"
                              << QStringList("p:10:7: error: \"a\" has no signal \"tmp\"; it has "
                                             "connected(bool), fault(QString), ready(), "
                                             "temp(double), temp(QString), temp(bool); did you "
                                             "mean \"temp\"?");
    QTest::newRow("wrong way round")
        << "b.set -> a.temp"
        << QStringList{"p:10:7: error: \"b\" has no signal \"set\"; it has connected(bool), "
                       "fault(QString), ready()",
                       "p:10:16: error: \"a\" has no slot \"temp\"; it has restart(), "
                       "set(double), set(int), set(bool), set(QString), set()"};
    QTest::newRow("of another device of the type") << "b.temp -> i.input"
                                                   << QStringList("p:10:7: error: \"b\" has no "
                                                                  "signal \"temp\"; it has "
                                                                  "connected(bool), "
                                                                  "fault(QString), ready()");
    QTest::newRow("kind left open") << "a.temp -> l.input"
                                    << QStringList("p:10:5: error: \"a.temp -> l.input\" can mean "
                                                   "several pairs; choose one of: a.temp(double) "
                                                   "-> l.input(double), a.temp(QString) -> "
                                                   "l.input(QString)");
    QTest::newRow("refused definition") << "a.wrong -> i.input" << QStringList();
    QTest::newRow("refused definition of an input") << "i.output -> a.lost" << QStringList();
    QTest::newRow("refused definition, with a signature")
        << "a.wrong(bool) -> i.input" << QStringList();
}

void tst_NamedPorts::connectionsAreCheckedAsToAnyOther()
{
    QFETCH(QString, connection);
    QFETCH(QStringList, errors);

    const QByteArray text = "devices:\n  a:\n    device: subject\n    inputs: {set: x, lost: bad}\n"
                            "    outputs: {temp: y, wrong: bad}\n"
                            "  b: {device: subject, inputs: {set: y}}\n"
                            "  l: {device: label}\n  i: {device: indicator}\nconnections:\n  - ";
    const QStringList all = check(text + connection.toUtf8() + '\n');
    const QStringList refused{"p:4:28: error: input \"lost\": \"bad\" is bad",
                              "p:5:31: error: output \"wrong\": \"bad\" is bad"};
    QCOMPARE(all.join('\n'), (refused + errors).join('\n'));
}

void tst_NamedPorts::errorKeepsThePanelFromStarting()
{
    Diagnostics diagnostics("p");
    PanelPlan::make(
        panels::parse("devices: {a: {device: subject, outputs: {x: bad}}}\n", diagnostics),
        m_manager, {}, diagnostics);
    QVERIFY(diagnostics.preventsStart());
}

void tst_NamedPorts::valuesRunAlong()
{
    TestPanel panel(m_manager, panels::sound("devices:\n"
                                             "  a: {device: subject, outputs: {x: 1, y: 2}}\n"
                                             "  b: {device: subject, inputs: {p: 1, q: 2}}\n"
                                             "  i: {device: indicator}\n"
                                             "connections:\n"
                                             "  - a.y -> b.q\n"
                                             "  - a.x(double) -> b.p(double)\n"
                                             "  - i.output -> b.p\n"));
    QWidget page;
    panel.start(&page);
    QCOMPARE(describe::lines(panel.diagnostics()), QStringList());
    PortsSubject* const a = subject(panel, "a");
    PortsSubject* const b = subject(panel, "b");
    QVERIFY(a->isHeard(0) && a->isHeard(1));
    a->sendText(0, "12.5");
    a->sendNumber(1, 3);
    qobject_cast<IndicatorDevice*>(panel.device("i"))->input(true);
    const QVector<QPair<int, QVariant>> expected{{0, 12.5}, {1, QString("3")}, {0, true}};
    QCOMPARE(b->received, expected);
    QCOMPARE(b->getIncomingConnections(),
             QStringList({"a.y(QString)", "a.x(double)", "i.output(bool)"}));
}

void tst_NamedPorts::templatesFillNamesAndDefinitions()
{
    const QByteArray text = "templates:\n  t:\n    with: {name: , topic: , kept: 0}\n"
                            "    devices:\n      s:\n        device: subject\n"
                            "        outputs: {$(name): {as: get $(topic), keep: $(kept)}}\n"
                            "        inputs: {set-$(name): set $(topic)}\n"
                            "devices:\n"
                            "  u: {use: t, with: {name: speed, topic: a/b, kept: 5}}\n"
                            "  v: {use: t, with: {name: heat, topic: c}}\n"
                            "connections:\n  - u-s.speed -> v-s.set-heat\n";
    QCOMPARE(check(text), QStringList());
    const PanelDescription panel = panels::sound(text);
    const QVector<PortSetting>& ports = panel.devices[0].ports;
    QCOMPARE(ports[0].name.text, QString("speed"));
    QCOMPARE(ports[0].definition.text, QString("get a/b"));
    QCOMPARE(ports[0].options.value("keep"), QString("5"));
    QCOMPARE(ports[1].name.text, QString("set-speed"));
    QCOMPARE(ports[1].definition.text, QString("set a/b"));
}

void tst_NamedPorts::errorInATemplateNamesTheUse()
{
    const QByteArray text = "templates:\n  t:\n    with: {topic: }\n    devices:\n"
                            "      s: {device: subject, outputs: {x: $(topic)}}\n"
                            "devices:\n  u: {use: t, with: {topic: fine}}\n"
                            "  v: {use: t, with: {topic: bad}}\n";
    QCOMPARE(check(text),
             QStringList("p:5:41: error: output \"x\": \"bad\" is bad [in use v (line 8)]"));
}

void tst_NamedPorts::changedDefinitionMakesTheDeviceAgain()
{
    const auto described = [](const QByteArray& ports) {
        return panels::sound("devices:\n  a: {device: subject, " + ports + "}\n");
    };
    TestPanel panel(m_manager, described("outputs: {x: 1}"));
    QWidget page;
    panel.start(&page);
    const BaseDevice* const before = panel.device("a");
    panel.change(described("outputs:   {x: '1'}"));
    QCOMPARE(panel.device("a"), before);
    for (const char* ports : {"outputs: {x: 2}", "outputs: {y: 2}", "inputs: {y: 2}",
                              "inputs: {y: {as: 2, keep: 1}}", "network: true"}) {
        const QPointer<BaseDevice> last = panel.device("a");
        panel.change(described(ports));
        QVERIFY2(!last, ports);
    }
}

NORVO_TEST(tst_NamedPorts)
#include "tst_NamedPorts.moc"
