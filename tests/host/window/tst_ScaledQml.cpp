// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/look/Look.h"

#include "ScaledPanel.h"
#include "TestMain.h"

#include <cstdlib>

namespace {

/// A document of 300x200 with that in it.
QByteArray panelWithQml(const QByteArray& code)
{
    return kForm +
           "  qml: {device: qml_widget, params: {sourceType: parameter, sourceCode: 'import "
           "QtQuick 2.15; Rectangle { width: 300; height: 200; color: \"navy\"; " +
           code + " }'}}\n";
}

/// A white square in its middle, which a tap turns green.
const QByteArray kSquare =
    panelWithQml("Rectangle { anchors.centerIn: parent; width: 100; height: 100; color: \"white\"; "
                 "MouseArea { anchors.fill: parent; onClicked: parent.color = \"lime\" } }");

QPoint middleOfQml(const ShownPanel& shown)
{
    return placeOf(shown, shown.panel.widget("qml"), {150, 100});
}

/// How many pixels of that colour stand in the row through the middle of the document.
int widthOf(ShownPanel& shown, const QColor& colour)
{
    const QImage picture = pictureOf(shown);
    int count = 0;
    for (int x = 0; x < picture.width(); ++x) {
        count += picture.pixelColor(x, middleOfQml(shown).y()) == colour;
    }
    return count;
}

} // namespace

/// Documents in QML on a page that is drawn larger or smaller.
class tst_ScaledQml : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void qmlHasThePixelsOfTheWindow_data();
    void qmlHasThePixelsOfTheWindow();
    void qmlIsDrawnAgainWhereItChanges();
    void whatComesLaterIsSharpAtOnce_data();
    void whatComesLaterIsSharpAtOnce();
    void textsInQmlAreWhole();
};

void tst_ScaledQml::cleanup()
{
    QApplication::setStyle("fusion");
    QApplication::setFont(QFont());
    QApplication::setPalette(QPalette());
}

void tst_ScaledQml::qmlHasThePixelsOfTheWindow_data()
{
    addSizes();
}

/// An edge of a document is as sharp as the screen, and its areas are where they are seen.
void tst_ScaledQml::qmlHasThePixelsOfTheWindow()
{
    QFETCH(QSize, size);
    ShownPanel shown(kSquare, size);
    const double factor = double(pageIn(size).width()) / kDesign.width();
    QVERIFY(QTest::qWaitFor([&] { return widthOf(shown, "white") > 0; }, 10000));
    QVERIFY2(std::abs(widthOf(shown, "white") - 100 * factor) <= 2,
             qPrintable(QString::number(widthOf(shown, "white"))));
    const int mixed = qRound(300 * factor) - widthOf(shown, "white") - widthOf(shown, "navy");
    QVERIFY2(mixed <= 4 * 2, qPrintable(QString("%1 pixels at four edges").arg(mixed)));
    for (const int beside : {-70, 70}) { // of the square, which ends 50 from its middle
        tapAt(shown, middleOfQml(shown) + QPoint(int(beside * factor), 0));
        QVERIFY(!QTest::qWaitFor([&] { return widthOf(shown, "lime") > 0; }, 100));
    }
    tapAt(shown, middleOfQml(shown) + QPoint(int(45 * factor), int(45 * factor)));
    QVERIFY(QTest::qWaitFor([&] { return widthOf(shown, "lime") > 0; }, 10000));
}

void tst_ScaledQml::qmlIsDrawnAgainWhereItChanges()
{
    ShownPanel shown(
        panelWithQml("function input(w) { bar.width = w } Rectangle { id: bar; height: "
                     "200; color: \"white\"; x: parent.width - width }"),
        kDesign * 3);
    QVERIFY(QTest::qWaitFor([&] { return widthOf(shown, "navy") > 0; }, 10000));
    QCOMPARE(widthOf(shown, "white"), 0);
    QString slot;
    QObject* const receiver = shown.panel.device("qml")->getReceiver("input(double)", slot);
    QVERIFY(receiver);
    // Far to the right, where only the picture of the window has pixels.
    QVERIFY(QMetaObject::invokeMethod(receiver, "input", Q_ARG(double, 20)));
    QVERIFY(QTest::qWaitFor([&] { return widthOf(shown, "white") >= 58; }, 10000)); // 60 and edges
}

void tst_ScaledQml::whatComesLaterIsSharpAtOnce_data()
{
    QTest::addColumn<QByteArray>("id");
    QTest::newRow("graph") << QByteArray("graph");
    QTest::newRow("document") << QByteArray("qml");
}

/// As it is on a page that had it from the start.
void tst_ScaledQml::whatComesLaterIsSharpAtOnce()
{
    QFETCH(QByteArray, id);
    constexpr int factor = 3;
    // High enough for all of it: the page stays as large as it is.
    const QByteArray label = "fit: scale\ndesign: 640x480\ndevices:\n"
                             "  one: {device: label, params: {widget: {row: 5}}}\n";
    const QByteArray whole = label + kPanel.mid(kForm.size());
    ShownPanel first(whole, QSize(640, 480) * factor);
    ShownPanel later(label, QSize(640, 480) * factor);
    QTest::qWait(50);
    QVERIFY(!later.panel.widget(id));
    later.panel.change(panelOf(whole));
    QTRY_COMPARE(later.panel.widget(id)->geometry(), first.panel.widget(id)->geometry());
    const QRect box(first.panel.widget(id)->mapTo(first.window.page(), QPoint()),
                    first.panel.widget(id)->size());
    const QRect seen(box.topLeft() * factor, box.size() * factor);
    const auto sharpnessIn = [&seen](ShownPanel& shown) {
        return sharpness(pictureOf(shown).copy(seen));
    };
    QVERIFY(showsQml(first));
    QVERIFY(showsQml(later));
    QTRY_VERIFY2(sharpnessIn(later) > 0.95 * sharpnessIn(first),
                 qPrintable(QString("%1 of %2").arg(sharpnessIn(later)).arg(sharpnessIn(first))));
}

void tst_ScaledQml::textsInQmlAreWhole()
{
    constexpr int factor = 3;
    const QByteArray panel =
        panelWithQml("Text { anchors.centerIn: parent; text: \"O3\"; color: \"white\"; font { "
                     "family: \"Liberation Sans\"; pixelSize: 30 } }");
    norvo::Look::apply(*qApp, panelOf(panel).look);
    ShownPanel shown(panel, kDesign * factor);
    QVERIFY(QTest::qWaitFor([&] { return widthOf(shown, "navy") > 0; }, 10000));
    const QImage picture = pictureOf(shown);
    const QPoint corner = placeOf(shown, shown.panel.widget("qml"), {0, 0});
    int rows = 0;
    for (int y = corner.y(); y < corner.y() + 200 * factor; ++y) {
        bool hasInk = false;
        for (int x = corner.x(); x < corner.x() + 300 * factor; ++x) {
            hasInk = hasInk || qGray(picture.pixel(x, y)) > 128;
        }
        rows += hasInk;
    }
    QFont font("Liberation Sans");
    font.setPixelSize(30 * factor);
    font.setHintingPreference(QFont::PreferNoHinting);
    const double expected = QFontMetricsF(font).tightBoundingRect("O3").height();
    QVERIFY2(std::abs(rows - expected) <= 1.5,
             qPrintable(QString("%1 of %2").arg(rows).arg(expected)));
}

NORVO_TEST(tst_ScaledQml)
#include "tst_ScaledQml.moc"
