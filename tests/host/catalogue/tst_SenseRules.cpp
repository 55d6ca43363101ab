// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/catalogue/SenseCheck.h"

#include "host/catalogue/Catalogue.h"
#include "host/panel/file/PanelFile.h"
#include "host/panel/plan/PanelPlan.h"
#include "host/program/PluginSet.h"
#include "TestMain.h"

#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

using namespace norvo;

/// Where sense ends: the last value that passes, the first that does not, and what is said of it.
class tst_SenseRules : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void soundValuesPass_data();
    void soundValuesPass();
    void otherValuesAreReported_data();
    void otherValuesAreReported();
    void relationIsReportedAtTheValueThatTheFileGives_data();
    void relationIsReportedAtTheValueThatTheFileGives();
    void pictureIsToldByItsContent();
    void curvesWithoutNamesAreCountedBySender_data();
    void curvesWithoutNamesAreCountedBySender();

private:
    /// What is reported of a panel of that one device, without the file's name.
    QString reported(const QString& type, const QString& params) const
    {
        return reportedOf(
            QString("devices:\n  d: {device: %1, params: {%2}}\n").arg(type, params).toUtf8());
    }

    QString reportedOf(const QByteArray& text) const
    {
        Diagnostics diagnostics("p");
        const PanelDescription panel = PanelFile::parse(text, "p", diagnostics);
        PanelPlan::make(panel, m_plugins.manager(), {}, diagnostics, {}, SenseCheck(*m_catalogue));
        QStringList lines;
        for (const Diagnostic& diagnostic : diagnostics.sorted()) {
            lines.append(diagnostic.toString().mid(2));
        }
        return lines.join('\n');
    }

    PluginSet m_plugins;
    std::unique_ptr<Catalogue> m_catalogue;
};

void tst_SenseRules::initTestCase()
{
    m_plugins.load(NORVO_BUILD_DIR "/plugins");
    m_catalogue = std::make_unique<Catalogue>(m_plugins.manager());
}

void tst_SenseRules::soundValuesPass_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("params");
    const auto row = [](const char* name, const char* type, const char* params) {
        QTest::newRow(name) << type << params;
    };
    row("least of a range", "label", "widget/fontSize: 1");
    row("greatest of a range", "label", "widget/fontSize: 500");
    row("0 decimals", "output_digital", "widget/precision: 0");
    row("just above", "input", "value step: 0.001");
    row("spaces around a number", "label", "widget/fontSize: ' 12 '");
    row("whole number with a point", "label", "widget/fontSize: 12.0");
    row("whole number with an exponent", "label", "widget/fontSize: 1e1");
    row("word in place of a number", "output_with_progress", "minValue: no, maxValue: no");
    row("no colour", "graph_settings", "color: ''");
    row("colour in any case", "graph_settings", "color: DarkOrange");
    row("no time format", "output_graph", "widget/timeFormat: ''");
    row("hours to the zone", "output_graph", "widget/timeFormat: h:m:s.z t");
    row("parts of two letters", "output_graph", "widget/timeFormat: hh:mm:ss.zzz HH dd MM yy");
    row("noon and midnight", "output_graph", "widget/timeFormat: h AP H A h ap a P p");
    row("days to years", "output_graph", "widget/timeFormat: d ddd dddd M MMM MMMM yyyy");
    row("texts in quotes", "output_graph", "widget/timeFormat: \"'of' hh 'o'\"");
    row("same part before and behind a text", "output_graph", "widget/timeFormat: \"hh'h'hh\"");
    row("relation of equals", "output_digital", "widget/minThreshold: 5, widget/maxThreshold: 5");
    row("relation with a word", "output_with_progress", "minValue: no, maxValue: -5");
}

void tst_SenseRules::soundValuesPass()
{
    QFETCH(QString, type);
    QFETCH(QString, params);
    QCOMPARE(reported(type, params), QString());
}

void tst_SenseRules::otherValuesAreReported_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("params");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const char* type, const char* params, const char* text) {
        QTest::newRow(name) << type << params << text;
    };
    row("below the least", "label", "widget/fontSize: 0", "0 is out of range; it must be 1 to 500");
    row("above the greatest", "label", "widget/fontSize: 501",
        "501 is out of range; it must be 1 to 500");
    row("the bound itself, where values are above it", "input", "value step: 0",
        "0 is out of range; it must be above 0");
    row("spaces around a number are not quoted", "label", "widget/fontSize: ' 501 '",
        "501 is out of range; it must be 1 to 500");
    row("fraction", "label", "widget/fontSize: 1.5", "1.5 is not a whole number");
    row("not a number, within bounds", "label", "widget/fontSize: nan", "\"nan\" is not a number");
    row("not a number, without bounds", "output_bar", "widget/minValue: nan",
        "\"nan\" is not a number");
    row("the word in capitals", "output_with_progress", "minValue: NO", "\"NO\" is not a number");
    row("another word", "output_with_progress", "minValue: none", "\"none\" is not a number");
    for (const char* part : {"hhh", "HHH", "mmm", "sss", "zz", "zzzz", "tt", "ddddd", "MMMMM", "y",
                             "yyy", "yyyyy", "PP", "x"}) {
        QTest::newRow(part) << "output_graph" << QString("widget/timeFormat: 'hh %1'").arg(part)
                            << QString("\"hh %1\" is not a time format, because of its \"%1\"; "
                                       "write one of hh, mm, ss, zzz, dd, MM, yyyy for each part, "
                                       "as in \"hh:mm:ss\"")
                                   .arg(part);
    }
    row("all in quotes", "output_graph", "widget/timeFormat: \"'hh'\"",
        "\"'hh'\" is not a time format, because it shows nothing of a time; write, for example, "
        "\"hh:mm:ss\"");
    row("file by its whole name", "picture", "widget/filename: /nowhere/a.png",
        "there is no file \"/nowhere/a.png\"");
    row("folder for a file", "picture", "widget/filename: /", "the file \"/\" cannot be read");
}

void tst_SenseRules::otherValuesAreReported()
{
    QFETCH(QString, type);
    QFETCH(QString, params);
    QFETCH(QString, text);
    const QString name = params.section(':', 0, 0);
    const bool isShownFile = name == "widget/filename"; // Without it there is nothing to be shown.
    QCOMPARE(reported(type, params),
             QString("2:%1: %2: parameter \"%3\": %4")
                 .arg(QString("  d: {device: , params: {: ").size() + type.size() + name.size() + 1)
                 .arg(isShownFile ? "error" : "warning", name, text));
}

void tst_SenseRules::relationIsReportedAtTheValueThatTheFileGives_data()
{
    QTest::addColumn<QString>("params");
    QTest::addColumn<QString>("reported");
    QTest::newRow("greater one given") << "widget/maxValue: -5"
                                       << "2:49: error: parameter \"widget/maxValue\": -5 must be "
                                          "greater than \"widget/minValue\", which is 0 by default";
    QTest::newRow("less one given") << "widget/minValue: 100"
                                    << "2:49: error: parameter \"widget/minValue\": 100 must be "
                                       "less than \"widget/maxValue\", which is 100 by default";
    QTest::newRow("both given, equal")
        << "widget/maxValue: 5, widget/minValue: 5"
        << "2:49: error: parameter \"widget/maxValue\": 5 must be greater than "
           "\"widget/minValue\", which is 5";
    QTest::newRow("in another case") << "WIDGET/MAXVALUE: -5"
                                     << "2:49: error: parameter \"widget/maxValue\": -5 must be "
                                        "greater than \"widget/minValue\", which is 0 by default";
    QTest::newRow("none given") << ""
                                << "";
}

void tst_SenseRules::relationIsReportedAtTheValueThatTheFileGives()
{
    QFETCH(QString, params);
    QTEST(reported("slider", params), "reported");
}

void tst_SenseRules::pictureIsToldByItsContent()
{
    const QTemporaryDir folder;
    const QString name = folder.filePath("picture.txt");
    QImage picture(4, 4, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QVERIFY(picture.save(name, "png"));
    QCOMPARE(reported("picture", "widget/filename: " + name), QString());
}

void tst_SenseRules::curvesWithoutNamesAreCountedBySender_data()
{
    QTest::addColumn<QStringList>("connections");
    QTest::addColumn<bool>("isReported");
    const QString input = " -> g.input(double)";
    const QStringList three{"a.output(double)" + input, "b.output(double)" + input,
                            "c.output(double)" + input};
    const auto row = [&three](const char* name, const QStringList& more, bool isReported) {
        QTest::newRow(name) << three + more << isReported;
    };
    row("three", {}, false);
    row("four", {"d.output" + input}, true);
    row("five", {"d.output" + input, "e.output(double)" + input}, true);
    row("the fourth by its name alone", {"e.output(double) -> g.input"}, true);
    row("one twice", {"a.output(double)" + input}, false);
    row("the fourth to another graph", {"e.output(double) -> h.input(double)"}, false);
    row("the fourth has a name", {"d.output" + input, "d.setName -> g.setName"}, false);
    row("another graph's curve has a name", {"d.output" + input, "d.setName -> h.setName"}, true);
}

void tst_SenseRules::curvesWithoutNamesAreCountedBySender()
{
    QFETCH(QStringList, connections);
    QFETCH(bool, isReported);
    QString text = "devices:\n  a: {device: generator}\n  b: {device: generator}\n"
                   "  c: {device: generator}\n  d: {device: graph_settings}\n"
                   "  e: {device: generator}\n  g: {device: output_graph}\n"
                   "  h: {device: output_graph}\nconnections:\n";
    for (const QString& connection : connections) {
        text += "  - " + connection + '\n';
    }
    QString lines = reportedOf(text.toUtf8());
    lines.remove(
        QRegularExpression("^.*connected already.*\\n?", QRegularExpression::MultilineOption));
    QCOMPARE(lines, isReported ? QString("7:3: warning: \"g\" has 4 curves or more and none has a "
                                         "name; a graph_settings between source and graph names "
                                         "and colours a curve")
                               : QString());
}

NORVO_TEST(tst_SenseRules)
#include "tst_SenseRules.moc"
