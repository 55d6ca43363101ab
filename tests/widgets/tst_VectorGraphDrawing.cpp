// SPDX-License-Identifier: GPL-3.0-or-later

#include "GraphParts.h"
#include "TestMain.h"

#include <QtTest>

#include <cmath>

/// What a vector graph shows, and when it is drawn.
class tst_VectorGraphDrawing : public QObject
{
    Q_OBJECT

private slots:
    void arrayIsDrawnAtOnce();
    void hiddenGraphIsNotDrawnAndRightWhenShown();
    void minimisedGraphIsRightWhenRestored();
    void valuesOutsideAreClippedAtTheAxes();
    void millionElementsAreDrawn();
    void notANumberIsAGap();

private:
    /// Pixels nearer to the curve's colour than to that of its fill.
    static int highlightedPixels(const QImage& image)
    {
        const QColor highlight = QApplication::palette().color(QPalette::Highlight);
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor colour = image.pixelColor(x, y);
                count += qAbs(colour.red() - highlight.red()) +
                             qAbs(colour.green() - highlight.green()) +
                             qAbs(colour.blue() - highlight.blue()) <
                         60;
            }
        }
        return count;
    }
};

void tst_VectorGraphDrawing::arrayIsDrawnAtOnce()
{
    VectorGraph stand;
    QVERIFY(stand.show());
    QCoreApplication::processEvents();
    QSignalSpy drawn(stand.plot(), SIGNAL(afterReplot()));
    stand.graph().input({1, 2});
    QCOMPARE(drawn.size(), 1);
}

void tst_VectorGraphDrawing::hiddenGraphIsNotDrawnAndRightWhenShown()
{
    VectorGraph stand;
    QVERIFY(stand.show());
    stand.widget->hide();
    QTest::qWait(20);
    QSignalSpy drawn(stand.plot(), SIGNAL(afterReplot()));
    stand.graph().input({0.2, 0.8});
    stand.graph().input({0.3, 0.9});
    QTest::qWait(20);
    QCOMPARE(drawn.size(), 0);
    QCOMPARE(pointsOf(stand.curve(0)), QString("(1, 0.3) (2, 0.9)"));
    stand.widget->show();
    QTRY_VERIFY(drawn.size() > 0);
    QCOMPARE(drawn.size(), 1);
    QVERIFY(highlightedPixels(stand.plot()->grab().toImage()) > 100);
    QCOMPARE(drawn.size(), 1);
}

void tst_VectorGraphDrawing::minimisedGraphIsRightWhenRestored()
{
    VectorGraph stand;
    QVERIFY(stand.show());
    stand.widget->showMinimized();
    QTRY_VERIFY(stand.widget->isMinimized());
    QTest::qWait(20);
    QSignalSpy drawn(stand.plot(), SIGNAL(afterReplot()));
    stand.graph().input({0.3, 0.9});
    QTest::qWait(20);
    QCOMPARE(drawn.size(), 0);
    stand.widget->showNormal();
    QTRY_COMPARE(drawn.size(), 1);
    QVERIFY(highlightedPixels(stand.plot()->grab().toImage()) > 100);
}

void tst_VectorGraphDrawing::valuesOutsideAreClippedAtTheAxes()
{
    VectorGraph stand;
    QVERIFY(stand.show());
    stand.graph().input({-50, 50, -50, 50, -50});
    const QImage image = stand.plot()->grab().toImage();
    const QRect area = stand.plot()->axisRect()->rect();
    QVERIFY(highlightedPixels(image.copy(area)) > 0);
    QCOMPARE(highlightedPixels(image.copy(0, 0, image.width(), area.top() - 1)), 0);
    QCOMPARE(highlightedPixels(image.copy(0, area.bottom() + 2, image.width(), image.height())), 0);
}

void tst_VectorGraphDrawing::millionElementsAreDrawn()
{
    VectorGraph stand;
    QVERIFY(stand.show());
    DoubleVec values(1000000);
    for (int i = 0; i < values.size(); ++i) {
        values[i] = 0.5 + 0.4 * std::sin(i * 1e-4);
    }
    stand.graph().input(values);
    QCOMPARE(pointCount(stand.curve(0)), values.size());
    QCOMPARE(boundsOf(stand.plot()->xAxis), Bounds(1, 1000000));
    QVERIFY(highlightedPixels(stand.plot()->grab().toImage()) > 100);
}

void tst_VectorGraphDrawing::notANumberIsAGap()
{
    VectorGraph stand({{"widget/fillArea", "false"}});
    stand.graph().input({0.5, 0.5, qQNaN(), 0.5, 0.5});
    QCOMPARE(pointCount(stand.curve(0)), 5);
    const QImage image = stand.plot()->toPixmap(400, 300).toImage();
    stand.plot()->setViewport(QRect(0, 0, 400, 300));
    stand.plot()->replot();
    const auto highlightedAt = [&](double index) {
        const int x = qRound(stand.plot()->xAxis->coordToPixel(index));
        return highlightedPixels(image.copy(x, 0, 1, image.height())) +
               highlightedPixels(image.copy(x - 1, 0, 1, image.height()));
    };
    stand.graph().input({0.5, 0.5, qInf(), -qInf(), 1e308});
    QVERIFY(highlightedAt(1.5) > 0);
    QVERIFY(highlightedAt(4.5) > 0);
    QCOMPARE(highlightedAt(2.5), 0);
    QCOMPARE(highlightedAt(3.5), 0);
    QVERIFY(!stand.plot()->toPixmap(200, 100).isNull());
}

NORVO_TEST(tst_VectorGraphDrawing)
#include "tst_VectorGraphDrawing.moc"
