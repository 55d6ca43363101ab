// SPDX-License-Identifier: GPL-3.0-or-later

#include "AskedPanel.h"
#include "TestMain.h"
#include "host/window/access/GuardedControl.h"

using namespace norvo;
using namespace asked;

/// What is asked of a value that is drawn, chosen or typed.
class tst_ConfirmEntry : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        Accessibility::install(&GuardedControl::make);
    } // As the program does, before all widgets.
    void dragOffAButtonAsksNothing();
    void draggedSliderIsAskedForTheValueUnderTheFinger();
    void chosenItemOfTheOpenListIsAskedFor();
    void tapThatOpensTheListAsksNothing();
    void fieldIsAskedAfterItsDialog_data();
    void fieldIsAskedAfterItsDialog();
    void cancelledDialogAsksNothing();
    void textThatAScreenReaderReplacesIsAskedFor();
};

void tst_ConfirmEntry::dragOffAButtonAsksNothing()
{
    GuardedPanel shown(kDevices);
    QWidget* const part = shown.part("step");
    QTest::mousePress(part, Qt::LeftButton);
    QTest::mouseRelease(part, Qt::LeftButton, {}, part->rect().bottomRight() + QPoint(50, 50));
    QTest::qWait(20);
    QVERIFY(!openQuestion());
}

void tst_ConfirmEntry::draggedSliderIsAskedForTheValueUnderTheFinger()
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

void tst_ConfirmEntry::chosenItemOfTheOpenListIsAskedFor()
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

void tst_ConfirmEntry::tapThatOpensTheListAsksNothing()
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

void tst_ConfirmEntry::fieldIsAskedAfterItsDialog_data()
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

void tst_ConfirmEntry::fieldIsAskedAfterItsDialog()
{
    QFETCH(QString, id);
    QFETCH(QString, way);
    QFETCH(QString, typed);
    GuardedPanel shown(kDevices);
    QWidget* const part = shown.part(id);
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

void tst_ConfirmEntry::cancelledDialogAsksNothing()
{
    GuardedPanel shown(kDevices);
    shown.sent.clear();
    const ModalDialog dialog([](QWidget&) {});
    ways::click(*shown.part("rate"));
    QTRY_COMPARE(dialog.count(), 1);
    QTest::qWait(20);
    QVERIFY(!openQuestion());
    QCOMPARE(shown.sent, QStringList());
}

void tst_ConfirmEntry::textThatAScreenReaderReplacesIsAskedFor()
{
    GuardedPanel shown(kDevices);
    auto* const line = shown.only<QLineEdit>("name");
    auto* const text = QAccessible::queryAccessibleInterface(line)->editableTextInterface();
    text->replaceText(0, 0, "new");
    QTRY_VERIFY(openQuestion());
    QCOMPARE(line->text(), QString());
    sayYes(*openQuestion());
    QTRY_COMPARE(line->text(), QString("new"));
}

NORVO_TEST(tst_ConfirmEntry)
#include "tst_ConfirmEntry.moc"
