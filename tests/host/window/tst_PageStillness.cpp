// SPDX-License-Identifier: GPL-3.0-or-later

#include "LaidOutPanel.h"
#include "TestMain.h"

using namespace norvo;

namespace {

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

/// What stays together, legible and still on a page, on the plug-ins as they are built.
class tst_PageStillness : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void graphsAndGaugesStayLegible_data();
    void graphsAndGaugesStayLegible();
    void captionValueAndUnitStayTogether_data();
    void captionValueAndUnitStayTogether();
    void nothingMovesWhateverTheValues_data();
    void nothingMovesWhateverTheValues();
    void textThatNearlyFillsItsLineHasRoomForASecond_data();
    void textThatNearlyFillsItsLineHasRoomForASecond();
    void cellThatGrewGetsRoomAndStays();
    void whatHasSeveralPartsStandsOnACard();

private:
    PluginSet m_plugins;
};

void tst_PageStillness::initTestCase()
{
    m_plugins.load(NORVO_BUILD_DIR "/plugins");
    QVERIFY(!m_plugins.isEmpty());
}

void tst_PageStillness::graphsAndGaugesStayLegible_data()
{
    QTest::addColumn<QByteArray>("device");
    QTest::addColumn<int>("least");
    QTest::newRow("graph") << QByteArray("output_graph") << 160;
    QTest::newRow("vector") << QByteArray("output_vector") << 160;
    QTest::newRow("valueBar") << QByteArray("output_bar") << 100;
    QTest::newRow("gauge") << QByteArray("output_lumeno") << 100;
    QTest::newRow("log") << QByteArray("multiline") << 100;
}

void tst_PageStillness::graphsAndGaugesStayLegible()
{
    QFETCH(QByteArray, device);
    QFETCH(int, least);
    QByteArray text = "devices:\n  shown: {device: " + device + "}\n";
    for (int i = 0; i < 20; ++i) {
        text += "  b" + QByteArray::number(i) + ": {device: button, params: {text: Push}}\n";
    }
    const LaidOutPanel panel(m_plugins, text, {800, 480});
    QVERIFY(panel.isGood());
    QVERIFY2(panel.height("shown") >= least, qPrintable(QString::number(panel.height("shown"))));
}

void tst_PageStillness::captionValueAndUnitStayTogether_data()
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

void tst_PageStillness::captionValueAndUnitStayTogether()
{
    constexpr int kNear = 20; // pixels
    QFETCH(QByteArray, device);
    const QByteArray size = QByteArray(QTest::currentDataTag()).split('@')[1];
    // Beside something that is high, and alone.
    for (const char* other : {"output_graph", "label"}) {
        const LaidOutPanel panel(m_plugins,
                                 "devices:\n  shown: " + device +
                                     "\n  other: {device: " + QByteArray(other) +
                                     ", params: {widget: {row: 0, column: 1}}}\n",
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

void tst_PageStillness::nothingMovesWhateverTheValues_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("800x480") << QSize(800, 480);
    QTest::newRow("1280x800") << QSize(1280, 800);
    QTest::newRow("1920x1080") << QSize(1920, 1080);
}

void tst_PageStillness::nothingMovesWhateverTheValues()
{
    QFETCH(QSize, size);
    LaidOutPanel panel(m_plugins,
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

void tst_PageStillness::textThatNearlyFillsItsLineHasRoomForASecond_data()
{
    QTest::addColumn<int>("points");
    QTest::newRow("small") << 14;
    QTest::newRow("large") << 40;
}

void tst_PageStillness::textThatNearlyFillsItsLineHasRoomForASecond()
{
    QFETCH(int, points);
    const QSize size(800, 120); // no more than what the two need
    const QFontMetrics metrics(QFont("Arial", points));
    QString words = "ab";
    while (metrics.horizontalAdvance(words) < size.width() * 8 / 10) {
        words += " ab";
    }
    LaidOutPanel panel(
        m_plugins,
        "devices:\n  text: {device: label, params: {Value: '" + words.toLatin1() +
            "', widget: {row: 0, fontSize: " + QByteArray::number(points) +
            "}}}\n  push: {device: button, params: {text: Push, widget: {row: 1}}}\n",
        size);
    QVERIFY(panel.isGood());
    const auto placeOfButton = [&panel] {
        QTest::qWait(20);
        return panel.widget("push")->mapTo(panel.page(), QPoint());
    };
    const auto* const label = panel.widget("text")->findChild<QLabel*>();
    QVERIFY(label->heightForWidth(label->width()) < metrics.height() * 3 / 2);
    const QPoint before = placeOfButton();
    QMetaObject::invokeMethod(panel.device("text"), "input",
                              Q_ARG(QString, words + QString(" ab").repeated(words.size() / 9)));
    QCOMPARE(placeOfButton(), before);
    QVERIFY(label->heightForWidth(label->width()) > metrics.height() * 3 / 2);
}

void tst_PageStillness::cellThatGrewGetsRoomAndStays()
{
    LaidOutPanel panel(
        m_plugins,
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

void tst_PageStillness::whatHasSeveralPartsStandsOnACard()
{
    LaidOutPanel panel(m_plugins, kControls + "  text: {device: label, params: {Value: Hello}}\n",
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

NORVO_TEST(tst_PageStillness)
#include "tst_PageStillness.moc"
