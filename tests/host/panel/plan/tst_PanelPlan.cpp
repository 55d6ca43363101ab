// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/PanelPlan.h"

#include "Effort.h"
#include "host/panel/Descriptions.h"

#include "devices/ButtonDevice.h"
#include "devices/Label.h"
#include "devices/OutputDigitalDevice.h"
#include "host/panel/file/PanelFile.h"
#include "norvo/DeviceManager.h"
#include "TestMain.h"

#include <QtTest>

using norvo::PanelPlan;

Q_DECLARE_METATYPE(norvo::PanelDescription)

namespace {

QStringList check(const norvo::PanelDescription& description, const DeviceManager& manager)
{
    norvo::Diagnostics diagnostics(description.file);
    PanelPlan::make(description, manager, {}, diagnostics);
    return describe::lines(diagnostics);
}

} // namespace

class tst_PanelPlan : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void badFiles_data();
    void badFiles();
    void goodPanelHasNoErrors();
    void oddTextsAreReportedAsTheyAre();
    void unknownDevicesComeWithTheNearestId();
    void valueThatMultipliesIsAnError();
    void gridBeyondAllBoundsIsAnError();
    void anyPanelIsPlannedInNoTime_data();
    void anyPanelIsPlannedInNoTime();
    void thousandsOfDevicesTakeNoTime();

private:
    DeviceManager m_manager;
};

void tst_PanelPlan::initTestCase()
{
    m_manager.registerDeviceType<ButtonDevice>("button");
    m_manager.registerDeviceType<Label>("label");
    m_manager.registerDeviceType<OutputDigitalDevice>("output_digital");
}

void tst_PanelPlan::badFiles_data()
{
    QTest::addColumn<QStringList>("expected"); // without the file's name

    const auto error = [](const char* file, const QStringList& lines) {
        QTest::newRow(file) << lines;
    };
    const QString slotsOfLabel = "inputWarning(bool), input(QString), input(double)";
    const QString type = "unknown device type ";
    const QString is = "parameter ";
    const QString row = "is not a whole number from 0 to 999, nor -1 for the next free place";
    const QString span = "is not a whole number from 1 to 1000";
    const QString cycle = "; its values are passed on from the event loop";

    error("unknown-type", {"3:13: error: " + type + "\"buton\"; did you mean \"button\"?"});
    error("unknown-type-unlike-any", {"3:13: error: " + type +
                                      "\"thermometer\"; valid names: "
                                      "\"button\", \"label\", \"output_digital\""});
    error("unknown-parameter",
          {"6:24: error: a device of type \"label\" has no parameter \"widget/fontsise\"; did you "
           "mean \"widget/fontSize\"?"});
    error("value-is-no-number",
          {"4:31: error: " + is + "\"widget/fontSize\": \"large\" is not a number"});
    error("value-is-neither-true-nor-false",
          {"4:23: error: " + is + "\"toggled\": \"perhaps\" is neither true nor false"});
    error("option-outside-its-list",
          {"4:20: warning: " + is +
           "\"mode\": \"Toggle\" is not one of \"toggle\", \"click\"; did you "
           "mean \"toggle\"?"});
    error("row-is-no-whole-number", {"5:21: error: " + is + "\"widget/row\": \"1.5\" " + row,
                                     "5:34: error: " + is + "\"widget/column\": \"-2\" " + row});
    error("span-out-of-range", {"5:25: error: " + is + "\"widget/rowspan\": \"0\" " + span,
                                "5:37: error: " + is + "\"widget/colspan\": \"1001\" " + span});
    error("overlapping-cells",
          {"6:3: error: \"low\" and \"wide\" (line 2) overlap at row 1, column 2"});
    error("overlapping-cells-of-an-area",
          {"6:3: error: \"air\" and \"none\" (line 2) overlap at row 0, column 0 of area \"Air\""});
    error("alarm-signals",
          {"4:14: error: there is no device \"stpo\"; did you mean \"stop\"?",
           "5:19: error: \"stop\" has no signal \"toggeld\"; did you mean \"toggled\"?",
           "6:19: error: above needs a number, and \"stop\" sends toggled(bool)"});
    error("unknown-signal",
          {"5:10: error: \"stop\" has no signal \"toggeld\"; it has toggled(bool), clicked(); did "
           "you mean \"toggled\"?"});
    error("unknown-slot", {"5:27: error: \"shown\" has no slot \"inputwarning\"; it has " +
                           slotsOfLabel + "; did you mean \"inputWarning\"?"});
    error("unknown-overload",
          {"5:10: error: \"stop\" has no signal \"toggled(double)\"; it has toggled(bool)",
           "5:35: error: \"shown\" has no slot \"input(bool)\"; it has input(QString), "
           "input(double)"});
    error("types-do-not-fit",
          {"5:5: error: stop.toggled(bool) does not fit shown.input(QString) or input(double); "
           "what fits: stop.toggled(bool) -> shown.inputWarning(bool)"});
    error("several-pairs-fit",
          {"5:5: error: \"readout.output -> shown.input\" can mean several pairs; choose one of: "
           "readout.output(double) -> shown.input(double), "
           "readout.output(QString) -> shown.input(QString)"});
    error("missing-device", {"5:5: error: there is no device \"stpo\"; did you mean \"stop\"?",
                             "5:21: error: there is no device \"label\""});
    error("duplicate-arrow",
          {"6:5: warning: stop.toggled(bool) -> shown.inputWarning(bool) is connected already, in "
           "line 5; each value will arrive twice"});
    error("cycle",
          {"8:5: warning: this connection closes the cycle first -> second -> third -> first" +
           cycle});
    error("cycle-of-one",
          {"4:5: warning: this connection closes the cycle shown -> shown" + cycle});
    error("several-errors",
          {"5:20: warning: " + is +
               "\"mode\": \"clik\" is not one of \"toggle\", \"click\"; did you "
               "mean \"click\"?",
           "5:59: error: a device of type \"button\" has no parameter \"size\"; valid names: "
           "\"widget/row\", \"widget/column\", \"widget/rowspan\", \"widget/colspan\", "
           "\"widget/area\", \"text\", \"toggled\", \"mode\", \"widget/fontSize\"",
           "7:13: error: " + type + "\"butten\"; did you mean \"button\"?",
           "8:3: error: \"shown\" and \"stop\" (line 3) overlap at row 0, column 0",
           "10:65: error: " + is + "\"widget/precision\": \"two\" is not a number",
           "13:5: error: stop.clicked() does not fit shown.input(QString) or input(double); what "
           "fits: stop.toggled(bool) -> shown.inputWarning(bool)",
           "14:21: error: there is no device \"nobody\""});
}

void tst_PanelPlan::badFiles()
{
    QFETCH(QStringList, expected);
    const QString file = QString("tests/panels/bad/%1.yaml").arg(QTest::currentDataTag());
    norvo::Diagnostics diagnostics("panel.yaml");
    const auto description = norvo::PanelFile::read(file, diagnostics);
    QCOMPARE(describe::lines(diagnostics), QStringList());
    expected.replaceInStrings(QRegularExpression("^"), file + ":");
    QCOMPARE(check(description, m_manager), expected);
}

void tst_PanelPlan::goodPanelHasNoErrors()
{
    const auto description = describe::panel(
        {describe::device("stop", "BUTTON", {{"MODE", "click"}, {"widget/row", "-1"}}),
         describe::device("shown", "label", {{"widget/row", "1"}, {"widget/column", "0"}}),
         describe::device("alone", "label", {{"widget/fontSize", "1e1"}})},
        {"stop.toggled -> shown.inputWarning"});
    QCOMPARE(check(description, m_manager), QStringList());
}

void tst_PanelPlan::oddTextsAreReportedAsTheyAre()
{
    const QString odd = "%1 %2 %3 %4\n";
    auto description = describe::panel(
        {describe::device(odd, odd, {}, 1), describe::device("b", "label", {{odd, odd}}, 2),
         describe::device("c", "button", {{"mode", odd}, {"widget/row", odd}}, 3)});
    description.connections.append(describe::arrow("c.%1(%2,%3) -> b.%4", 4));
    description.connections.append(describe::arrow("%1%2.x -> b.input(double)", 5));
    const QStringList lines = check(description, m_manager);
    QCOMPARE(lines.size(), 7);
    const QString shown = "\"%1 %2 %3 %4\\n\"";
    QCOMPARE(lines[0], "panel.yaml:1:2: error: unknown device type " + shown +
                           "; valid names: \"button\", \"label\", \"output_digital\"");
    QVERIFY2(lines[1].startsWith("panel.yaml:2:3: error: a device of type \"label\" has no "
                                 "parameter " +
                                 shown + "; valid names: \"widget/row\", "),
             qPrintable(lines[1]));
    QCOMPARE(lines[2], "panel.yaml:3:4: warning: parameter \"mode\": " + shown +
                           " is not one of \"toggle\", \"click\"");
    QCOMPARE(lines[3], "panel.yaml:3:4: error: parameter \"widget/row\": " + shown +
                           " is not a whole number from 0 to 999, nor -1 for the next free "
                           "place");
    QCOMPARE(lines[4], "panel.yaml:4:3: error: \"c\" has no signal \"%1(%2,%3)\"; it has "
                       "toggled(bool), clicked()");
    QCOMPARE(lines[5], "panel.yaml:4:18: error: \"b\" has no slot \"%4\"; it has "
                       "inputWarning(bool), input(QString), input(double)");
    QCOMPARE(lines[6], "panel.yaml:5:1: error: there is no device \"%1%2\"");
}

void tst_PanelPlan::unknownDevicesComeWithTheNearestId()
{
    const auto description =
        describe::panel({describe::device("pump", "label")}, {"pmup.output -> valve.input"});
    QCOMPARE(check(description, m_manager),
             QStringList({"panel.yaml:1:1: error: there is no device \"pmup\"; did you mean "
                          "\"pump\"?",
                          "panel.yaml:1:16: error: there is no device \"valve\""}));
}

void tst_PanelPlan::valueThatMultipliesIsAnError()
{
    QVector<norvo::DeviceSetting> devices;
    QStringList arrows;
    for (int i = 0; i < 30; ++i) {
        devices.append(describe::device(QString("d%1").arg(i), "label", {}, i + 1));
        if (i > 0) {
            const QString arrow = QString("d%1.output -> d%2.input(QString)").arg(i - 1).arg(i);
            arrows += QStringList{arrow, arrow};
        }
    }
    const QStringList lines = check(describe::panel(devices, arrows), m_manager);
    QCOMPARE(
        lines.filter("error"),
        QStringList("panel.yaml:14:1: error: one value from \"d13\" would make more than 100000 "
                    "calls, because several paths of connections lead to the same devices; "
                    "remove some of them"));
    const QStringList firstOnly =
        check(describe::panel(devices.mid(0, 17), arrows.mid(0, 32)), m_manager).filter("error");
    QCOMPARE(firstOnly.size(), 1);
    QVERIFY2(firstOnly[0].startsWith("panel.yaml:1:1: error: one value from \"d0\""),
             qPrintable(firstOnly[0]));
}

void tst_PanelPlan::gridBeyondAllBoundsIsAnError()
{
    QVector<norvo::DeviceSetting> devices;
    for (int i = 0; i < 100; ++i) {
        devices.append(
            describe::device(QString("d%1").arg(i), "label", {{"widget/rowspan", "1000"}}, i + 1));
    }
    QCOMPARE(check(describe::panel(devices), m_manager), QStringList());
    devices.append(describe::device("one", "label", {}, 101));
    devices.append(describe::device("more", "label", {}, 102));
    QCOMPARE(
        check(describe::panel(devices), m_manager),
        QStringList("panel.yaml:101:1: error: \"one\" would lie beyond 100000 rows or columns, "
                    "the limit of a panel"));
}

void tst_PanelPlan::anyPanelIsPlannedInNoTime_data()
{
    QTest::addColumn<norvo::PanelDescription>("description");
    const auto devices = [](int count, const QMap<QString, QString>& params = {}) {
        QVector<norvo::DeviceSetting> settings;
        for (int i = 0; i < count; ++i) {
            settings.append(
                describe::device(QString("d%1").arg(i, 5, 10, QChar('0')), "label", params, i + 1));
        }
        return settings;
    };
    const auto arrows = [](int count, const QString& form) {
        QStringList texts;
        for (int i = 0; i < count; ++i) {
            const auto id = [](int n) { return QString("%1").arg(n, 5, 10, QChar('0')); };
            texts.append(form.arg(id(i), id(i + 1)));
        }
        return texts;
    };
    QTest::newRow("everyDeviceBackToTheFirst") << describe::panel(
        devices(10000), arrows(9999, "d%1.output -> d%2.input(QString)") +
                            arrows(19999, "d%2.output -> d00000.input(QString)"));
    QTest::newRow("tallWidgets") << describe::panel(devices(24000, {{"widget/rowspan", "1000"}}));
    QTest::newRow("allOnOneCell") << describe::panel(devices(24000, {{"widget/row", "0"},
                                                                     {"widget/column", "0"},
                                                                     {"widget/rowspan", "1000"},
                                                                     {"widget/colspan", "1000"}}));
    QTest::newRow("unknownDevices")
        << describe::panel(devices(30000), arrows(30000, "x%1.output -> y%2.input"));
    QTest::newRow("unknownParameters") << describe::panel(devices(30000, {{"widget/rwo", "1"}}));
    QTest::newRow("unknownSignals")
        << describe::panel(devices(10000), arrows(9999, "d%1.outptu -> d%2.input(QString)"));
}

void tst_PanelPlan::anyPanelIsPlannedInNoTime()
{
    QFETCH(norvo::PanelDescription, description);
    const norvo::ProcessorTimer time;
    const QStringList lines = check(description, m_manager);
    const auto elapsed = time.elapsedMs();
    qInfo("%lld ms", elapsed);
    QVERIFY2(elapsed < 15000, qPrintable(QString::number(elapsed))); // 1000 optimised
    QVERIFY(lines.size() <= 2 * norvo::Diagnostics::kMaxOfAKind + 2);
}

void tst_PanelPlan::thousandsOfDevicesTakeNoTime()
{
    const int count = 2000;
    QVector<norvo::DeviceSetting> devices;
    QStringList arrows;
    for (int i = 0; i < count; ++i) {
        devices.append(describe::device(QString::number(i), "label"));
        arrows.append(QString("%1.output -> %2.input").arg(i).arg((i + 1) % count));
    }
    const auto description = describe::panel(devices, arrows);
    const norvo::ProcessorTimer time;
    const QStringList lines = check(description, m_manager);
    QVERIFY2(time.elapsedMs() < 3000, qPrintable(QString::number(time.elapsedMs())));
    QCOMPARE(lines.size(), 1); // the cycle
}

NORVO_TEST(tst_PanelPlan)
#include "tst_PanelPlan.moc"
