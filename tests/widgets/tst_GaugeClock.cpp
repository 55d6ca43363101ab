// SPDX-License-Identifier: GPL-3.0-or-later

#include "LumenoGauge.h"
#include "TestMain.h"

#include <QtTest>

#include <dlfcn.h>
#include <sys/time.h>
#include <ctime>

namespace {

/// Seconds by which the clock of the day has been moved, as the whole program reads it.
time_t clockMovedBy = 0;

} // namespace

extern "C" Q_DECL_EXPORT int clock_gettime(clockid_t id, timespec* time)
{
    using Function = int (*)(clockid_t, timespec*);
    static const auto original = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "clock_gettime"));
    const int result = original(id, time);
    time->tv_sec += id == CLOCK_REALTIME ? clockMovedBy : 0;
    return result;
}

extern "C" Q_DECL_EXPORT int gettimeofday(timeval* time, void* zone)
{
    using Function = int (*)(timeval*, void*);
    static const auto original = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "gettimeofday"));
    const int result = original(time, zone);
    time->tv_sec += clockMovedBy;
    return result;
}

/// The scaled bar gauge while the clock of the day is set.
class tst_GaugeClock : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { clockMovedBy = 0; }
    void newestValueIsShownAfterTheClockIsSet_data();
    void newestValueIsShownAfterTheClockIsSet();
    void traceStaysInItsStrip_data() { newestValueIsShownAfterTheClockIsSet_data(); }
    void traceStaysInItsStrip();
};

void tst_GaugeClock::newestValueIsShownAfterTheClockIsSet_data()
{
    QTest::addColumn<int>("seconds");
    QTest::newRow("an hour back") << -3600;
    QTest::newRow("five seconds back") << -5;
    QTest::newRow("an hour on") << 3600;
}

void tst_GaugeClock::newestValueIsShownAfterTheClockIsSet()
{
    QFETCH(int, seconds);
    LumenoGauge gauge;
    gauge.device.input(0.9);
    const qint64 before = QDateTime::currentSecsSinceEpoch();
    clockMovedBy = seconds;
    QVERIFY(qAbs(QDateTime::currentSecsSinceEpoch() - before - seconds) <= 1);
    QTest::qSleep(2); // The next value comes at another time.
    gauge.device.input(0.2);

    const QFont font = LumenoGauge::textFont(22, true);
    const double width = advance(font, "0.2");
    const QRectF box(-1.0 - 0.5 * width, 0.0, width + 2.0, LumenoGauge::valueHeight());
    QVERIFY(shows(gauge, box, font, Qt::red, "0.2"));
    const QImage image = gauge.picture();
    QCOMPARE(image.pixelColor(gauge.centre() - 4, int(gauge.y(0.1))), QColor(Qt::red));
    QVERIFY(!isAccent(image.pixelColor(gauge.centre() - 4, int(gauge.y(0.4)))));
}

void tst_GaugeClock::traceStaysInItsStrip()
{
    QFETCH(int, seconds);
    LumenoGauge gauge({}, {200, 300});
    for (int i = 0; i < 20; ++i) {
        clockMovedBy = i < 10 ? 0 : seconds;
        gauge.device.input(i % 2 == 0 ? 0.2 : 0.8);
        QTest::qSleep(15);
    }
    const QImage image = gauge.picture();
    const int top = LumenoGauge::valueHeight();
    const int stripStart = gauge.centre() - 40 - 6;
    const int left = countAccent(image.copy(0, top, stripStart - 1, 300 - top));
    const int inside = countAccent(image.copy(stripStart, top, 40, 300 - top));
    const int right = countAccent(image.copy(gauge.centre() + 3, top, 97, 300 - top));
    QCOMPARE(left, 0);
    QVERIFY(inside > 20);
    QCOMPARE(right, 0);
}

NORVO_TEST(tst_GaugeClock)
#include "tst_GaugeClock.moc"
