// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/PlotCurve.h"
#include "CurvePoints.h"
#include "ArrayColumn.h"
#include "TestMain.h"

#include <QtTest>

#include <algorithm>
#include <ctime>
#include <random>

class tst_PlotCurve : public QObject
{
    Q_OBJECT

private slots:
    void addsItselfToPlotAndLegend();
    void fillIsTheLibrarysPicture_data();
    void fillIsTheLibrarysPicture();
    void fillFromBeyondThePlotIsTheLibrarysPicture();
    void fillIsTheLibrarysPictureTurnedAndReversedToo();
    void fillOfNoiseCostsLittleMoreThanItsLine();

private:
    static QVector<double> noise(int count)
    {
        std::mt19937 random(1);
        std::uniform_real_distribution<double> between(-1, 1);
        QVector<double> values(count);
        std::generate(values.begin(), values.end(), [&] { return between(random); });
        return values;
    }

    static void fill(QCustomPlot& plot, QCPGraph* curve, const QVector<double>& values,
                     const QBrush& brush)
    {
        for (int i = 0; i < values.size(); ++i) {
            curve->addData(i + 1, values[i]);
        }
        curve->setPen(Qt::NoPen);
        curve->setBrush(brush);
        plot.xAxis->setRange(1, qMax(2, values.size()));
        plot.yAxis->setRange(-1, 1);
        plot.setAntialiasedElements(QCP::aeAll);
    }

    /// But for a row: where an area begins, Qt takes what is below from what is above in the same
    /// pixel.
    static int largestDifference(const QImage& a, const QImage& b, int leftOut)
    {
        int largest = 0;
        for (int y = 0; y < a.height(); ++y) {
            if (y == leftOut) {
                continue;
            }
            for (int x = 0; x < a.width(); ++x) {
                const QRgb first = a.pixel(x, y);
                const QRgb second = b.pixel(x, y);
                largest = qMax(largest, qAbs(qRed(first) - qRed(second)));
                largest = qMax(largest, qAbs(qGreen(first) - qGreen(second)));
                largest = qMax(largest, qAbs(qBlue(first) - qBlue(second)));
            }
        }
        return largest;
    }
};

void tst_PlotCurve::addsItselfToPlotAndLegend()
{
    QCustomPlot plot;
    QCPGraph* const first = PlotCurve::addTo(&plot);
    QCPGraph* const second = PlotCurve::addTo(&plot);
    QCOMPARE(plot.graphCount(), 2);
    QCOMPARE(plot.graph(0), first);
    QCOMPARE(plot.graph(1), second);
    QCOMPARE(plot.legend->itemCount(), 2);
    QVERIFY(plot.legend->hasItemWithPlottable(second));
    plot.addGraph();
    QCOMPARE(plot.legend->itemCount(), 3);
}

void tst_PlotCurve::fillIsTheLibrarysPicture_data()
{
    QTest::addColumn<ArrayColumn>("array");
    QTest::addColumn<double>("scale");
    QTest::newRow("few values") << ArrayColumn{noise(40)} << 1.0;
    QTest::newRow("fewer values than columns") << ArrayColumn{noise(150)} << 1.0;
    QTest::newRow("more values than columns") << ArrayColumn{noise(400)} << 1.0;
    QTest::newRow("scaled by 2") << ArrayColumn{noise(400)} << 2.0;
    QTest::newRow("scaled by 1.5") << ArrayColumn{noise(400)} << 1.5;
    QTest::newRow("scaled by 1.1") << ArrayColumn{noise(400)} << 1.1;
    QVector<double> gaps = noise(400);
    for (int i = 20; i < gaps.size(); i += i / 2) {
        gaps[i] = qQNaN();
    }
    QTest::newRow("gaps") << ArrayColumn{gaps} << 1.0;
    QVector<double> beyond = noise(400);
    std::transform(beyond.begin(), beyond.end(), beyond.begin(), [](double v) { return 30 * v; });
    QTest::newRow("beyond the axes") << ArrayColumn{beyond} << 1.0;
}

void tst_PlotCurve::fillIsTheLibrarysPicture()
{
    QFETCH(ArrayColumn, array);
    const QVector<double> values = array.values;
    QFETCH(double, scale);
    const QColor halfBlue(0, 0, 255, 128);
    QCustomPlot bare;
    fill(bare, bare.addGraph(), values, halfBlue);
    QCustomPlot plot;
    fill(plot, PlotCurve::addTo(&plot), values, halfBlue);
    const QImage expected = bare.toPixmap(300, 120, scale).toImage();
    const QImage picture = plot.toPixmap(300, 120, scale).toImage();
    QVERIFY(expected.pixelColor(int(150 * scale), int(52 * scale)) != QColor(Qt::white));
    const int base = int((plot.yAxis->coordToPixel(0) + 0.5) * scale);
    const int difference = largestDifference(picture, expected, base);
    QVERIFY2(difference <= 2, qPrintable(QString::number(difference)));
}

void tst_PlotCurve::fillFromBeyondThePlotIsTheLibrarysPicture()
{
    for (const double middle : {-2.0, 2.0}) {
        QVector<double> values = noise(300);
        for (double& value : values) {
            value = middle + 0.2 * value;
        }
        QImage pictures[2];
        for (const bool isOurs : {false, true}) {
            QCustomPlot plot;
            fill(plot, isOurs ? PlotCurve::addTo(&plot) : plot.addGraph(), values,
                 QColor(0, 0, 255, 128));
            plot.yAxis->setRange(middle - 1, middle + 1);
            pictures[isOurs] = plot.toPixmap(300, 120).toImage();
        }
        QVERIFY(largestDifference(pictures[0], pictures[1], -1) <= 2);
    }
}

void tst_PlotCurve::fillIsTheLibrarysPictureTurnedAndReversedToo()
{
    for (const bool isTurned : {false, true}) {
        QImage pictures[2];
        int base = 0;
        for (const bool isOurs : {false, true}) {
            QCustomPlot plot;
            fill(plot, isOurs ? PlotCurve::addTo(&plot) : plot.addGraph(), noise(300),
                 QColor(0, 0, 255, 128));
            plot.xAxis->setRangeReversed(!isTurned);
            QImage& image = pictures[isOurs];
            image = QImage(300, 300, QImage::Format_RGB32);
            image.fill(Qt::white);
            QCPPainter painter(&image);
            if (isTurned) {
                painter.translate(150, 0);
                painter.rotate(30);
            }
            plot.toPainter(&painter, 250, 120);
            base = int(plot.yAxis->coordToPixel(0) + 0.5);
        }
        QVERIFY(largestDifference(pictures[0], pictures[1], base) <= 2);
    }
}

void tst_PlotCurve::fillOfNoiseCostsLittleMoreThanItsLine()
{
    QCustomPlot plot;
    plot.resize(800, 400);
    QCPGraph* const curve = PlotCurve::addTo(&plot);
    fill(plot, curve, noise(2000), Qt::NoBrush);
    curve->setPen(QPen(Qt::blue));
    const auto processorTime = [&](const QBrush& brush) {
        curve->setBrush(brush);
        std::clock_t least = std::numeric_limits<std::clock_t>::max();
        for (int i = 0; i < 3; ++i) {
            const std::clock_t start = std::clock();
            plot.toPixmap(800, 400);
            least = qMin(least, std::clock() - start);
        }
        return double(least);
    };
    const double line = processorTime(Qt::NoBrush);
    const double filled = processorTime(QColor(0, 0, 255, 128));
    QVERIFY2(filled < 30 * line, qPrintable(QString::number(filled / line)));
}

NORVO_TEST(tst_PlotCurve)
#include "tst_PlotCurve.moc"
