// SPDX-License-Identifier: GPL-3.0-or-later

#include "InputFieldPress.h"
#include "TestMain.h"

#include <QtTest>

class tst_InputFieldDialogs : public QObject
{
    Q_OBJECT

private slots:
    void dialogOpensWhereItIsAskedFor_data();
    void dialogOpensWhereItIsAskedFor();
    void spinBoxIsFilledByTheKeypad();
    void doubleIsFilledByTheKeypad();
    void intIsFilledByTheKeypad();
    void stringIsFilledByTheKeyboard();
    void stringIsEmptiedByTheKeyboard();
    void keypadWritesEightDigitsBack();
    void longIntIsWrittenBackWithEightDigits();
    void cancelledDialogChangesNothing_data();
    void cancelledDialogChangesNothing();
    void filterLetsEveryEventThrough();
    void pressThatIsNoMouseEventOpensNothing();
    void widgetMayDieUnderItsDialog();
    void pressPassesEvenIfTheWidgetDiesUnderItsDialog();
    void fieldMayChangeItsTypeUnderItsDialog_data();
    void fieldMayChangeItsTypeUnderItsDialog();
};

void tst_InputFieldDialogs::dialogOpensWhereItIsAskedFor_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("numpad");
    QTest::addColumn<bool>("keyboard");
    QTest::addColumn<QString>("dialog");
    QTest::newRow("spin with the keypad") << "spin" << true << false << "NumpadDialog";
    QTest::newRow("spin with both") << "spin" << true << true << "NumpadDialog";
    QTest::newRow("spinWithTheKeyboardOnlyOpensNothing") << "spin" << false << true << "";
    QTest::newRow("spin with neither") << "spin" << false << false << "";
    QTest::newRow("double with the keypad") << "double" << true << false << "NumpadDialog";
    QTest::newRow("double with the keyboard only") << "double" << false << true << "";
    QTest::newRow("int with the keypad") << "int" << true << false << "NumpadDialog";
    QTest::newRow("int with the keyboard only") << "int" << false << true << "";
    QTest::newRow("string with the keyboard")
        << "string" << false << true << "ScreenKeyboardDialog";
    QTest::newRow("string with the keypad only") << "string" << true << false << "";
    QTest::newRow("unknown type with both") << "String" << true << true << "";
}

void tst_InputFieldDialogs::dialogOpensWhereItIsAskedFor()
{
    QFETCH(QString, type);
    QFETCH(bool, numpad);
    QFETCH(bool, keyboard);
    QFETCH(QString, dialog);
    const InputStand stand({{"type", type},
                            {"use screen numpad", numpad ? "true" : "false"},
                            {"use screen keyboard", keyboard ? "true" : "false"}});
    QString opened;
    QString title;
    const int count = press(stand, [&](QWidget& modal) {
        opened = modal.objectName();
        title = modal.windowTitle();
        QVERIFY(!modal.parentWidget());
    });
    QCOMPARE(opened, dialog);
    QCOMPARE(title, QString(dialog.isEmpty() ? "" : "Input value"));
    QCOMPARE(count, dialog.isEmpty() ? 0 : 1);
}

void tst_InputFieldDialogs::spinBoxIsFilledByTheKeypad()
{
    const InputStand stand(withDialogs({{"type", "spin"}}));
    Recorder recorder(stand.widget.get(), BaseWidget::staticMetaObject);
    QCOMPARE(press(stand, enter("0.75")), 1);
    QCOMPARE(stand.only<QDoubleSpinBox>()->value(), 0.75);
    QCOMPARE(recorder.take(), QStringList({"output(\"0.75\")", "output(0.75)", "output(0.75)"}));
    QCOMPARE(stand.device.getCurrentNumber(), 0.75);
}

void tst_InputFieldDialogs::doubleIsFilledByTheKeypad()
{
    const InputStand stand(withDialogs({{"type", "double"}, {"max", "10"}}));
    Recorder recorder(stand.widget.get(), BaseWidget::staticMetaObject);
    QCOMPARE(press(stand, enter("3.759")), 1);
    QCOMPARE(stand.only<QLineEdit>()->text(), QString("3.75"));
    QCOMPARE(recorder.take(), QStringList({"output(\"3.75\")", "output(3.75)"}));
    QCOMPARE(stand.device.getCurrentNumber(), 3.75);
}

void tst_InputFieldDialogs::intIsFilledByTheKeypad()
{
    const InputStand stand(withDialogs({{"type", "int"}, {"max", "100"}}));
    Recorder recorder(stand.widget.get(), BaseWidget::staticMetaObject);
    QCOMPARE(press(stand, enter("42")), 1);
    QCOMPARE(stand.only<QLineEdit>()->text(), QString("42"));
    QCOMPARE(recorder.take(), QStringList({"output(\"42\")", "output(42)"}));
    QCOMPARE(stand.device.getCurrentNumber(), 42.0);
}

void tst_InputFieldDialogs::stringIsFilledByTheKeyboard()
{
    const InputStand stand(withDialogs({{"type", "string"}}));
    Recorder recorder(stand.widget.get(), BaseWidget::staticMetaObject);
    const auto typeQ7 = [](QWidget& dialog) {
        tap(dialog, "key1-0");
        tap(dialog, "key7");
        tap(dialog, "ok");
    };
    QCOMPARE(press(stand, typeQ7), 1);
    QCOMPARE(stand.only<QLineEdit>()->text(), QString("q7"));
    QCOMPARE(recorder.take(), QStringList("output(\"q7\")"));
    QCOMPARE(stand.device.getCurrentString(), QString("q7"));
}

void tst_InputFieldDialogs::keypadWritesEightDigitsBack()
{
    InputStand stand(withDialogs({{"type", "double"}, {"max", "10"}, {"decimals", "9"}}));
    QCOMPARE(press(stand, enter("1.234567891")), 1);
    QCOMPARE(stand.only<QLineEdit>()->text(), QString("1.2345679"));
    stand.device.input(1.234567891); // six from the wiring
    QCOMPARE(stand.only<QLineEdit>()->text(), QString("1.23457"));
}

void tst_InputFieldDialogs::longIntIsWrittenBackWithEightDigits()
{
    const InputStand stand(withDialogs({{"type", "int"}, {"max", "1e9"}}));
    QCOMPARE(press(stand, enter("123456789")), 1);
    QCOMPARE(stand.only<QLineEdit>()->text(), QString("1.2345679e+08"));
}

void tst_InputFieldDialogs::cancelledDialogChangesNothing_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("text");
    QTest::newRow("spin") << "spin"
                          << "0.50";
    QTest::newRow("double") << "double"
                            << "0.5";
    QTest::newRow("int") << "int"
                         << "0.5";
    QTest::newRow("string") << "string"
                            << "0.5";
}

void tst_InputFieldDialogs::cancelledDialogChangesNothing()
{
    QFETCH(QString, type);
    InputStand stand(withDialogs({{"type", type}}));
    stand.device.input(0.5);
    QTest::keyClick(stand.only<QLineEdit>(), Qt::Key_End);
    QTest::keyClicks(stand.only<QLineEdit>(), "1");
    QTest::keyClick(stand.only<QLineEdit>(), Qt::Key_Backspace);
    const bool canUndo = stand.only<QLineEdit>()->isUndoAvailable();
    Recorder recorder(stand.widget.get(), BaseWidget::staticMetaObject);
    QCOMPARE(press(stand,
                   [](QWidget& dialog) {
                       tap(dialog, "key1");
                       cancel(dialog);
                   }),
             1);
    QTEST(stand.only<QLineEdit>()->text(), "text");
    if (type != "spin") { // whose text is written again when it is read
        QCOMPARE(stand.only<QLineEdit>()->isUndoAvailable(), canUndo);
    }
    QCOMPARE(recorder.take(), QStringList());
}

void tst_InputFieldDialogs::filterLetsEveryEventThrough()
{
    const InputStand stand(withDialogs({{"type", "double"}}));
    auto* const line = stand.only<QLineEdit>();
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
                                    QEvent::MouseButtonDblClick, QEvent::MouseMove}) {
        ModalDialog modal(cancel);
        QMouseEvent event(type, QPointF(5, 5), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QVERIFY(!stand.widget->eventFilter(line, &event));
        QCOMPARE(modal.count(), type == QEvent::MouseButtonPress ? 1 : 0);
    }
    stand.widget->show();
    line->setText("0.123");
    line->setCursorPosition(0);
    ModalDialog modal(cancel);
    QTest::mousePress(line, Qt::LeftButton, {}, QPoint(line->width() - 5, line->height() / 2));
    QCOMPARE(modal.count(), 1);
    QCOMPARE(line->cursorPosition(), 5); // the press has reached the editor too
}

void tst_InputFieldDialogs::pressThatIsNoMouseEventOpensNothing()
{
    const InputStand stand(withDialogs({{"type", "double"}}));
    ModalDialog modal(cancel);
    QEvent event(QEvent::MouseButtonPress);
    QVERIFY(!stand.widget->eventFilter(stand.only<QLineEdit>(), &event));
    QApplication::processEvents();
    QCOMPARE(modal.count(), 0);
}

void tst_InputFieldDialogs::widgetMayDieUnderItsDialog()
{
    for (const char* type : {"spin", "double", "int", "string"}) {
        InputStand stand(withDialogs({{"type", type}}));
        stand.widget->show();
        ModalDialog modal([&](QWidget& dialog) {
            stand.widget.reset();
            tap(dialog, "key1");
            tap(dialog, "ok");
        });
        QTest::mousePress(stand.widget->findChild<QLineEdit*>(), Qt::LeftButton);
        QCOMPARE(modal.count(), 1);
        QVERIFY(!stand.widget);
    }
}

void tst_InputFieldDialogs::pressPassesEvenIfTheWidgetDiesUnderItsDialog()
{
    for (const char* type : {"spin", "double"}) {
        InputStand stand(withDialogs({{"type", type}}));
        const QPointer<QLineEdit> line = stand.widget->findChild<QLineEdit*>();
        ModalDialog modal([&](QWidget& dialog) {
            stand.widget.reset();
            cancel(dialog);
        });
        QMouseEvent press(QEvent::MouseButtonPress, QPointF(5, 5), Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QVERIFY(!stand.widget->eventFilter(line, &press));
        QCOMPARE(modal.count(), 1);
        QVERIFY(!stand.widget);
        QVERIFY(line); // what the event goes to next
        QTRY_VERIFY(!line);
    }
}

void tst_InputFieldDialogs::fieldMayChangeItsTypeUnderItsDialog_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::newRow("spin to string") << "spin"
                                    << "string";
    QTest::newRow("double to spin") << "double"
                                    << "spin";
    QTest::newRow("int to spin") << "int"
                                 << "spin";
    QTest::newRow("string to spin") << "string"
                                    << "spin";
}

void tst_InputFieldDialogs::fieldMayChangeItsTypeUnderItsDialog()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    InputStand stand(withDialogs({{"type", before}, {"max", "10"}}));
    const Recorder recorder(stand.widget.get(), BaseWidget::staticMetaObject);
    const int opened = press(stand, [&](QWidget& dialog) {
        stand.device.setParam("type", after);
        QVERIFY(stand.device.initialise());
        stand.widget->initialise();
        tap(dialog, "key1");
        tap(dialog, "ok");
    });
    QCOMPARE(opened, 1);
    QCOMPARE(recorder.count(), 0); // the editor that was asked for is there no more
}

void tst_InputFieldDialogs::stringIsEmptiedByTheKeyboard()
{
    const InputStand stand(withDialogs({{"type", "string"}}));
    stand.only<QLineEdit>()->setText("q");
    const auto clearAll = [](QWidget& dialog) {
        dialog.findChild<QLineEdit*>()->clear();
        tap(dialog, "ok");
    };
    Recorder recorder(stand.widget.get(), BaseWidget::staticMetaObject);
    QCOMPARE(press(stand, clearAll), 1);
    QCOMPARE(stand.only<QLineEdit>()->text(), QString());
    QCOMPARE(recorder.take(), QStringList("output(\"\")"));
}

NORVO_TEST(tst_InputFieldDialogs)
#include "tst_InputFieldDialogs.moc"
