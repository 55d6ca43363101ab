// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "GridPlaces.h"
#include "MessageLog.h"
#include "Recorder.h"
#include "Stand.h"
#include "Wheel.h"

#include "devices/ButtonDevice.h"
#include "devices/InputDevice.h"
#include "devices/SliderDevice.h"
#include "widgets/SliderWidget.h"
#include "TestMain.h"

#include <QtTest>

#include <limits>

namespace {

/// Where the handle can be taken hold of.
QPoint handle(const QSlider& slider)
{
    QStyleOptionSlider option;
    option.initFrom(&slider);
    option.orientation = slider.orientation();
    option.minimum = slider.minimum();
    option.maximum = slider.maximum();
    option.sliderPosition = slider.sliderPosition();
    option.sliderValue = slider.value();
    option.upsideDown = slider.orientation() == Qt::Vertical;
    return slider.style()
        ->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, &slider)
        .center();
}

} // namespace

class tst_SliderWidget : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsSignalAndSlot();
    void deviceOfAnyClassIsConnectedByName();
    void deviceWithoutThoseMethodsIsReportedByQtAlone();

    void sliderIsMadeAsItsParametersSay();
    void orientationIsComparedWithCase_data();
    void orientationIsComparedWithCase();
    void oddRangeIsHandledAsTheSliderDoes_data();
    void oddRangeIsHandledAsTheSliderDoes();
    void rangeThatTheStyleCannotDivideIsOneShorter_data();
    void rangeThatTheStyleCannotDivideIsOneShorter();
    void sizeHintIsTheSliders();
    void startsAtZeroOrTheNearestEndInSilence_data();
    void startsAtZeroOrTheNearestEndInSilence();

    void inputMovesTheSliderAndComesBackWhole_data();
    void inputMovesTheSliderAndComesBackWhole();
    void inputThatLeavesThePositionIsSilent();
    void operatorsKeysMoveBySteps();
    void operatorsWheelMovesTheSlider();
    void operatorDragsTheHandle();
};

void tst_SliderWidget::declaresItsSignalAndSlot()
{
    QCOMPARE(methodTable(SliderWidget::staticMetaObject),
             QStringList({"signal wgOutput(double)", "slot wgInput(double)"}));
}

void tst_SliderWidget::deviceOfAnyClassIsConnectedByName()
{
    InputDevice device; // has the slots and signals that the slider asks for
    device.setRunning(device.initialise());
    SliderWidget widget(&device, nullptr);
    MessageLog log;
    widget.initialise();
    QCOMPARE(log.take(), QStringList());
    auto* const slider = widget.findChild<QSlider*>();
    slider->setMaximum(100);
    device.input(9.0);
    QCOMPARE(slider->value(), 9);
    QTest::keyClick(slider, Qt::Key_End);
    QCOMPARE(device.getCurrentNumber(), 100.0);
}

void tst_SliderWidget::deviceWithoutThoseMethodsIsReportedByQtAlone()
{
    ButtonDevice button;
    SliderWidget widget(&button, nullptr);
    MessageLog log;
    widget.initialise();
    const QStringList messages = log.take();
    QCOMPARE(messages.size(), 2);
    QVERIFY(
        messages[0].startsWith("warning: QObject::connect: No such slot ButtonDevice::wgInput"));
    QVERIFY(
        messages[1].startsWith("warning: QObject::connect: No such signal ButtonDevice::wgOutp"));
    QVERIFY(widget.findChild<QSlider*>());
    QVERIFY(widget.isInitialised());
}

void tst_SliderWidget::sliderIsMadeAsItsParametersSay()
{
    Stand<SliderDevice> stand({{"widget/minValue", "-20"},
                               {"widget/maxValue", "30"},
                               {"widget/step", "5"},
                               {"widget/orientation", "horizontal"}});
    auto* const slider = stand.only<QSlider>();
    QVERIFY(slider);
    QCOMPARE(slider->minimum(), -20);
    QCOMPARE(slider->maximum(), 30);
    QCOMPARE(slider->singleStep(), 5);
    const QSizePolicy expanding(QSizePolicy::Expanding, QSizePolicy::Expanding);
    QCOMPARE(slider->sizePolicy(), expanding);
    QCOMPARE(stand.widget->sizePolicy(), expanding);
    QCOMPARE(stand.widget->focusProxy(), slider);
    QCOMPARE(placeOf(slider, *stand.widget->getLayout()),
             QString("row 0, column 0, 1 x 1, alignment 0x0"));
}

void tst_SliderWidget::orientationIsComparedWithCase_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::newRow("horizontal") << "horizontal" << Qt::Horizontal;
    QTest::newRow("vertical") << "vertical" << Qt::Vertical;
    QTest::newRow("capital initial") << "Horizontal" << Qt::Vertical;
    QTest::newRow("unknown") << "across" << Qt::Vertical;
    QTest::newRow("empty") << "" << Qt::Vertical;
}

void tst_SliderWidget::orientationIsComparedWithCase()
{
    QFETCH(QString, text);
    QFETCH(Qt::Orientation, orientation);
    Stand<SliderDevice> stand({{"widget/orientation", text}});
    QCOMPARE(stand.only<QSlider>()->orientation(), orientation);
    QCOMPARE(stand.widget->sizePolicy(),
             QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding));
}

void tst_SliderWidget::oddRangeIsHandledAsTheSliderDoes_data()
{
    QTest::addColumn<QString>("minValue");
    QTest::addColumn<QString>("maxValue");
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::newRow("minimum above the maximum") << "50"
                                               << "10" << 50 << 50;
    QTest::newRow("equal ends") << "7"
                                << "7" << 7 << 7;
    QTest::newRow("fractions are cut") << "-1.9"
                                       << "9.9" << -1 << 9;
    QTest::newRow("no numbers") << "low"
                                << "high" << 0 << 0;
}

void tst_SliderWidget::oddRangeIsHandledAsTheSliderDoes()
{
    QFETCH(QString, minValue);
    QFETCH(QString, maxValue);
    QFETCH(int, minimum);
    QFETCH(int, maximum);
    Stand<SliderDevice> stand({{"widget/minValue", minValue}, {"widget/maxValue", maxValue}});
    QCOMPARE(stand.only<QSlider>()->minimum(), minimum);
    QCOMPARE(stand.only<QSlider>()->maximum(), maximum);
    stand.device.input(1000);
    QCOMPARE(stand.only<QSlider>()->value(), maximum);
}

void tst_SliderWidget::rangeThatTheStyleCannotDivideIsOneShorter_data()
{
    constexpr int lowest = std::numeric_limits<int>::min();
    constexpr int highest = std::numeric_limits<int>::max();
    QTest::addColumn<QString>("minValue");
    QTest::addColumn<QString>("maxValue");
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::newRow("-1 to 2^31 - 1") << "-1"
                                    << "2147483647" << -1 << highest - 1;
    QTest::newRow("-2^31 to 0") << "-2147483648"
                                << "0" << lowest + 1 << 0;
    QTest::newRow("cut to -2^31") << "-1e308"
                                  << "0" << lowest + 1 << 0;
    QTest::newRow("-2 to 2^31 - 2") << "-2"
                                    << "2147483646" << -2 << highest - 2;
    QTest::newRow("both ends alike") << "-1073741824"
                                     << "1073741824" << -1073741823 << 1073741824;
    QTest::newRow("one shorter") << "0"
                                 << "2147483647" << 0 << highest;
    QTest::newRow("one longer") << "-2"
                                << "2147483647" << -2 << highest;
    QTest::newRow("all of int") << "-2147483648"
                                << "2147483647" << lowest << highest;
}

void tst_SliderWidget::rangeThatTheStyleCannotDivideIsOneShorter()
{
    QFETCH(QString, minValue);
    QFETCH(QString, maxValue);
    for (const char* orientation : {"horizontal", "vertical"}) {
        Stand<SliderDevice> stand({{"widget/minValue", minValue},
                                   {"widget/maxValue", maxValue},
                                   {"widget/orientation", orientation}});
        auto* const slider = stand.only<QSlider>();
        QTEST(slider->minimum(), "minimum");
        QTEST(slider->maximum(), "maximum");
        stand.widget->resize(300, 300);
        stand.widget->show();
        for (const double value : {-1e300, -1.0, 0.0, 1e6, 1e300}) {
            stand.device.input(value);
            stand.widget->grab(); // as large a division as a style makes, or one by zero
            QTest::mouseClick(slider, Qt::LeftButton, Qt::NoModifier, QPoint(150, 150));
        }
    }
}

void tst_SliderWidget::sizeHintIsTheSliders()
{
    SliderDevice device;
    const std::unique_ptr<BaseWidget> widget(device.createWidget());
    QCOMPARE(widget->sizeHint(), QSize(-1, -1));
    widget->initialise();
    auto* const slider = widget->findChild<QSlider*>();
    QVERIFY(slider->sizeHint().isValid());
    QCOMPARE(widget->sizeHint(), slider->sizeHint());
    delete slider;
    QCOMPARE(widget->sizeHint(), QSize(-1, -1));
}

void tst_SliderWidget::startsAtZeroOrTheNearestEndInSilence_data()
{
    QTest::addColumn<QString>("minValue");
    QTest::addColumn<QString>("maxValue");
    QTest::addColumn<int>("position");
    QTest::newRow("minimum") << "0"
                             << "100" << 0;
    QTest::newRow("minimum above 0") << "10"
                                     << "100" << 10;
    QTest::newRow("0 in the range") << "-20"
                                    << "30" << 0;
    QTest::newRow("maximum below 0") << "-20"
                                     << "-5" << -5;
}

void tst_SliderWidget::startsAtZeroOrTheNearestEndInSilence()
{
    QFETCH(QString, minValue);
    QFETCH(QString, maxValue);
    QFETCH(int, position);
    SliderDevice device;
    device.setParam("widget/minValue", minValue);
    device.setParam("widget/maxValue", maxValue);
    device.setRunning(device.initialise());
    Recorder recorder(&device);
    const std::unique_ptr<BaseWidget> widget(device.createWidget());
    widget->initialise();
    device.postInitialisation();
    QCOMPARE(recorder.take(), QStringList());
    QCOMPARE(widget->findChild<QSlider*>()->value(), position);
}

void tst_SliderWidget::inputMovesTheSliderAndComesBackWhole_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("position");
    QTest::newRow("42.9 is cut") << 42.9 << 42;
    QTest::newRow("-0.7 is cut toward zero") << -0.7 << 0;
    QTest::newRow("-1.5 is cut toward zero") << -1.5 << -1;
    QTest::newRow("above the range") << 500.0 << 100;
    QTest::newRow("below the range") << -500.0 << -50;
    QTest::newRow("beyond int") << 1e10 << 100;
    QTest::newRow("beyond int, negative") << -1e10 << -50;
    QTest::newRow("infinity") << qInf() << 100;
    QTest::newRow("minus infinity") << -qInf() << -50;
    QTest::newRow("NaN counts as 0") << qQNaN() << 0;
}

void tst_SliderWidget::inputMovesTheSliderAndComesBackWhole()
{
    QFETCH(double, value);
    QFETCH(int, position);
    Stand<SliderDevice> stand({{"widget/minValue", "-50"}});
    stand.only<QSlider>()->setValue(77);
    Recorder recorder(&stand.device);
    stand.device.input(value);
    QCOMPARE(stand.only<QSlider>()->value(), position);
    const QStringList heard = recorder.take().filter(QRegularExpression("^output"));
    QCOMPARE(heard, QStringList(QString("output(%1)").arg(position)));
}

void tst_SliderWidget::inputThatLeavesThePositionIsSilent()
{
    Stand<SliderDevice> stand;
    Recorder recorder(&stand.device);
    stand.device.input(-0.7);
    stand.device.input(0.9);
    stand.device.input(-20);
    QCOMPARE(recorder.take(), QStringList({"wgOutput(-0.7)", "wgOutput(0.9)", "wgOutput(-20)"}));
    QCOMPARE(stand.only<QSlider>()->value(), 0);
}

void tst_SliderWidget::operatorsKeysMoveBySteps()
{
    Stand<SliderDevice> stand({{"widget/step", "5"}});
    stand.widget->show();
    QApplication::setActiveWindow(stand.widget.get());
    stand.widget->setFocus();
    QTRY_COMPARE(QApplication::focusWidget(), stand.only<QSlider>());
    Recorder recorder(&stand.device);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_End);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
    QCOMPARE(recorder.take(), QStringList({"output(5)", "output(10)", "output(5)", "output(100)"}));
}

void tst_SliderWidget::operatorsWheelMovesTheSlider()
{
    Stand<SliderDevice> stand;
    stand.widget->show();
    Recorder recorder(&stand.device);
    turnWheel(*stand.only<QSlider>(), 1);
    const int position = stand.only<QSlider>()->value();
    QVERIFY(position > 0);
    turnWheel(*stand.only<QSlider>(), -1);
    QCOMPARE(recorder.take(), QStringList({QString("output(%1)").arg(position), "output(0)"}));
}

void tst_SliderWidget::operatorDragsTheHandle()
{
    Stand<SliderDevice> stand({{"widget/orientation", "horizontal"}});
    stand.widget->resize(300, 40);
    stand.widget->show();
    auto* const slider = stand.only<QSlider>();
    Recorder recorder(&stand.device);
    const QPoint grip = handle(*slider);
    const QPoint beyond(slider->width() + 50, grip.y());
    QTest::mousePress(slider, Qt::LeftButton, Qt::NoModifier, grip);
    QMouseEvent move(QEvent::MouseMove, beyond, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(slider, &move);
    QTest::mouseRelease(slider, Qt::LeftButton, Qt::NoModifier, beyond);
    QCOMPARE(slider->value(), 100);
    QCOMPARE(recorder.take(), QStringList("output(100)"));
}

NORVO_TEST(tst_SliderWidget)
#include "tst_SliderWidget.moc"
