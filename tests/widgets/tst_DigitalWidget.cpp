// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "DigitalReadout.h"
#include "GridPlaces.h"

#include "devices/Label.h"
#include "TestMain.h"

#include <QtTest>

class tst_DigitalWidget : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsSlots();

    void startsGrey();
    void fontsFollowTheParameters();
    void unitFontIsHalfCutTowardZero();
    void sizePoliciesAreTheirs();
    void withoutUnitsEachSpansOneColumn();
    void unitsStandBesideTheValue();
    void verticalPlacesTheValueAtTheTop();

    void widthHoldsTheLongestNumber_data();
    void widthHoldsTheLongestNumber();
    void widthFollowsTheFontEachTimeItIsShown();
    void blinkTurnsTheCaptionDarkThenRed();
    void captionOfAnInactiveReadoutStaysDisabled_data();
    void captionOfAnInactiveReadoutStaysDisabled();
    void beforeInitialiseNothingHappens();
    void afterDeinitialiseValuesAreStillShown();
};

void tst_DigitalWidget::declaresItsSlots()
{
    QCOMPARE(methodTable(DigitalWidget::staticMetaObject),
             QStringList({"slot timeout()", "slot input(double)", "slot blinkTimerExpired()"}));
}

void tst_DigitalWidget::startsGrey()
{
    DigitalReadout readout({{"name", "Voltage"}, {"widget/precision", "2"}});
    QVERIFY(readout.digital().isInitialised());
    QCOMPARE(readout.value()->text(), QString("0.00"));
    QCOMPARE(readout.value()->styleSheet(), ReadoutLooks::kGray);
    QCOMPARE(readout.value()->alignment(), Qt::AlignCenter);
    QCOMPARE(readout.caption()->text(), QString("Voltage"));
    QCOMPARE(readout.caption()->styleSheet(), QString());
    QVERIFY(!readout.caption()->isEnabled());
    QVERIFY(readout.value()->isEnabled());
}

void tst_DigitalWidget::fontsFollowTheParameters()
{
    DigitalReadout readout({{"widget/labelSize", "21"}, {"widget/valueSize", "48"}});
    const QFont value = readout.value()->font();
    QCOMPARE(value.family(), QString("Digital-7"));
    QCOMPARE(value.pointSize(), 48);
    QCOMPARE(value.weight(), int(QFont::Normal));
    QVERIFY(!value.italic());
    const QFont caption = readout.caption()->font();
    QCOMPARE(caption.family(), QString("Arial"));
    QCOMPARE(caption.pointSize(), 21);
    QCOMPARE(caption.weight(), 3);
    QVERIFY(!caption.italic());
}

void tst_DigitalWidget::unitFontIsHalfCutTowardZero()
{
    DigitalReadout readout({{"widget/units", "mV"}, {"widget/valueSize", "61"}});
    const QFont font = readout.units()->font();
    QCOMPARE(font.family(), QString("Arial"));
    QCOMPARE(font.pointSize(), 30);
    QCOMPARE(font.weight(), int(QFont::Normal));
    QVERIFY(!font.italic());
}

void tst_DigitalWidget::sizePoliciesAreTheirs()
{
    DigitalReadout readout({{"widget/units", "mV"}});
    QCOMPARE(readout.caption()->sizePolicy(),
             QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum));
    QCOMPARE(readout.units()->sizePolicy(),
             QSizePolicy(QSizePolicy::Minimum, QSizePolicy::Expanding));
    readout.widget->show();
    QCOMPARE(readout.value()->sizePolicy(),
             QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum));
}

void tst_DigitalWidget::withoutUnitsEachSpansOneColumn()
{
    DigitalReadout readout;
    const QGridLayout& grid = *readout.widget->getLayout();
    QCOMPARE(grid.count(), 2);
    QCOMPARE(placeOf(readout.caption(), grid), QString("row 0, column 0, 1 x 1, alignment 0x40"));
    QCOMPARE(placeOf(readout.value(), grid), QString("row 1, column 0, 1 x 1, alignment 0x20"));
}

void tst_DigitalWidget::unitsStandBesideTheValue()
{
    DigitalReadout readout({{"widget/units", "mV"}});
    const QGridLayout& grid = *readout.widget->getLayout();
    QCOMPARE(grid.count(), 3);
    QCOMPARE(readout.units()->text(), QString("mV"));
    QCOMPARE(placeOf(readout.caption(), grid), QString("row 0, column 0, 1 x 3, alignment 0x40"));
    QCOMPARE(placeOf(readout.value(), grid), QString("row 1, column 0, 1 x 2, alignment 0x20"));
    QCOMPARE(placeOf(readout.units(), grid), QString("row 1, column 2, 1 x 1, alignment 0x84"));
}

void tst_DigitalWidget::verticalPlacesTheValueAtTheTop()
{
    DigitalReadout readout;
    QLabel* const value = readout.value();
    QLabel* const caption = readout.caption();
    const QString captionsPlace = placeOf(caption, *readout.widget->getLayout());
    readout.digital().setLayout(Qt::Vertical);
    QCOMPARE(placeOf(caption, *readout.widget->getLayout()), captionsPlace);
    QCOMPARE(placeOf(value, *readout.widget->getLayout()),
             QString("row 0, column 0, 1 x 1, alignment 0x20"));
}

void tst_DigitalWidget::widthHoldsTheLongestNumber_data()
{
    QTest::addColumn<QString>("minThreshold");
    QTest::addColumn<QString>("maxThreshold");
    QTest::addColumn<QString>("precision");
    QTest::addColumn<QString>("sample");
    QTest::newRow("point without decimals") << "0"
                                            << "100"
                                            << "0"
                                            << "333.";
    QTest::newRow("decimals") << "0"
                              << "100"
                              << "2"
                              << "333.33";
    QTest::newRow("negative counts by magnitude") << "-250"
                                                  << "10"
                                                  << "1"
                                                  << "333.3";
    QTest::newRow("one digit") << "0"
                               << "9"
                               << "0"
                               << "3.";
    QTest::newRow("nothing to show") << "0"
                                     << "0"
                                     << "0"
                                     << "3.";
    QTest::newRow("rounded up to a digit more") << "0"
                                                << "9.5"
                                                << "0"
                                                << "33.";
    QTest::newRow("rounded down") << "0"
                                  << "9.4"
                                  << "0"
                                  << "3.";
    QTest::newRow("negative precision") << "0"
                                        << "10"
                                        << "-3"
                                        << "33.";
    QTest::newRow("too large for an int") << "0"
                                          << "1e300"
                                          << "0"
                                          << "3333333333.";
    QTest::newRow("infinity") << "-inf"
                              << "5"
                              << "0"
                              << "3333333333.";
    QTest::newRow("not a number") << "nan"
                                  << "50"
                                  << "0"
                                  << "33.";
    QTest::newRow("no number at all") << "nan"
                                      << "nan"
                                      << "0"
                                      << "3.";
}

void tst_DigitalWidget::widthHoldsTheLongestNumber()
{
    QFETCH(QString, minThreshold);
    QFETCH(QString, maxThreshold);
    QFETCH(QString, precision);
    QFETCH(QString, sample);
    DigitalReadout readout({{"widget/minThreshold", minThreshold},
                            {"widget/maxThreshold", maxThreshold},
                            {"widget/precision", precision}});
    QCOMPARE(readout.value()->minimumWidth(), 0);
    readout.widget->show();
    QCOMPARE(readout.value()->minimumWidth(),
             QFontMetrics(readout.value()->font()).horizontalAdvance(sample) +
                 2 * readout.value()->margin()); // Which only the look of a panel gives it.
    QVERIFY(readout.value()->minimumWidth() > 0);
}

void tst_DigitalWidget::blinkTurnsTheCaptionDarkThenRed()
{
    DigitalReadout readout;
    readout.digital().blinkTimerExpired();
    QCOMPARE(readout.caption()->styleSheet(), ReadoutLooks::kDarkCaption);
    readout.digital().blinkTimerExpired();
    QCOMPARE(readout.caption()->styleSheet(), ReadoutLooks::kRedCaption);
    readout.digital().blinkTimerExpired();
    QCOMPARE(readout.caption()->styleSheet(), ReadoutLooks::kDarkCaption);
}

void tst_DigitalWidget::captionOfAnInactiveReadoutStaysDisabled_data()
{
    QTest::addColumn<bool>("hadAValue");
    QTest::newRow("from the start") << false;
    QTest::newRow("since a time-out") << true;
}

void tst_DigitalWidget::captionOfAnInactiveReadoutStaysDisabled()
{
    QFETCH(bool, hadAValue);
    QWidget window;
    DigitalReadout readout;
    readout.widget->setParent(&window);
    if (hadAValue) {
        readout.device.input(1.0);
        QVERIFY(readout.caption()->isEnabled());
    }
    window.setEnabled(false);
    readout.digital().timeout();
    window.setEnabled(true);
    QVERIFY(!readout.caption()->isEnabled());

    window.setEnabled(false);
    readout.device.input(1.0);
    window.setEnabled(true);
    QVERIFY(readout.caption()->isEnabled());
}

void tst_DigitalWidget::beforeInitialiseNothingHappens()
{
    OutputDigitalDevice device;
    QVERIFY(device.initialise());
    DigitalWidget widget(&device, nullptr);
    widget.input(1.0);
    widget.timeout();
    widget.blinkTimerExpired();
    widget.show();
    QVERIFY(widget.findChildren<QWidget*>().isEmpty());
}

void tst_DigitalWidget::afterDeinitialiseValuesAreStillShown()
{
    DigitalReadout readout;
    readout.widget->deinitialise();
    QVERIFY(readout.widget->isInitialised());
    readout.device.input(42.0);
    QCOMPARE(readout.value()->text(), QString("42"));
    QCOMPARE(readout.value()->styleSheet(), ReadoutLooks::kGreen);
}

void tst_DigitalWidget::widthFollowsTheFontEachTimeItIsShown()
{
    DigitalReadout readout;
    readout.widget->show();
    const int before = readout.value()->minimumWidth();
    readout.widget->hide();
    QFont larger = readout.value()->font();
    larger.setPointSize(2 * larger.pointSize());
    readout.value()->setFont(larger);
    readout.widget->show();
    QVERIFY(readout.value()->minimumWidth() > before);
    QCOMPARE(readout.value()->minimumWidth(),
             QFontMetrics(larger).horizontalAdvance("333.") + 2 * readout.value()->margin());
}

NORVO_TEST(tst_DigitalWidget)
#include "tst_DigitalWidget.moc"
