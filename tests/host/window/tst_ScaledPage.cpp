// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/fit/ScaledPage.h"
#include "host/window/look/Look.h"

#include "ModalDialog.h"
#include "ShownPanel.h"
#include "TestMain.h"

#include <cstdlib>

using norvo::ScaledPage;

namespace {

const QSize kDesign(640, 400);
const QByteArray kForm = "fit: scale\ndesign: 640x400\ndevices:\n";
const QByteArray kPanel =
    kForm + "  caption: {device: label, params: {Value: Scaled, widget: {row: 0, fontSize: 24}}}\n"
            "  key: {device: button, params: {text: Key, widget: {row: 0, column: 1}}}\n"
            "  graph: {device: output_graph, params: {widget: {row: 1}}}\n"
            "  gauge: {device: output_lumeno, params: {widget: {row: 1, column: 1}}}\n"
            "  qml:\n"
            "    device: qml_widget\n"
            "    params:\n"
            "      sourceType: parameter\n"
            "      sourceCode: 'import QtQuick 2.15; Rectangle { width: 300; height: 80; color: "
            "\"navy\"; Text { color: "
            "\"white\"; text: \"Face\"; font.pixelSize: 30; anchors.centerIn: parent } }'\n"
            "      widget: {row: 2, colspan: 2}\n";

ScaledPage* viewOf(const ShownPanel& shown)
{
    return shown.window.findChild<ScaledPage*>();
}

/// The part of a window of that size that the page covers.
QRect pageIn(const QSize& size)
{
    return QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter,
                               kDesign.scaled(size, Qt::KeepAspectRatio), {QPoint(), size});
}

/// Where a point of a widget of the page is in the window.
QPoint placeOf(const ShownPanel& shown, const QWidget* widget, const QPoint& point)
{
    const QRect page = pageIn(shown.window.size());
    return page.topLeft() + QPoint(widget->mapTo(shown.window.page(), point) *
                                   (double(page.width()) / kDesign.width()));
}

QPoint middleOf(const ShownPanel& shown, const QWidget* widget)
{
    return placeOf(shown, widget, widget->rect().center());
}

void tapOn(const ShownPanel& shown, const QWidget* widget)
{
    QTest::mouseClick(viewOf(shown)->viewport(), Qt::LeftButton, {}, middleOf(shown, widget));
}

QImage pictureOf(ShownPanel& shown)
{
    return shown.window.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

/// Of the three colours, over a box; 0 to 255.
double meanDifference(const QImage& a, const QImage& b, const QRect& box)
{
    double sum = 0;
    for (int y = box.top(); y <= box.bottom(); ++y) {
        for (int x = box.left(); x <= box.right(); ++x) {
            const QColor left = a.pixelColor(x, y);
            const QColor right = b.pixelColor(x, y);
            sum += std::abs(left.red() - right.red()) + std::abs(left.green() - right.green()) +
                   std::abs(left.blue() - right.blue());
        }
    }
    return sum / 3 / box.width() / box.height();
}

QImage resized(const QImage& picture, const QSize& size)
{
    return picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

/// How hard its edges are: the squares of the steps from each pixel to the next one.
double sharpness(const QImage& picture)
{
    double sum = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 1; x < picture.width(); ++x) {
            const int step = qGray(picture.pixel(x, y)) - qGray(picture.pixel(x - 1, y));
            sum += step * step;
        }
    }
    return sum;
}

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

void tapAt(const ShownPanel& shown, const QPoint& place)
{
    QTest::mouseClick(viewOf(shown)->viewport(), Qt::LeftButton, {}, place);
}

/// Its first picture takes a while.
bool showsQml(ShownPanel& shown)
{
    const QWidget* const face = shown.panel.widget("qml");
    const QPoint place = face->mapTo(shown.window.page(), face->rect().center() - QPoint(80, 0));
    return QTest::qWaitFor(
        [&] {
            const QColor colour = pictureOf(shown).pixelColor(viewOf(shown)->mapFromScene(place));
            return colour == QColor("navy");
        },
        10000);
}

} // namespace

class tst_ScaledPage : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void pageIsTheDesignDrawnToTheWindow_data();
    void pageIsTheDesignDrawnToTheWindow();
    void textsAreDrawnNotStretched_data();
    void textsAreDrawnNotStretched();
    void qmlHasThePixelsOfTheWindow_data();
    void qmlHasThePixelsOfTheWindow();
    void qmlIsDrawnAgainWhereItChanges();
    void whatComesLaterIsSharpAtOnce_data();
    void whatComesLaterIsSharpAtOnce();
    void textsInQmlAreWhole();
    void tapArrivesWhereTheFingerIs_data();
    void tapArrivesWhereTheFingerIs();
    void listOfADropDownStaysOnThePage();
    void keypadOpensFromAField();
    void tabKeyMovesTheFocus();
    void windowIsAsLargeAsTheDesign();
};

void tst_ScaledPage::cleanup()
{
    QApplication::setStyle("fusion");
    QApplication::setFont(QFont());
    QApplication::setPalette(QPalette());
}

void addSizes()
{
    QTest::addColumn<QSize>("size");
    for (const QSize& size : {QSize(800, 480), QSize(1280, 800), QSize(1920, 1080),
                              QSize(3840, 2160), QSize(320, 240)}) {
        QTest::addRow("%dx%d", size.width(), size.height()) << size;
    }
}

void tst_ScaledPage::pageIsTheDesignDrawnToTheWindow_data()
{
    addSizes();
}

void tst_ScaledPage::pageIsTheDesignDrawnToTheWindow()
{
    QFETCH(QSize, size);
    ShownPanel designed(kPanel, kDesign);
    ShownPanel scaled(kPanel, size);
    QVERIFY(showsQml(designed));
    QVERIFY(showsQml(scaled));
    const QImage picture = pictureOf(scaled);
    QCOMPARE(picture.size(), size);
    // Both as large as the page in the window and back, so that both lose the same details.
    const QRect page = pageIn(size);
    const QImage expected = resized(resized(pictureOf(designed), page.size()), kDesign);
    const QImage back = resized(picture.copy(page), kDesign);
    for (const char* const id : {"caption", "key", "graph", "gauge", "qml"}) {
        const QWidget* const widget = designed.panel.widget(id);
        const QRect box(widget->mapTo(designed.window.page(), QPoint()), widget->size());
        const double difference = meanDifference(expected, back, box);
        QVERIFY2(difference < 20, qPrintable(QString("%1: %2").arg(id).arg(difference)));
        QVERIFY2(sharpness(expected.copy(box)) > 1e4, id); // There is something to compare.
    }
}

void tst_ScaledPage::textsAreDrawnNotStretched_data()
{
    QTest::addColumn<QString>("id");
    for (const char* const id : {"caption", "key", "gauge", "graph"}) {
        QTest::newRow(id) << id;
    }
}

void tst_ScaledPage::textsAreDrawnNotStretched()
{
    QFETCH(QString, id);
    constexpr int factor = 3;
    ShownPanel designed(kPanel, kDesign);
    ShownPanel scaled(kPanel, kDesign * factor);
    const QWidget* const widget = designed.panel.widget(id);
    const QRect box(widget->mapTo(designed.window.page(), QPoint()), widget->size());
    const QImage stretched = resized(pictureOf(designed).copy(box), box.size() * factor);
    const QImage drawn = pictureOf(scaled).copy({box.topLeft() * factor, box.size() * factor});
    const double ratio = sharpness(drawn) / sharpness(stretched);
    QVERIFY2(ratio > 1.5, qPrintable(QString::number(ratio)));
}

void tst_ScaledPage::qmlHasThePixelsOfTheWindow_data()
{
    addSizes();
}

/// An edge of a document is as sharp as the screen, and its areas are where they are seen.
void tst_ScaledPage::qmlHasThePixelsOfTheWindow()
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

void tst_ScaledPage::qmlIsDrawnAgainWhereItChanges()
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

void tst_ScaledPage::whatComesLaterIsSharpAtOnce_data()
{
    QTest::addColumn<QByteArray>("id");
    QTest::newRow("graph") << QByteArray("graph");
    QTest::newRow("document") << QByteArray("qml");
}

/// As it is on a page that had it from the start.
void tst_ScaledPage::whatComesLaterIsSharpAtOnce()
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

void tst_ScaledPage::textsInQmlAreWhole()
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

void tst_ScaledPage::tapArrivesWhereTheFingerIs_data()
{
    addSizes();
}

void tst_ScaledPage::tapArrivesWhereTheFingerIs()
{
    QFETCH(QSize, size);
    const ShownPanel shown(kPanel, size);
    const auto* const button = shown.only<QPushButton>("key");
    QVERIFY(!button->isChecked());
    tapOn(shown, button);
    QVERIFY(button->isChecked());
    tapOn(shown, shown.panel.widget("caption"));
    QVERIFY(button->isChecked());
}

void tst_ScaledPage::listOfADropDownStaysOnThePage()
{
    const ShownPanel shown(kForm + "  a: {device: output_graph, params: {widget: {row: 0}}}\n"
                                   "  gear: {device: dropdownlist, params: {options: "
                                   "one|two|three|four|five|six, widget: {row: 1}}}\n",
                           {1280, 800});
    auto* const list = shown.only<QComboBox>("gear");
    QTest::mouseClick(viewOf(shown)->viewport(), Qt::LeftButton, {}, middleOf(shown, list));
    QTRY_VERIFY(list->view()->isVisible());
    QGraphicsProxyWidget* const opened = list->view()->window()->graphicsProxyWidget();
    QVERIFY(opened);
    QVERIFY(viewOf(shown)->sceneRect().contains(opened->sceneBoundingRect()));
    const QRect field(list->mapTo(shown.window.page(), QPoint()), list->size());
    QVERIFY(opened->geometry().intersects(field)); // No further from it than there is need.
    const QPoint row = list->view()->visualRect(list->model()->index(4, 0)).center();
    const QPoint inWindow = list->view()->viewport()->mapTo(list->view()->window(), row);
    QTest::qWait(QApplication::doubleClickInterval()); // A list takes no release just after.
    const QPoint place = viewOf(shown)->mapFromScene(opened->mapToScene(inWindow));
    QTest::mouseMove(viewOf(shown)->viewport(), place);
    QTest::mouseClick(viewOf(shown)->viewport(), Qt::LeftButton, {}, place);
    QTRY_COMPARE(list->currentText(), QString("five"));
}

void tst_ScaledPage::keypadOpensFromAField()
{
    const ShownPanel shown(kForm +
                               "  target: {device: input, params: {max: 100, decimals: 0, name: "
                               "Speed, units: rpm, use screen numpad: true}}\n",
                           {780, 560});
    auto* const field = shown.only<QDoubleSpinBox>("target");
    ModalDialog keypad([&](QWidget& dialog) {
        QVERIFY(dialog.isVisible());
        QCOMPARE(dialog.findChild<QLabel*>("label")->text(), QString("Speed, rpm"));
        const QRect page = pageIn(shown.window.size());
        const double factor = double(page.width()) / kDesign.width();
        const QRect place(field->mapTo(shown.window.page(), QPoint()) * factor + page.topLeft() +
                              shown.window.mapToGlobal(QPoint()),
                          field->size() * factor);
        QVERIFY2(!dialog.geometry().intersects(place), "it stands beside the field");
        const auto* const scrim = shown.window.findChild<QWidget*>("scrim");
        QVERIFY(scrim);
        QCOMPARE(scrim->window(), &shown.window);
        QCOMPARE(scrim->geometry(), shown.window.rect());
        tap(dialog, "key7");
        tap(dialog, "ok");
    });
    tapOn(shown, field);
    QTRY_COMPARE(keypad.count(), 1);
    QTRY_COMPARE(field->value(), 7.0);
}

void tst_ScaledPage::tabKeyMovesTheFocus()
{
    const ShownPanel shown(kForm + "  one: {device: button}\n"
                                   "  two: {device: button}\n",
                           {1280, 800});
    QApplication::setActiveWindow(const_cast<norvo::PanelWindow*>(&shown.window));
    tapOn(shown, shown.only<QPushButton>("one"));
    QTRY_VERIFY(shown.only<QPushButton>("one")->hasFocus());
    QTest::keyClick(viewOf(shown), Qt::Key_Tab);
    QVERIFY(shown.only<QPushButton>("two")->hasFocus());
    QTest::keyClick(viewOf(shown), Qt::Key_Space);
    QVERIFY(shown.only<QPushButton>("two")->isChecked());
}

void tst_ScaledPage::windowIsAsLargeAsTheDesign()
{
    norvo::PanelWindow window("Panel");
    window.scalePage({1024, 600});
    window.fit({1920, 1080});
    QCOMPARE(window.size(), QSize(1024, 600));
    window.fit({800, 480});
    QCOMPARE(window.size(), QSize(800, 480));
}

NORVO_TEST(tst_ScaledPage)
#include "tst_ScaledPage.moc"
