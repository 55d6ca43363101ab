// SPDX-License-Identifier: GPL-3.0-or-later

#include "ValueBar.h"
#include "TestMain.h"

#include <QtTest>

/// The value bar's parameters, odd ones too, and its life from initialise() to deinitialise().
class tst_ValueBarWidgetSettings : public QObject
{
    Q_OBJECT

private slots:
    void equalEndsDrawAllButPointerAndZone();
    void heightsAreClampedToShares_data();
    void heightsAreClampedToShares();
    void scaleHeightZeroHasNoScale();
    void customHeightTakesItsFirstArgument();
    void thresholdsMoveTheGreenZone();
    void pictureFollowsTheSize();
    void keptPanelLooksAsDrawnDirectly_data();
    void keptPanelLooksAsDrawnDirectly();
    void beforeInitialiseNothingIsDrawn();
    void deinitialiseForgetsAllUntilInitialise();
    void initialiseAllowsUpdates();
    void valueDrawsLater();
    void wrongSettingsStillDrawPanelAndPointer_data();
    void wrongSettingsStillDrawPanelAndPointer();
};

void tst_ValueBarWidgetSettings::equalEndsDrawAllButPointerAndZone()
{
    Bar bar({{"widget/minValue", "1"}, {"widget/maxValue", "1"}, {"widget/maxThreshold", "1"}});
    for (const double value : {0.0, 1.0, 2.0}) {
        bar.device.input(value);
        QVERIFY(pointerColumns(bar).isEmpty());
        QCOMPARE(bar.pixel(200, 20), kPanel);
        QCOMPARE(bar.pixel(260, 100), kRed);
        // Five short ticks, 390 / 4 apart; the one number stands at the third.
        QCOMPARE(bar.pixel(102, 70), kTick);
        QCOMPARE(bar.pixel(200, 88), kTick);
        QCOMPARE(bar.pixel(102, 88), kRed);
    }
}

void tst_ValueBarWidgetSettings::heightsAreClampedToShares_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("counts");
    QTest::newRow("above one") << "1.5"
                               << "1";
    QTest::newRow("infinite") << "inf"
                              << "1";
    QTest::newRow("below zero") << "-0.5"
                                << "0";
    QTest::newRow("no number") << "nan"
                               << "0";
}

void tst_ValueBarWidgetSettings::heightsAreClampedToShares()
{
    QFETCH(QString, given);
    QFETCH(QString, counts);
    for (const char* name : {"widget/scaleHeight", "widget/arrowHeight"}) {
        Bar bar({{name, given}});
        Bar clamped({{name, counts}});
        Bar standard;
        QCOMPARE(bar.picture(), clamped.picture());
        QVERIFY(bar.picture() != standard.picture());
    }
}

void tst_ValueBarWidgetSettings::scaleHeightZeroHasNoScale()
{
    Bar bar({{"widget/scaleHeight", "0"}});
    const QImage image = bar.picture();
    for (int y = 70; y < 114; ++y) {
        for (int x = 20; x < 380; ++x) {
            QCOMPARE(image.pixelColor(x, y), kPanel);
        }
    }
}

void tst_ValueBarWidgetSettings::customHeightTakesItsFirstArgument()
{
    Bar bar;
    bar.picture();
    bar.bar().customHeight(0.3, 0.9);
    QCOMPARE(bar.picture(), Bar({{"widget/scaleHeight", "0.3"}}).picture());
    bar.bar().customHeight(7.0, 0.1);
    QCOMPARE(bar.picture(), Bar({{"widget/scaleHeight", "1"}}).picture());
    bar.bar().customHeight(-7.0, 0.1);
    QCOMPARE(bar.picture(), Bar({{"widget/scaleHeight", "0"}}).picture());
}

void tst_ValueBarWidgetSettings::thresholdsMoveTheGreenZone()
{
    Bar bar;
    QCOMPARE(bar.pixel(100, 110), kGreen);
    bar.bar().SetThreshold(0.25, 0.75);
    QCOMPARE(bar.pixel(100, 110), kRed);
    QCOMPARE(bar.pixel(150, 110), kGreen);
    QCOMPARE(bar.picture(),
             Bar({{"widget/minThreshold", "0.25"}, {"widget/maxThreshold", "0.75"}}).picture());
}

void tst_ValueBarWidgetSettings::pictureFollowsTheSize()
{
    Bar bar;
    bar.picture();
    for (const QSize& size : {QSize(210, 75), QSize(400, 121), QSize(401, 121), QSize(40, 30),
                              QSize(10, 10), QSize(3, 200), QSize(400, 120)}) {
        bar.widget->resize(size);
        QCOMPARE(bar.picture(), Bar({}, size).picture());
    }
}

void tst_ValueBarWidgetSettings::keptPanelLooksAsDrawnDirectly_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QColor>("behind");
    for (const QSize& size : {QSize(400, 120), QSize(210, 75), QSize(101, 61), QSize(37, 29)}) {
        for (const QColor& behind : {QColor(Qt::white), QColor(Qt::black), QColor("#7F3399")}) {
            QTest::addRow("%d x %d on %s", size.width(), size.height(), qPrintable(behind.name()))
                << size << behind;
        }
    }
}

void tst_ValueBarWidgetSettings::keptPanelLooksAsDrawnDirectly()
{
    QFETCH(QSize, size);
    QFETCH(QColor, behind);
    Bar bar({{"widget/minThreshold", "0.2"}, {"widget/precision", "1"}}, size);
    bar.device.input(qQNaN()); // No pointer.
    for (const double scale : {1.0, 1.0, 1.25, 2.0, 1.5, 1.0, 3.0, 0.5}) {
        const QImage shown = pictureOf(*bar.widget, behind, scale);
        QImage direct(shown.size(), shown.format());
        direct.fill(behind);
        const QImage empty = direct;
        QPainter painter(&direct);
        painter.scale(scale, scale);
        bar.bar().updateScale(painter);
        painter.end();
        QVERIFY2(largestDifference(shown, direct) <= 1, qPrintable(QString::number(scale)));
        QVERIFY(largestDifference(shown, empty) > 50);
    }
}

void tst_ValueBarWidgetSettings::beforeInitialiseNothingIsDrawn()
{
    OutputBarDevice device;
    ValueBarWidget widget(&device, nullptr);
    widget.resize(400, 120);
    widget.input(0.5);
    QImage image = pictureOf(widget, kBehind);
    QCOMPARE(image.pixelColor(200, 60), kBehind);
    QPainter painter(&image);
    widget.updateScale(painter);
    widget.SetThreshold(0.0, 1.0);
    painter.end();
    QCOMPARE(image.pixelColor(200, 60), kBehind);
}

void tst_ValueBarWidgetSettings::deinitialiseForgetsAllUntilInitialise()
{
    Bar bar;
    bar.device.input(0.25);
    const QImage before = bar.picture();
    bar.widget->deinitialise();
    QVERIFY(!bar.widget->isInitialised());
    QCOMPARE(bar.pixel(200, 60), kBehind);
    bar.device.input(0.5);
    QCOMPARE(bar.pixel(200, 60), kBehind);

    bar.widget->initialise();
    QVERIFY(bar.widget->isInitialised());
    QCOMPARE(bar.picture(), Bar().picture());
    bar.device.input(0.25);
    QCOMPARE(bar.picture(), before);
}

void tst_ValueBarWidgetSettings::initialiseAllowsUpdates()
{
    Bar bar;
    bar.widget->setUpdatesEnabled(false);
    bar.widget->initialise();
    QVERIFY(bar.widget->updatesEnabled());
}

void tst_ValueBarWidgetSettings::valueDrawsLater()
{
    Bar bar;
    bar.widget->show();
    QVERIFY(QTest::qWaitForWindowExposed(bar.widget.get()));
    QCoreApplication::processEvents();
    EventCounter events(bar.widget.get());
    bar.device.input(0.25);
    bar.device.input(0.75);
    QCOMPARE(events.take(QEvent::Paint), 0);
    QCOMPARE(paintsToCome(events), 1);
    bar.device.setRunning(false);
    bar.device.input(0.25);
    QCoreApplication::processEvents();
    QCOMPARE(events.take(QEvent::Paint), 0);
}

void tst_ValueBarWidgetSettings::wrongSettingsStillDrawPanelAndPointer_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    for (const char* step : {"widget/digitsStep", "widget/dashesStep"}) {
        for (const char* text : {"0", "-0.5", "nan", "inf", "1e-300", "1e-5"}) {
            QTest::addRow("%s %s", step, text) << step << text;
        }
    }
    QTest::newRow("huge precision") << "widget/precision"
                                    << "1e300";
    QTest::newRow("precision of no number") << "widget/precision"
                                            << "nan";
    QTest::newRow("negative precision") << "widget/precision"
                                        << "-3";
    QTest::newRow("thresholds at infinity") << "widget/maxThreshold"
                                            << "inf";
    QTest::newRow("reversed thresholds") << "widget/minThreshold"
                                         << "9";
    QTest::newRow("huge maximum") << "widget/maxValue"
                                  << "1e308";
}

void tst_ValueBarWidgetSettings::wrongSettingsStillDrawPanelAndPointer()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    Bar bar({{name, text}});
    bar.device.input(0.5);
    QVERIFY(!pointerColumns(bar).isEmpty());
    QCOMPARE(bar.pixel(300, 20), kPanel);
    const QColor band = bar.pixel(300, 56);
    QVERIFY(band == kRed || band == kGreen);
}

NORVO_TEST(tst_ValueBarWidgetSettings)
#include "tst_ValueBarWidgetSettings.moc"
