// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "GridPlaces.h"
#include "ProgressReadout.h"
#include "Recorder.h"

#include "devices/Label.h"
#include "TestMain.h"

#include <QtTest>

namespace {

QString described(const QFont& font)
{
    return QString("%1, %2 points, weight %3%4")
        .arg(font.family())
        .arg(font.pointSize())
        .arg(font.weight())
        .arg(font.italic() ? ", italic" : "");
}

} // namespace

class tst_DigitalWithProgress : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsSignalsAndSlots();

    void startsGreyAndSwitchedOff();
    void fontsAreNotAppliedAtTheStart();
    void fontSizesAreAppliedAfterwards();
    void widthHoldsTheLongestNumberOfTheRange_data();
    void widthHoldsTheLongestNumberOfTheRange();
    void placesAreThoseOfTheHorizontalGrid();
    void verticalPutsTheBarBesideTheValue();
    void withoutProgressThereIsNoBar();

    void beforeInitialiseNothingHappens();
    void afterDeinitialiseValuesAreStillShown();
};

void tst_DigitalWithProgress::declaresItsSignalsAndSlots()
{
    QCOMPARE(methodTable(DigitalWithProgress::staticMetaObject),
             QStringList({"signal alarmAlert(bool)", "slot timeout()", "slot input(double)",
                          "slot blinkTimerExpired()"}));
}

void tst_DigitalWithProgress::startsGreyAndSwitchedOff()
{
    ProgressReadout readout(
        {{"name", "Pressure"}, {"precision", "1"}, {"minValue", "-2.5"}, {"maxValue", "1234567"}});
    QVERIFY(readout.widget->isInitialised());
    QCOMPARE(readout.value()->text(), QString("0.0"));
    QCOMPARE(readout.value()->styleSheet(), ReadoutLooks::kGray);
    QCOMPARE(readout.value()->alignment(), Qt::AlignCenter);
    QVERIFY(readout.value()->isEnabled());
    QCOMPARE(readout.caption()->text(), QString("Pressure"));
    QCOMPARE(readout.caption()->styleSheet(), QString());
    QCOMPARE(readout.caption()->sizePolicy(),
             QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum));
    QVERIFY(!readout.caption()->isEnabled());
    QCOMPARE(readout.minLabel()->text(), QString("-2.5"));
    QCOMPARE(readout.maxLabel()->text(), QString("1.23457e+06"));
    QVERIFY(!readout.minLabel()->isEnabled());
    QVERIFY(!readout.maxLabel()->isEnabled());
    QCOMPARE(readout.bar()->styleSheet(), ReadoutLooks::kGrayBar);
    QCOMPARE(readout.bar()->minimum(), 0);
    QCOMPARE(readout.bar()->maximum(), 1000);
    QCOMPARE(readout.bar()->minimumHeight(), 25);
    QCOMPARE(readout.bar()->maximumHeight(), 25);
    QVERIFY(!readout.bar()->isTextVisible());
    QVERIFY(!readout.bar()->isEnabled());
}

void tst_DigitalWithProgress::fontsAreNotAppliedAtTheStart()
{
    ProgressReadout readout;
    const QLabel untouched;
    untouched.ensurePolished(); // Labels can have a font of their own by default.
    for (const QLabel* label :
         {readout.value(), readout.caption(), readout.minLabel(), readout.maxLabel()}) {
        label->ensurePolished();
        QCOMPARE(label->font(), untouched.font());
        QCOMPARE(label->minimumWidth(), 0);
    }
    readout.widget->show();
    QCOMPARE(readout.value()->font(), untouched.font());
    QCOMPARE(readout.value()->minimumWidth(), 0);
    QCOMPARE(readout.value()->sizePolicy(), untouched.sizePolicy());
}

void tst_DigitalWithProgress::fontSizesAreAppliedAfterwards()
{
    ProgressReadout readout;
    readout.digital().setFontSize(50, 14, 11);
    QCOMPARE(described(readout.value()->font()), QString("Digital-7, 50 points, weight 50"));
    QCOMPARE(readout.value()->sizePolicy(),
             QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum));
    QCOMPARE(described(readout.caption()->font()), QString("Arial, 14 points, weight 3"));
    QCOMPARE(described(readout.minLabel()->font()), QString("Arial, 11 points, weight 3"));
    QCOMPARE(described(readout.maxLabel()->font()), QString("Arial, 11 points, weight 3"));
}

void tst_DigitalWithProgress::widthHoldsTheLongestNumberOfTheRange_data()
{
    QTest::addColumn<QString>("minValue");
    QTest::addColumn<QString>("maxValue");
    QTest::addColumn<QString>("precision");
    QTest::addColumn<QString>("sample");
    QTest::newRow("point and one more always") << "0"
                                               << "100"
                                               << "0"
                                               << "333.3";
    QTest::newRow("decimals") << "0"
                              << "9"
                              << "2"
                              << "3.333";
    QTest::newRow("room for the sign") << "-5"
                                       << "10"
                                       << "0"
                                       << "33.33";
    QTest::newRow("negative end counts by magnitude") << "-1000"
                                                      << "10"
                                                      << "1"
                                                      << "3333.333";
    QTest::newRow("range, not thresholds") << "0"
                                           << "1"
                                           << "0"
                                           << "3.3";
    QTest::newRow("negative precision is no decimals") << "0"
                                                       << "10"
                                                       << "-1"
                                                       << "33.3";
    QTest::newRow("too large for an int") << "0"
                                          << "1e300"
                                          << "0"
                                          << "3333333333.3";
    QTest::newRow("not a number") << "nan"
                                  << "50"
                                  << "0"
                                  << "33.3";
}

void tst_DigitalWithProgress::widthHoldsTheLongestNumberOfTheRange()
{
    QFETCH(QString, minValue);
    QFETCH(QString, maxValue);
    QFETCH(QString, precision);
    QFETCH(QString, sample);
    ProgressReadout readout({{"minValue", minValue},
                             {"maxValue", maxValue},
                             {"minThreshold", "-99999"},
                             {"maxThreshold", "99999"},
                             {"precision", precision}});
    readout.digital().setFontSize(30, 10, 10);
    const int digits = QFontMetrics(readout.value()->font()).horizontalAdvance(sample);
    QVERIFY(digits > 0);
    const int width = digits + 2 * readout.value()->margin();
    QCOMPARE(readout.value()->minimumWidth(), width);
    QCOMPARE(readout.widget->minimumWidth(), width);
}

void tst_DigitalWithProgress::placesAreThoseOfTheHorizontalGrid()
{
    ProgressReadout readout;
    const QGridLayout& grid = *readout.widget->getLayout();
    QCOMPARE(grid.count(), 5);
    QCOMPARE(placeOf(readout.caption(), grid), QString("row 0, column 0, 1 x 2, alignment 0x40"));
    QCOMPARE(placeOf(readout.value(), grid), QString("row 1, column 0, 1 x 2, alignment 0x20"));
    QCOMPARE(placeOf(readout.bar(), grid), QString("row 2, column 0, 1 x 2, alignment 0x20"));
    QCOMPARE(placeOf(readout.minLabel(), grid), QString("row 3, column 0, 1 x 1, alignment 0x21"));
    QCOMPARE(placeOf(readout.maxLabel(), grid), QString("row 3, column 1, 1 x 1, alignment 0x22"));
    QCOMPARE(grid.rowStretch(0), 1);
    QCOMPARE(grid.rowStretch(1), 3);
    QCOMPARE(grid.rowStretch(2), 1);
    QCOMPARE(grid.rowStretch(3), 1);
    QCOMPARE(readout.bar()->orientation(), Qt::Horizontal);
}

void tst_DigitalWithProgress::verticalPutsTheBarBesideTheValue()
{
    ProgressReadout readout;
    QLabel* const value = readout.value();
    QLabel* const minLabel = readout.minLabel();
    QLabel* const maxLabel = readout.maxLabel();
    readout.digital().setLayout(Qt::Vertical);
    const QGridLayout& grid = *readout.widget->getLayout();
    QCOMPARE(readout.bar()->orientation(), Qt::Vertical);
    QCOMPARE(placeOf(value, grid), QString("row 0, column 0, 1 x 1, alignment 0x20"));
    QCOMPARE(placeOf(readout.bar(), grid), QString("row 0, column 1, 2 x 1, alignment 0x0"));
    QCOMPARE(placeOf(maxLabel, grid), QString("row 0, column 2, 1 x 1, alignment 0x20"));
    QCOMPARE(placeOf(minLabel, grid), QString("row 1, column 2, 1 x 1, alignment 0x40"));
}

void tst_DigitalWithProgress::withoutProgressThereIsNoBar()
{
    OutputWithProgress device;
    device.setParam("timeout", "0");
    device.setRunning(device.initialise());
    DigitalWithProgress widget(&device, nullptr, false);
    widget.initialise();
    QVERIFY(!widget.findChild<QProgressBar*>());
    QCOMPARE(widget.findChildren<QLabel*>().size(), 2);
    QCOMPARE(widget.getLayout()->rowCount(), 2);
    device.input(500.0);
    widget.setFontSize(20, 10, 10);
    widget.timeout();
    widget.setLayout(Qt::Vertical);
    QVERIFY(!widget.findChild<QProgressBar*>());
}

void tst_DigitalWithProgress::beforeInitialiseNothingHappens()
{
    OutputWithProgress device;
    QVERIFY(device.initialise());
    DigitalWithProgress widget(&device, nullptr, true);
    Recorder recorder(&widget, BaseWidget::staticMetaObject);
    widget.input(1.0);
    widget.timeout();
    widget.checkForAlarm();
    widget.blinkTimerExpired();
    widget.setFontSize(10, 10, 10);
    QTest::mouseClick(&widget, Qt::LeftButton);
    QCOMPARE(recorder.take(), QStringList());
    QVERIFY(widget.findChildren<QWidget*>().isEmpty());
    QCOMPARE(widget.minimumWidth(), 0);
}

void tst_DigitalWithProgress::afterDeinitialiseValuesAreStillShown()
{
    ProgressReadout readout;
    readout.widget->deinitialise();
    QVERIFY(readout.widget->isInitialised());
    readout.device.input(42.0);
    QCOMPARE(readout.value()->text(), QString("42"));
}

NORVO_TEST(tst_DigitalWithProgress)
#include "tst_DigitalWithProgress.moc"
