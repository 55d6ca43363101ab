// SPDX-License-Identifier: GPL-3.0-or-later

#include "KeyboardUse.h"
#include "TestMain.h"

#include <QtTest>

class tst_ScreenKeyboardDialog : public QObject
{
    Q_OBJECT

private slots:
    void tappedTextIsReturned();
    void startTextStaysAndIsAddedTo();
    void checkEnablesOk();
    void hintAndReasonAreShown();
    void cancelReturnsTheStart_data();
    void cancelReturnsTheStart();
    void physicalKeyboardServes();
    void enterWaitsForTheCheckToo();
    void nullOkIsAllowed();
    void parentThatDiesCancels();
};

void tst_ScreenKeyboardDialog::tappedTextIsReturned()
{
    const Answer answer = enter("", [](QWidget& dialog) {
        QCOMPARE(dialog.windowTitle(), QString("Input value"));
        tapCharacters(dialog, "pump-");
        QCOMPARE(display(dialog).text(), QString("pump-"));
        tap(dialog, "ok");
    });
    QCOMPARE(answer.dialogs, 1);
    QVERIFY(answer.ok);
    QCOMPARE(answer.text, QString("pump-"));
}

void tst_ScreenKeyboardDialog::startTextStaysAndIsAddedTo()
{
    const Answer answer = enter("pump", [](QWidget& dialog) {
        tapCharacters(dialog, "s");
        tap(dialog, "ok");
    });
    QCOMPARE(answer.text, QString("pumps"));
}

void tst_ScreenKeyboardDialog::checkEnablesOk()
{
    const Check longerThanTwo = [](const QString& text) { return text.size() > 2; };
    const Answer answer = enter(
        "ab",
        [](QWidget& dialog) {
            QVERIFY(!key(dialog, "ok").isEnabled());
            QVERIFY(isRed(dialog));
            QCOMPARE(reason(dialog), QString("This text is not accepted"));
            tap(dialog, "ok");
            QVERIFY(dialog.isVisible());
            tapCharacters(dialog, "c");
            QVERIFY(key(dialog, "ok").isEnabled());
            QVERIFY(!isRed(dialog));
            QCOMPARE(reason(dialog), QString());
            tap(dialog, "ok");
        },
        longerThanTwo);
    QVERIFY(answer.ok);
    QCOMPARE(answer.text, QString("abc"));
}

void tst_ScreenKeyboardDialog::hintAndReasonAreShown()
{
    const Answer answer = enter(
        "",
        [](QWidget& dialog) {
            QCOMPARE(display(dialog).placeholderText(), QString("Name of the pump"));
            QCOMPARE(reason(dialog), QString("A name, please"));
        },
        [](const QString& text) { return !text.isEmpty(); }, "Name of the pump", "A name, please");
    QCOMPARE(answer.dialogs, 1);
    // The hint is there for one who deletes the text that stood.
    enter(
        "pump", [](QWidget& dialog) { QCOMPARE(display(dialog).placeholderText(), QString("h")); },
        {}, "h");
}

void tst_ScreenKeyboardDialog::cancelReturnsTheStart_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("key") << "key";
    QTest::newRow("Escape") << "escape";
    QTest::newRow("window") << "window";
}

void tst_ScreenKeyboardDialog::cancelReturnsTheStart()
{
    QFETCH(QString, way);
    const Answer answer = enter("pump", [&](QWidget& dialog) {
        tapCharacters(dialog, "s");
        if (way == "key") {
            tap(dialog, "cancel");
        } else if (way == "escape") {
            QTest::keyClick(&display(dialog), Qt::Key_Escape);
        } else {
            dialog.close();
        }
        QVERIFY(!dialog.isVisible());
    });
    QVERIFY(!answer.ok);
    QCOMPARE(answer.text, QString("pump"));
}

void tst_ScreenKeyboardDialog::physicalKeyboardServes()
{
    const Answer answer = enter("", [](QWidget& dialog) {
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QCOMPARE(QApplication::focusWidget(), &display(dialog));
        QTest::keyClicks(QApplication::focusWidget(), "Pumq 3");
        tap(dialog, "keyLeft"); // a finger in between does not take the focus
        tap(dialog, "keyLeft");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backspace);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab); // nor does the keyboard
        QTest::keyClicks(QApplication::focusWidget(), "p");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QVERIFY(!dialog.isVisible());
    });
    QVERIFY(answer.ok);
    QCOMPARE(answer.text, QString("Pump 3"));
}

void tst_ScreenKeyboardDialog::enterWaitsForTheCheckToo()
{
    const Answer answer = enter(
        "ab",
        [](QWidget& dialog) {
            QTest::keyClick(&display(dialog), Qt::Key_Return);
            QVERIFY(dialog.isVisible());
        },
        [](const QString&) { return false; });
    QVERIFY(!answer.ok);
}

void tst_ScreenKeyboardDialog::nullOkIsAllowed()
{
    ModalDialog modal([](QWidget& dialog) {
        tapCharacters(dialog, "a");
        tap(dialog, "ok");
    });
    QCOMPARE(ScreenKeyboardDialog::getText(nullptr, "", "", Qt::WindowFlags(), nullptr),
             QString("a"));
}

void tst_ScreenKeyboardDialog::parentThatDiesCancels()
{
    auto* const parent = new QWidget;
    bool ok = true;
    ModalDialog modal([&](QWidget&) { delete parent; });
    QCOMPARE(ScreenKeyboardDialog::getText(parent, "", "pump", Qt::WindowFlags(), &ok),
             QString("pump"));
    QVERIFY(!ok);
    QCOMPARE(modal.count(), 1);
}

NORVO_TEST(tst_ScreenKeyboardDialog)
#include "tst_ScreenKeyboardDialog.moc"
