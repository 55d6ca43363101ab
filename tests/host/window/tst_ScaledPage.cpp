// SPDX-License-Identifier: GPL-3.0-or-later

#include "ModalDialog.h"
#include "ScaledPanel.h"
#include "TestMain.h"

#include <cstdlib>

namespace {

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
