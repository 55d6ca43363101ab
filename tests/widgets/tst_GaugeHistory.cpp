#include "widgets/GaugeHistory.h"
#include "TestMain.h"

#include <QtTest>

#include <cmath>
#include <limits>

namespace {

constexpr double kWidth = 40.0;
constexpr double kNow = 1000.0;
const GaugeHistory::ValueAxis kAxis{100.0, 0.0, 10.0, 100.0};

/// `count` points of a wave over the last ten seconds.
GaugeHistory wave(int count)
{
    GaugeHistory history;
    for (int i = 0; i < count; ++i) {
        const double time = kNow - 10.0 + 10.0 * i / (count - 1);
        history.insert(time, 5.0 + 4.0 * std::sin(time * 3.0) + (i % 7 == 0 ? 0.5 : 0.0));
    }
    return history;
}

QImage drawn(const QPolygonF& line)
{
    QImage image(60, 120, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(10.0, 0.0);
    painter.drawPolyline(line);
    return image;
}

/// Pixels that are clearly ink in `some` and have no ink around them in `other`.
int inkMissing(const QImage& some, const QImage& other)
{
    const auto darkness = [](const QImage& image, int x, int y) {
        return image.rect().contains(x, y) ? 255 - qGray(image.pixel(x, y)) : 0;
    };
    int missing = 0;
    for (int y = 0; y < some.height(); ++y) {
        for (int x = 0; x < some.width(); ++x) {
            int near = 0;
            for (int dx = -1; dx <= 1; ++dx) {
                for (int dy = -1; dy <= 1; ++dy) {
                    near = qMax(near, darkness(other, x + dx, y + dy));
                }
            }
            missing += darkness(some, x, y) > 128 && near < 64;
        }
    }
    return missing;
}

} // namespace

class tst_GaugeHistory : public QObject
{
    Q_OBJECT

private slots:
    void keepsTheOrderOfTimes();
    void sameTimeReplaces();
    void prunesWhatIsOlderThanTenSeconds();
    void pruningStopsAtTheFirstYoungEntry();
    void traceSpansTheWidth();
    void reducedTraceHasFirstSmallestLargestAndLastOfAColumn();
    void reducedTraceHasAtMostFourPointsAColumn();
    void reducedTraceLooksLikeTheWholeOne();
    void reducedTraceFollowsValuesThatComeAndGo();
    void shortTraceIsNotReduced();
    void pointsAtNoNumberAreLeftOut();
};

void tst_GaugeHistory::keepsTheOrderOfTimes()
{
    GaugeHistory history;
    history.insert(2.0, 20.0);
    history.insert(4.0, 40.0);
    history.insert(3.0, 30.0); // The clock was set back.
    QCOMPARE(history.latestValue(), 40.0);
    const QPolygonF line = history.trace(10.0, kWidth, kAxis);
    QCOMPARE(line.size(), 3);
    QVERIFY(line[0].x() < line[1].x() && line[1].x() < line[2].x());
    QCOMPARE(line[1].y(), kAxis.y(30.0));
}

void tst_GaugeHistory::sameTimeReplaces()
{
    GaugeHistory history;
    history.insert(2.0, 20.0);
    history.insert(2.0, 21.0);
    QCOMPARE(history.size(), 1);
    QCOMPARE(history.latestValue(), 21.0);
    history.insert(3.0, 30.0);
    history.insert(2.0, 22.0);
    QCOMPARE(history.size(), 2);
    QCOMPARE(history.trace(3.0, kWidth, kAxis)[0].y(), kAxis.y(22.0));
}

void tst_GaugeHistory::prunesWhatIsOlderThanTenSeconds()
{
    GaugeHistory history;
    history.insert(1.0, 1.0);
    history.insert(2.0, 2.0);
    history.prune(11.0); // Exactly ten seconds old stays.
    QCOMPARE(history.size(), 2);
    history.prune(11.5);
    QCOMPARE(history.size(), 1);
    history.prune(100.0);
    QVERIFY(history.isEmpty());
}

void tst_GaugeHistory::pruningStopsAtTheFirstYoungEntry()
{
    GaugeHistory history;
    for (int i = 0; i < 20; ++i) {
        history.insert(i, i);
    }
    history.prune(19.0);
    QCOMPARE(history.size(), 11);
}

void tst_GaugeHistory::traceSpansTheWidth()
{
    GaugeHistory history;
    history.insert(kNow - 10.0, 1.0);
    history.insert(kNow - 5.0, 2.0);
    history.insert(kNow, 3.0);
    QCOMPARE(history.trace(kNow, kWidth, kAxis),
             QPolygonF({QPointF(0.0, 90.0), QPointF(20.0, 80.0), QPointF(40.0, 70.0)}));
}

void tst_GaugeHistory::reducedTraceHasFirstSmallestLargestAndLastOfAColumn()
{
    // All in the column from 20 to 21, a quarter of a second from -5 s on.
    GaugeHistory history;
    const QVector<double> values{4.0, 2.0, 3.0, 9.0, 5.0, 8.0};
    for (int i = 0; i < values.size(); ++i) {
        history.insert(kNow - 4.99 + 0.01 * i, values[i]);
    }
    const QPolygonF line = history.reducedTrace(kNow, kWidth, kAxis);
    QVector<double> heights;
    for (const QPointF& point : line) {
        heights.append(point.y());
    }
    QCOMPARE(heights, (QVector<double>{60.0, 80.0, 10.0, 20.0}));
}

void tst_GaugeHistory::reducedTraceHasAtMostFourPointsAColumn()
{
    GaugeHistory history = wave(100000);
    QCOMPARE(history.size(), 100000);
    const int points = history.reducedTrace(kNow, kWidth, kAxis).size();
    QVERIFY(points <= 4 * 42);
    QVERIFY(points >= 2 * 40);
}

void tst_GaugeHistory::reducedTraceLooksLikeTheWholeOne()
{
    GaugeHistory history = wave(300);
    const QImage whole = drawn(history.trace(kNow, kWidth, kAxis));
    const QImage reduced = drawn(history.reducedTrace(kNow, kWidth, kAxis));
    QCOMPARE(inkMissing(whole, reduced), 0);
    QCOMPARE(inkMissing(reduced, whole), 0);
}

void tst_GaugeHistory::reducedTraceFollowsValuesThatComeAndGo()
{
    QRandomGenerator random(7);
    GaugeHistory followed;
    QMap<double, double> all;
    double now = kNow;
    for (int i = 0; i < 3000; ++i) {
        const int step = random.bounded(5);
        now += step == 4 ? 0.05 : step == 3 ? 0.0 : 0.001;
        // Now and then the clock is set back, or a value replaces an earlier one.
        const double time =
            i % 500 == 499 ? all.keys().value(all.size() / 2) + (i & 512 ? 1e-4 : 0) : now;
        const double value = random.bounded(100) * 0.1;
        followed.insert(time, value);
        all.insert(time, value);
        if (i % 7 == 0) {
            followed.prune(now);
        }
        if (i % 3 == 0) {
            GaugeHistory fresh;
            for (auto point = all.cbegin(); point != all.cend(); ++point) {
                fresh.insert(point.key(), point.value());
            }
            fresh.prune(now);
            followed.prune(now);
            QCOMPARE(followed.size(), fresh.size());
            QCOMPARE(followed.reducedTrace(now, kWidth, kAxis),
                     fresh.reducedTrace(now, kWidth, kAxis));
        }
    }
}

void tst_GaugeHistory::shortTraceIsNotReduced()
{
    GaugeHistory history = wave(20);
    QCOMPARE(history.reducedTrace(kNow, kWidth, kAxis), history.trace(kNow, kWidth, kAxis));
}

void tst_GaugeHistory::pointsAtNoNumberAreLeftOut()
{
    GaugeHistory history;
    history.insert(kNow - 3.02, std::numeric_limits<double>::quiet_NaN());
    history.insert(kNow - 3.01, 1.0);
    history.insert(kNow - 3.0, std::numeric_limits<double>::infinity());
    for (const QPolygonF& line :
         {history.trace(kNow, kWidth, kAxis), history.reducedTrace(kNow, kWidth, kAxis)}) {
        QCOMPARE(line.size(), 2);
        QCOMPARE(line[0].y(), 90.0);
        QCOMPARE(line[1].y(), -1e6);
    }
}

NORVO_TEST(tst_GaugeHistory)
#include "tst_GaugeHistory.moc"
