// SPDX-License-Identifier: GPL-3.0-or-later

#include "KeyboardUse.h"
#include "TestMain.h"

#include <QtTest>

namespace {

constexpr double kLeastMm = 12.7;

} // namespace

class tst_ScreenKeyboardLayouts : public QObject
{
    Q_OBJECT

private slots:
    void firstLanguageIsThePanels_data();
    void firstLanguageIsThePanels();
    void noLetterOfTheAlphabetIsMissing_data() { layouts(); }
    void noLetterOfTheAlphabetIsMissing();
    void shiftGivesTheCapital_data() { layouts(); }
    void shiftGivesTheCapital();
    void whatIsShownIsTyped_data() { layouts(); }
    void whatIsShownIsTyped();
    void keyIsLargeEnoughForAFinger_data() { layouts(); }
    void keyIsLargeEnoughForAFinger();
    void noCharacterHasTwoKeys_data() { layouts(); }
    void noCharacterHasTwoKeys();
    void languageChosenStaysWhateverThePanelsIs();

private:
    static void layouts();
};

void tst_ScreenKeyboardLayouts::layouts()
{
    keyboardLayouts();
}

void tst_ScreenKeyboardLayouts::firstLanguageIsThePanels_data()
{
    QTest::addColumn<QString>("asked");
    QTest::addColumn<QString>("name");
    QTest::newRow("language") << "de"
                              << "Deutsch";
    QTest::newRow("language and country") << "fr_CA" << QStringLiteral(u"Français");
    QTest::newRow("Greek") << "el" << QStringLiteral(u"Ελληνικά");
    QTest::newRow("without a layout") << "fi"
                                      << "English";
    QTest::newRow("none") << ""
                          << "English";
}

void tst_ScreenKeyboardLayouts::firstLanguageIsThePanels()
{
    QFETCH(QString, asked);
    qApp->setProperty("norvoLanguage", asked);
    enter("", [](QWidget& dialog) { QTEST(key(dialog, "keySpace").text(), "name"); });
    qApp->setProperty("norvoLanguage", QVariant());
}

void tst_ScreenKeyboardLayouts::noLetterOfTheAlphabetIsMissing()
{
    QFETCH(QString, language);
    QFETCH(QString, letters);
    enter("", [&](QWidget& dialog) {
        goRoundTo(dialog, language);
        tapCharacters(dialog, letters);
        QCOMPARE(display(dialog).text(), letters);
    });
}

void tst_ScreenKeyboardLayouts::shiftGivesTheCapital()
{
    QFETCH(QString, language);
    enter("", [&](QWidget& dialog) {
        goRoundTo(dialog, language);
        const QStringList plain = faces(dialog);
        tap(dialog, "keyShift");
        const QStringList shifted = faces(dialog);
        int letters = 0;
        for (int row = 0; row < 3; ++row) {
            QCOMPARE(shifted[row].size(), plain[row].size());
            for (int column = 0; column < plain[row].size(); ++column) {
                const QChar key = plain[row][column];
                const QChar capital = key.toUpper();
                QVERIFY2(capital == key || shifted[row][column] == capital, qPrintable(plain[row]));
                QVERIFY2(shifted[row][column] != key, qPrintable(plain[row]));
                letters += capital != key;
            }
        }
        QVERIFY(letters >= 25);
    });
}

void tst_ScreenKeyboardLayouts::whatIsShownIsTyped()
{
    QFETCH(QString, language);
    enter("", [&](QWidget& dialog) {
        goRoundTo(dialog, language);
        tap(dialog, "keyCaps");
        const QString capitals = faces(dialog).join("");
        tapCharacters(dialog, capitals);
        QCOMPARE(display(dialog).text(), capitals);
        display(dialog).clear();
        tap(dialog, "keyCaps");
        for (const QString& name : {QString("key1-1"), QString("key2-8"), QString("key3-6")}) {
            tap(dialog, "keyShift");
            const QString shown = key(dialog, name).text();
            tap(dialog, name);
            QCOMPARE(display(dialog).text().right(1), shown);
        }
    });
}

void tst_ScreenKeyboardLayouts::keyIsLargeEnoughForAFinger()
{
    QFETCH(QString, language);
    enter("", [&](QWidget& dialog) {
        const int least = qCeil(kLeastMm * 96 / 25.4);
        goRoundTo(dialog, language);
        QCoreApplication::processEvents();
        for (const QSize& screen : {QSize(800, 480), QSize(1024, 600)}) {
            dialog.resize(screen);
            QCoreApplication::processEvents();
            QCOMPARE(dialog.size(), screen); // it does not need more
            const auto buttons = dialog.findChildren<QPushButton*>();
            for (const QPushButton* button : buttons) {
                QVERIFY2(!button->isVisible() ||
                             (button->width() >= least && button->height() >= least &&
                              dialog.rect().contains(button->geometry())),
                         qPrintable(button->objectName()));
            }
        }
    });
}

void tst_ScreenKeyboardLayouts::noCharacterHasTwoKeys()
{
    QFETCH(QString, language);
    enter("", [&](QWidget& dialog) {
        goRoundTo(dialog, language);
        const QString characters = faces(dialog).join("");
        for (const QChar character : characters) {
            QVERIFY2(characters.count(character) == 1, qPrintable(QString(character)));
        }
    });
}

void tst_ScreenKeyboardLayouts::languageChosenStaysWhateverThePanelsIs()
{
    enter("", [](QWidget& dialog) { goRoundTo(dialog, QStringLiteral(u"Русский")); });
    qApp->setProperty("norvoLanguage", "de");
    enter("", [](QWidget& dialog) {
        QCOMPARE(key(dialog, "keySpace").text(), QStringLiteral(u"Русский"));
    });
    qApp->setProperty("norvoLanguage", QVariant());
}

NORVO_TEST(tst_ScreenKeyboardLayouts)
#include "tst_ScreenKeyboardLayouts.moc"
