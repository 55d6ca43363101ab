// SPDX-License-Identifier: GPL-3.0-or-later

#include "CanvasTest.h"
#include "TestMain.h"

#include "norvo/BaseWidget.h"

namespace {

const QByteArray kPanel =
    "devices:\n"
    "  go: {device: button, params: {text: Go, widget: {row: 0, column: 0}}}\n"
    "  lamp: {device: label, params: {widget: {row: 0, column: 1}}}\n"
    "  field: {device: input, params: {widget: {row: 1, column: 0}}}\n";

const QByteArray kTemplate = "templates:\n"
                             "  pump:\n"
                             "    devices:\n"
                             "      key: {device: button, params: {widget: {row: 0, column: 0}}}\n"
                             "devices:\n"
                             "  p1: {use: pump, at: {row: 0, column: 0}}\n"
                             "  lamp: {device: label, params: {widget: {row: 0, column: 1}}}\n";

} // namespace

class tst_EditCanvas : public QObject
{
    Q_OBJECT

private slots:
    void aTapSelectsAndDoesNotReachTheDevice();
    void outlinesLieWhereDevicesStand();
    void ctrlAndShiftAddAndTakeAway();
    void tapOnFreeGroundClears();
    void bandSelectsWhatItTouches();
    void tabGoesByRowAndColumnAndOut();
    void escapeLeavesStepByStep();
    void keysDoNotReachTheDevices();
    void fixedDevicesSayWhy();
    void pageIsAsBeforeWithoutIt();
    void coversFollowPagesThatAreMadeAnew();
    void screenReaderHearsWhereItIs();
};

void tst_EditCanvas::aTapSelectsAndDoesNotReachTheDevice()
{
    CanvasTest test(kPanel);
    auto* const button = test.panel.window.findChild<QPushButton*>();
    QSignalSpy clicked(button, &QPushButton::clicked);
    test.tap(test.middle("go"));
    QCOMPARE(test.selection(), QStringList("go"));
    QCOMPARE(clicked.count(), 0);
    test.tap(test.middle("lamp"));
    QCOMPARE(test.selection(), QStringList("lamp"));
}

void tst_EditCanvas::outlinesLieWhereDevicesStand()
{
    QFile file(NORVO_SOURCE_DIR "/examples/gallery/panel.yaml");
    QVERIFY(file.open(QIODevice::ReadOnly));
    CanvasTest test(file.readAll());
    test.panel.window.resize(1000, 700);
    int seen = 0;
    for (const QString& id : test.panel.cells().keys()) {
        const QWidget* const widget = test.panel.panel().widget(id);
        if (widget) { // Not where its picture is missing.
            ++seen;
            QTRY_VERIFY2_WITH_TIMEOUT(test.frame(id).contains(widget->geometry()), qPrintable(id),
                                      60000);
        }
    }
    QVERIFY(seen > 12);
}

void tst_EditCanvas::ctrlAndShiftAddAndTakeAway()
{
    CanvasTest test(kPanel);
    test.tap(test.middle("go"));
    test.tap(test.middle("lamp"), Qt::ControlModifier);
    test.tap(test.middle("field"), Qt::ShiftModifier);
    QCOMPARE(test.selection(), QStringList({"go", "lamp", "field"}));
    test.tap(test.middle("lamp"), Qt::ControlModifier);
    QCOMPARE(test.selection(), QStringList({"go", "field"}));
    test.key(Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(test.selection(), QStringList({"go", "lamp", "field"}));
}

void tst_EditCanvas::tapOnFreeGroundClears()
{
    CanvasTest test(kPanel);
    test.tap(test.middle("go"));
    test.tap(test.middle(1, 1));
    QVERIFY(test.selection().isEmpty());
}

void tst_EditCanvas::bandSelectsWhatItTouches()
{
    CanvasTest test(kPanel);
    test.drag(test.middle(1, 1), test.middle("lamp"));
    QCOMPARE(test.selection(), QStringList("lamp"));
    test.drag(test.middle(1, 1), test.middle("field"), Qt::ShiftModifier);
    QCOMPARE(test.selection(), QStringList({"lamp", "field"}));
}

void tst_EditCanvas::tabGoesByRowAndColumnAndOut()
{
    CanvasTest test(kPanel);
    auto* const beside = new QPushButton(&test.panel.window);
    beside->show();
    for (const char* id : {"go", "lamp", "field"}) {
        test.key(Qt::Key_Tab);
        QCOMPARE(test.selection(), QStringList(id));
    }
    test.key(Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(test.selection(), QStringList("lamp"));
    test.key(Qt::Key_Tab);
    test.key(Qt::Key_Tab);
    QVERIFY(test.selection().isEmpty());
    QVERIFY(!test.panel.pages().isAncestorOf(QApplication::focusWidget()));
}

void tst_EditCanvas::escapeLeavesStepByStep()
{
    CanvasTest test(kPanel);
    test.tap(test.middle("go"));
    QTest::mousePress(test.cover(), Qt::LeftButton, {}, test.middle("go"));
    test.moveTo(test.middle(1, 1));
    test.key(Qt::Key_Escape);
    QTest::mouseRelease(test.cover(), Qt::LeftButton, {}, test.middle(1, 1));
    QCOMPARE(test.text(), kPanel);
    QCOMPARE(test.selection(), QStringList("go"));
    test.key(Qt::Key_Escape);
    QVERIFY(test.selection().isEmpty());
}

void tst_EditCanvas::keysDoNotReachTheDevices()
{
    CanvasTest test(kPanel);
    auto* const button = test.panel.window.findChild<QPushButton*>();
    QSignalSpy clicked(button, &QPushButton::clicked);
    button->setFocus();
    QVERIFY(test.cover()->hasFocus());
    QTest::keyClick(button, Qt::Key_Space);
    QCOMPARE(clicked.count(), 0);
    test.canvas.reset();
    button->setFocus();
    QTest::keyClick(button, Qt::Key_Space);
    QCOMPARE(clicked.count(), 1);
}

void tst_EditCanvas::fixedDevicesSayWhy()
{
    CanvasTest test(kTemplate);
    test.tap(test.middle("p1-key"));
    QCOMPARE(test.selection(), QStringList("p1-key"));
    QCOMPARE(test.problems.count(), 1);
    QVERIFY(test.problems[0][0].toString().contains("p1-key"));
    test.drag(test.middle("p1-key"), test.middle(1, 1));
    QCOMPARE(test.problems.count(), 2);
    QCOMPARE(test.text(), kTemplate);
}

void tst_EditCanvas::pageIsAsBeforeWithoutIt()
{
    EditedPanel panel(kPanel);
    auto* const button = panel.window.findChild<QPushButton*>();
    CanvasTest::settle();
    const QRect before = button->geometry();
    norvo::EditCanvas* const canvas = new norvo::EditCanvas(*panel.session, &panel.window);
    CanvasTest::settle();
    QVERIFY(button->geometry() != before); // Rows and columns have numbers.
    delete canvas;
    CanvasTest::settle();
    QCOMPARE(button->geometry(), before);
    QVERIFY(panel.window.findChildren<norvo::PageCover*>().isEmpty());
}

void tst_EditCanvas::coversFollowPagesThatAreMadeAnew()
{
    CanvasTest test(kPanel);
    QByteArray other = kPanel;
    other.replace("row: 1, column: 0", "row: 2, column: 2");
    QCOMPARE(test.panel.session->replaceText("Other", other), QString());
    CanvasTest::settle();
    QCOMPARE(test.panel.window.findChildren<norvo::PageCover*>().size(), 1);
    QVERIFY(test.cover()->hasFocus());
    test.tap(test.middle("field"));
    QCOMPARE(test.selection(), QStringList("field"));
}

void tst_EditCanvas::screenReaderHearsWhereItIs()
{
    CanvasTest test(kPanel);
    test.key(Qt::Key_Tab);
    QCOMPARE(test.cover()->accessibleName(), QString("The panel: go, row 0, column 0"));
    test.key(Qt::Key_Escape);
    test.key(Qt::Key_Down);
    test.key(Qt::Key_Down);
    test.key(Qt::Key_Right);
    QCOMPARE(test.cover()->accessibleName(), QString("The panel: free, row 1, column 1"));
}

NORVO_TEST(tst_EditCanvas)
#include "tst_EditCanvas.moc"
