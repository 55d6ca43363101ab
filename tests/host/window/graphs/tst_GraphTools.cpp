// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"
#include "ToolPanel.h"
#include "host/window/look/TouchSize.h"

namespace TouchSize = norvo::TouchSize;

namespace {

const QByteArray kSmallGraphs = "touch: gloves\n"
                                "devices:\n"
                                "  trend: {device: output_graph, params: {widget: {row: 0}}}\n"
                                "  spectrum: {device: output_vector, params: {widget: {row: 0, "
                                "column: 1}}}\n";
const QSize kSmallWindow(560, 420);

} // namespace

class tst_GraphTools : public QObject
{
    Q_OBJECT

private slots:
    void eachGraphHasAKey();
    void keyIsLargeEnoughForAFinger_data();
    void keyIsLargeEnoughForAFinger();
    void graphIsUntouchedWhileToolsAreClosed();
    void openingMovesNothingOnThePage();
    void smallGraphOpensByLongPress();
    void shortPressOnASmallGraphOpensNothing();
    void keysHaveRoomOnASmallGraph();
    void liveCopyFollowsTheGraph();
    void copyLooksAsTheGraph();
    void areaOfACurveIsOfOneColour();
    void pausedPictureStandsStill();
    void dataGoOnArrivingWhilePaused();
    void pauseOutlastsTheWindowOfTheGraph();
    void stateIsSaidInWords();
    void arrayStandsStillWhilePaused();
    void fixedRangeIsThatOfThePausedPicture();
    void closedToolsAreGoneAtOnce();
    void closingShowsTheGraphAsItIs();
    void tabAndSpaceReachTheTools();
    void deletedGraphClosesTheTools();
    void stoppedPanelLeavesNothing();
};

void tst_GraphTools::eachGraphHasAKey()
{
    ToolPanel panel("devices:\n"
                    "  trend: {device: output_graph, params: {name: Trend, widget: {row: 0}}}\n"
                    "  lamp: {device: indicator, params: {widget: {row: 1}}}\n"
                    "  spectrum: {device: output_vector, params: {widget: {row: 2}}}\n");
    QVERIFY(panel.tools("trend"));
    QVERIFY(panel.tools("spectrum"));
    QVERIFY(!panel.tools("lamp"));
    QCOMPARE(panel.corner()->accessibleName(), QString("Graph tools: Trend"));
}

void tst_GraphTools::keyIsLargeEnoughForAFinger_data()
{
    QTest::addColumn<QByteArray>("touch");
    QTest::addColumn<int>("look");
    QTest::newRow("finger") << QByteArray() << int(norvo::PanelLook::Touch::Fingers);
    QTest::newRow("glove") << QByteArray("touch: gloves\n") << int(norvo::PanelLook::Touch::Gloves);
}

void tst_GraphTools::keyIsLargeEnoughForAFinger()
{
    QFETCH(QByteArray, touch);
    QFETCH(int, look);
    ToolPanel panel(touch + ToolPanel::twoGraphs(), {800, 900});
    const int least = TouchSize::pixels(norvo::PanelLook::Touch(look), *panel.window().screen());
    QVERIFY(panel.corner()->width() >= least && panel.corner()->height() >= least);
    panel.open();
    const auto keys = panel.pane()->findChildren<norvo::ToolKey*>();
    QCOMPARE(keys.size(), 5);
    for (const auto* const key : keys) {
        QVERIFY2(key->width() >= least && key->height() >= least, qPrintable(key->objectName()));
    }
}

void tst_GraphTools::graphIsUntouchedWhileToolsAreClosed()
{
    ToolPanel panel;
    panel.sendArray({1, 5, 2});
    const QImage before = ToolPanel::pictureOf(panel.widget("spectrum"));
    const QString sheet = panel.widget("spectrum")->styleSheet();
    panel.open("spectrum");
    QTest::keyClick(&panel.copy("spectrum"), Qt::Key_Plus);
    QTest::keyClick(&panel.copy("spectrum"), Qt::Key_Up);
    panel.tap("graphClose", "spectrum");
    QVERIFY(!panel.pane("spectrum"));
    QCOMPARE(ToolPanel::pictureOf(panel.widget("spectrum")), before);
    QCOMPARE(panel.widget("spectrum")->styleSheet(), sheet);
    QCOMPARE(panel.plot("spectrum")->xAxis->range(), QCPRange(1, 3));
    QCOMPARE(panel.widget("spectrum")->findChildren<QWidget*>().size(), 2); // Caption and plot.
}

void tst_GraphTools::openingMovesNothingOnThePage()
{
    ToolPanel panel;
    const QRect trend = panel.widget()->geometry();
    const QRect spectrum = panel.widget("spectrum")->geometry();
    panel.open();
    QCoreApplication::processEvents();
    QCOMPARE(panel.widget()->geometry(), trend);
    QCOMPARE(panel.widget("spectrum")->geometry(), spectrum);
}

void tst_GraphTools::smallGraphOpensByLongPress()
{
    ToolPanel panel(kSmallGraphs, kSmallWindow);
    const QPoint middle = panel.plot()->rect().center();
    QTest::mousePress(panel.plot(), Qt::LeftButton, {}, middle);
    QTRY_VERIFY(panel.pane());
    QTest::mouseRelease(panel.plot(), Qt::LeftButton, {}, middle);
    QVERIFY(panel.pane());
}

void tst_GraphTools::shortPressOnASmallGraphOpensNothing()
{
    ToolPanel panel(kSmallGraphs, kSmallWindow);
    QTest::mouseClick(panel.plot(), Qt::LeftButton);
    // A finger that is drawn over it scrolls.
    const QPoint middle = panel.plot()->rect().center();
    QTest::mousePress(panel.plot("spectrum"), Qt::LeftButton, {}, middle);
    QMouseEvent move(QEvent::MouseMove, middle + QPoint(0, 40),
                     panel.plot("spectrum")->mapToGlobal(middle + QPoint(0, 40)), Qt::NoButton,
                     Qt::LeftButton, {});
    QApplication::sendEvent(panel.plot("spectrum"), &move);
    QTest::qWait(norvo::GraphTools::kLongPressMs + 200);
    QVERIFY(!panel.pane());
    QVERIFY(!panel.pane("spectrum"));
}

void tst_GraphTools::keysHaveRoomOnASmallGraph()
{
    ToolPanel panel(kSmallGraphs, kSmallWindow);
    panel.corner()->setFocus(); // By the tab key.
    QTest::keyClick(panel.corner(), Qt::Key_Space);
    QVERIFY(panel.pane());
    const int least = TouchSize::pixels(norvo::PanelLook::Touch::Gloves, *panel.window().screen());
    const auto keys = panel.pane()->findChildren<norvo::ToolKey*>();
    for (const auto* const key : keys) {
        QVERIFY2(key->width() >= least && key->height() >= least, qPrintable(key->objectName()));
        QVERIFY(panel.window().rect().contains(
            QRect(key->mapTo(&panel.window(), QPoint()), key->size())));
    }
}

void tst_GraphTools::liveCopyFollowsTheGraph()
{
    ToolPanel panel;
    panel.open();
    panel.send("a", {{3, 0.1}, {2.5, 0.4}});
    panel.waitForFrames(2);
    QCOMPARE(panel.state(), QString("Live"));
    QCOMPARE(panel.copy().graphCount(), 1);
    QCOMPARE(panel.copy().graph(0)->data()->size(), 2);
    QCOMPARE(panel.copy().graph(0)->pen(), panel.plot()->graph(0)->pen());
    panel.plot()->replot(); // The ranges may have moved since it was drawn.
    QCOMPARE(panel.copy().xAxis->range(), panel.plot()->xAxis->range());
    QCOMPARE(panel.copy().yAxis->range(), panel.plot()->yAxis->range());
    panel.send("a", {{0.2, 0.7}}); // After a gap: another piece.
    panel.send("b", {{0.2, 0.5}});
    panel.waitForFrames(2);
    QCOMPARE(panel.copy().graphCount(), 3);
    QVERIFY(panel.copy().legend->visible());
    QCOMPARE(panel.copy().legend->itemCount(), panel.plot()->legend->itemCount());
}

void tst_GraphTools::copyLooksAsTheGraph()
{
    ToolPanel panel;
    QVector<double> values;
    for (int i = 0; i < 60; ++i) {
        values.append(4 + 4 * std::sin(i * 0.3));
    }
    panel.sendArray(values);
    norvo::PlotCopy copy(*panel.plot("spectrum"));
    copy.setPalette(panel.plot("spectrum")->palette());
    copy.resize(panel.plot("spectrum")->size());
    copy.replot();
    const QImage own = ToolPanel::pictureOf(panel.plot("spectrum"));
    const QImage copied = ToolPanel::pictureOf(&copy);
    QCOMPARE(copied.size(), own.size());
    int different = 0;
    for (int y = 0; y < own.height(); ++y) {
        for (int x = 0; x < own.width(); ++x) {
            different += qAbs(qGray(own.pixel(x, y)) - qGray(copied.pixel(x, y))) > 40;
        }
    }
    QVERIFY2(different < 30, qPrintable(QString::number(different)));
}

void tst_GraphTools::areaOfACurveIsOfOneColour()
{
    ToolPanel panel("devices:\n"
                    "  trend: {device: output_graph, params: {widget: {timePeriod: 200, timeout: "
                    "2}}}\n");
    QVector<QPointF> curve;
    for (int i = 190; i > 0; --i) {
        curve.append({double(i), 50.0 + i % 2});
    }
    curve.append({0, 0});
    panel.send("a", curve);
    QMetaObject::invokeMethod(panel.widget(), "inputFill", Q_ARG(QString, "a"), Q_ARG(bool, true));
    panel.waitForFrames(2);
    panel.open();
    panel.tap("graphPause");
    QCoreApplication::processEvents();
    const QImage picture = ToolPanel::pictureOf(&panel.copy());
    const QRect area = panel.copy().area().rect();
    const int y = qRound(panel.copy().yAxis->coordToPixel(27.3)); // No line of the grid.
    QHash<QRgb, int> counts;
    for (int x = area.left() + 60; x < area.right() - 60; ++x) {
        ++counts[picture.pixel(x, y)];
    }
    const int most = *std::max_element(counts.cbegin(), counts.cend());
    QVERIFY2(most > 0.97 * (area.width() - 120), qPrintable(QString::number(counts.size())));
    QVERIFY(qGray(counts.key(most)) < 235); // An area, not the ground.
}

void tst_GraphTools::pausedPictureStandsStill()
{
    ToolPanel panel;
    panel.send("a", {{9, 0.2}, {8.5, 0.9}, {8, 0.3}});
    panel.waitForFrames(2);
    panel.open();
    panel.tap("graphPause");
    panel.waitForFrames(2);
    const QImage before = ToolPanel::pictureOf(&panel.copy());
    panel.send("a", {{0.4, 0.1}, {0.2, 30}});
    panel.waitForFrames(5);
    QCOMPARE(ToolPanel::pictureOf(&panel.copy()), before);
    panel.tap("graphPause");
    panel.waitForFrames(2);
    QVERIFY(ToolPanel::pictureOf(&panel.copy()) != before);
}

void tst_GraphTools::dataGoOnArrivingWhilePaused()
{
    ToolPanel panel;
    panel.open();
    panel.tap("graphPause");
    panel.send("a", {{0.4, 0.1}, {0.2, 0.3}});
    panel.waitForFrames(2);
    QCOMPARE(panel.plot()->graph(0)->data()->size(), 2);
    QVERIFY(panel.plot()->xAxis->range().upper > panel.copy().xAxis->range().upper);
    QCOMPARE(panel.copy().graphCount(), 0);
    QTest::keyClick(&panel.copy(), Qt::Key_Home);
    QCOMPARE(panel.copy().graph(0)->data()->size(), 2);
}

void tst_GraphTools::pauseOutlastsTheWindowOfTheGraph()
{
    ToolPanel panel;
    const auto sendSpan = [&panel, present = ToolPanel::now()](double from, double to) {
        for (double ago = from; ago > to; ago -= 0.5) {
            panel.send("a", {{ago, ago}}, present);
        }
    };
    sendSpan(19, 9);
    panel.waitForFrames(2);
    panel.open();
    panel.tap("graphPause");
    const int count = panel.copy().graph(0)->data()->size();
    sendSpan(9, -10); // The same piece, without a gap: it drops its first ten seconds.
    panel.waitForFrames(2);
    QCOMPARE(panel.plot()->graphCount(), 1);
    QVERIFY(qAbs(panel.plot()->graph(0)->data()->constBegin()->value - 10) < 1);
    QCOMPARE(panel.copy().graph(0)->data()->size(), count);
    QCOMPARE(panel.copy().graph(0)->data()->constBegin()->value, 19.0);
    panel.send("a", {{-60, 0.5}}); // After a gap: the whole piece goes.
    panel.waitForFrames(2);
    QCOMPARE(panel.copy().graph(0)->data()->size(), count);
}

void tst_GraphTools::stateIsSaidInWords()
{
    ToolPanel panel;
    panel.waitForFrames(2);
    panel.open();
    QCOMPARE(panel.state(), QString("Live"));
    QCOMPARE(panel.key("graphPause")->text(), QString("Pause"));
    panel.tap("graphPause");
    const QCPRange range = panel.copy().xAxis->range();
    const auto clock = [](double seconds) {
        return QDateTime::fromMSecsSinceEpoch(qRound64(seconds * 1000)).toString("hh:mm:ss");
    };
    QCOMPARE(panel.state(),
             QString("Not live: %1 \u2013 %2").arg(clock(range.lower), clock(range.upper)));
    QCOMPARE(panel.key("graphPause")->text(), QString("Live"));
    panel.tap("graphPause");
    QCOMPARE(panel.state(), QString("Live"));
}

void tst_GraphTools::arrayStandsStillWhilePaused()
{
    ToolPanel panel;
    panel.sendArray({1, 5, 2});
    panel.open("spectrum");
    panel.tap("graphPause", "spectrum");
    panel.sendArray({7, 7, 7, 7});
    QCoreApplication::processEvents();
    QCOMPARE(panel.copy("spectrum").graph(0)->data()->size(), 3);
    QCOMPARE(panel.copy("spectrum").xAxis->range(), QCPRange(1, 3));
    QVERIFY2(panel.state("spectrum").endsWith("No. 1 \u2013 No. 3"),
             qPrintable(panel.state("spectrum")));
    panel.tap("graphPause", "spectrum");
    QCOMPARE(panel.copy("spectrum").graph(0)->data()->size(), 4);
    QCOMPARE(panel.copy("spectrum").xAxis->range(), QCPRange(1, 4));
}

void tst_GraphTools::fixedRangeIsThatOfThePausedPicture()
{
    ToolPanel panel;
    panel.open("spectrum");
    panel.tap("graphPause", "spectrum");
    const QCPRange values = panel.copy("spectrum").yAxis->range();
    panel.plot("spectrum")->yAxis->setRange(values.lower, values.upper + 5);
    panel.tap("graphRange", "spectrum");
    QVERIFY(panel.copy("spectrum").areValuesFixed());
    QCOMPARE(panel.copy("spectrum").yAxis->range(), values);
    panel.tap("graphRange", "spectrum");
    QCOMPARE(panel.copy("spectrum").yAxis->range().upper, values.upper + 5);
}

void tst_GraphTools::closedToolsAreGoneAtOnce()
{
    ToolPanel panel;
    panel.open();
    QVERIFY(panel.pane()->findChild<QLabel*>("graphState")->font().bold());
    const QPointer<norvo::ToolPane> pane = panel.pane();
    panel.tap("graphClose");
    QVERIFY(!pane || !pane->isVisible()); // Not only when there is time to delete it.
}

void tst_GraphTools::closingShowsTheGraphAsItIs()
{
    ToolPanel panel;
    panel.send("a", {{0.5, 0.2}});
    panel.open();
    const QPointer<norvo::ToolPane> pane = panel.pane();
    panel.tap("graphPause");
    QTest::keyClick(&panel.copy(), Qt::Key_Escape);
    QVERIFY(!panel.pane());
    QTRY_VERIFY(!pane);
    QVERIFY(panel.corner()->isVisible());
    QCOMPARE(QApplication::focusWidget(), panel.corner());
}

void tst_GraphTools::tabAndSpaceReachTheTools()
{
    ToolPanel panel("devices:\n"
                    "  last: {device: button, params: {text: Last, widget: {row: 1}}}\n"
                    "  trend: {device: output_graph, params: {widget: {row: 0}}}\n");
    QCoreApplication::processEvents();
    panel.corner()->setFocus();
    QTest::keyClick(panel.corner(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), panel.widget("last")->findChild<QPushButton*>());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    QCOMPARE(QApplication::focusWidget(), panel.corner());
    QTest::keyClick(panel.corner(), Qt::Key_Space);
    QVERIFY(panel.pane());
    QCOMPARE(QApplication::focusWidget(), &panel.copy());
    QTest::keyClick(&panel.copy(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), panel.key("graphPause"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QVERIFY(panel.copy().isHeld());
    panel.key("graphClose")->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), panel.widget("last")->findChild<QPushButton*>());
}

void tst_GraphTools::deletedGraphClosesTheTools()
{
    ToolPanel panel;
    panel.open();
    delete panel.plot();
    QVERIFY(!panel.pane());
    QTest::mouseClick(panel.corner(), Qt::LeftButton);
    QVERIFY(!panel.pane());
}

void tst_GraphTools::stoppedPanelLeavesNothing()
{
    ToolPanel panel;
    panel.open();
    const QPointer<norvo::GraphTools> tools = panel.tools();
    const QPointer<norvo::ToolPane> pane = panel.pane();
    panel.running->stop();
    QTRY_VERIFY(!tools);
    QTRY_VERIFY(!pane);
}

NORVO_TEST(tst_GraphTools)
#include "tst_GraphTools.moc"
