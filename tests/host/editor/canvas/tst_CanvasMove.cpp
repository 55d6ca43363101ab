// SPDX-License-Identifier: GPL-3.0-or-later

#include "CanvasTest.h"
#include "TestMain.h"

#include "host/window/look/TouchSize.h"

namespace {

const QByteArray kPanel =
    "devices:\n"
    "  go: {device: button, params: {text: Go, widget: {row: 0, column: 0}}}\n"
    "  lamp: {device: label, params: {widget: {row: 0, column: 1}}}\n"
    "  field: {device: input, params: {widget: {row: 1, column: 0}}}\n";

const QByteArray kPages =
    "devices:\n"
    "  go: {device: button, params: {widget: {area: One, row: 0, column: 0}}}\n"
    "  lamp: {device: label, params: {widget: {area: Two, row: 0, column: 0}}}\n";

} // namespace

class tst_CanvasMove : public QObject
{
    Q_OBJECT

private slots:
    void aDragIsOneStep();
    void aDragOutOfTheLastRowMakesARow();
    void overlapsAreRefused();
    void severalMoveTogether();
    void anEdgeChangesTheSpan();
    void theLowerEdgeChangesTheRows();
    void arrowsMoveAndShiftGrows();
    void withoutADragByMove();
    void aFingerDragsToo();
    void aDragOverATabTurnsThePage();
    void aMenuMovesToAPage();
    void twoOfTwoPagesDoNotGetOnePlace();
    void aThinRowIsWideEnoughWhileItIsEdited();
    void onAPageFromTheRightFramesAreWhereTheDevicesAre();
};

void tst_CanvasMove::aDragIsOneStep()
{
    CanvasTest test(kPanel);
    test.drag(test.middle("go"), test.middle(1, 1));
    QCOMPARE(toText(test.cells("go")), QString("1 1 1 1"));
    QCOMPARE(test.panel.session->undoName(), QString("Move go"));
    QCOMPARE(test.text(), QByteArray(kPanel).replace("row: 0, column: 0", "row: 1, column: 1"));
    test.panel.session->undo();
    QCOMPARE(test.text(), kPanel);
}

void tst_CanvasMove::aDragOutOfTheLastRowMakesARow()
{
    CanvasTest test(kPanel);
    test.drag(test.middle("lamp"), test.middle(2, 2));
    QCOMPARE(toText(test.cells("lamp")), QString("2 2 1 1"));
    QVERIFY(test.cover()->lines().rows() >= 4); // Again a free one at each end.
    QVERIFY(test.cover()->lines().columns() >= 4);
}

void tst_CanvasMove::overlapsAreRefused()
{
    CanvasTest test(kPanel);
    test.drag(test.middle("go"), test.middle("lamp"));
    QCOMPARE(test.text(), kPanel);
    QCOMPARE(test.problems.count(), 1);
    QVERIFY(test.problems[0][0].toString().contains("lamp"));
}

void tst_CanvasMove::severalMoveTogether()
{
    CanvasTest test(kPanel);
    test.tap(test.middle("go"));
    test.tap(test.middle("lamp"), Qt::ControlModifier);
    test.drag(test.middle("go"), test.middle(2, 0));
    QCOMPARE(toText(test.cells("go")), QString("2 0 1 1"));
    QCOMPARE(toText(test.cells("lamp")), QString("2 1 1 1"));
    test.panel.session->undo();
    QCOMPARE(test.text(), kPanel);
}

void tst_CanvasMove::anEdgeChangesTheSpan()
{
    CanvasTest test(kPanel);
    test.tap(test.middle("field"));
    const QRect frame = test.frame("field");
    test.drag({frame.right(), frame.center().y()}, test.middle(1, 1));
    QCOMPARE(toText(test.cells("field")), QString("1 0 1 2"));
    QCOMPARE(test.panel.session->undoName(), QString("Resize field"));
    const QRect wide = test.frame("field");
    test.drag({wide.left(), wide.center().y()}, test.middle(1, 1));
    QCOMPARE(toText(test.cells("field")), QString("1 1 1 1"));
    const QRect right = test.frame("field");
    test.drag(right.topLeft(), test.middle(0, 0)); // Others are there.
    QCOMPARE(toText(test.cells("field")), QString("1 1 1 1"));
    QCOMPARE(test.problems.count(), 1);
}

void tst_CanvasMove::theLowerEdgeChangesTheRows()
{
    CanvasTest test(kPanel);
    test.tap(test.middle("field"));
    const QRect frame = test.frame("field");
    test.drag({frame.center().x(), frame.bottom()}, test.middle(2, 0));
    QCOMPARE(toText(test.cells("field")), QString("1 0 2 1"));
    const QRect high = test.frame("field");
    test.drag({high.center().x(), high.bottom()}, test.middle(0, 0)); // Not above its first row.
    QCOMPARE(toText(test.cells("field")), QString("1 0 1 1"));
}

void tst_CanvasMove::arrowsMoveAndShiftGrows()
{
    CanvasTest test(kPanel);
    test.tap(test.middle("lamp"));
    test.key(Qt::Key_Down);
    test.key(Qt::Key_Right);
    QCOMPARE(toText(test.cells("lamp")), QString("1 2 1 1"));
    QVERIFY(test.cover()->hasFocus());
    test.key(Qt::Key_Down, Qt::ShiftModifier);
    test.key(Qt::Key_Right, Qt::ShiftModifier);
    QCOMPARE(toText(test.cells("lamp")), QString("1 2 2 2"));
    test.panel.session->undo();
    test.panel.session->undo();
    QCOMPARE(test.text(), kPanel); // Presses of one key are one step.
}

void tst_CanvasMove::withoutADragByMove()
{
    CanvasTest test(kPanel);
    test.tap(test.middle("go"));
    test.key(Qt::Key_M);
    test.tap(test.middle("lamp"));
    QCOMPARE(test.problems.count(), 1); // Another cell may do.
    test.tap(test.middle(2, 1));
    QCOMPARE(toText(test.cells("go")), QString("2 1 1 1"));
    test.key(Qt::Key_M);
    test.key(Qt::Key_Left);
    test.key(Qt::Key_Return);
    QCOMPARE(toText(test.cells("go")), QString("2 0 1 1"));
}

void tst_CanvasMove::aFingerDragsToo()
{
    CanvasTest test(kPanel);
    QTouchDevice* const screen = QTest::createTouchDevice();
    const QPoint from = test.middle("go");
    QTest::touchEvent(test.cover(), screen).press(0, from, test.cover());
    QTest::touchEvent(test.cover(), screen).move(0, (from + test.middle(1, 1)) / 2, test.cover());
    QTest::touchEvent(test.cover(), screen).move(0, test.middle(1, 1), test.cover());
    QTest::touchEvent(test.cover(), screen).release(0, test.middle(1, 1), test.cover());
    CanvasTest::settle();
    QCOMPARE(toText(test.cells("go")), QString("1 1 1 1"));
}

void tst_CanvasMove::aDragOverATabTurnsThePage()
{
    CanvasTest test(kPages);
    QWidget* const tab = test.panel.pages().key("Two");
    QTest::mousePress(test.cover(), Qt::LeftButton, {}, test.middle("go"));
    const auto drag = [](QWidget& to, const QPoint& place) {
        QMouseEvent move(QEvent::MouseMove, place, to.mapToGlobal(place), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&to, &move);
    };
    norvo::PageCover* const first = test.cover();
    drag(*tab, tab->rect().center());
    drag(*tab, tab->rect().center() + QPoint(1, 0));
    QTRY_VERIFY_WITH_TIMEOUT(test.cover() != first, 60000);
    drag(*test.cover(), test.middle(1, 0));
    QTest::mouseRelease(test.cover(), Qt::LeftButton, {}, test.middle(1, 0));
    QCOMPARE(test.cells("go").area, QString("Two"));
    QCOMPARE(toText(test.cells("go")), QString("1 0 1 1"));
}

void tst_CanvasMove::aMenuMovesToAPage()
{
    CanvasTest test(kPages);
    test.tap(test.middle("go"));
    for (QAction* const action : test.canvas->actions()) {
        if (action->menu()) {
            action->menu()->actions().at(1)->trigger();
        }
    }
    QCOMPARE(test.cells("go").area, QString("Two"));
    QCOMPARE(toText(test.cells("go")), QString("1 0 1 1")); // Where it is free.
}

void tst_CanvasMove::twoOfTwoPagesDoNotGetOnePlace()
{
    CanvasTest test(kPages);
    test.panel.session->select({"go", "lamp"});
    test.drag(test.middle("go"), test.middle(1, 1));
    QCOMPARE(test.problems.count(), 1);
    const QString said = test.problems.first().first().toString();
    QVERIFY2(said.contains("go and lamp"), qPrintable(said));
    QCOMPARE(test.text(), kPages);
}

void tst_CanvasMove::aThinRowIsWideEnoughWhileItIsEdited()
{
    CanvasTest test(
        "devices:\n"
        "  go: {device: button, params: {widget: {row: 0, column: 0}}}\n"
        "  empty: {device: label, params: {Value: \"\", widget: {row: 1, column: 0}}}\n");
    QWidget* const label = test.panel.panel().widget("empty");
    const int target = norvo::TouchSize::pixels(norvo::PanelLook::Touch::Fingers,
                                                *QGuiApplication::primaryScreen());
    QVERIFY(test.frame("empty").height() >= target);
    test.canvas.reset();
    test.settle();
    QTRY_VERIFY_WITH_TIMEOUT(label->height() < target, 60000);
}

void tst_CanvasMove::onAPageFromTheRightFramesAreWhereTheDevicesAre()
{
    CanvasTest test(kPanel);
    test.canvas.reset();
    test.panel.window.setLayoutDirection(Qt::RightToLeft);
    test.canvas = std::make_unique<norvo::EditCanvas>(*test.panel.session, &test.panel.window);
    test.settle();
    for (const QString& id : {QString("go"), QString("lamp"), QString("field")}) {
        const QWidget& widget = *test.panel.panel().widget(id);
        const auto middleOf = [&] {
            return test.cover()->mapFromGlobal(widget.mapToGlobal(widget.rect().center()));
        };
        QTRY_COMPARE_WITH_TIMEOUT(test.frame(id).center().x(), middleOf().x(), 10000);
    }
    QVERIFY(test.frame("go").left() > test.frame("lamp").right());
    test.drag(test.middle("go"), test.middle(1, 1));
    QCOMPARE(toText(test.cells("go")), QString("1 1 1 1"));
}

NORVO_TEST(tst_CanvasMove)
#include "tst_CanvasMove.moc"
