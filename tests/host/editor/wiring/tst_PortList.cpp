// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/EditedPanel.h"
#include "TestMain.h"

#include "host/editor/wiring/ports/PortList.h"

#include <QElapsedTimer>
#include <QtTest>

using norvo::Port;
using norvo::PortFit;
using norvo::PortList;

namespace {

const QByteArray kPanel = "devices:\n"
                          "  go: {device: button, params: {text: Go}}\n"
                          "  goal: {device: input}\n"
                          "  field: {device: output_digital}\n"
                          "  trend: {device: output_graph}\n"
                          "  lamp: {device: indicator}\n"
                          "  wave: {device: generator}\n"
                          "  hot:\n"
                          "    device: calc\n"
                          "    inputs: {t: \"\", limit: \"30\"}\n"
                          "    outputs: {tooHot: t > limit}\n"
                          "  warm:\n"
                          "    device: calc\n"
                          "    inputs: {t: \"\"}\n"
                          "    outputs: {half: t / 2}\n"
                          "connections:\n"
                          "  - wave.output(double) -> hot.t(double)\n";

Port portOf(const QVector<Port>& ports, const QString& name)
{
    for (const Port& port : ports) {
        if (port.name == name) {
            return port;
        }
    }
    qFatal("there is no port %s", qPrintable(name));
    return {};
}

QStringList namesOf(const QVector<Port>& ports)
{
    QStringList names;
    for (const Port& port : ports) {
        names.append(port.name);
    }
    return names;
}

/// "go.clicked" of the list.
Port find(const PortList& list, const QString& text, bool isOutput)
{
    const QString device = text.section('.', 0, 0);
    return portOf(isOutput ? list.outputs(device) : list.inputs(device), text.section('.', 1));
}

PortFit fitOf(const PortList& list, const QString& from, const QString& to)
{
    return list.fit(find(list, from, true), find(list, to, false));
}

} // namespace

class tst_PortList : public QObject
{
    Q_OBJECT

private slots:
    void portsAreThoseForThePanelsAuthor();
    void namedPortsHaveTheirDefinitionAsMeaning();
    void fits_data();
    void fits();
    void whatDoesNotFitSaysWhy();
    void whatIsConnectedIsNotConnectedAgain();
    void eitherEndMayComeFirst();
    void whatFitsPassesTheCheck();
    void aCircleIsNamed();
    void aWireIsKnownByItsSignatures();
    void amongAThousandDevicesItIsQuick();
};

void tst_PortList::portsAreThoseForThePanelsAuthor()
{
    EditedPanel panel(kPanel);
    const PortList list(*panel.session);
    QCOMPARE(namesOf(list.outputs("go")).count("clicked"), 1);
    QVERIFY(!find(list, "go.clicked", true).meaning.isEmpty());
    QCOMPARE(find(list, "go.clicked", true).carries(), QString("a pulse"));
    QCOMPARE(find(list, "goal.output", true).carries(), QString("number or text"));
    QVERIFY(!namesOf(list.outputs("goal")).contains("wgOutput"));
    QVERIFY(!namesOf(list.inputs("goal")).contains("wgInput"));
    const norvo::TypeWords& words = *EditedPanel::types().words("output_graph");
    const QVector<norvo::MethodWords> all = words.outputs + words.inputs;
    for (const norvo::MethodWords& one : all) {
        const bool isOutput = &one - &all[0] < words.outputs.size();
        const Port expected{"trend", one.name(), isOutput, {}, {}};
        QVERIFY2(!one.isForWidget ||
                     !(list.outputs("trend") + list.inputs("trend")).contains(expected),
                 qPrintable(one.signature));
    }
    QVERIFY(list.outputs("nobody").isEmpty());
}

void tst_PortList::namedPortsHaveTheirDefinitionAsMeaning()
{
    EditedPanel panel(kPanel);
    const PortList list(*panel.session);
    QVERIFY(namesOf(list.inputs("hot")).contains("limit"));
    QCOMPARE(find(list, "hot.tooHot", true).meaning, QString("t > limit"));
    QCOMPARE(find(list, "hot.limit", false).meaning, QString("30"));
    QCOMPARE(find(list, "hot.t", false).meaning, QString());
    QCOMPARE(find(list, "hot.tooHot", true).carries(), QString("number, text or yes/no"));
    QVERIFY(namesOf(list.inputs("warm")) != namesOf(list.inputs("hot")));
}

void tst_PortList::fits_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QStringList>("texts"); // As a person would write them.
    QTest::addColumn<QStringList>("carried");

    QTest::newRow("one pair") << "go.toggled"
                              << "lamp.input" << QStringList("go.toggled -> lamp.input")
                              << QStringList("yes/no");
    QTest::newRow("one pair, a pulse")
        << "go.clicked"
        << "go.toggle" << QStringList("go.clicked -> go.toggle") << QStringList("a pulse");
    QTest::newRow("two pairs") << "goal.output"
                               << "field.input"
                               << QStringList({"goal.output(double) -> field.input",
                                               "goal.output(QString) -> field.input"})
                               << QStringList({"number", "text"});
    QTest::newRow("chosen by the input")
        << "hot.tooHot"
        << "lamp.input" << QStringList("hot.tooHot -> lamp.input") << QStringList("yes/no");
    QTest::newRow("between two named ports")
        << "hot.tooHot"
        << "warm.t" << QStringList("hot.tooHot -> warm.t") << QStringList("text");
    QTest::newRow("all bring the same")
        << "goal.output"
        << "go.click" << QStringList("goal.output(QString) -> go.click") << QStringList("a pulse");
}

void tst_PortList::fits()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    EditedPanel panel(kPanel);
    QStringList texts;
    QStringList carried;
    const PortFit fit = fitOf(PortList(*panel.session), from, to);
    for (const norvo::WireChoice& choice : fit.choices) {
        texts.append(choice.from + " -> " + choice.to);
        carried.append(choice.carries);
    }
    QTEST(texts, "texts");
    QTEST(carried, "carried");
    QCOMPARE(fit.whyNot, QString());
}

void tst_PortList::whatDoesNotFitSaysWhy()
{
    EditedPanel panel(kPanel);
    const PortList list(*panel.session);
    const PortFit fit = fitOf(list, "goal.output", "lamp.input");
    QVERIFY(!fit.isPossible());
    QCOMPARE(fit.whyNot, QString("goal.output carries number or text, lamp.input takes yes/no"));
    QVERIFY(!list.fits(find(list, "goal.output", true), find(list, "lamp.input", false)));
}

void tst_PortList::whatIsConnectedIsNotConnectedAgain()
{
    EditedPanel panel(kPanel);
    const PortList list(*panel.session);
    QCOMPARE(fitOf(list, "wave.output", "hot.t").whyNot,
             QString("wave.output is connected to hot.t already"));
    QVERIFY(!list.fits(find(list, "wave.output", true), find(list, "hot.t", false)));
    QVERIFY(fitOf(list, "wave.output", "hot.limit").isPossible());
}

void tst_PortList::eitherEndMayComeFirst()
{
    EditedPanel panel(kPanel);
    const PortList list(*panel.session);
    const Port output = find(list, "go.toggled", true);
    const Port input = find(list, "lamp.input", false);
    QCOMPARE(list.fit(input, output).choices.first().from, QString("go.toggled"));
    QVERIFY(list.opposites(output, "lamp").contains(input));
    QVERIFY(list.opposites(input, "go").contains(output));
}

/// Whatever is offered between any two devices, the plan takes without an error.
void tst_PortList::whatFitsPassesTheCheck()
{
    EditedPanel panel(kPanel);
    const PortList list(*panel.session);
    QByteArray text = kPanel;
    int count = 0;
    const QStringList ids{"go", "goal", "field", "trend", "lamp", "wave", "hot", "warm"};
    for (const QString& from : ids) {
        for (const QString& to : ids) {
            for (const Port& output : list.outputs(from)) {
                for (const Port& input : list.inputs(to)) {
                    for (const norvo::WireChoice& choice : list.fit(output, input).choices) {
                        text += QString("  - %1 -> %2\n").arg(choice.from, choice.to).toUtf8();
                        ++count;
                    }
                }
            }
        }
    }
    QVERIFY2(count > 100, qPrintable(QString::number(count)));
    norvo::Diagnostics diagnostics("panel.yaml");
    const auto described = norvo::PanelFile::parse(text, "panel.yaml", diagnostics);
    const auto plan = norvo::PanelPlan::make(described, builtTypes(), {}, diagnostics);
    for (const norvo::Diagnostic& one : diagnostics.sorted()) {
        QVERIFY2(one.severity == norvo::Diagnostic::Severity::Warning || one.text.contains("calls"),
                 qPrintable(one.toString()));
    }
    QCOMPARE(plan.wires.size(), count + 1);
}

void tst_PortList::aCircleIsNamed()
{
    EditedPanel panel("devices:\n"
                      "  a: {device: input}\n"
                      "  b: {device: input}\n"
                      "  c: {device: input}\n"
                      "connections:\n"
                      "  - b.output(double) -> c.input\n"
                      "  - a.output(double) -> b.input\n");
    const PortList list(*panel.session);
    const QString circle = list.circle("c", "a");
    QVERIFY2(circle.count(" -> ") == 3, qPrintable(circle));
    QCOMPARE(list.circle("a", "c"), QString());
}

void tst_PortList::aWireIsKnownByItsSignatures()
{
    EditedPanel panel(kPanel);
    const PortList list(*panel.session);
    const auto wire = list.wire(panel.description().connections.first());
    QVERIFY(wire);
    QCOMPARE(wire->signal, QString("output(double)"));
    QCOMPARE(wire->slot, QString("t(double)"));
    QCOMPARE(wire->from, QString("wave"));
    QCOMPARE(wire->to, QString("hot"));
}

void tst_PortList::amongAThousandDevicesItIsQuick()
{
    QByteArray text = "devices:\n  go: {device: button}\n";
    for (int i = 0; i < 250; ++i) {
        for (const char* type : {"label", "indicator", "output_digital"}) {
            text += QString("  %1%2: {device: %1}\n").arg(type).arg(i).toUtf8();
        }
        text += QString("  calc%1: {device: calc, inputs: {t: \"\"}, outputs: {x: t}}\n")
                    .arg(i)
                    .toUtf8();
    }
    EditedPanel panel(text);
    QElapsedTimer timer;
    timer.start();
    const PortList list(*panel.session);
    const Port output = find(list, "go.toggled", true);
    int count = 0;
    for (const norvo::DeviceSetting& device : panel.description().devices) {
        for (const Port& input : list.inputs(device.id.text)) {
            count += list.fits(output, input) ? 1 : 0;
        }
    }
    qInfo("%d inputs of 1,000 devices fit, found in %lld ms", count, timer.elapsed());
    QVERIFY(count >= 750);
}

NORVO_TEST(tst_PortList)
#include "tst_PortList.moc"
