// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/TestPanel.h"
#include "host/panel/file/PanelFile.h"
#include "host/program/PluginSet.h"
#include "host/window/PanelWindow.h"

#include "norvo/BaseDevice.h"
#include "norvo/BaseWidget.h"
#include "TestMain.h"

#include <QLayout>
#include <QTabWidget>
#include <QtTest>

using namespace norvo;

namespace {

/// A panel in a window of its own, shown.
class ShownPanel
{
public:
    ShownPanel(const PluginSet& plugins, const QByteArray& text, const QSize& size)
        : m_panel(plugins.manager(), read(text))
    {
        m_window.page()->setLayout(new QVBoxLayout);
        m_window.page()->layout()->setContentsMargins(0, 0, 0, 0);
        m_panel.start(m_window.page());
        m_window.resize(size);
        m_window.show();
        m_isShown = QTest::qWaitForWindowExposed(&m_window);
    }

    bool isGood() const { return m_isShown && m_panel.diagnostics().isEmpty(); }
    BaseDevice* device(const QString& id) const { return m_panel.device(id); }
    BaseWidget* widget(const QString& id) const { return m_panel.widget(id); }
    QWidget* page() const { return m_window.page(); }
    int height(const QString& id) const { return widget(id)->height(); }
    int width(const QString& id) const { return widget(id)->width(); }
    /// Of every widget of the panel, by its place among them.
    QVector<QRect> geometries() const
    {
        QVector<QRect> all;
        for (const QWidget* widget : m_window.page()->findChildren<QWidget*>()) {
            all.append({widget->mapTo(m_window.page(), QPoint()), widget->size()});
        }
        return all;
    }

private:
    static PanelDescription read(const QByteArray& text)
    {
        Diagnostics diagnostics("p.yaml");
        PanelDescription description = PanelFile::parse(text, "p.yaml", diagnostics);
        for (const Diagnostic& diagnostic : diagnostics.sorted()) {
            qWarning("%s", qPrintable(diagnostic.toString()));
        }
        return description;
    }

    PanelWindow m_window{"Test"};
    TestPanel m_panel;
    bool m_isShown = false;
};

const QByteArray kControls = R"(devices:
  push: {device: button, params: {text: Push, widget: {row: 0, column: 0}}}
  lamp: {device: indicator, params: {widget: {row: 0, column: 1, caption: On}}}
  level: {device: output_digital, params: {name: Level, widget: {row: 1, column: 0, units: bar}}}
  mode: {device: dropdownlist, params: {options: "a|b", widget: {row: 1, column: 1, label: Mode}}}
)";

/// The least distance of two widgets' edges, in pixels.
int gap(const QWidget* a, const QWidget* b)
{
    const QRect first(a->mapTo(a->window(), QPoint()), a->size());
    const QRect second(b->mapTo(b->window(), QPoint()), b->size());
    const int across = qMax(first.left(), second.left()) - qMin(first.right(), second.right());
    const int down = qMax(first.top(), second.top()) - qMin(first.bottom(), second.bottom());
    return qMax(0, qMax(across, down));
}

QSize sizeNamed(const char* name)
{
    const auto parts = QByteArray(name).split('x');
    return {parts[0].toInt(), parts[1].toInt()};
}

} // namespace

/// How the widgets of a page share it, on the plug-ins as they are built.
class tst_PageLayout : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void rowsGrowOnlyWhereSomethingWantsHeight_data();
    void rowsGrowOnlyWhereSomethingWantsHeight();
    void heightThatNothingWantsStaysBelow();
    void whatSpansGrowingRowsMakesNoOtherGrow();
    void graphsAndGaugesStayLegible_data();
    void graphsAndGaugesStayLegible();
    void weightsOfTheFileShareTheHeight();
    void weightsOfTheFileShareTheWidth();
    void weightsOfATabAreItsOwn();
    void columnsAreEqualWhereNothingIsCut();
    void columnIsNoNarrowerThanItsWidget();
    void captionValueAndUnitStayTogether_data();
    void captionValueAndUnitStayTogether();
    void nothingMovesWhateverTheValues_data();
    void nothingMovesWhateverTheValues();
    void cellThatGrewGetsRoomAndStays();
    void whatHasSeveralPartsStandsOnACard();

private:
    PluginSet m_plugins;
};

void tst_PageLayout::initTestCase()
{
    m_plugins.load(NORVO_BUILD_DIR "/plugins");
    QVERIFY(!m_plugins.isEmpty());
}

void tst_PageLayout::rowsGrowOnlyWhereSomethingWantsHeight_data()
{
    QTest::addColumn<QByteArray>("high");
    QTest::newRow("graph") << QByteArray("{device: output_graph}");
    QTest::newRow("vector") << QByteArray("{device: output_vector}");
    QTest::newRow("valueBar") << QByteArray("{device: output_bar}");
    QTest::newRow("gauge") << QByteArray("{device: output_lumeno}");
    QTest::newRow("log") << QByteArray("{device: multiline}");
    QTest::newRow("slider") << QByteArray(
        "{device: slider, params: {widget/orientation: vertical}}");
    QTest::newRow("qml") << QByteArray("{device: qml_widget, params: {sourceType: parameter,"
                                       " sourceCode: 'import QtQuick 2.0; Item {}'}}");
    QTest::newRow("picture") << QByteArray(
        "{device: picture, params: {widget/filename: '" NORVO_SOURCE_DIR
        "/examples/gallery/pump.svg'}}");
}

void tst_PageLayout::rowsGrowOnlyWhereSomethingWantsHeight()
{
    QFETCH(QByteArray, high);
    const ShownPanel panel(m_plugins, kControls + "  high: " + high + "\n", {1280, 800});
    QVERIFY(panel.isGood());
    for (const char* id : {"push", "lamp", "level", "mode"}) {
        QVERIFY2(panel.height(id) <= panel.widget(id)->sizeHint().height(), id);
    }
    const int top = panel.widget("high")->mapTo(panel.page(), QPoint()).y();
    QVERIFY2(top < 220, qPrintable(QString::number(top)));
    QVERIFY2(panel.height("high") > 400, qPrintable(QString::number(panel.height("high"))));
}

void tst_PageLayout::heightThatNothingWantsStaysBelow()
{
    const ShownPanel panel(m_plugins,
                           kControls + "  flat: {device: slider, params: {widget/orientation: "
                                       "horizontal}}\n",
                           {1280, 800});
    QVERIFY(panel.isGood());
    for (const char* id : {"push", "lamp", "level", "mode", "flat"}) {
        const BaseWidget* const widget = panel.widget(id);
        QVERIFY2(widget->height() <= widget->sizeHint().height(), id);
        QVERIFY2(widget->mapTo(panel.page(), QPoint()).y() < 400, id);
    }
}

void tst_PageLayout::whatSpansGrowingRowsMakesNoOtherGrow()
{
    const ShownPanel panel(
        m_plugins,
        "devices:\n"
        "  push: {device: button, params: {text: Push, widget: {row: 0, column: 0}}}\n"
        "  trend: {device: output_graph, params: {widget: {row: 1, column: 0}}}\n"
        "  bar: {device: output_lumeno, params: {widget: {row: 0, column: 1, rowspan: 2}}}\n",
        {1280, 800});
    QVERIFY(panel.isGood());
    QVERIFY(panel.height("bar") > 700);
    QVERIFY(panel.height("trend") > 650);
}

void tst_PageLayout::graphsAndGaugesStayLegible_data()
{
    QTest::addColumn<QByteArray>("device");
    QTest::addColumn<int>("least");
    QTest::newRow("graph") << QByteArray("output_graph") << 160;
    QTest::newRow("vector") << QByteArray("output_vector") << 160;
    QTest::newRow("valueBar") << QByteArray("output_bar") << 100;
    QTest::newRow("gauge") << QByteArray("output_lumeno") << 100;
    QTest::newRow("log") << QByteArray("multiline") << 100;
}

void tst_PageLayout::graphsAndGaugesStayLegible()
{
    QFETCH(QByteArray, device);
    QFETCH(int, least);
    QByteArray text = "devices:\n  shown: {device: " + device + "}\n";
    for (int i = 0; i < 20; ++i) {
        text += "  b" + QByteArray::number(i) + ": {device: button, params: {text: Push}}\n";
    }
    const ShownPanel panel(m_plugins, text, {800, 480});
    QVERIFY(panel.isGood());
    QVERIFY2(panel.height("shown") >= least, qPrintable(QString::number(panel.height("shown"))));
}

void tst_PageLayout::weightsOfTheFileShareTheHeight()
{
    const ShownPanel panel(m_plugins,
                           "rows: [1, 0, 3]\n"
                           "devices:\n"
                           "  a: {device: output_graph}\n"
                           "  b: {device: output_graph}\n"
                           "  c: {device: output_graph}\n",
                           {1000, 1100});
    QVERIFY(panel.isGood());
    QVERIFY(panel.height("b") < panel.height("a"));
    const double share = double(panel.height("c")) / panel.height("a");
    QVERIFY2(share > 2.8 && share < 3.3, qPrintable(QString::number(share)));
}

void tst_PageLayout::weightsOfTheFileShareTheWidth()
{
    const ShownPanel panel(m_plugins,
                           "columns: [1, 3]\n"
                           "devices:\n"
                           "  a: {device: multiline, params: {widget: {row: 0, column: 0}}}\n"
                           "  b: {device: multiline, params: {widget: {row: 0, column: 1}}}\n",
                           {1200, 600});
    QVERIFY(panel.isGood());
    const double share = double(panel.width("b")) / panel.width("a");
    QVERIFY2(share > 2.9 && share < 3.1, qPrintable(QString::number(share)));
}

void tst_PageLayout::weightsOfATabAreItsOwn()
{
    const ShownPanel panel(m_plugins,
                           "columns: {Two: [3, 1], '': [1, 3]}\n"
                           "devices:\n"
                           "  a: {device: multiline, params: {widget: {area: One, row: 0}}}\n"
                           "  b: {device: multiline, params: {widget: {area: One, row: 0}}}\n"
                           "  c: {device: multiline, params: {widget: {area: Two, row: 0}}}\n"
                           "  d: {device: multiline, params: {widget: {area: Two, row: 0}}}\n",
                           {1200, 600});
    QVERIFY(panel.isGood());
    QVERIFY(panel.width("b") > 2 * panel.width("a"));
    panel.page()->findChild<QTabWidget*>()->setCurrentIndex(1);
    QCoreApplication::processEvents();
    QVERIFY(panel.width("c") > 2 * panel.width("d"));
}

void tst_PageLayout::columnsAreEqualWhereNothingIsCut()
{
    const ShownPanel panel(
        m_plugins,
        "devices:\n"
        "  a: {device: output_digital, params: {name: Temperatur im Vorlauf der Anlage, "
        "widget: {row: 0, column: 0}}}\n"
        "  b: {device: output_digital, params: {name: p, widget: {row: 0, column: 1}}}\n"
        "  c: {device: multiline, params: {widget: {row: 0, column: 2}}}\n",
        {1600, 600});
    QVERIFY(panel.isGood());
    QVERIFY(qAbs(panel.width("a") - panel.width("b")) <= 1);
    QVERIFY(qAbs(panel.width("a") - panel.width("c")) <= 24); // without the padding of a card
}

void tst_PageLayout::columnIsNoNarrowerThanItsWidget()
{
    const ShownPanel panel(
        m_plugins,
        "devices:\n"
        "  a: {device: button, params: {text: 'Start the pumps of the northern basin and all "
        "that belongs to it', widget: {row: 0, column: 0, fontSize: 20}}}\n"
        "  b: {device: button, params: {text: Stop, widget: {row: 0, column: 1}}}\n",
        {1000, 480});
    QVERIFY(panel.isGood());
    QVERIFY(panel.width("a") >= panel.widget("a")->sizeHint().width());
    QVERIFY(panel.width("b") >= panel.widget("b")->sizeHint().width());
}

void tst_PageLayout::captionValueAndUnitStayTogether_data()
{
    QTest::addColumn<QByteArray>("device");
    const QVector<QPair<const char*, QByteArray>> devices{
        {"readout", "{device: output_digital, params: {name: Level, widget/units: bar}}"},
        {"progress", "{device: output_with_progress, params: {name: Level}}"},
        {"field", "{device: input, params: {name: Level, units: bar}}"},
        {"dropDown", "{device: dropdownlist, params: {options: 'a|b', widget/label: Level}}"}};
    for (const auto& [name, text] : devices) {
        for (const char* size : {"640x400", "1920x1080"}) {
            QTest::addRow("%s@%s", name, size) << text;
        }
    }
}

void tst_PageLayout::captionValueAndUnitStayTogether()
{
    constexpr int kNear = 20; // pixels
    QFETCH(QByteArray, device);
    const QByteArray size = QByteArray(QTest::currentDataTag()).split('@')[1];
    // Beside something that is high, and alone.
    for (const char* other : {"output_graph", "label"}) {
        const ShownPanel panel(m_plugins,
                               "devices:\n  shown: " + device + "\n  other: {device: " +
                                   QByteArray(other) + ", params: {widget: {row: 0, column: 1}}}\n",
                               sizeNamed(size));
        QVERIFY(panel.isGood());
        const auto parts =
            panel.widget("shown")->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        QVERIFY(parts.size() >= 2);
        for (const QWidget* part : parts) {
            int nearest = INT_MAX;
            for (const QWidget* neighbour : parts) {
                nearest = neighbour == part ? nearest : qMin(nearest, gap(part, neighbour));
            }
            QVERIFY2(nearest <= kNear, qPrintable(QString::number(nearest)));
            // A label that is higher than its text shows it away from its neighbour.
            QVERIFY2(part->height() <= qMax(part->sizeHint().height(), 0) + kNear,
                     qPrintable(QString::number(part->height())));
        }
    }
}

void tst_PageLayout::nothingMovesWhateverTheValues_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("800x480") << QSize(800, 480);
    QTest::newRow("1280x800") << QSize(1280, 800);
    QTest::newRow("1920x1080") << QSize(1920, 1080);
}

void tst_PageLayout::nothingMovesWhateverTheValues()
{
    QFETCH(QSize, size);
    ShownPanel panel(m_plugins,
                     "devices:\n"
                     "  text: {device: label, params: {Value: 'Load %1', widget: {row: 0}}}\n"
                     "  level: {device: output_digital, params: {name: Level, "
                     "widget: {row: 0, units: bar, minThreshold: 0, maxThreshold: 10}}}\n"
                     "  part: {device: output_with_progress, params: {name: Part, widget: {row: "
                     "0}}}\n"
                     "  field: {device: input, params: {name: Goal, widget: {row: 0}}}\n"
                     "  trend: {device: output_graph, params: {widget: {row: 1, colspan: 2}}}\n"
                     "  push: {device: button, params: {text: Push, widget: {row: 1}}}\n",
                     size);
    QVERIFY(panel.isGood());
    const auto show = [&panel](double value) {
        const QString text = QString::number(value);
        QMetaObject::invokeMethod(panel.device("text"), "input", Q_ARG(QString, text));
        QMetaObject::invokeMethod(panel.device("level"), "input", Q_ARG(double, value));
        QMetaObject::invokeMethod(panel.device("part"), "input", Q_ARG(double, value));
        QMetaObject::invokeMethod(panel.device("field"), "input", Q_ARG(QString, text));
        QTest::qWait(20);
    };
    show(9.5);
    QVector<QRect> before;
    do { // Until the first layout is through, however slow the machine is.
        before = panel.geometries();
        QTest::qWait(200);
    } while (panel.geometries() != before);
    for (const double value : {9.9, 10.0, 100.0, 0.0, -1.5, 12345.0, 3.0}) {
        show(value);
        QCOMPARE(panel.geometries(), before);
    }
}

void tst_PageLayout::cellThatGrewGetsRoomAndStays()
{
    ShownPanel panel(m_plugins,
                     "devices:\n"
                     "  text: {device: label, params: {Value: '%1', widget: {row: 0, column: 0}}}\n"
                     "  push: {device: button, params: {text: Push, widget: {row: 1}}}\n",
                     {800, 480});
    QVERIFY(panel.isGood());
    const auto placeOfButton = [&panel](const QString& text) {
        QMetaObject::invokeMethod(panel.device("text"), "input", Q_ARG(QString, text));
        QTest::qWait(20);
        return panel.widget("push")->mapTo(panel.page(), QPoint());
    };
    const QPoint before = placeOfButton("one");
    const QPoint after = placeOfButton(QString("line\n").repeated(6));
    QVERIFY(after.y() > before.y());
    QCOMPARE(placeOfButton("one"), after);
    QCOMPARE(placeOfButton(QString("line\n").repeated(7)), after);
}

void tst_PageLayout::whatHasSeveralPartsStandsOnACard()
{
    ShownPanel panel(m_plugins, kControls + "  text: {device: label, params: {Value: Hello}}\n",
                     {800, 480});
    QVERIFY(panel.isGood());
    QPalette distinct = panel.page()->palette();
    distinct.setColor(QPalette::AlternateBase, Qt::cyan);
    panel.page()->setPalette(distinct);
    const QImage picture = panel.page()->grab().toImage();
    const auto above = [&](const char* id) {
        const BaseWidget* const widget = panel.widget(id);
        return picture.pixelColor(widget->mapTo(panel.page(), QPoint(20, -4)));
    };
    QCOMPARE(above("level"), QColor(Qt::cyan));
    QCOMPARE(above("mode"), QColor(Qt::cyan));
    QVERIFY(above("push") != QColor(Qt::cyan));
    QVERIFY(above("lamp") != QColor(Qt::cyan));
    QVERIFY(above("text") != QColor(Qt::cyan));
}

NORVO_TEST(tst_PageLayout)
#include "tst_PageLayout.moc"
