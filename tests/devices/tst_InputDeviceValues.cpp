// SPDX-License-Identifier: GPL-3.0-or-later

#include "Recorder.h"

#include "devices/InputDevice.h"
#include "TestMain.h"

#include <QtTest>

namespace {

constexpr auto kOutputNumber = QOverload<double>::of(&InputDevice::output);
constexpr auto kOutputText = QOverload<QString>::of(&InputDevice::output);
constexpr auto kWgOutputNumber = QOverload<double>::of(&InputDevice::wgOutput);
constexpr auto kWgOutputText = QOverload<QString>::of(&InputDevice::wgOutput);

} // namespace

class tst_InputDeviceValues : public QObject
{
    Q_OBJECT

private slots:
    void numberFromTheWidgetLeavesAsNumberThenText();
    void answerToTheNumberIsWhatLeavesAsText();
    void textFromTheWidgetLeavesUnchangedThenAsNumber();
    void textFromTheWidgetThatIsNoNumberLeavesAsTextOnly();
    void nothingFromTheWidgetPassesUnlessRunning();
    void numberFromTheWiringIsShownAsTextThenNumber();
    void textFromTheWiringIsShownThenAsNumber();
    void textFromTheWiringThatIsNoNumberIsShownAsTextOnly();
    void inputsNeedNoRunningFlag();
    void stateWhileANumberFromTheWidgetLeaves();
    void stateWhileATextFromTheWidgetLeaves();
    void stateWhileANumberFromTheWiringIsShown();
    void stateWhileATextFromTheWiringIsShown();

private:
    /// Notes what the device knows of the current value at each emission of `signal`.
    template <class Signal>
    void watch(InputDevice& device, Signal signal)
    {
        m_states.clear();
        connect(&device, signal, this, [this, &device] {
            m_states.append(device.getCurrentString() + "|" +
                            QString::number(device.getCurrentNumber()) + "|" +
                            device.description());
        });
    }

    QStringList m_states;
};

void tst_InputDeviceValues::numberFromTheWidgetLeavesAsNumberThenText()
{
    InputDevice device;
    device.setRunning(true);
    Recorder recorder(&device);
    device.wgInput(0.1234567);
    QCOMPARE(recorder.take(), QStringList({"output(0.1234567)", "output(\"0.123457\")"}));
    QCOMPARE(device.getCurrentString(), QString("0.123457"));
    QCOMPARE(device.getCurrentNumber(), 0.1234567);
    QCOMPARE(device.description(), QString("0.123457"));
}

void tst_InputDeviceValues::answerToTheNumberIsWhatLeavesAsText()
{
    InputDevice device;
    device.setRunning(true);
    Recorder recorder(&device);
    connect(&device, kOutputNumber, this, [&] { device.input(42.0); }); // a limiter
    device.wgInput(42.7);
    QCOMPARE(recorder.take(),
             QStringList({"output(42.7)", "wgOutput(\"42\")", "wgOutput(42)", "output(\"42\")"}));
    QCOMPARE(device.getCurrentString(), QString("42"));
    QCOMPARE(device.getCurrentNumber(), 42.0);
    QCOMPARE(device.description(), QString("42"));
}

void tst_InputDeviceValues::textFromTheWidgetLeavesUnchangedThenAsNumber()
{
    InputDevice device;
    device.setRunning(true);
    Recorder recorder(&device);
    device.wgInput(QString("3,750"));
    QCOMPARE(recorder.take(), QStringList({"output(\"3,750\")", "output(3.75)"}));
    QCOMPARE(device.getCurrentString(), QString("3,750"));
    QCOMPARE(device.getCurrentNumber(), 3.75);
    QCOMPARE(device.description(), QString("3,750"));
}

void tst_InputDeviceValues::textFromTheWidgetThatIsNoNumberLeavesAsTextOnly()
{
    InputDevice device;
    device.setRunning(true);
    device.wgInput(7.0);
    Recorder recorder(&device);
    device.wgInput(QString("abc"));
    QCOMPARE(recorder.take(), QStringList("output(\"abc\")"));
    QCOMPARE(device.getCurrentString(), QString("abc"));
    QCOMPARE(device.getCurrentNumber(), 7.0);
    QCOMPARE(device.description(), QString("abc"));
}

void tst_InputDeviceValues::nothingFromTheWidgetPassesUnlessRunning()
{
    InputDevice device;
    Recorder recorder(&device);
    device.wgInput(7.0);
    device.wgInput(QString("7"));
    QCOMPARE(recorder.take(), QStringList());
    QCOMPARE(device.getCurrentString(), QString());
    QCOMPARE(device.getCurrentNumber(), 0.0);
    QCOMPARE(device.description(), QString());
}

void tst_InputDeviceValues::numberFromTheWiringIsShownAsTextThenNumber()
{
    InputDevice device;
    Recorder recorder(&device);
    device.input(0.1234567);
    QCOMPARE(recorder.take(), QStringList({"wgOutput(\"0.123457\")", "wgOutput(0.1234567)"}));
    QCOMPARE(device.getCurrentString(), QString("0.123457"));
    QCOMPARE(device.getCurrentNumber(), 0.1234567);
    QCOMPARE(device.description(), QString());
}

void tst_InputDeviceValues::textFromTheWiringIsShownThenAsNumber()
{
    InputDevice device;
    Recorder recorder(&device);
    device.input(QString("3,75"));
    QCOMPARE(recorder.take(), QStringList({"wgOutput(\"3,75\")", "wgOutput(3.75)"}));
    QCOMPARE(device.getCurrentString(), QString("3,75"));
    QCOMPARE(device.getCurrentNumber(), 3.75);
    QCOMPARE(device.description(), QString());
}

void tst_InputDeviceValues::textFromTheWiringThatIsNoNumberIsShownAsTextOnly()
{
    InputDevice device;
    device.input(7.0);
    Recorder recorder(&device);
    device.input(QString("abc"));
    QCOMPARE(recorder.take(), QStringList("wgOutput(\"abc\")"));
    QCOMPARE(device.getCurrentString(), QString("abc"));
    QCOMPARE(device.getCurrentNumber(), 7.0);
}

void tst_InputDeviceValues::inputsNeedNoRunningFlag()
{
    for (const bool running : {false, true}) {
        InputDevice device;
        device.setRunning(running);
        Recorder recorder(&device);
        device.input(2.0);
        device.input(QString("3"));
        QCOMPARE(recorder.take(),
                 QStringList({"wgOutput(\"2\")", "wgOutput(2)", "wgOutput(\"3\")", "wgOutput(3)"}));
    }
}

void tst_InputDeviceValues::stateWhileANumberFromTheWidgetLeaves()
{
    InputDevice device;
    device.setRunning(true);
    watch(device, kOutputNumber);
    device.wgInput(2.5); // stored before it leaves, described after
    QCOMPARE(m_states, QStringList("2.5|2.5|"));
}

void tst_InputDeviceValues::stateWhileATextFromTheWidgetLeaves()
{
    InputDevice device;
    device.setRunning(true);
    watch(device, kOutputText);
    device.wgInput(QString("2.5")); // neither stored nor described before the text has left
    QCOMPARE(m_states, QStringList("|0|"));

    InputDevice other;
    other.setRunning(true);
    watch(other, kOutputNumber);
    other.wgInput(QString("2,5"));
    QCOMPARE(m_states, QStringList("2,5|2.5|2,5"));
}

void tst_InputDeviceValues::stateWhileANumberFromTheWiringIsShown()
{
    InputDevice device;
    watch(device, kWgOutputText);
    device.input(2.5);
    QCOMPARE(m_states, QStringList("2.5|2.5|"));
}

void tst_InputDeviceValues::stateWhileATextFromTheWiringIsShown()
{
    InputDevice device;
    watch(device, kWgOutputText);
    device.input(QString("2.5")); // stored only once it has been shown
    QCOMPARE(m_states, QStringList("|0|"));

    InputDevice other;
    watch(other, kWgOutputNumber);
    other.input(QString("2,5"));
    QCOMPARE(m_states, QStringList("2,5|0|"));
}

NORVO_GUILESS_TEST(tst_InputDeviceValues)
#include "tst_InputDeviceValues.moc"
