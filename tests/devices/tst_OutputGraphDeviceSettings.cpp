// SPDX-License-Identifier: GPL-3.0-or-later

#include "RunningGraph.h"
#include "TestMain.h"
#include "norvo/BaseWidget.h"

#include <QtTest>

#include <memory>

/// The settings of curves, as they come and as they are sent again.
class tst_OutputGraphDeviceSettings : public QObject
{
    Q_OBJECT

private slots:
    void settingsGoOutUnderTheSendersName();
    void sameSettingAgainGoesOutAgain();
    void settingsOfADirectCallAreDropped();
    void resendFollowsTheNamesInTheirOrder();
    void resendKeepsTheLatestOfEach();
    void senderWithoutANameIsNotResent();
    void createWidgetResendsFromTheEventLoop();
    void settingsOutliveDeinitialise();
};

void tst_OutputGraphDeviceSettings::settingsGoOutUnderTheSendersName()
{
    RunningGraph running;
    GraphSettingsDevice relay;
    running.feedFrom(relay, "pump");
    Recorder recorder(&running.device);
    emit relay.setFilled(true);
    emit relay.setColor("red");
    emit relay.setName("Pump");
    emit relay.setFilled(false);
    QCOMPARE(recorder.take(),
             QStringList({"outputFill(\"pump\", true)", "outputColor(\"pump\", \"red\")",
                          "outputName(\"pump\", \"Pump\")", "outputFill(\"pump\", false)"}));
}

void tst_OutputGraphDeviceSettings::sameSettingAgainGoesOutAgain()
{
    RunningGraph running;
    GraphSettingsDevice relay;
    running.feedFrom(relay, "pump");
    Recorder recorder(&running.device);
    for (int i = 0; i < 2; ++i) {
        emit relay.setFilled(true);
        emit relay.setColor("red");
        emit relay.setName("Pump");
        QCOMPARE(recorder.take(),
                 QStringList({"outputFill(\"pump\", true)", "outputColor(\"pump\", \"red\")",
                              "outputName(\"pump\", \"Pump\")"}));
    }
}

void tst_OutputGraphDeviceSettings::settingsOfADirectCallAreDropped()
{
    RunningGraph running;
    Recorder recorder(&running.device);
    running.device.setFilled(true);
    running.device.setColor("red");
    running.device.setName("Pump");
    QCOMPARE(recorder.take(), QStringList());
    QCOMPARE(running.resent(), QStringList());
}

void tst_OutputGraphDeviceSettings::resendFollowsTheNamesInTheirOrder()
{
    RunningGraph running;
    GraphSettingsDevice b;
    GraphSettingsDevice a;
    GraphSettingsDevice upper;
    running.feedFrom(b, "b");
    running.feedFrom(a, "a");
    running.feedFrom(upper, "Z");
    emit b.setFilled(true);
    emit b.setName("Bee");
    emit a.setName("Ay");
    emit a.setColor("red");
    emit upper.setName("Zed");
    QCOMPARE(running.resent(),
             QStringList({"outputName(\"Z\", \"Zed\")", "outputFill(\"Z\", false)",
                          "outputColor(\"Z\", \"\")", "outputName(\"a\", \"Ay\")",
                          "outputFill(\"a\", false)", "outputColor(\"a\", \"red\")",
                          "outputName(\"b\", \"Bee\")", "outputFill(\"b\", true)",
                          "outputColor(\"b\", \"\")"}));
}

void tst_OutputGraphDeviceSettings::resendKeepsTheLatestOfEach()
{
    RunningGraph running;
    GraphSettingsDevice relay;
    running.feedFrom(relay, "pump");
    emit relay.setName("Pump");
    emit relay.setName("Pump 2");
    emit relay.setColor("red");
    emit relay.setColor("#00ff00");
    emit relay.setFilled(true);
    emit relay.setFilled(false);
    const QStringList latest{"outputName(\"pump\", \"Pump 2\")", "outputFill(\"pump\", false)",
                             "outputColor(\"pump\", \"#00ff00\")"};
    QCOMPARE(running.resent(), latest);
    QCOMPARE(running.resent(), latest);
}

void tst_OutputGraphDeviceSettings::senderWithoutANameIsNotResent()
{
    RunningGraph running;
    GraphSettingsDevice relay;
    running.feedFrom(relay, "pump");
    emit relay.setColor("red");
    emit relay.setFilled(true);
    QCOMPARE(running.resent(), QStringList());
}

void tst_OutputGraphDeviceSettings::createWidgetResendsFromTheEventLoop()
{
    RunningGraph running;
    GraphSettingsDevice relay;
    running.feedFrom(relay, "pump");
    emit relay.setName("Pump");
    Recorder recorder(&running.device);
    const std::unique_ptr<BaseWidget> widget(running.device.createWidget());
    QVERIFY(widget);
    QVERIFY(!widget->parent());
    QCOMPARE(recorder.take(), QStringList());
    QCoreApplication::processEvents();
    QCOMPARE(recorder.take(),
             QStringList({"outputName(\"pump\", \"Pump\")", "outputFill(\"pump\", false)",
                          "outputColor(\"pump\", \"\")"}));
    QCoreApplication::processEvents();
    QCOMPARE(recorder.take(), QStringList());
}

void tst_OutputGraphDeviceSettings::settingsOutliveDeinitialise()
{
    RunningGraph running;
    GraphSettingsDevice relay;
    running.feedFrom(relay, "pump");
    emit relay.setName("Pump");
    running.device.setRunning(false);
    running.device.deinitialise();
    running.device.setRunning(running.device.initialise());
    QCOMPARE(running.resent().first(), QString("outputName(\"pump\", \"Pump\")"));
}

NORVO_TEST(tst_OutputGraphDeviceSettings)
#include "tst_OutputGraphDeviceSettings.moc"
