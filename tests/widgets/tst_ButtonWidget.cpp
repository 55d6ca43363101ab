// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "Recorder.h"
#include "Stand.h"

#include "devices/ButtonDevice.h"
#include "widgets/ButtonWidget.h"
#include "TestMain.h"

#include <QtTest>

class tst_ButtonWidget : public QObject
{
    Q_OBJECT

private slots:
    void declaresPressed();

    void captionIsTheTextParameter_data();
    void captionIsTheTextParameter();
    void fontFollowsTheParameterAndTheWidgetsFamily();
    void parameterNameIsFoundInCapitals();
    void buttonFillsTheWidget();

    void latchedStateIsShownAtOnceAndEmittedAfterwards();
    void pressInToggleModeYieldsToggledThenClicked();
    void pressInClickModeYieldsClickedOnly();
    void modeIsComparedWithCase();
    void deviceSlotsMoveTheButtonWhichEchoesOnce();
    void pressedIsNeverEmitted();
};

void tst_ButtonWidget::declaresPressed()
{
    QCOMPARE(methodTable(ButtonWidget::staticMetaObject), QStringList("signal pressed()"));
}

void tst_ButtonWidget::captionIsTheTextParameter_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("text") << "Start pump";
    QTest::newRow("empty") << "";
}

void tst_ButtonWidget::captionIsTheTextParameter()
{
    QFETCH(QString, text);
    Stand<ButtonDevice> stand({{"text", text}});
    QVERIFY(stand.only<QPushButton>());
    QCOMPARE(stand.only<QPushButton>()->text(), text);
}

void tst_ButtonWidget::fontFollowsTheParameterAndTheWidgetsFamily()
{
    ButtonDevice device;
    device.setParam("widget/fontSize", "23");
    QVERIFY(device.initialise());
    ButtonWidget widget(&device, nullptr);
    QFont widgetFont("Liberation Serif", 40, QFont::Bold, true);
    widget.setFont(widgetFont);
    widget.initialise();
    const QFont font = widget.findChild<QPushButton*>()->font();
    QCOMPARE(font.family(), QString("Liberation Serif"));
    QCOMPARE(font.pointSize(), 23);
    QCOMPARE(font.weight(), 50);
    QVERIFY(!font.italic());
}

void tst_ButtonWidget::parameterNameIsFoundInCapitals()
{
    Stand<ButtonDevice> stand({{"WIDGET/FONTSIZE", "31"}});
    QCOMPARE(stand.only<QPushButton>()->font().pointSize(), 31);
}

void tst_ButtonWidget::buttonFillsTheWidget()
{
    Stand<ButtonDevice> stand;
    auto* const button = stand.only<QPushButton>();
    QCOMPARE(stand.widget->sizePolicy(), button->sizePolicy());
    QCOMPARE(stand.widget->focusProxy(), button);
    QCOMPARE(stand.widget->getLayout()->itemAtPosition(0, 0)->widget(), button);
    QCOMPARE(stand.widget->getLayout()->count(), 1);
}

void tst_ButtonWidget::latchedStateIsShownAtOnceAndEmittedAfterwards()
{
    Stand<ButtonDevice> stand({{"mode", "toggle"}, {"toggled", "true"}});
    QVERIFY(stand.only<QPushButton>()->isCheckable());
    QVERIFY(stand.only<QPushButton>()->isChecked());
    Recorder recorder(&stand.device);
    stand.device.postInitialisation();
    QCOMPARE(recorder.take(), QStringList("toggled(true)"));
    QVERIFY(stand.only<QPushButton>()->isChecked());
}

void tst_ButtonWidget::pressInToggleModeYieldsToggledThenClicked()
{
    Stand<ButtonDevice> stand;
    stand.widget->show();
    auto* const button = stand.only<QPushButton>();
    Recorder recorder(&stand.device, QObject::staticMetaObject);
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(recorder.take(),
             QStringList({"paramChanged(\"toggled\", \"true\")", "toggled(true)", "clicked()"}));
    QVERIFY(button->isChecked());
    QVERIFY(stand.device.isToggled());
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(recorder.take(),
             QStringList({"paramChanged(\"toggled\", \"false\")", "toggled(false)", "clicked()"}));
    QVERIFY(!button->isChecked());
}

void tst_ButtonWidget::pressInClickModeYieldsClickedOnly()
{
    Stand<ButtonDevice> stand({{"mode", "click"}});
    stand.widget->show();
    QVERIFY(!stand.only<QPushButton>()->isCheckable());
    Recorder recorder(&stand.device, QObject::staticMetaObject);
    QTest::mouseClick(stand.only<QPushButton>(), Qt::LeftButton);
    QTest::keyClick(stand.only<QPushButton>(), Qt::Key_Space);
    QCOMPARE(recorder.take(), QStringList({"clicked()", "clicked()"}));
}

void tst_ButtonWidget::modeIsComparedWithCase()
{
    Stand<ButtonDevice> stand({{"mode", "Toggle"}, {"toggled", "true"}});
    QVERIFY(!stand.only<QPushButton>()->isCheckable());
    QVERIFY(!stand.only<QPushButton>()->isChecked());
}

// The device stores its state last, so the button's answer finds the old one and is emitted too.
void tst_ButtonWidget::deviceSlotsMoveTheButtonWhichEchoesOnce()
{
    Stand<ButtonDevice> stand;
    auto* const button = stand.only<QPushButton>();
    Recorder recorder(&stand.device);
    stand.device.setToggled(true);
    QCOMPARE(recorder.take(), QStringList({"toggled(true)", "toggled(true)"}));
    QVERIFY(button->isChecked());
    QVERIFY(stand.device.isToggled());
    stand.device.toggle();
    QCOMPARE(recorder.take(), QStringList({"toggled(false)", "toggled(false)"}));
    QVERIFY(!button->isChecked());
    QVERIFY(!stand.device.isToggled());
}

void tst_ButtonWidget::pressedIsNeverEmitted()
{
    Stand<ButtonDevice> stand;
    stand.widget->show();
    Recorder recorder(stand.widget.get(), BaseWidget::staticMetaObject);
    QTest::mouseClick(stand.only<QPushButton>(), Qt::LeftButton);
    QCOMPARE(recorder.take(), QStringList());
    QVERIFY(stand.device.isToggled());
}

NORVO_TEST(tst_ButtonWidget)
#include "tst_ButtonWidget.moc"
