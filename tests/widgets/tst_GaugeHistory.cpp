// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/GaugeHistory.h"
#include "TestMain.h"

#include <QPainter>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double kWidth = GaugeHistory::kTraceWidth;
constexpr double kNow = 1000.0;
const norvo::ValueAxis kAxis{100.0, 0.0, 10.0, 100.0};

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

/// The points that went in, as a line of its own.
QPolygonF wholeLine(const QVector<double>& values, double step)
{
    QPolygonF line;
    for (int i = 0; i < values.size(); ++i) {
        line.append({kWidth - (values.size() - 1 - i) * step * kWidth / 10.0, kAxis.y(values[i])});
    }
    return line;
}

/// Pixels that differ by more than a soft edge does: by 100 of 255 levels.
int pixelsApart(const QImage& one, const QImage& other)
{
    int count = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            count += qAbs(qGray(one.pixel(x, y)) - qGray(other.pixel(x, y))) > 100;
        }
    }
    return count;
}

/// Ten seconds of a signal at so many values a second.
QVector<double> signalOf(const QString& shape, int rate)
{
    QRandomGenerator random(7);
    QVector<double> values;
    for (int i = 0; i < 10 * rate; ++i) {
        const double time = double(i) / rate;
        const double sine = std::sin(time * 6.28);
        values.append(shape == "sine"     ? 5.0 + 4.0 * sine
                      : shape == "square" ? (sine > 0.0 ? 9.0 : 1.0)
                      : shape == "spikes" ? (i % rate == 0 ? 9.0 : 3.0)
                                          : random.bounded(1000) * 0.01);
    }
    return values;
}

} // namespace

class tst_GaugeHistory : public QObject
{
    Q_OBJECT

private slots:
    void sameTimeReplaces();
    void prunesWhatIsOlderThanTenSeconds();
    void pruningStopsAtTheFirstYoungEntry();
    void traceSpansTheWidth();
    void everyPointIsDrawnWhileTheyAreFew_data();
    void everyPointIsDrawnWhileTheyAreFew();
    void denseTraceLooksLikeTheWholeOne_data();
    void denseTraceLooksLikeTheWholeOne();
    void denseTraceIsBounded();
    void denseTraceKeepsASingleSpike();
    void denseTraceFollowsItsPoints();
    void silenceEmptiesTheTrace();
    void pointsAtNoNumberAreLeftOut();
    void denseTraceLeavesPointsAtNoNumberOut();
};

void tst_GaugeHistory::sameTimeReplaces()
{
    GaugeHistory history;
    history.insert(2.0, 20.0);
    history.insert(2.0, 21.0);
    QCOMPARE(history.size(), 1);
    QCOMPARE(history.latestValue(), 21.0);
    QCOMPARE(history.latestValue(), 21.0);
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
    QCOMPARE(history.trace(kNow, kAxis),
             QPolygonF({QPointF(0.0, 90.0), QPointF(20.0, 80.0), QPointF(40.0, 70.0)}));
}

void tst_GaugeHistory::everyPointIsDrawnWhileTheyAreFew_data()
{
    QTest::addColumn<QString>("shape");
    QTest::addColumn<int>("rate");
    for (const char* shape : {"sine", "square", "spikes", "noise"}) {
        for (const int rate : {1, 20, 100, 200}) {
            QTest::addRow("%s, %d a second", shape, rate) << shape << rate;
        }
    }
}

void tst_GaugeHistory::everyPointIsDrawnWhileTheyAreFew()
{
    QFETCH(QString, shape);
    QFETCH(int, rate);
    const QVector<double> values = signalOf(shape, rate);
    GaugeHistory history;
    for (int i = 0; i < values.size(); ++i) {
        history.insert(kNow - (values.size() - 1 - i) / double(rate), values[i]);
    }
    const QPolygonF expected = wholeLine(values, 1.0 / rate);
    const QPolygonF line = history.trace(kNow, kAxis);
    QCOMPARE(line.size(), expected.size());
    for (int i = 0; i < line.size(); ++i) {
        QVERIFY(QLineF(line[i], expected[i]).length() < 1e-6);
    }
}

void tst_GaugeHistory::denseTraceLooksLikeTheWholeOne_data()
{
    QTest::addColumn<QString>("shape");
    QTest::addColumn<int>("allowed");
    for (const char* shape : {"sine", "square", "spikes"}) {
        QTest::newRow(shape) << shape << 0;
    }
    QTest::newRow("noise, which fills the strip") << "noise" << 40 * 100 / 10;
}

void tst_GaugeHistory::denseTraceLooksLikeTheWholeOne()
{
    QFETCH(QString, shape);
    QFETCH(int, allowed);
    const QVector<double> values = signalOf(shape, 500);
    GaugeHistory history;
    for (int i = 0; i < values.size(); ++i) {
        history.insert(kNow - (values.size() - 1 - i) / 500.0, values[i]);
    }
    const QPolygonF line = history.trace(kNow, kAxis);
    QVERIFY(line.size() < values.size() / 2);
    const int apart = pixelsApart(drawn(line), drawn(wholeLine(values, 0.002)));
    QVERIFY2(apart <= allowed, qPrintable(QString::number(apart)));
}

void tst_GaugeHistory::denseTraceIsBounded()
{
    GaugeHistory history = wave(100000);
    QCOMPARE(history.size(), 100000);
    const int points = history.trace(kNow, kAxis).size();
    QVERIFY(points <= 8 * (40 + 1));
    QVERIFY(points >= 2 * 40);
}

void tst_GaugeHistory::denseTraceKeepsASingleSpike()
{
    GaugeHistory history;
    for (int i = 0; i < 10000; ++i) {
        history.insert(kNow - 10.0 + i * 0.001, i == 4321 ? 9.0 : i == 4325 ? -1.0 : 3.0);
    }
    const QPolygonF line = history.trace(kNow, kAxis);
    const auto contains = [&](double time, double value) {
        return std::any_of(line.begin(), line.end(), [&](const QPointF& point) {
            return qAbs(point.x() - time * 4.0) < 1e-6 && point.y() == kAxis.y(value);
        });
    };
    QVERIFY(contains(4.321, 9.0) && contains(4.325, -1.0));
    // With what lies beside them, so that no edge is slanted.
    QVERIFY(contains(4.320, 3.0) && contains(4.322, 3.0));
    QVERIFY(contains(0.0, 3.0) && contains(9.999, 3.0));
}

/// What is kept from one trace to the next is what would be found again.
void tst_GaugeHistory::denseTraceFollowsItsPoints()
{
    QRandomGenerator random(5);
    QVector<QPointF> fed;
    GaugeHistory history;
    for (int i = 0; i < 15000; ++i) {
        const double time = kNow + (i - i % 3 / 2) * 0.001; // Each third one replaces the second.
        fed.append({time, random.bounded(1000) * 0.01});
        history.insert(time, fed.last().y());
        history.prune(time);
        if (i % 100 < 3) {
            GaugeHistory other;
            for (const QPointF& point : fed.mid(qMax(0, i - 10100))) {
                other.insert(point.x(), point.y());
            }
            other.prune(time);
            QCOMPARE(history.trace(time, kAxis), other.trace(time, kAxis));
        }
    }
    QVERIFY(history.size() > 6000 && history.size() < 7000);
}

void tst_GaugeHistory::silenceEmptiesTheTrace()
{
    GaugeHistory history = wave(3000);
    history.trace(kNow, kAxis);
    history.prune(kNow + 20.0);
    QVERIFY(history.isEmpty());
    history.insert(kNow + 21.0, 1.0);
    history.insert(kNow + 22.0, 2.0);
    QCOMPARE(history.trace(kNow + 22.0, kAxis),
             QPolygonF(QVector<QPointF>{{36.0, 90.0}, {40.0, 80.0}}));
}

void tst_GaugeHistory::pointsAtNoNumberAreLeftOut()
{
    GaugeHistory history;
    history.insert(kNow - 3.02, std::numeric_limits<double>::quiet_NaN());
    history.insert(kNow - 3.01, 1.0);
    history.insert(kNow - 3.0, std::numeric_limits<double>::infinity());
    const QPolygonF line = history.trace(kNow, kAxis);
    QCOMPARE(line.size(), 2);
    QCOMPARE(line[0].y(), 90.0);
    QCOMPARE(line[1].y(), -1e6);
}

void tst_GaugeHistory::denseTraceLeavesPointsAtNoNumberOut()
{
    GaugeHistory history;
    for (int i = 0; i < 10000; ++i) {
        const double value = i % 250 == 0     ? std::numeric_limits<double>::quiet_NaN()
                             : i % 250 == 77  ? 9.0
                             : i % 250 == 177 ? 1.0
                                              : 5.0;
        history.insert(kNow - 10.0 + i * 0.001, value);
    }
    const QPolygonF line = history.trace(kNow, kAxis);
    const auto count = [&](double value) {
        return std::count_if(line.begin(), line.end(),
                             [&](const QPointF& point) { return point.y() == kAxis.y(value); });
    };
    QCOMPARE(int(count(9.0)), 40); // the largest and the smallest of each pixel
    QCOMPARE(int(count(1.0)), 40);
    QVERIFY(std::none_of(line.begin(), line.end(),
                         [](const QPointF& point) { return std::isnan(point.y()); }));
}

NORVO_TEST(tst_GaugeHistory)
#include "tst_GaugeHistory.moc"
