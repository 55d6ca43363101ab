// SPDX-License-Identifier: GPL-3.0-or-later

#include "Effort.h"
#include "PanelTexts.h"
#include "TestMain.h"

#include <QtTest>

using norvo::PanelDescription;
using panels::errorsOf;
using panels::sound;

namespace {

/// A device in a line each: "id type param=value param=value".
QStringList devices(const PanelDescription& panel)
{
    QStringList lines;
    for (const auto& device : panel.devices) {
        QStringList line{device.id.text, device.type.text};
        for (const auto& param : device.params) {
            line += param.name.text + '=' + param.value.text;
        }
        lines += line.join(' ');
    }
    return lines;
}

QStringList connections(const PanelDescription& panel)
{
    QStringList lines;
    for (const auto& one : panel.connections) {
        lines += QString("%1.%2 -> %3.%4")
                     .arg(one.from.device.text, one.from.method.text, one.to.device.text,
                          one.to.method.text);
    }
    return lines;
}

const QByteArray kPump = R"yaml(templates:
  pump:
    with: {name: , topic: plant/pump}
    devices:
      motor: {device: button, params: {text: $(name), "$(name)/x": "$(topic) of $(name)"}}
      lamp: {device: indicator}
    connections:
      - motor.toggled -> lamp.input(bool)
)yaml";

} // namespace

/// What a use of a template puts into a panel.
class tst_Templates : public QObject
{
    Q_OBJECT

private slots:
    void useMakesDevicesAndConnectionsOfItsOwn();
    void usesStandInTheOrderOfTheDevices();
    void templateAloneMakesNothing();
    void placesAreThoseOfTheTemplate();
    void placeholders_data();
    void placeholders();
    void valueIsTakenVerbatim();
    void absentValueOfAUseIsAnEmptyText();
    void placeholdersStandForTypesKeysIdsAndNetwork();
    void placeholderOutsideOfATemplateIsAText();
    void positionShiftsRowsAndColumns();
    void areaOfAUseIsThatOfItsDevices();
    void nestedUseHasBothNames();
    void positionsOfNestedUsesAddUp();
    void placeholderNamesDevicesOutside();
    void nameInAValueMeansTheDeviceWhereItIsWritten();
    void anchorsAndAliasesWorkInTemplates();
    void anyStyleOfYamlIsTheSame_data();
    void anyStyleOfYamlIsTheSame();
    void namesCanBeOfAnyLanguage();
    void thousandUsesAreReadAtOnce();
};

void tst_Templates::useMakesDevicesAndConnectionsOfItsOwn()
{
    const PanelDescription panel =
        sound(kPump + "devices:\n  p1: {use: pump, with: {name: A}}\n"
                      "  out: {device: label}\nconnections:\n  - p1-motor.toggled -> out.input\n");
    QCOMPARE(devices(panel), (QStringList{"p1-motor button text=A A/x=plant/pump of A",
                                          "p1-lamp indicator", "out label"}));
    QCOMPARE(connections(panel), (QStringList{"p1-motor.toggled -> p1-lamp.input(bool)",
                                              "p1-motor.toggled -> out.input"}));
    QCOMPARE(panel.connections[0].whole.text, QString("p1-motor.toggled -> p1-lamp.input(bool)"));
}

void tst_Templates::usesStandInTheOrderOfTheDevices()
{
    const PanelDescription panel =
        sound("devices:\n  a: {use: t}\n  x: {device: d}\n  b: {use: t}\n"
              "templates:\n  t: {devices: {y: {device: d}}}\n");
    QCOMPARE(devices(panel), (QStringList{"a-y d", "x d", "b-y d"}));
}

void tst_Templates::templateAloneMakesNothing()
{
    const PanelDescription panel = sound(kPump + "title: x\n");
    QCOMPARE(panel.title.text, QString("x"));
    QVERIFY(panel.devices.isEmpty() && panel.connections.isEmpty());
    QCOMPARE(errorsOf("templates:\n"), QString());
    QCOMPARE(errorsOf("templates: {a: , b: {devices: , with: }}\n"), QString());
}

void tst_Templates::placesAreThoseOfTheTemplate()
{
    const PanelDescription panel = sound(kPump + "devices:\n  p1: {use: pump, with: {name: A}}\n");
    const auto& motor = panel.devices[0];
    QCOMPARE(panels::shown(motor.id), QString("5:7 p1-motor"));
    QCOMPARE(panels::shown(motor.params[0].value), QString("5:46 A"));
    QCOMPARE(panels::shown(panel.connections[0]),
             QString("8:9 p1-motor | 8:15 toggled | 8:26 p1-lamp | 8:31 input(bool)"));
    QVERIFY(motor.id.place.origin);
    QCOMPARE(motor.id.place.origin->file, QString("p"));
    QCOMPARE(motor.id.place.origin->use, QString("in use p1 (line 10)"));
}

void tst_Templates::placeholders_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("alone") << QByteArray("$(a)") << "1";
    QTest::newRow("in a text") << QByteArray("x $(a) y") << "x 1 y";
    QTest::newRow("several") << QByteArray("$(a)$(b)$(a)") << "121";
    QTest::newRow("in quotes") << QByteArray("\"$(a)\\t'$(b)'\"") << "1\t'2'";
    QTest::newRow("in single quotes") << QByteArray("'$(a)'") << "1";
    QTest::newRow("literal") << QByteArray("$$(a)") << "$(a)";
    QTest::newRow("literal and placeholder") << QByteArray("$$(a) is $(a)") << "$(a) is 1";
    QTest::newRow("two literals") << QByteArray("$$(a$$(") << "$(a$(";
    QTest::newRow("dollar before a literal") << QByteArray("$$$(a)") << "$$(a)";
    QTest::newRow("dollars") << QByteArray("$ $$ $a ${a} 5$") << "$ $$ $a ${a} 5$";
    QTest::newRow("parentheses") << QByteArray("(a) ($(a))") << "(a) (1)";
}

void tst_Templates::placeholders()
{
    QFETCH(QByteArray, text);
    // All are used, whichever the row uses.
    const PanelDescription panel =
        sound("templates:\n  t:\n    with: {a: , b: 2}\n    devices:\n      d:\n        device: x\n"
              "        params:\n          p: " +
              text + "\n          all: $(a)$(b)\ndevices: {u: {use: t, with: {a: 1}}}\n");
    QCOMPARE(panel.devices.size(), 1);
    QTEST(panel.devices[0].params[0].value.text, "expected");
}

void tst_Templates::valueIsTakenVerbatim()
{
    const PanelDescription panel =
        sound("templates: {t: {with: {a: , b: '$(a)'}, devices: {d: {device: x, params: {p: "
              "$(a)$(b)}}}}}\n"
              "devices: {u: {use: t, with: {a: '  $(b) no 1.0 $$('}}}\n");
    QCOMPARE(panel.devices.size(), 1);
    QCOMPARE(panel.devices[0].params[0].value.text, QString("  $(b) no 1.0 $$($(a)"));
}

void tst_Templates::absentValueOfAUseIsAnEmptyText()
{
    const QByteArray text = "templates: {t: {with: {a: , b: ''}, devices: {d: {device: x, "
                            "params: {p: '<$(a)|$(b)>'}}}}}\ndevices: {u: {use: t, with: {a: }}}\n";
    const PanelDescription panel = sound(text);
    QCOMPARE(panel.devices.size(), 1);
    QCOMPARE(panel.devices[0].params[0].value.text, QString("<|>"));
}

void tst_Templates::placeholdersStandForTypesKeysIdsAndNetwork()
{
    const PanelDescription panel =
        sound("templates:\n  t:\n    with: {type: , side: , net: , kind: }\n    devices:\n"
              "      l$(side): {device: $(type), network: $(net)}\n"
              "      i$(side): {use: $(kind)}\n    connections:\n      - l$(side).$(side) -> "
              "i$(side)-x.y\n  e: {devices: {x: {device: y}}}\n"
              "devices:\n  u: {use: t, with: {type: label, side: 7, net: 'true', kind: e}}\n");
    QCOMPARE(devices(panel), (QStringList{"u-l7 label", "u-i7-x y"}));
    QCOMPARE(connections(panel), QStringList{"u-l7.7 -> u-i7-x.y"});
    QVERIFY(panel.devices[0].network);
}

void tst_Templates::placeholderOutsideOfATemplateIsAText()
{
    const PanelDescription panel =
        sound("title: $(a) $$(b)\ndevices: {d: {device: x, params: {p: $(a) $$(b)}}}\n");
    QCOMPARE(panel.title.text, QString("$(a) $$(b)"));
    QCOMPARE(panel.devices[0].params[0].value.text, QString("$(a) $$(b)"));
}

void tst_Templates::positionShiftsRowsAndColumns()
{
    const QByteArray text = R"yaml(templates:
  t:
    devices:
      a: {device: x, params: {widget: {row: 1, column: 2}}}
      b: {device: x, params: {widget/Row: 0}}
      c: {device: x, params: {widget: {row: -1, column: q}}}
      d: {device: x, params: {row: 5}}
devices:
  u: {use: t, at: {row: 10, column: 20}}
  v: {use: t, at: {}}
)yaml";
    QCOMPARE(devices(sound(text)),
             (QStringList{"u-a x widget/row=11 widget/column=22", "u-b x widget/Row=10",
                          "u-c x widget/row=-1 widget/column=q", "u-d x row=5",
                          "v-a x widget/row=1 widget/column=2", "v-b x widget/Row=0",
                          "v-c x widget/row=-1 widget/column=q", "v-d x row=5"}));
}

void tst_Templates::areaOfAUseIsThatOfItsDevices()
{
    const PanelDescription panel =
        sound("templates: {t: {devices: {a: {device: x, params: {Widget/Area: Old}}, "
              "b: {device: x}}}}\ndevices: {u: {use: t, at: {area: New}}, v: {use: t}}\n");
    QCOMPARE(devices(panel), (QStringList{"u-a x Widget/Area=New", "u-b x widget/area=New",
                                          "v-a x Widget/Area=Old", "v-b x"}));
    QVERIFY(panel.devices[1].params[0].isOptional); // It may be a device without a widget.
    QVERIFY(!panel.devices[0].params[0].isOptional);
}

void tst_Templates::nestedUseHasBothNames()
{
    const PanelDescription panel = sound(R"yaml(templates:
  inner:
    with: {text: }
    devices: {a: {device: label, params: {Value: "<$(text)>"}}}
  outer:
    with: {name: }
    devices:
      i: {use: inner, with: {text: "of $(name)"}}
      b: {device: button}
    connections: [b.toggled -> i-a.input]
devices: {u: {use: outer, with: {name: x}}}
)yaml");
    QCOMPARE(devices(panel), (QStringList{"u-i-a label Value=<of x>", "u-b button"}));
    QCOMPARE(connections(panel), QStringList{"u-b.toggled -> u-i-a.input"});
    QCOMPARE(panel.devices[0].id.place.origin->use,
             QString("in use u-i (line 8), in use u (line 11)"));
}

void tst_Templates::positionsOfNestedUsesAddUp()
{
    const PanelDescription panel = sound(R"yaml(templates:
  inner: {devices: {a: {device: x, params: {widget/row: 1}}}}
  outer: {devices: {i: {use: inner, at: {row: 10, area: Inner}}}}
devices: {u: {use: outer, at: {row: 100, area: Outer}}, v: {use: outer}}
)yaml");
    QCOMPARE(devices(panel), (QStringList{"u-i-a x widget/row=111 widget/area=Outer",
                                          "v-i-a x widget/row=11 widget/area=Inner"}));
}

void tst_Templates::placeholderNamesDevicesOutside()
{
    const PanelDescription panel = sound(R"yaml(templates:
  t:
    with: {source: , sink: , n: 1}
    devices: {a: {device: x}}
    connections:
      - $(source) -> a.input
      - "a.output$(n) ->  $(sink).input$(n)"
devices:
  u: {use: t, with: {source: bench.level, sink: a}}
)yaml");
    QCOMPARE(connections(panel),
             (QStringList{"bench.level -> u-a.input", "u-a.output1 -> a.input1"}));
    QCOMPARE(panels::shown(panel.connections[0]),
             QString("6:9 bench | 6:9 level | 6:22 u-a | 6:24 input"));
}

void tst_Templates::nameInAValueMeansTheDeviceWhereItIsWritten()
{
    const PanelDescription panel = sound(R"yaml(templates:
  inner:
    with: {from: , to: a.byDefault}
    devices: {a: {device: x}}
    connections: [$(from) -> $(to)]
  outer:
    with: {source: }
    devices:
      m: {device: x}
      own: {use: inner, with: {from: m.output}}
      passed: {use: inner, with: {from: $(source), to: m.input}}
devices:
  m: {device: x}
  u: {use: outer, with: {source: m.level}}
)yaml");
    QCOMPARE(connections(panel),
             (QStringList{"u-m.output -> u-own-a.byDefault", "m.level -> u-m.input"}));
}

void tst_Templates::anchorsAndAliasesWorkInTemplates()
{
    const PanelDescription panel = sound(R"yaml(templates:
  t:
    with: {n: &one 1}
    devices:
      a: &device {device: x, params: &params {p: $(n)}}
      b: *device
      c: {device: y, params: *params}
devices:
  u: {use: t, with: &with {n: 2}}
  v: {use: t, with: *with}
  w: {device: z, params: *params}
  x: {device: z, params: {q: *one}}
)yaml");
    QCOMPARE(devices(panel), (QStringList{"u-a x p=2", "u-b x p=2", "u-c y p=2", "v-a x p=2",
                                          "v-b x p=2", "v-c y p=2", "w z p=$(n)", "x z q=1"}));
}

void tst_Templates::anyStyleOfYamlIsTheSame_data()
{
    QTest::addColumn<QByteArray>("text");
    const QByteArray block = "templates:\n  t:\n    with:\n      n:\n    devices:\n      a:\n"
                             "        device: x\n        params:\n          p: $(n) y\n"
                             "    connections:\n    - a.b -> $(n).d\ndevices:\n  u:\n    use: t\n"
                             "    with:\n      n: c\n";
    QTest::newRow("block") << block;
    QTest::newRow("CR LF") << QByteArray(block).replace("\n", "\r\n");
    QTest::newRow("byte order mark") << "\xef\xbb\xbf" + block;
    QTest::newRow("flow") << QByteArray("{templates: {t: {with: {n: }, devices: {a: {device: x, "
                                        "params: {p: $(n) y}}}, connections: [a.b -> $(n).d]}}, "
                                        "devices: {u: {use: t, with: {n: c}}}}");
    QTest::newRow("quotes") << QByteArray("{'templates': {\"t\": {'with': {'n': }, 'devices': "
                                          "{'a': {'device': \"x\", params: {p: '$(n) y'}}}, "
                                          "connections: [\"a.b -> $(n).d\"]}}, \"devices\": "
                                          "{\"u\": {'use': \"t\", 'with': {'n': 'c'}}}}");
}

void tst_Templates::anyStyleOfYamlIsTheSame()
{
    QFETCH(QByteArray, text);
    const PanelDescription panel = sound(text);
    QCOMPARE(devices(panel), QStringList{"u-a x p=c y"});
    QCOMPARE(connections(panel), QStringList{"u-a.b -> c.d"});
}

void tst_Templates::namesCanBeOfAnyLanguage()
{
    const PanelDescription panel =
        sound("templates: {Pumpe-größe: {with: {größe: }, devices: {水位: {device: x, params: "
              "{p: $(größe)}}}, connections: [水位.a -> 水位.b]}}\n"
              "devices: {насос: {use: Pumpe-größe, with: {größe: 1 m³}}}\n");
    QCOMPARE(devices(panel), QStringList{QString("насос-水位 x p=1 m³")});
    QCOMPARE(connections(panel), QStringList{QString("насос-水位.a -> насос-水位.b")});
}

void tst_Templates::thousandUsesAreReadAtOnce()
{
    QByteArray text = kPump + "devices:\n";
    for (int i = 0; i < 1000; ++i) {
        const QByteArray n = QByteArray::number(i);
        text += "  p" + n + ": {use: pump, with: {name: Pump " + n + "}, at: {row: 1}}\n";
    }
    const norvo::ProcessorTimer timer;
    QCOMPARE(sound(text).devices.size(), 2000);
    QVERIFY(timer.elapsedMs() < 2000);
}

NORVO_GUILESS_TEST(tst_Templates)
#include "tst_Templates.moc"
