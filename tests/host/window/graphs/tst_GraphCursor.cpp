// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"
#include "ToolPanel.h"
#include "host/plots/Cursor.h"
#include "host/plots/SeenPoints.h"

#include <memory>

using norvo::Cursor;

class tst_GraphCursor : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void tapShowsTheTimeAndTheValuesOfAllCurves();
    void textsHaveRoomBesideTheLine();
    void hiddenCurveHasNoValue();
    void gapHasNoValue();
    void lonePointIsReachedNearby();
    void cursorStaysAtItsTime();
    void keysMoveIt();
    void screenReaderIsToldTheValues();
    void elementOfAnArrayIsNamedByItsNumber();
    void tapOnALegendEntryHidesAndShows();
    void hiddenCurveStaysHiddenAcrossAGap();
    void legendFollowsTheFinger();
    void legendStaysInside();

private:
    norvo::PlotCopy& copy() { return m_panel->copy(); }
    const Cursor* cursor(const QString& id = "trend")
    {
        return m_panel->copy(id).findChild<Cursor*>();
    }
    QPoint placeOf(double key, const QString& id = "trend")
    {
        const norvo::PlotCopy& plot = m_panel->copy(id);
        return {qRound(plot.xAxis->coordToPixel(key)),
                plot.area().bottom() - 5}; // Below the legend.
    }
    void tapAt(double key, const QString& id = "trend")
    {
        QTest::mouseClick(&m_panel->copy(id), Qt::LeftButton, {}, placeOf(key, id));
    }
    QPoint legendEntry(int index)
    {
        return static_cast<QCPLayoutElement*>(copy().legend->item(index))->outerRect().center();
    }

    std::unique_ptr<ToolPanel> m_panel;
    double m_start = 0; ///< When the first point of "b" was, which has one each tenth of a second.
};

void tst_GraphCursor::init()
{
    m_panel = std::make_unique<ToolPanel>();
    m_panel->send("a", {{15, 1}, {14.5, 2}, {14, 3}, {8, 4}, {7.5, 5}, {7, 6}}); // A gap of 6 s.
    const double now = ToolPanel::now();
    m_start = now - 10;
    for (int i = 0; i < 50; ++i) {
        QMetaObject::invokeMethod(m_panel->widget(), "input", Q_ARG(double, i), Q_ARG(QString, "b"),
                                  Q_ARG(double, m_start + i * 0.1));
    }
    m_panel->send("alone", {{2, 77}});
    m_panel->waitForFrames(2);
    m_panel->open();
    m_panel->tap("graphPause");
    QTRY_VERIFY(copy().legend->itemCount() == 3 && legendEntry(0).x() > 100);
}

void tst_GraphCursor::cleanup()
{
    m_panel.reset();
}

void tst_GraphCursor::tapShowsTheTimeAndTheValuesOfAllCurves()
{
    QVERIFY(!cursor()->isVisible());
    tapAt(m_start + 2.5);
    QVERIFY(cursor()->isVisible());
    QCOMPARE(cursor()->texts().size(), 4);
    const double shown = copy().xAxis->pixelToCoord(placeOf(m_start + 2.5).x());
    QCOMPARE(cursor()->texts()[0], norvo::keyText(copy(), shown, true));
    QVERIFY2(cursor()->texts()[0].contains('.'), qPrintable(cursor()->texts()[0]));
    QCOMPARE(cursor()->texts()[1], QString("a 5"));
    QCOMPARE(cursor()->texts()[2], QString("b 25"));
    QCOMPARE(cursor()->texts()[3], QString("alone \u2013"));
}

void tst_GraphCursor::textsHaveRoomBesideTheLine()
{
    const QImage before = ToolPanel::pictureOf(&copy());
    tapAt(m_start + 2.5);
    const QImage shown = ToolPanel::pictureOf(&copy());
    QCOMPARE(shown.size(), before.size());
    int width = 0; // Of all that the cursor has drawn.
    for (int x = 0; x < shown.width(); ++x) {
        width += shown.copy(x, 0, 1, shown.height()) != before.copy(x, 0, 1, shown.height());
    }
    QVERIFY(width > cursor()->fontMetrics().horizontalAdvance(cursor()->texts()[0]));
}

void tst_GraphCursor::hiddenCurveHasNoValue()
{
    copy().toggleCurve("b");
    tapAt(m_start + 2.5);
    QCOMPARE(cursor()->texts().mid(1), QStringList({"a 5", "alone \u2013"}));
}

void tst_GraphCursor::gapHasNoValue()
{
    tapAt(m_start - 1);
    QCOMPARE(cursor()->texts().mid(1), QStringList({"a \u2013", "b \u2013", "alone \u2013"}));
}

void tst_GraphCursor::lonePointIsReachedNearby()
{
    const double second = copy().area().width() / copy().xAxis->range().size();
    tapAt(m_start + 8 + 5 / second); // Five pixels beside it.
    QCOMPARE(cursor()->texts().last(), QString("alone 77"));
    tapAt(m_start + 8 + 60 / second);
    QCOMPARE(cursor()->texts().last(), QString("alone \u2013"));
}

void tst_GraphCursor::cursorStaysAtItsTime()
{
    tapAt(m_start + 2.5);
    const QStringList texts = cursor()->texts();
    QTest::keyClick(&copy(), Qt::Key_Plus);
    QTest::keyClick(&copy(), Qt::Key_Right);
    QTRY_COMPARE(cursor()->texts(), texts);
    QTest::keyClick(&copy(), Qt::Key_Home);
    QVERIFY(!cursor()->isVisible());
}

void tst_GraphCursor::keysMoveIt()
{
    QTest::keyClick(&copy(), Qt::Key_Right, Qt::ShiftModifier);
    QVERIFY(cursor()->isVisible());
    const QString middle = cursor()->texts()[0];
    QCOMPARE(middle, norvo::keyText(copy(), copy().xAxis->range().center(), true));
    for (int i = 0; i < 5; ++i) {
        QTest::keyClick(&copy(), Qt::Key_Right, Qt::ShiftModifier);
    }
    QVERIFY(cursor()->texts()[0] > middle);
    for (int i = 0; i < 10; ++i) {
        QTest::keyClick(&copy(), Qt::Key_Left, Qt::ShiftModifier);
    }
    QVERIFY(cursor()->texts()[0] < middle);
}

void tst_GraphCursor::screenReaderIsToldTheValues()
{
    tapAt(m_start + 2.5);
    QCOMPARE(cursor()->accessibleName(), cursor()->texts().join(", "));
    QVERIFY(cursor()->accessibleName().contains("b 25"));
    QVERIFY(!copy().accessibleName().isEmpty());
}

void tst_GraphCursor::elementOfAnArrayIsNamedByItsNumber()
{
    m_panel->sendArray({1, 5, 2, 8});
    m_panel->open("spectrum");
    tapAt(3, "spectrum");
    QCOMPARE(cursor("spectrum")->texts(), QStringList({"No. 3", "2"}));
}

void tst_GraphCursor::tapOnALegendEntryHidesAndShows()
{
    QTest::mouseClick(&copy(), Qt::LeftButton, {}, legendEntry(1));
    QVERIFY(copy().isHidden("b"));
    QVERIFY(!cursor()->isVisible());
    QVERIFY(!copy().isHidden("a"));
    for (int i = 0; i < copy().graphCount(); ++i) {
        QCOMPARE(copy().graph(i)->visible(), copy().graph(i)->name() != "b");
    }
    QVERIFY(copy().legend->item(1)->font().strikeOut());
    QVERIFY(!copy().legend->item(0)->font().strikeOut());
    QVERIFY(m_panel->plot()->graph(0)->visible()); // The device's own stays.
    QTest::mouseClick(&copy(), Qt::LeftButton, {}, legendEntry(1));
    QVERIFY(!copy().isHidden("b"));
    QVERIFY(!copy().legend->item(1)->font().strikeOut());
}

void tst_GraphCursor::hiddenCurveStaysHiddenAcrossAGap()
{
    QTest::mouseClick(&copy(), Qt::LeftButton, {}, legendEntry(0));
    m_panel->tap("graphPause");
    m_panel->send("a", {{0.1, 7}});
    m_panel->waitForFrames(2);
    int pieces = 0;
    for (int i = 0; i < copy().graphCount(); ++i) {
        if (copy().graph(i)->name() == "a") {
            ++pieces;
            QVERIFY(!copy().graph(i)->visible());
        }
    }
    QVERIFY(pieces >= 2);
}

void tst_GraphCursor::legendFollowsTheFinger()
{
    const QRect before = copy().legend->outerRect();
    const QCPRange times = copy().xAxis->range();
    QTest::mousePress(&copy(), Qt::LeftButton, {}, before.center());
    for (int step = 1; step <= 4; ++step) {
        const QPoint place = before.center() + QPoint(-50, 5) * step;
        QMouseEvent move(QEvent::MouseMove, place, copy().mapToGlobal(place), Qt::NoButton,
                         Qt::LeftButton, {});
        QApplication::sendEvent(&copy(), &move);
        copy().replot();
    }
    QTest::mouseRelease(&copy(), Qt::LeftButton, {}, before.center() + QPoint(-200, 20));
    const QPoint moved = copy().legend->outerRect().topLeft() - before.topLeft();
    QVERIFY2((moved - QPoint(-200, 20)).manhattanLength() <= 4,
             qPrintable(QString("%1 %2").arg(moved.x()).arg(moved.y())));
    QCOMPARE(copy().xAxis->range(), times);
    QVERIFY(!copy().isHidden("a") && !copy().isHidden("b"));
}

void tst_GraphCursor::legendStaysInside()
{
    copy().moveLegend({5000, -5000});
    copy().replot();
    QVERIFY(copy().rect().contains(copy().legend->outerRect()));
    copy().moveLegend({-5000, 5000});
    copy().replot();
    QVERIFY(copy().rect().contains(copy().legend->outerRect()));
}

NORVO_TEST(tst_GraphCursor)
#include "tst_GraphCursor.moc"
