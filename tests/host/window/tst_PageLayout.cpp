// SPDX-License-Identifier: GPL-3.0-or-later

#include "LaidOutPanel.h"
#include "TestMain.h"

#include <QTabWidget>

using namespace norvo;

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
    void weightsOfTheFileShareTheHeight();
    void weightsOfTheFileShareTheWidth();
    void weightsOfATabAreItsOwn();
    void columnsAreEqualWhereNothingIsCut();
    void columnIsNoNarrowerThanItsWidget();

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
    const LaidOutPanel panel(m_plugins, kControls + "  high: " + high + "\n", {1280, 800});
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
    const LaidOutPanel panel(m_plugins,
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
    const LaidOutPanel panel(
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

void tst_PageLayout::weightsOfTheFileShareTheHeight()
{
    const LaidOutPanel panel(m_plugins,
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
    const LaidOutPanel panel(m_plugins,
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
    const LaidOutPanel panel(m_plugins,
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
    const LaidOutPanel panel(
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
    const LaidOutPanel panel(
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

NORVO_TEST(tst_PageLayout)
#include "tst_PageLayout.moc"
