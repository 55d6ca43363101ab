// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/PlotCurve.h"
#include "CurvePictures.h"
#include "TestMain.h"

#include <QtTest>

#include <cmath>
#include <memory>
#include <vector>

/// The picture that crowded curves share and keep, against one that is painted anew.
class tst_CurvesPicture : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void isAsPaintedAnewWhileItMoves_data();
    void isAsPaintedAnewWhileItMoves();
    void stepsStandWhereTheyAreAtAnyPartOfAPixel();
    void beginningThatGoesInViewIsTakenAway();
    void curveThatPausedGoesOn();
    void windowMayGoBack();
    void followsWhatElseChanges_data();
    void followsWhatElseChanges();
    void followsOneEndOfTheValuesAndTheWidth();
    void everyCurveIsDrawnOnce();
    void laterCurvesAreAboveEarlierOnes();
    void largeValuesAreAsSharpAsSmallOnes();

private:
    static constexpr int kPerColumn = 50; ///< Points.
    static constexpr int kSeen = (kWidth - 10) * kPerColumn;

    PlotCurve* addCurve(const QColor& colour)
    {
        auto* const curve = PlotCurve::addTo(m_plot.get());
        curve->setPen(QPen(colour, 1));
        m_curves.push_back(curve);
        return curve;
    }

    static double valueAt(size_t curve, int i)
    {
        return 0.6 * std::sin(i * 0.0007 + double(curve)) + 0.3 * std::sin(i * 12.9898);
    }

    /// Points of all curves but those whose turn it is not, and the window up to them.
    void goOn(int count, bool areDropped = true)
    {
        for (const int end = m_end + count; m_end < end; ++m_end) {
            for (size_t i = 0; i < m_curves.size(); ++i) {
                if (areDropped) {
                    m_curves[i]->dropBefore(m_end - kSeen);
                }
                if (int(i) != m_paused) {
                    m_curves[i]->append(m_end, valueAt(i, m_end));
                }
            }
        }
        m_plot->xAxis->setRange(m_end - kSeen, m_end);
    }

    QImage image() const { return picture(*m_plot, nullptr); }

    /// As it is when nothing has been kept.
    QImage imageAnew() const
    {
        const QPen pen = m_curves[0]->pen();
        m_curves[0]->setPen(QPen(Qt::yellow, 1));
        image();
        m_curves[0]->setPen(pen);
        return image();
    }

    /// But for the first column of a curve: what has just left the window may stay in that.
    bool isAsAnew(const QImage& kept) const
    {
        constexpr int firstColumns = 5 + 2; // And what is beside the axes.
        const QImage anew = imageAnew();
        const QRect seen(firstColumns, 0, kWidth - firstColumns, kHeight);
        return kept.copy(seen) == anew.copy(seen);
    }

    std::unique_ptr<QCustomPlot> m_plot;
    std::vector<PlotCurve*> m_curves; ///< The plot's.
    int m_end = 0;
    int m_paused = -1;
};

void tst_CurvesPicture::init()
{
    m_plot = std::make_unique<QCustomPlot>();
    m_curves.clear();
    m_end = 0;
    m_paused = -1;
    addCurve(Qt::red);
    addCurve(Qt::blue);
    goOn(kSeen);
}

void tst_CurvesPicture::isAsPaintedAnewWhileItMoves_data()
{
    QTest::addColumn<int>("points");
    QTest::newRow("by parts of a pixel") << 3;
    QTest::newRow("by about half a pixel") << 26;
    QTest::newRow("by whole pixels") << 2 * kPerColumn;
    QTest::newRow("by many pixels") << 33 * kPerColumn + 7;
    QTest::newRow("by more than the window") << kSeen + 300;
}

void tst_CurvesPicture::isAsPaintedAnewWhileItMoves()
{
    QFETCH(int, points);
    for (int i = 0; i < 40; ++i) {
        goOn(points);
        const QImage kept = image();
        if (i % 13 == 12) { // Meanwhile many columns have come.
            QVERIFY(isAsAnew(kept));
        }
    }
    QVERIFY(image() != QCustomPlot().toPixmap(kWidth, kHeight).toImage());
}

/// Steps, as nothing else shows where a curve is.
void tst_CurvesPicture::stepsStandWhereTheyAreAtAnyPartOfAPixel()
{
    QCustomPlot ours;
    QCustomPlot bare;
    auto* const curve = PlotCurve::addTo(&ours);
    auto* const whole = bare.addGraph();
    for (int i = 0; i < 2 * kSeen; ++i) {
        const double value = i / 777 % 2 == 0 ? 0.7 : -0.7;
        curve->append(i, value);
        whole->addData(i, value);
    }
    for (int part = 0; part < kPerColumn; part += 7) {
        for (QCustomPlot* const plot : {&ours, &bare}) {
            plot->xAxis->setRange(5000 + part, 5000 + part + kSeen);
        }
        QVERIFY(areAlike(picture(ours, curve), wholePicture(bare, whole)));
    }
}

void tst_CurvesPicture::beginningThatGoesInViewIsTakenAway()
{
    image();
    const QImage before = image();
    for (const int gone : {kSeen / 3, kSeen / 3 + 20, kSeen / 2}) {
        m_curves[1]->dropBefore(gone);
        const QImage kept = image();
        QVERIFY(kept != before);
        QVERIFY(isAsAnew(kept));
    }
}

void tst_CurvesPicture::curveThatPausedGoesOn()
{
    m_paused = 0;
    for (int i = 0; i < 5; ++i) {
        goOn(200);
        QVERIFY(isAsAnew(image()));
    }
    m_paused = -1;
    goOn(1);
    const QImage kept = image();
    QVERIFY(isAsAnew(kept));
}

void tst_CurvesPicture::windowMayGoBack()
{
    goOn(10 * kPerColumn, false);
    image();
    for (const int back : {3 * kPerColumn, 20 * kPerColumn, 0, 400 * kPerColumn}) {
        m_plot->xAxis->setRange(m_end - kSeen - back, m_end - back);
        const QImage kept = image();
        QVERIFY(isAsAnew(kept));
    }
}

void tst_CurvesPicture::followsWhatElseChanges_data()
{
    QTest::addColumn<QString>("change");
    for (const char* change : {"pen", "hidden", "removed", "another", "size", "values", "zoom"}) {
        QTest::newRow(change) << QString(change);
    }
}

void tst_CurvesPicture::followsWhatElseChanges()
{
    QFETCH(QString, change);
    const QImage before = image();
    if (change == "pen") {
        m_curves[1]->setPen(QPen(Qt::green, 3));
    } else if (change == "hidden") {
        m_curves[1]->setVisible(false);
    } else if (change == "removed") {
        m_plot->removeGraph(m_curves[1]);
    } else if (change == "another") {
        for (int i = 0; i < kSeen; ++i) {
            m_curves[1]->append(i, 0.9);
        }
    } else if (change == "size") {
        m_plot->axisRect()->setMinimumSize(1, 1);
        QVERIFY(m_plot->toPixmap(kWidth, kHeight, 2).toImage() != before);
    } else if (change == "values") {
        m_curves[1]->data()->set({{0.0, 0.0}, {double(kSeen), 1.0}}, true);
    } else {
        m_plot->xAxis->setRange(m_end - kSeen * 0.7, m_end);
    }
    const QImage kept = image();
    QCOMPARE(kept == before, change == "size");
    QVERIFY(isAsAnew(kept));
}

/// Each as the only thing that changes.
void tst_CurvesPicture::followsOneEndOfTheValuesAndTheWidth()
{
    image();
    const auto drawn = [this](int width) { return m_plot->toPixmap(width, kHeight).toImage(); };
    const auto drawnAnew = [&](int width) {
        m_plot->yAxis->setRange(-5, 5);
        drawn(width);
        m_plot->yAxis->setRange(-1, 2);
        return drawn(width);
    };
    m_plot->yAxis->setRange(-1, 2);
    const QImage kept = drawn(kWidth);
    QCOMPARE(kept, drawnAnew(kWidth));

    constexpr int windows = 4;
    constexpr int width = windows * (kWidth - 10) + 10;
    m_plot->xAxis->setRange(m_end - windows * kSeen, m_end);
    const QImage wide = drawn(width);
    QCOMPARE(wide, drawnAnew(width));
}

/// One that is drawn twice has harder edges.
void tst_CurvesPicture::everyCurveIsDrawnOnce()
{
    QImage pictures[2];
    for (const bool isFirst : {false, true}) {
        QCustomPlot plot;
        auto* const out = PlotCurve::addTo(&plot);
        auto* const curve = PlotCurve::addTo(&plot);
        for (int i = 0; i < kSeen; ++i) {
            out->append(i, 5);
            curve->append(i, valueAt(0, i));
        }
        plot.xAxis->setRange(0, kSeen);
        out->setVisible(!isFirst);
        pictures[isFirst] = picture(plot, curve);
    }
    QCOMPARE(pictures[0], pictures[1]);
}

/// Also where one between them has few points, and is drawn by the library.
void tst_CurvesPicture::laterCurvesAreAboveEarlierOnes()
{
    QCustomPlot plot;
    const std::vector<QColor> colours{Qt::red, Qt::green, Qt::blue, Qt::magenta};
    std::vector<PlotCurve*> curves;
    for (const QColor& colour : colours) {
        curves.push_back(PlotCurve::addTo(&plot));
        const int step = colour == QColor(Qt::green) ? kSeen / 4 : 1;
        for (int i = 0; i <= kSeen; i += step) {
            curves.back()->append(i, 0);
        }
    }
    plot.xAxis->setRange(0, kSeen);
    for (size_t i = colours.size(); i-- > 0;) {
        picture(plot, nullptr);
        for (size_t j = 0; j < curves.size(); ++j) {
            curves[j]->setPen(QPen(colours[j], 3));
        }
        const QImage image = picture(plot, nullptr);
        QCOMPARE(image.pixelColor(kWidth / 2, kHeight / 2 - 1), colours[i]);
        curves[i]->setVisible(false);
    }
}

/// A counter's last digits.
void tst_CurvesPicture::largeValuesAreAsSharpAsSmallOnes()
{
    constexpr double large = 1LL << 40;
    QImage pictures[2];
    for (const bool isLarge : {false, true}) {
        QCustomPlot plot;
        auto* const curve = PlotCurve::addTo(&plot);
        for (int i = 0; i < kSeen; ++i) {
            curve->append(i, std::round(valueAt(0, i) * 256) / 256 + (isLarge ? large : 0));
        }
        plot.xAxis->setRange(0, kSeen);
        pictures[isLarge] = picture(plot, curve, 1, isLarge ? large : 0);
    }
    QVERIFY(areAlike(pictures[1], pictures[0]));
}

NORVO_TEST(tst_CurvesPicture)
#include "tst_CurvesPicture.moc"
