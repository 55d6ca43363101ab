// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"
#include "ToolPanel.h"
#include "Wheel.h"

#include <QTouchDevice>

#include <memory>

namespace {

QTouchDevice* finger()
{
    static QTouchDevice* const device = QTest::createTouchDevice(); // The application's.
    return device;
}

void moveMouse(QWidget& widget, const QPoint& place)
{
    QMouseEvent move(QEvent::MouseMove, place, widget.mapToGlobal(place), Qt::NoButton,
                     Qt::LeftButton, {});
    QApplication::sendEvent(&widget, &move);
}

void drag(QWidget& widget, const QPoint& from, const QPoint& by)
{
    QTest::mousePress(&widget, Qt::LeftButton, {}, from);
    for (int i = 1; i <= 4; ++i) {
        moveMouse(widget, from + by * i / 4);
    }
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, from + by);
}

void turnWheelAt(QWidget& widget, const QPoint& place, int notches,
                 Qt::KeyboardModifiers modifiers = {})
{
    constexpr int eighthsOfADegree = 120;
    QWheelEvent wheel(place, widget.mapToGlobal(place), {}, {0, notches * eighthsOfADegree},
                      Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &wheel);
}

/// Two fingers side by side, or one above the other, that go from one distance to another.
void pinch(QWidget& widget, const QPoint& middle, const QPoint& from, const QPoint& to)
{
    QTest::touchEvent(&widget, finger()).press(0, middle - from / 2, &widget);
    QTest::touchEvent(&widget, finger())
        .move(0, middle - from / 2, &widget)
        .press(1, middle + from / 2, &widget);
    for (int i = 1; i <= 4; ++i) {
        const QPoint half = (from + (to - from) * i / 4) / 2;
        QTest::touchEvent(&widget, finger())
            .move(0, middle - half, &widget)
            .move(1, middle + half, &widget);
    }
    QTest::touchEvent(&widget, finger())
        .release(0, middle - to / 2, &widget)
        .release(1, middle + to / 2, &widget);
}

} // namespace

class tst_GraphGestures : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void wheelZoomsTheTimesAroundThePointer();
    void wheelWithCtrlZoomsTheValues();
    void wheelDoesNothingWhileToolsAreClosed();
    void zoomEndsAtWhatThereIs();
    void zoomGoesDownToMilliseconds();
    void dragMovesTheTimesAndHolds();
    void dragUprightMovesTheValuesAndStaysLive();
    void dragEndsAtWhatThereIs();
    void pinchZoomsTheTimes();
    void pinchUprightZoomsTheValues();
    void fingerDragsAsTheMouse();
    void doubleTapGoesBackToLive();
    void doubleTapOfAFingerGoesBackToLive();
    void keysDoWhatHandsDo();
    void rangeIsFixedAndReleasedByTheKey();
    void wheelOverTheToolsDoesNotScrollThePage();
    void scaledPageTakesDragAndPinch();

private:
    norvo::PlotCopy& copy() { return m_panel->copy(); }
    QPoint middle() { return copy().area().rect().center(); }
    QCPRange times() { return copy().xAxis->range(); }
    QCPRange values() { return copy().yAxis->range(); }
    /// Twenty seconds of one curve between 0 and 10.
    static void fill(ToolPanel& panel)
    {
        for (int i = 190; i > 0; --i) {
            panel.send("a", {{i * 0.1, i % 2 * 10.0}});
        }
        panel.waitForFrames(2);
    }

    std::unique_ptr<ToolPanel> m_panel;
};

void tst_GraphGestures::init()
{
    m_panel = std::make_unique<ToolPanel>();
    fill(*m_panel);
    m_panel->open();
}

void tst_GraphGestures::cleanup()
{
    m_panel.reset();
}

void tst_GraphGestures::wheelZoomsTheTimesAroundThePointer()
{
    m_panel->tap("graphPause");
    const QPoint place = middle() + QPoint(100, 0);
    const double key = copy().xAxis->pixelToCoord(place.x());
    const double size = times().size();
    const QCPRange valuesBefore = values();
    turnWheelAt(copy(), place, 1);
    QVERIFY(qAbs(times().size() - 0.8 * size) < 1e-6);
    QVERIFY(qAbs(copy().xAxis->pixelToCoord(place.x()) - key) < 1e-3);
    QCOMPARE(values(), valuesBefore);
    QVERIFY(m_panel->state().startsWith("Not live: "));
}

void tst_GraphGestures::wheelWithCtrlZoomsTheValues()
{
    const double size = values().size();
    turnWheelAt(copy(), middle(), 1, Qt::ControlModifier);
    QVERIFY(qAbs(values().size() - 0.8 * size) < 1e-6);
    QVERIFY(!copy().isHeld());
    QCOMPARE(m_panel->state(), QString("range by hand"));
    turnWheelAt(copy(), {2, middle().y()}, -1); // Beside the axis.
    QVERIFY(qAbs(values().size() - size) < 1e-6);
    m_panel->waitForFrames(3); // The device goes on with its own.
    QVERIFY(qAbs(values().size() - size) < 1e-6);
}

void tst_GraphGestures::wheelDoesNothingWhileToolsAreClosed()
{
    m_panel->tap("graphClose");
    turnWheel(*m_panel->plot(), 1);
    m_panel->waitForFrames(2);
    QVERIFY(!m_panel->pane());
    QVERIFY(qAbs(m_panel->plot()->xAxis->range().size() - 20) < 1e-3);
}

void tst_GraphGestures::zoomEndsAtWhatThereIs()
{
    m_panel->tap("graphPause");
    const QCPRange before = times();
    turnWheelAt(copy(), middle(), 2);
    QVERIFY(times().size() < before.size() * 0.7);
    turnWheelAt(copy(), middle(), -20);
    QCOMPARE(times(), before);
}

void tst_GraphGestures::zoomGoesDownToMilliseconds()
{
    turnWheelAt(copy(), middle(), 200); // In one turn: too far, and left alone.
    for (int i = 0; i < 200; ++i) {
        turnWheelAt(copy(), middle(), 1);
    }
    QVERIFY(times().size() >= 0.01 && times().size() < 0.02);
    QVERIFY2(m_panel->state().contains('.'), qPrintable(m_panel->state()));
}

void tst_GraphGestures::dragMovesTheTimesAndHolds()
{
    m_panel->tap("graphPause");
    turnWheelAt(copy(), middle(), 3);
    const QCPRange before = times();
    const QCPRange valuesBefore = values();
    drag(copy(), middle(), {80, 6});
    const double distance = before.size() * 80 / copy().area().width();
    QVERIFY(qAbs(before.lower - times().lower - distance) < 1e-3);
    QVERIFY(qAbs(before.size() - times().size()) < 1e-6);
    QCOMPARE(values(), valuesBefore);
    QVERIFY(copy().isHeld());
}

void tst_GraphGestures::dragUprightMovesTheValuesAndStaysLive()
{
    const QCPRange before = values();
    drag(copy(), middle(), {6, 60});
    const double distance = before.size() * 60 / copy().area().height();
    QVERIFY(qAbs(values().lower - before.lower - distance) < 1e-6);
    QVERIFY(!copy().isHeld());
    QVERIFY(copy().areValuesFixed());
    QCOMPARE(m_panel->state(), QString("range by hand"));
}

void tst_GraphGestures::dragEndsAtWhatThereIs()
{
    m_panel->tap("graphPause");
    const QCPRange before = times();
    drag(copy(), middle(), {-200, 0}); // Towards what has not been yet.
    QCOMPARE(times(), before);
    turnWheelAt(copy(), middle(), 3);
    drag(copy(), middle(), {-2000, 0});
    QVERIFY(qAbs(times().upper - before.upper) < 1e-6);
    drag(copy(), middle(), {4000, 0});
    QVERIFY(qAbs(times().lower - before.lower) < 1e-6);
}

void tst_GraphGestures::pinchZoomsTheTimes()
{
    m_panel->tap("graphPause");
    const double size = times().size();
    const QCPRange valuesBefore = values();
    pinch(copy(), middle(), {100, 10}, {200, 40});
    QVERIFY2(qAbs(times().size() / size - 0.5) < 0.03, qPrintable(QString::number(times().size())));
    QVERIFY(qAbs(times().center() - copy().xAxis->pixelToCoord(middle().x())) < 0.2);
    QCOMPARE(values(), valuesBefore);
    QVERIFY(m_panel->state().startsWith("Not live: "));
}

void tst_GraphGestures::pinchUprightZoomsTheValues()
{
    const double size = values().size();
    pinch(copy(), middle(), {10, 60}, {20, 120});
    QVERIFY2(qAbs(values().size() / size - 0.5) < 0.03,
             qPrintable(QString::number(values().size())));
    QVERIFY(!copy().isHeld());
}

void tst_GraphGestures::fingerDragsAsTheMouse()
{
    m_panel->tap("graphPause");
    turnWheelAt(copy(), middle(), 3);
    const QCPRange before = times();
    QTest::touchEvent(&copy(), finger()).press(0, middle(), &copy());
    QTest::touchEvent(&copy(), finger()).move(0, middle() + QPoint(40, 2), &copy());
    QTest::touchEvent(&copy(), finger()).move(0, middle() + QPoint(80, 2), &copy());
    QTest::touchEvent(&copy(), finger()).release(0, middle() + QPoint(80, 2), &copy());
    const double distance = before.size() * 80 / copy().area().width();
    QVERIFY(qAbs(before.lower - times().lower - distance) < 1e-3);
}

void tst_GraphGestures::doubleTapGoesBackToLive()
{
    turnWheelAt(copy(), middle(), 3);
    turnWheelAt(copy(), middle(), 3, Qt::ControlModifier);
    QVERIFY(copy().isHeld() && copy().areValuesFixed());
    QTest::mouseClick(&copy(), Qt::LeftButton, {}, middle());
    QTest::mouseDClick(&copy(), Qt::LeftButton, {}, middle());
    QTest::mouseRelease(&copy(), Qt::LeftButton, {}, middle());
    QVERIFY(!copy().isHeld() && !copy().areValuesFixed());
    QCOMPARE(m_panel->state(), QString("Live"));
    QCOMPARE(times(), m_panel->plot()->xAxis->range());
    QCOMPARE(values(), m_panel->plot()->yAxis->range());
}

void tst_GraphGestures::doubleTapOfAFingerGoesBackToLive()
{
    turnWheelAt(copy(), middle(), 3);
    for (int i = 0; i < 2; ++i) {
        QTest::touchEvent(&copy(), finger()).press(0, middle(), &copy());
        QTest::touchEvent(&copy(), finger()).release(0, middle(), &copy());
    }
    QVERIFY(!copy().isHeld());
}

void tst_GraphGestures::keysDoWhatHandsDo()
{
    const double size = times().size();
    QTest::keyClick(&copy(), Qt::Key_Plus);
    QVERIFY(qAbs(times().size() - 0.8 * size) < 1e-6);
    const QCPRange zoomed = times();
    QTest::keyClick(&copy(), Qt::Key_Left);
    QVERIFY(qAbs(zoomed.lower - times().lower - 0.1 * zoomed.size()) < 1e-3);
    QTest::keyClick(&copy(), Qt::Key_Right);
    QVERIFY(qAbs(zoomed.lower - times().lower) < 1e-3);
    QTest::keyClick(&copy(), Qt::Key_Minus);
    QVERIFY(qAbs(times().size() - size) < 1e-6);
    const double valueSize = values().size();
    QTest::keyClick(&copy(), Qt::Key_Plus, Qt::ControlModifier);
    QVERIFY(qAbs(values().size() - 0.8 * valueSize) < 1e-6);
    const QCPRange valuesBefore = values();
    QTest::keyClick(&copy(), Qt::Key_Up);
    QVERIFY(values().lower > valuesBefore.lower);
    QTest::keyClick(&copy(), Qt::Key_Down);
    QVERIFY(qAbs(values().lower - valuesBefore.lower) < 1e-6);
    QTest::keyClick(&copy(), Qt::Key_Home);
    QCOMPARE(m_panel->state(), QString("Live"));
    QTest::keyClick(&copy(), Qt::Key_Space);
    QVERIFY(copy().isHeld());
    QTest::keyClick(&copy(), Qt::Key_Space);
    QVERIFY(!copy().isHeld());
}

void tst_GraphGestures::rangeIsFixedAndReleasedByTheKey()
{
    const QCPRange before = values();
    m_panel->tap("graphRange");
    m_panel->send("a", {{0.01, 500}});
    m_panel->waitForFrames(3);
    QCOMPARE(values(), before);
    QVERIFY(m_panel->key("graphRange")->isChecked());
    QCOMPARE(m_panel->state(), QString("range by hand"));
    m_panel->tap("graphRange");
    m_panel->waitForFrames(2);
    QVERIFY(values().upper > 400);
    QCOMPARE(m_panel->state(), QString("Live"));
}

void tst_GraphGestures::wheelOverTheToolsDoesNotScrollThePage()
{
    m_panel->window().resize(800, 300); // The page scrolls.
    auto* const scroll = m_panel->window().findChild<QScrollArea*>();
    const QScrollBar* const bar = scroll->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0);
    turnWheelAt(copy(), {middle().x(), 20}, -3);
    QCOMPARE(bar->value(), 0);
    turnWheelAt(*scroll->viewport(), {5, 5}, -3); // The page, as ever.
    QVERIFY2(bar->value() > 0, qPrintable(QString::number(bar->maximum())));
}

void tst_GraphGestures::scaledPageTakesDragAndPinch()
{
    m_panel = std::make_unique<ToolPanel>("fit: scale\ndesign: 400x350\n" + ToolPanel::twoGraphs(),
                                          QSize(800, 700));
    fill(*m_panel);
    m_panel->tools()->open();
    QTRY_VERIFY(copy().area().width() > 100);
    m_panel->tap("graphPause");
    turnWheelAt(copy(), middle(), 3);
    const QCPRange before = times();
    auto* const view = m_panel->window().findChild<QGraphicsView*>();
    const QPoint place = view->mapFromScene(copy().mapTo(m_panel->window().page(), middle()));
    const double scale = view->transform().m11();
    QVERIFY(scale > 1.3);
    drag(*view->viewport(), place, {80, 4});
    QVERIFY(qAbs(before.lower - times().lower -
                 before.size() * 80 / scale / copy().area().width()) < 0.05);
    const double size = times().size();
    pinch(*view->viewport(), place, {100, 10}, {200, 20});
    QVERIFY2(qAbs(times().size() / size - 0.5) < 0.05, qPrintable(QString::number(times().size())));
}

NORVO_TEST(tst_GraphGestures)
#include "tst_GraphGestures.moc"
