// SPDX-License-Identifier: GPL-3.0-or-later

#include "LumenoGauge.h"
#include "TestMain.h"

#include <QtTest>

namespace {

/// Where the trace can lie: 40 pixels left of half the bar's scaled width.
QRect strip(LumenoGauge& gauge)
{
    return {gauge.centre() - 46, int(gauge.y(1.0)) - 1, 39,
            int(gauge.y(0.0)) - int(gauge.y(1.0)) + 2};
}

/// Columns of the trace's strip that hold accent colour near the height of `value`.
QVector<int> traceColumns(LumenoGauge& gauge, double value)
{
    QVector<int> columns;
    const QImage image = gauge.picture();
    const int y = int(gauge.y(value));
    for (int x = 0; x < gauge.centre() - 6; ++x) {
        for (int row = y - 1; row <= y + 1; ++row) {
            const QColor colour = image.pixelColor(x, row);
            if (colour.red() > colour.blue() + 20) {
                columns.append(x);
                break;
            }
        }
    }
    return columns;
}

} // namespace

/// The gauge in time: its trace, its timer and its flags.
class tst_OutputBarLumenoLife : public QObject
{
    Q_OBJECT

private slots:
    void twoInputsInOneMillisecondAreOnePoint();
    void traceEndsLeftOfTheBarAtFourPixelsASecond();
    void traceOfNoNumbersIsLeftAway();
    void traceAcrossInfinitiesIsDrawnBeyondTheEdges();
    void inputBeforeInitialiseIsKept();
    void refreshesEachSecondUntilDeinitialise();
    void afterDeinitialiseInputsStillDraw();
    void secondInitialiseMakesAnotherTimer();
    void secondInitialiseDrawsTheNewScale();
    void valuesDrawLaterAndOnce();
    void everyChangeTakesTheTextColourAndAsksForNoPaint();
};

void tst_OutputBarLumenoLife::twoInputsInOneMillisecondAreOnePoint()
{
    bool met = false;
    for (int attempt = 0; attempt < 1000 && !met; ++attempt) {
        LumenoGauge gauge;
        const qint64 before = QDateTime::currentMSecsSinceEpoch();
        gauge.device.input(0.1);
        gauge.device.input(0.9);
        if (QDateTime::currentMSecsSinceEpoch() != before) {
            continue;
        }
        met = true;
        const QImage image = gauge.picture();
        QCOMPARE(countAccent(image.copy(strip(gauge))), 0); // One point has no trace.
        QCOMPARE(image.pixelColor(gauge.centre() - 4, int(gauge.y(0.9)) + 4), QColor(Qt::red));
    }
    QVERIFY(met);
}

void tst_OutputBarLumenoLife::traceEndsLeftOfTheBarAtFourPixelsASecond()
{
    LumenoGauge gauge;
    QElapsedTimer clock;
    clock.start();
    gauge.device.input(0.35);
    QVector<int> columns; // Their number goes up and down by one on its way.
    while (columns.size() < 6 && !clock.hasExpired(60000)) {
        QTest::qWait(20);
        gauge.device.input(0.35);
        columns = traceColumns(gauge, 0.35);
    }
    const double seconds = clock.elapsed() * 0.001;
    QVERIFY(columns.size() >= 6);
    QCOMPARE(columns.last(), gauge.centre() - 7);
    QCOMPARE(columns.size(), columns.last() - columns.first() + 1);
    QVERIFY(qAbs(columns.size() - 4.0 * seconds) < 2.5);
}

void tst_OutputBarLumenoLife::traceOfNoNumbersIsLeftAway()
{
    LumenoGauge gauge;
    for (int i = 0; i < 3; ++i) {
        gauge.device.input(qQNaN());
        QTest::qSleep(2); // Each at a time of its own.
    }
    QCOMPARE(countAccent(gauge.picture().copy(strip(gauge))), 0);
}

void tst_OutputBarLumenoLife::traceAcrossInfinitiesIsDrawnBeyondTheEdges()
{
    LumenoGauge gauge;
    for (const double value : {0.5, qInf(), -qInf(), 1e308, -1e308, 0.5}) {
        gauge.device.input(value);
        gauge.picture();
        QTest::qSleep(2); // Each at a time of its own.
    }
    const QImage image = gauge.picture();
    for (const double value : {0.05, 0.45, 0.95}) {
        const QRect row(gauge.centre() - 12, int(gauge.y(value)), 6, 1);
        QVERIFY(countAccent(image.copy(row)) > 0);
    }
}

void tst_OutputBarLumenoLife::inputBeforeInitialiseIsKept()
{
    LumenoBarDevice device;
    OutputBarLumeno widget(&device, nullptr);
    widget.resize(120, 300);
    EventCounter events(&widget);
    widget.input(0.9);
    const QImage before = pictureOf(widget, Qt::white);
    QCOMPARE(before.pixelColor(60, 150), QColor(Qt::white));
    widget.initialise();
    QVERIFY(pictureOf(widget, Qt::white).pixelColor(56, 150) != QColor(Qt::white));
}

void tst_OutputBarLumenoLife::refreshesEachSecondUntilDeinitialise()
{
    LumenoBarDevice device;
    device.initialise();
    OutputBarLumeno widget(&device, nullptr);
    QVERIFY(!widget.findChild<QTimer*>());
    widget.initialise();
    auto* const timer = widget.findChild<QTimer*>();
    QVERIFY(timer && timer->isActive() && !timer->isSingleShot());
    QCOMPARE(timer->interval(), 1000);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    QCoreApplication::processEvents();
    EventCounter events(&widget);
    QVERIFY(paintsToCome(events) > 0);
    QVERIFY(paintsToCome(events) > 0);

    widget.deinitialise();
    QVERIFY(!timer->isActive());
    QCOMPARE(widget.findChild<QTimer*>(), timer);
    QVERIFY(widget.isInitialised());
}

void tst_OutputBarLumenoLife::afterDeinitialiseInputsStillDraw()
{
    LumenoGauge gauge;
    gauge.widget->deinitialise();
    gauge.widget->show();
    QVERIFY(QTest::qWaitForWindowExposed(gauge.widget.get()));
    QCoreApplication::processEvents();
    EventCounter events(gauge.widget.get());
    gauge.device.input(0.5);
    QCOMPARE(paintsToCome(events), 1);
    QVERIFY(countAccent(gauge.picture()) > 100);
}

void tst_OutputBarLumenoLife::secondInitialiseMakesAnotherTimer()
{
    LumenoBarDevice device;
    OutputBarLumeno widget(&device, nullptr);
    widget.initialise();
    widget.initialise();
    const QList<QTimer*> timers = widget.findChildren<QTimer*>();
    QCOMPARE(timers.size(), 2);
    widget.deinitialise();
    QVERIFY(timers[0]->isActive());
    QVERIFY(!timers[1]->isActive());
}

void tst_OutputBarLumenoLife::secondInitialiseDrawsTheNewScale()
{
    LumenoGauge gauge;
    const QImage before = gauge.picture();
    gauge.device.setParam("widget/maxValue", "4");
    gauge.device.setParam("widget/digitsStep", "1");
    gauge.widget->initialise();
    LumenoGauge other({{"widget/maxValue", "4"}, {"widget/digitsStep", "1"}});
    const QImage expected = other.picture();
    QVERIFY(expected != before);
    QCOMPARE(gauge.picture(), expected);
}

void tst_OutputBarLumenoLife::valuesDrawLaterAndOnce()
{
    LumenoGauge gauge;
    gauge.widget->show();
    QVERIFY(QTest::qWaitForWindowExposed(gauge.widget.get()));
    const QList<QTimer*> timers = gauge.widget->findChildren<QTimer*>();
    for (QTimer* timer : timers) {
        timer->stop();
    }
    QCoreApplication::processEvents();
    EventCounter events(gauge.widget.get());
    gauge.device.input(0.25);
    gauge.device.input(0.75);
    QCOMPARE(events.take(QEvent::Paint), 0);
    QCOMPARE(paintsToCome(events), 1);
}

void tst_OutputBarLumenoLife::everyChangeTakesTheTextColourAndAsksForNoPaint()
{
    LumenoGauge gauge;
    QPalette palette = gauge.widget->palette();
    palette.setColor(QPalette::Disabled, QPalette::Text, Qt::green);
    gauge.widget->setPalette(palette);
    gauge.widget->show();
    QVERIFY(QTest::qWaitForWindowExposed(gauge.widget.get()));
    gauge.widget->findChild<QTimer*>()->stop();
    QCoreApplication::processEvents();
    const int textBefore = marksDown(gauge.picture(), gauge.centre() + 5, 30, 280).size();
    QVERIFY(textBefore >= 3);
    EventCounter events(gauge.widget.get());
    gauge.widget->setEnabled(false);
    QCOMPARE(events.take(QEvent::EnabledChange), 1);
    QCoreApplication::processEvents();
    QCOMPARE(events.take(QEvent::Paint), 0);
    QCOMPARE(marksDown(gauge.picture(), gauge.centre() + 5, 30, 280).size(), 0);
}

NORVO_TEST(tst_OutputBarLumenoLife)
#include "tst_OutputBarLumenoLife.moc"
