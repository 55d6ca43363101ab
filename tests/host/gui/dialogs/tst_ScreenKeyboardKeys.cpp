// SPDX-License-Identifier: GPL-3.0-or-later

#include "KeyboardUse.h"
#include "TestMain.h"

#include <QScreen>
#include <QSignalSpy>
#include <QtTest>

class tst_ScreenKeyboardKeys : public QObject
{
    Q_OBJECT

private slots:
    void shiftIsForOneLetter();
    void capsStays();
    void heldKeyRepeatsOnlyWhatItEdits();
    void shiftTurnsCapsBack();
    void capsLeavesPunctuation();
    void digitsAndSpaceAreTyped();
    void cursorKeysAndBackspaceActAtTheCursor();
    void languageKeyChangesTheLettersAndIsRemembered();
    void symbolsTakeTurnsWithTheLetters();
    void languageKeyLeavesTheSymbols();
    void everySymbolIsTypedAsItIsShown();
    void keyIsAtLeast64PixelsEachWay();
};

void tst_ScreenKeyboardKeys::shiftIsForOneLetter()
{
    enter("", [](QWidget& dialog) {
        tap(dialog, "keyShift");
        QCOMPARE(faces(dialog), QStringList({"QWERTYUIOP_", "ASDFGHJKL\"@", "ZXCVBNM!?"}));
        tapCharacters(dialog, "P");
        QCOMPARE(faces(dialog), QStringList({"qwertyuiop-", "asdfghjkl'/", "zxcvbnm,."}));
        tapCharacters(dialog, "ump");
        QCOMPARE(display(dialog).text(), QString("Pump"));
        tap(dialog, "keyShift");
        tap(dialog, "keySpace");
        tapCharacters(dialog, "q");
        QCOMPARE(display(dialog).text(), QString("Pump q"));
    });
}

void tst_ScreenKeyboardKeys::capsStays()
{
    enter("", [](QWidget& dialog) {
        tap(dialog, "keyCaps");
        tapCharacters(dialog, "PUMP");
        tap(dialog, "keyCaps");
        tapCharacters(dialog, "s");
        QCOMPARE(display(dialog).text(), QString("PUMPs"));
    });
}

void tst_ScreenKeyboardKeys::heldKeyRepeatsOnlyWhatItEdits()
{
    enter("abcdef", [](QWidget& dialog) {
        const auto hold = [&dialog](const QString& name) {
            QPushButton& held = key(dialog, name);
            held.setAutoRepeatDelay(1);
            held.setAutoRepeatInterval(1);
            QTest::mousePress(&held, Qt::LeftButton);
        };
        hold("keyBackspace");
        QTRY_COMPARE(display(dialog).text(), QString());
        QTest::mouseRelease(&key(dialog, "keyBackspace"), Qt::LeftButton);
        for (const char* name : {"keyCaps", "keyShift"}) {
            const QSignalSpy changes(&key(dialog, name), &QPushButton::toggled);
            hold(name);
            QTest::qWait(50);
            QTest::mouseRelease(&key(dialog, name), Qt::LeftButton);
            QCOMPARE(changes.count(), 1);
        }
    });
}

void tst_ScreenKeyboardKeys::shiftTurnsCapsBack()
{
    enter("", [](QWidget& dialog) {
        tap(dialog, "keyCaps");
        tap(dialog, "keyShift");
        tapCharacters(dialog, "p");
        tapCharacters(dialog, "H");
        QCOMPARE(display(dialog).text(), QString("pH"));
    });
}

void tst_ScreenKeyboardKeys::capsLeavesPunctuation()
{
    enter("", [](QWidget& dialog) {
        tap(dialog, "keyCaps");
        QCOMPARE(faces(dialog), QStringList({"QWERTYUIOP-", "ASDFGHJKL'/", "ZXCVBNM,."}));
    });
}

void tst_ScreenKeyboardKeys::digitsAndSpaceAreTyped()
{
    enter("", [](QWidget& dialog) {
        for (int digit = 0; digit <= 9; ++digit) {
            tap(dialog, QString("key%1").arg(digit));
        }
        tap(dialog, "keySpace");
        QCOMPARE(display(dialog).text(), QString("0123456789 "));
    });
}

void tst_ScreenKeyboardKeys::cursorKeysAndBackspaceActAtTheCursor()
{
    enter("abc", [](QWidget& dialog) {
        tap(dialog, "keyLeft");
        tap(dialog, "keyLeft");
        tap(dialog, "keyBackspace");
        QCOMPARE(display(dialog).text(), QString("bc"));
        tap(dialog, "keyRight");
        tapCharacters(dialog, "x");
        QCOMPARE(display(dialog).text(), QString("bxc"));
    });
}

void tst_ScreenKeyboardKeys::languageKeyChangesTheLettersAndIsRemembered()
{
    enter("", [](QWidget& dialog) {
        QCOMPARE(key(dialog, "keySpace").text(), QString("English"));
        QCOMPARE(key(dialog, "keyLanguage").text(), QStringLiteral(u"БГ"));
        tap(dialog, "keyLanguage");
        tapCharacters(dialog, QStringLiteral(u"помпа"));
        QCOMPARE(display(dialog).text(), QStringLiteral(u"помпа"));
    });
    enter("", [](QWidget& dialog) {
        QCOMPARE(key(dialog, "keySpace").text(), QStringLiteral(u"Български"));
        tap(dialog, "keyCaps");
        QCOMPARE(faces(dialog),
                 QStringList({QStringLiteral(u"ЯВЕРТЪУИОПШ"), QStringLiteral(u"АСДФГХЙКЛЩЮ"),
                              QStringLiteral(u"ЗЬЦЖБНМЧ.")}));
        goRoundTo(dialog, "English");
        QCOMPARE(faces(dialog).first(), QString("QWERTYUIOP-"));
    });
}

void tst_ScreenKeyboardKeys::symbolsTakeTurnsWithTheLetters()
{
    enter("", [](QWidget& dialog) {
        tap(dialog, "keySymbols");
        QCOMPARE(key(dialog, "keySymbols").text(), QString("abc"));
        tapCharacters(dialog, "&[");
        tap(dialog, "keySymbols");
        QCOMPARE(key(dialog, "keySymbols").text(), QString("#+="));
        tapCharacters(dialog, "a");
        QCOMPARE(display(dialog).text(), QString("&[a"));
    });
}

void tst_ScreenKeyboardKeys::languageKeyLeavesTheSymbols()
{
    enter("", [](QWidget& dialog) {
        tap(dialog, "keySymbols");
        tap(dialog, "keyLanguage");
        QVERIFY(!key(dialog, "keySymbols").isChecked());
        QCOMPARE(faces(dialog).first(), QStringLiteral(u"явертъуиопш"));
        goRoundTo(dialog, "English"); // as it was: the language stays for the dialogs to come
        QCOMPARE(faces(dialog).first(), QString("qwertyuiop-"));
    });
}

void tst_ScreenKeyboardKeys::everySymbolIsTypedAsItIsShown()
{
    enter("", [](QWidget& dialog) {
        tap(dialog, "keySymbols");
        const QString plain = faces(dialog).join("");
        QCOMPARE(plain.size(), 31);
        for (const QChar symbol : QString("!\"#$%&'()*+,-./:;<=>?@[\\]^_{|}~")) {
            QVERIFY2(plain.count(symbol) == 1, qPrintable(QString(symbol)));
        }
        tapCharacters(dialog, plain);
        QCOMPARE(display(dialog).text(), plain);
        tap(dialog, "keyShift");
        tapCharacters(dialog, QString(QChar(0xb0)));
        QCOMPARE(display(dialog).text(), plain + QChar(0xb0));
    });
}

void tst_ScreenKeyboardKeys::keyIsAtLeast64PixelsEachWay()
{
    int keys = 0;
    enter("", [&](QWidget& dialog) {
        QVERIFY(dialog.minimumSizeHint().width() <= 800);
        QVERIFY(dialog.minimumSizeHint().height() <= 480);
        QVERIFY(dialog.width() <= dialog.screen()->availableSize().width());
        dialog.resize(dialog.minimumSizeHint());
        const auto buttons = dialog.findChildren<QPushButton*>();
        for (const QPushButton* button : buttons) {
            QVERIFY2(button->width() >= 64 && button->height() >= 64,
                     qPrintable(button->objectName()));
            QVERIFY(dialog.rect().contains(button->geometry()));
            QVERIFY(!button->text().isEmpty() || !button->accessibleName().isEmpty());
            ++keys;
        }
    });
    QCOMPARE(keys, 11 + 31 + 2 + 7);
}

NORVO_TEST(tst_ScreenKeyboardKeys)
#include "tst_ScreenKeyboardKeys.moc"
