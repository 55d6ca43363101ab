// SPDX-License-Identifier: GPL-3.0-or-later

#include "GuardedPanel.h"
#include "HandWays.h"
#include "host/window/access/GuardedControl.h"
#include "host/window/access/QuestionSheet.h"
#include "TestMain.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QQuickWidget>

using namespace norvo;

namespace {

const QByteArray kDevices =
    "devices:\n"
    "  pump: {device: button, confirm: \"Start pump 1?\", params: {text: \"&Pump\"}}\n"
    "  step: {device: button, confirm: yes, params: {text: Step, mode: click}}\n"
    "  agree: {device: checkbox, confirm: yes, params: {widget/label: Agree}}\n"
    "  speed:\n"
    "    device: slider\n"
    "    confirm: yes\n"
    "    params: {widget/orientation: horizontal, widget/maxValue: 10}\n"
    "  mode: {device: dropdownlist, confirm: yes, params: {options: Slow|Fast|Full}}\n"
    "  target: {device: input, confirm: yes, params: {name: Target, type: spin, max: 50}}\n"
    "  rate: {device: input, confirm: yes, params: {type: double, max: 50}}\n"
    "  name: {device: input, confirm: yes, params: {type: string}}\n"
    "  face:\n"
    "    device: qml_widget\n"
    "    confirm: yes\n"
    "    params: {sourceType: file, sourceData: \"" NORVO_SOURCE_DIR
    "/tests/host/window/access/Face.qml\"}\n"
    "  other: {device: button, params: {mode: click}}\n"
    "connections:\n"
    "  - other.clicked -> step.click\n";

QWidget* partOf(const GuardedPanel& shown, const QString& id)
{
    const BaseWidget* const widget = shown.panel.widget(id);
    if (auto* const scene = widget->findChild<QQuickWidget*>()) {
        return scene;
    }
    return widget->focusProxy();
}

/// What the control shows, whatever it is.
QString stateOf(QWidget* part)
{
    if (const auto* const button = qobject_cast<QAbstractButton*>(part)) {
        return button->isChecked() ? "on" : "off";
    }
    if (const auto* const slider = qobject_cast<QSlider*>(part)) {
        return QString::number(slider->value());
    }
    if (const auto* const list = qobject_cast<QComboBox*>(part)) {
        return list->currentText();
    }
    if (const auto* const spin = qobject_cast<QDoubleSpinBox*>(part)) {
        return spin->text();
    }
    const auto* const line = qobject_cast<QLineEdit*>(part);
    return line ? line->text() : QString();
}

QuestionSheet* openQuestion()
{
    return qobject_cast<QuestionSheet*>(QApplication::activeModalWidget());
}

/// Presses Yes as a person does, once it can be pressed.
void sayYes(QuestionSheet& question)
{
    auto* const yes = question.findChild<QPushButton*>("yes");
    QTRY_VERIFY(yes->isEnabled());
    QTest::mouseClick(yes, Qt::LeftButton);
}

} // namespace

/// What asks before a control changes: nothing passes it.
class tst_Confirm : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        Accessibility::install(&GuardedControl::make);
    } // As the program does, before all widgets.
    void nothingPassesTheQuestion_data();
    void nothingPassesTheQuestion();
    void yesDoesWhatWasMeant_data();
    void yesDoesWhatWasMeant();
    void enterAndEscapeSayNo_data();
    void enterAndEscapeSayNo();
    void keyboardAloneSaysYes();
    void questionTimesOutToNo();
    void yesWaitsForTheSecondTapOfAHurriedHand();
    void questionsDoNotStack();
    void dragOffAButtonAsksNothing();
    void draggedSliderIsAskedForTheValueUnderTheFinger();
    void chosenItemOfTheOpenListIsAskedFor();
    void tapThatOpensTheListAsksNothing();
    void fieldIsAskedAfterItsDialog_data();
    void fieldIsAskedAfterItsDialog();
    void cancelledDialogAsksNothing();
    void stateThatCameMeanwhileIsNotTurnedRound();
    void wireIsNotAsked();
    void valuesByWireReachIt();
    void lockClosesTheQuestion();
    void lockedControlIsNotAsked();
};

void tst_Confirm::nothingPassesTheQuestion_data()
{
    QTest::addColumn<QString>("id");
    for (const char* id :
         {"pump", "step", "agree", "speed", "mode", "target", "rate", "name", "face"}) {
        QTest::newRow(id) << id;
    }
}

void tst_Confirm::nothingPassesTheQuestion()
{
    QFETCH(QString, id);
    GuardedPanel shown(kDevices);
    QWidget* const part = partOf(shown, id);
    QApplication::clipboard()->setText("5");
    const QString before = stateOf(part);
    shown.sent.clear();
    for (auto way = ways::all().cbegin(); way != ways::all().cend(); ++way) {
        const ModalDialog question([](QWidget&) {}); // Closed: No.
        (*way)(*part);
        if (QWidget* const popup = QApplication::activePopupWidget()) {
            popup->close();
        }
        QTest::qWait(30);
        QVERIFY2(shown.sent.isEmpty(), qPrintable(way.key() + ": " + shown.sent.join(", ")));
        QVERIFY2(stateOf(part) == before, qPrintable(way.key() + ": " + stateOf(part)));
    }
}

void tst_Confirm::yesDoesWhatWasMeant_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QString>("way");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("asked");
    QTest::addColumn<QString>("state");
    const QStringList pressing{"click", "touch", "Space"};
    for (const QString& way : pressing + QStringList{"mnemonic", "accessible toggle"}) {
        QTest::addRow("latched button, %s", qPrintable(way)) << "pump" << way << "Start pump 1?"
                                                             << "&Pump: on"
                                                             << "on";
    }
    for (const QString& way : pressing + QStringList{"accessible press"}) {
        QTest::addRow("button, %s", qPrintable(way)) << "step" << way << "Really operate Step?"
                                                     << "Step"
                                                     << "off";
    }
    for (const QString& way : pressing + QStringList{"accessible toggle"}) {
        QTest::addRow("check box, %s", qPrintable(way)) << "agree" << way << "Really operate Agree?"
                                                        << "Agree: on"
                                                        << "on";
    }
    const QString slider = "Really operate speed?";
    QTest::newRow("slider, Up") << "speed"
                                << "Up" << slider << "speed: 1"
                                << "1";
    QTest::newRow("slider, Page up") << "speed"
                                     << "Page up" << slider << "speed: 10"
                                     << "10";
    QTest::newRow("slider, End") << "speed"
                                 << "End" << slider << "speed: 10"
                                 << "10";
    QTest::newRow("slider, accessible") << "speed"
                                        << "accessible value" << slider << "speed: 7"
                                        << "7";
    const QString list = "Really operate mode?";
    QTest::newRow("list, Down") << "mode"
                                << "Down" << list << "mode: Fast"
                                << "Fast";
    QTest::newRow("list, End") << "mode"
                               << "End" << list << "mode: Full"
                               << "Full";
    QTest::newRow("list, letter") << "mode"
                                  << "letter" << list << "mode: Fast"
                                  << "Fast";
    QTest::newRow("spin box, Up") << "target"
                                  << "Up"
                                  << "Really operate Target?"
                                  << "Target: 0.10"
                                  << "0.10";
    QTest::newRow("scene, click") << "face"
                                  << "click"
                                  << "Really operate face?"
                                  << "face"
                                  << "";
    QTest::newRow("scene, touch") << "face"
                                  << "touch"
                                  << "Really operate face?"
                                  << "face"
                                  << "";
}

void tst_Confirm::yesDoesWhatWasMeant()
{
    QFETCH(QString, id);
    QFETCH(QString, way);
    GuardedPanel shown(kDevices);
    QWidget* const part = partOf(shown, id);
    shown.sent.clear();
    ways::all().value(way)(*part);
    QTRY_VERIFY(openQuestion());
    QuestionSheet& question = *openQuestion();
    QTEST(question.windowTitle(), "title");
    QTEST(question.findChild<QLabel*>("value")->text(), "asked");
    QCOMPARE(shown.sent, QStringList());
    const QSignalSpy confirmed(&shown.face, &AccessFace::confirmed);
    sayYes(question);
    QTRY_VERIFY(!shown.sent.isEmpty());
    QTEST(stateOf(part), "state");
    QCOMPARE(confirmed.size(), 1);
    QCOMPARE(confirmed[0][0].toString(), id);
    QTRY_VERIFY(!openQuestion());
}

void tst_Confirm::enterAndEscapeSayNo_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Enter") << int(Qt::Key_Return);
    QTest::newRow("Enter of the number pad") << int(Qt::Key_Enter);
    QTest::newRow("Escape") << int(Qt::Key_Escape);
    QTest::newRow("Space") << int(Qt::Key_Space);
}

void tst_Confirm::enterAndEscapeSayNo()
{
    QFETCH(int, key);
    GuardedPanel shown(kDevices);
    shown.sent.clear();
    ways::click(*partOf(shown, "pump"));
    QTRY_VERIFY(openQuestion());
    const QSignalSpy declined(&shown.face, &AccessFace::declined);
    QTest::qWait(QuestionSheet::kPauseMs + 50);
    QWidget* const focus = QApplication::focusWidget();
    QTest::keyClick(focus ? focus : openQuestion(), Qt::Key(key));
    QTRY_COMPARE(declined.size(), 1);
    QVERIFY(!openQuestion());
    QCOMPARE(shown.sent, QStringList());
}

void tst_Confirm::keyboardAloneSaysYes()
{
    GuardedPanel shown(kDevices);
    ways::all().value("Space")(*partOf(shown, "pump"));
    QTRY_VERIFY(openQuestion());
    auto* const yes = openQuestion()->findChild<QPushButton*>("yes");
    QTRY_VERIFY(yes->isEnabled());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(yes->hasFocus());
    QTest::keyClick(yes, Qt::Key_Return);
    QTRY_COMPARE(stateOf(partOf(shown, "pump")), QString("on"));
}

void tst_Confirm::questionTimesOutToNo()
{
    GuardedPanel shown(kDevices);
    shown.sent.clear();
    ways::click(*partOf(shown, "pump"));
    QTRY_VERIFY(openQuestion());
    QVERIFY(openQuestion()->findChild<QPushButton*>("no")->text().contains("30"));
    openQuestion()->setSecondsLeft(1);
    QTRY_VERIFY(!openQuestion());
    QCOMPARE(shown.sent, QStringList());
}

void tst_Confirm::yesWaitsForTheSecondTapOfAHurriedHand()
{
    GuardedPanel shown(kDevices);
    shown.sent.clear();
    ways::click(*partOf(shown, "pump"));
    QVERIFY(openQuestion());
    QTest::mouseClick(openQuestion()->findChild<QPushButton*>("yes"), Qt::LeftButton);
    QVERIFY(openQuestion());
    QCOMPARE(shown.sent, QStringList());
}

void tst_Confirm::questionsDoNotStack()
{
    GuardedPanel shown(kDevices);
    ways::click(*partOf(shown, "pump"));
    const QPointer<QuestionSheet> first(openQuestion());
    QVERIFY(first);
    ways::all().value("Space")(*partOf(shown, "agree"));
    ways::accessibleValue(*partOf(shown, "speed"));
    QCOMPARE(shown.window.findChildren<QuestionSheet*>().size(), 1);
    first->reject();
    QTRY_VERIFY(!openQuestion());
}

void tst_Confirm::dragOffAButtonAsksNothing()
{
    GuardedPanel shown(kDevices);
    QWidget* const part = partOf(shown, "step");
    QTest::mousePress(part, Qt::LeftButton);
    QTest::mouseRelease(part, Qt::LeftButton, {}, part->rect().bottomRight() + QPoint(50, 50));
    QTest::qWait(20);
    QVERIFY(!openQuestion());
}

void tst_Confirm::draggedSliderIsAskedForTheValueUnderTheFinger()
{
    GuardedPanel shown(kDevices);
    auto* const slider = shown.only<QSlider>("speed");
    shown.sent.clear();
    const QPoint from(5, slider->height() / 2); // On the handle.
    const QPoint to(slider->width() / 2, slider->height() / 2);
    QTest::mousePress(slider, Qt::LeftButton, {}, from);
    QMouseEvent move(QEvent::MouseMove, to, slider->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(slider, &move);
    QCOMPARE(slider->value(), 0);
    QTest::mouseRelease(slider, Qt::LeftButton, {}, to);
    QTRY_VERIFY(openQuestion());
    QCOMPARE(openQuestion()->findChild<QLabel*>("value")->text(), QString("speed: 5"));
    QCOMPARE(slider->value(), 0);
    QVERIFY(!slider->isSliderDown());
    QCOMPARE(shown.sent, QStringList());
    sayYes(*openQuestion());
    QTRY_COMPARE(slider->value(), 5);
    QCOMPARE(shown.sent.count("speed output(double)"), 1);
}

void tst_Confirm::chosenItemOfTheOpenListIsAskedFor()
{
    GuardedPanel shown(kDevices);
    auto* const list = shown.only<QComboBox>("mode");
    shown.sent.clear();
    QTest::mousePress(list, Qt::LeftButton);
    QVERIFY(list->view()->isVisible());
    const QRect item = list->view()->visualRect(list->model()->index(2, 0));
    QTest::mouseClick(list->view()->viewport(), Qt::LeftButton, {}, item.center());
    QTRY_VERIFY(openQuestion());
    QVERIFY(!list->view()->isVisible());
    QCOMPARE(openQuestion()->findChild<QLabel*>("value")->text(), QString("mode: Full"));
    QCOMPARE(list->currentIndex(), 0);
    QCOMPARE(shown.sent, QStringList());
    sayYes(*openQuestion());
    QTRY_COMPARE(list->currentText(), QString("Full"));
    QVERIFY(shown.sent.contains("mode output(int)"));

    // The same by keys alone, and a No.
    shown.sent.clear();
    QTest::keyClick(list, Qt::Key_F4);
    QVERIFY(list->view()->isVisible());
    QCOMPARE(list->currentIndex(), 2);
    QCOMPARE(list->view()->currentIndex().row(), 2);
    QTest::keyClick(list->view(), Qt::Key_Up);
    QCOMPARE(list->view()->currentIndex().row(), 1);
    QCOMPARE(list->currentIndex(), 2);
    QTest::keyClick(list->view(), Qt::Key_Return);
    QTRY_VERIFY(openQuestion());
    openQuestion()->reject();
    QCOMPARE(list->currentText(), QString("Full"));
    QCOMPARE(shown.sent, QStringList());
}

void tst_Confirm::tapThatOpensTheListAsksNothing()
{
    GuardedPanel shown(kDevices);
    auto* const list = shown.only<QComboBox>("mode");
    QTest::mousePress(list, Qt::LeftButton);
    const QPoint at =
        list->view()->viewport()->mapFromGlobal(list->mapToGlobal(list->rect().center()));
    QTest::mouseRelease(list->view()->viewport(), Qt::LeftButton, {}, at);
    QTest::qWait(20);
    QVERIFY(!openQuestion());
    QVERIFY(list->view()->isVisible());
    list->hidePopup();
}

void tst_Confirm::fieldIsAskedAfterItsDialog_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QString>("way");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("asked");
    QTest::addColumn<QString>("state");
    QTest::newRow("spin box, digit") << "target"
                                     << "digit"
                                     << "42"
                                     << "Target: 42.00"
                                     << "42.00";
    QTest::newRow("spin box, Enter") << "target"
                                     << "Enter"
                                     << "42"
                                     << "Target: 42.00"
                                     << "42.00";
    QTest::newRow("number, tap") << "rate"
                                 << "click"
                                 << "42"
                                 << "rate: 42"
                                 << "42";
    QTest::newRow("number, touch") << "rate"
                                   << "touch"
                                   << "42"
                                   << "rate: 42"
                                   << "42";
    QTest::newRow("number, digit") << "rate"
                                   << "digit"
                                   << "42"
                                   << "rate: 42"
                                   << "42";
    QTest::newRow("text, tap") << "name"
                               << "click"
                               << "abc"
                               << "name: abc"
                               << "abc";
    QTest::newRow("text, letter") << "name"
                                  << "letter"
                                  << "abc"
                                  << "name: abc"
                                  << "abc";
}

void tst_Confirm::fieldIsAskedAfterItsDialog()
{
    QFETCH(QString, id);
    QFETCH(QString, way);
    QFETCH(QString, typed);
    GuardedPanel shown(kDevices);
    QWidget* const part = partOf(shown, id);
    shown.sent.clear();
    const ModalDialog dialog([&typed](QWidget& opened) {
        auto* const display = opened.findChild<QLineEdit*>("display");
        QTest::keyClicks(display->isReadOnly() ? &opened : display, typed);
        QTest::mouseClick(opened.findChild<QWidget*>("ok"), Qt::LeftButton);
    });
    ways::all().value(way)(*part);
    QTRY_VERIFY(openQuestion());
    QTEST(openQuestion()->findChild<QLabel*>("value")->text(), "asked");
    QCOMPARE(shown.sent, QStringList());
    sayYes(*openQuestion());
    QTRY_VERIFY(!shown.sent.isEmpty());
    QTEST(stateOf(part), "state");
}

void tst_Confirm::cancelledDialogAsksNothing()
{
    GuardedPanel shown(kDevices);
    shown.sent.clear();
    const ModalDialog dialog([](QWidget&) {});
    ways::click(*partOf(shown, "rate"));
    QTRY_COMPARE(dialog.count(), 1);
    QTest::qWait(20);
    QVERIFY(!openQuestion());
    QCOMPARE(shown.sent, QStringList());
}

void tst_Confirm::stateThatCameMeanwhileIsNotTurnedRound()
{
    GuardedPanel shown(kDevices);
    ways::click(*partOf(shown, "pump"));
    QTRY_VERIFY(openQuestion());
    QVERIFY(QMetaObject::invokeMethod(shown.panel.device("pump"), "setToggled", Q_ARG(bool, true)));
    QCOMPARE(stateOf(partOf(shown, "pump")), QString("on"));
    shown.sent.clear();
    sayYes(*openQuestion());
    QTRY_VERIFY(!openQuestion());
    QCOMPARE(stateOf(partOf(shown, "pump")), QString("on"));
    QCOMPARE(shown.sent, QStringList());
}

void tst_Confirm::wireIsNotAsked()
{
    GuardedPanel shown(kDevices);
    shown.sent.clear();
    ways::click(*partOf(shown, "other"));
    QVERIFY(!openQuestion());
    QVERIFY(shown.sent.contains("step clicked()"));
}

void tst_Confirm::valuesByWireReachIt()
{
    GuardedPanel shown(kDevices);
    ways::click(*partOf(shown, "pump"));
    QTRY_VERIFY(openQuestion());
    QVERIFY(QMetaObject::invokeMethod(shown.panel.device("speed"), "input", Q_ARG(double, 3)));
    QCOMPARE(shown.only<QSlider>("speed")->value(), 3);
    openQuestion()->reject();
}

void tst_Confirm::lockClosesTheQuestion()
{
    GuardedPanel shown(GuardedPanel::pinsInFile() + kDevices);
    shown.unlock();
    shown.sent.clear();
    ways::click(*partOf(shown, "pump"));
    QTRY_VERIFY(openQuestion());
    shown.face.access()->lock();
    QVERIFY(!openQuestion());
    QCOMPARE(shown.sent, QStringList());
}

void tst_Confirm::lockedControlIsNotAsked()
{
    GuardedPanel shown(GuardedPanel::pinsInFile() + kDevices);
    QString opened;
    const ModalDialog dialog(
        [&opened](QWidget& shownDialog) { opened = shownDialog.objectName(); });
    ways::click(*partOf(shown, "pump"));
    QTRY_COMPARE(opened, QString("PinDialog"));
    QVERIFY(!openQuestion());
}

NORVO_TEST(tst_Confirm)
#include "tst_Confirm.moc"
