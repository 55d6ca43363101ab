// SPDX-License-Identifier: GPL-3.0-or-later

#include "KeyboardUse.h"
#include "TestMain.h"

#include <QtTest>

namespace {

QPushButton& keyWith(QWidget& dialog, const QString& face)
{
    const auto keys = dialog.findChildren<QPushButton*>();
    return **std::find_if(keys.cbegin(), keys.cend(), [&](const QPushButton* key) {
        return key->isVisible() && key->text() == face;
    });
}

QString variants(QWidget& dialog)
{
    QString shown;
    for (const QPushButton* key : dialog.findChildren<QPushButton*>()) {
        if (key->isVisible() && key->objectName().startsWith("variant")) {
            shown += key->text();
        }
    }
    return shown;
}

/// Presses the key and waits until its variants are seen.
void hold(QWidget& dialog, QPushButton& key)
{
    QTest::mousePress(&key, Qt::LeftButton);
    QTRY_VERIFY(!variants(dialog).isEmpty());
}

} // namespace

class tst_ScreenKeyboardVariants : public QObject
{
    Q_OBJECT

private slots:
    void variantsOfAHeldLetterAreShown_data();
    void variantsOfAHeldLetterAreShown();
    void tapOnAVariantTypesIt();
    void fingerThatSlidesOntoAVariantTypesIt();
    void tapBesideThemTypesNothing();
    void shortTapTypesTheLetter();
    void letterWithoutVariantsIsTyped();
    void variantsLieOverTheKeyInsideTheDialog();
    void heldLanguageKeyOffersAllLanguages();
};

void tst_ScreenKeyboardVariants::variantsOfAHeldLetterAreShown_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("letter");
    QTest::addColumn<bool>("isShifted");
    QTest::addColumn<QString>("shown");
    QTest::newRow("e") << "English"
                       << "e" << false << QStringLiteral(u"éèêëęě");
    QTest::newRow("n") << "English"
                       << "n" << false << QStringLiteral(u"ñńň");
    QTest::newRow("capital") << "English"
                             << "A" << true << QStringLiteral(u"ÁÀÂÄÃÅÆ");
    QTest::newRow("Greek") << QStringLiteral(u"Ελληνικά") << QStringLiteral(u"α") << false
                           << QStringLiteral(u"ά");
    QTest::newRow("Russian") << QStringLiteral(u"Русский") << QStringLiteral(u"е") << false
                             << QStringLiteral(u"ёѐ");
}

void tst_ScreenKeyboardVariants::variantsOfAHeldLetterAreShown()
{
    QFETCH(QString, language);
    QFETCH(QString, letter);
    QFETCH(bool, isShifted);
    enter("", [&](QWidget& dialog) {
        goRoundTo(dialog, language);
        if (isShifted) {
            tap(dialog, "keyShift");
        }
        hold(dialog, keyWith(dialog, letter));
        QTEST(variants(dialog), "shown");
        QTest::mouseRelease(&keyWith(dialog, letter), Qt::LeftButton);
        QTEST(variants(dialog), "shown"); // they stay for a tap
        QCOMPARE(display(dialog).text(), QString());
    });
}

void tst_ScreenKeyboardVariants::tapOnAVariantTypesIt()
{
    enter("", [](QWidget& dialog) {
        goRoundTo(dialog, "English");
        QPushButton& letter = keyWith(dialog, "e");
        hold(dialog, letter);
        QTest::mouseRelease(&letter, Qt::LeftButton);
        QTest::mouseClick(&keyWith(dialog, QStringLiteral(u"ê")), Qt::LeftButton);
        QCOMPARE(variants(dialog), QString());
        tapCharacters(dialog, "e");
        QCOMPARE(display(dialog).text(), QStringLiteral(u"êe"));
    });
}

void tst_ScreenKeyboardVariants::fingerThatSlidesOntoAVariantTypesIt()
{
    enter("", [](QWidget& dialog) {
        goRoundTo(dialog, "English");
        QPushButton& letter = keyWith(dialog, "n");
        hold(dialog, letter);
        QPushButton& variant = keyWith(dialog, QStringLiteral(u"ñ"));
        const QPoint place = letter.mapFromGlobal(variant.mapToGlobal(variant.rect().center()));
        QMouseEvent move(QEvent::MouseMove, place, letter.mapToGlobal(place), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&letter, &move);
        QVERIFY(variant.isDown());
        QTest::mouseRelease(&letter, Qt::LeftButton, Qt::NoModifier, place);
        QCOMPARE(variants(dialog), QString());
        QCOMPARE(display(dialog).text(), QStringLiteral(u"ñ"));
        tapCharacters(dialog, "n");
        QCOMPARE(display(dialog).text(), QStringLiteral(u"ñn"));
    });
}

void tst_ScreenKeyboardVariants::tapBesideThemTypesNothing()
{
    enter("", [](QWidget& dialog) {
        goRoundTo(dialog, "English");
        QPushButton& letter = keyWith(dialog, "n");
        hold(dialog, letter);
        QTest::mouseRelease(&letter, Qt::LeftButton);
        const QPoint place = key(dialog, "ok").geometry().center();
        QTest::mouseClick(dialog.childAt(place), Qt::LeftButton, Qt::NoModifier, place);
        QVERIFY(dialog.isVisible());
        QCOMPARE(variants(dialog), QString());
        QCOMPARE(display(dialog).text(), QString());
    });
}

void tst_ScreenKeyboardVariants::shortTapTypesTheLetter()
{
    enter("", [](QWidget& dialog) {
        goRoundTo(dialog, "English");
        tapCharacters(dialog, "e");
        QTest::qWait(600);
        QCOMPARE(variants(dialog), QString());
        QCOMPARE(display(dialog).text(), QString("e"));
    });
}

void tst_ScreenKeyboardVariants::letterWithoutVariantsIsTyped()
{
    enter("", [](QWidget& dialog) {
        goRoundTo(dialog, "English");
        QPushButton& letter = keyWith(dialog, "q");
        QTest::mousePress(&letter, Qt::LeftButton);
        QTest::qWait(600);
        QTest::mouseRelease(&letter, Qt::LeftButton);
        QCOMPARE(display(dialog).text(), QString("q"));
    });
}

void tst_ScreenKeyboardVariants::variantsLieOverTheKeyInsideTheDialog()
{
    enter("", [](QWidget& dialog) {
        goRoundTo(dialog, QStringLiteral(u"Français"));
        for (const char* face : {"a", "u"}) {
            QPushButton& letter = keyWith(dialog, face);
            hold(dialog, letter);
            for (const QPushButton* key : dialog.findChildren<QPushButton*>()) {
                if (key->isVisible() && key->objectName().startsWith("variant")) {
                    QVERIFY(dialog.rect().contains(key->geometry()));
                    QVERIFY(key->geometry().bottom() < letter.geometry().top());
                    QVERIFY(key->width() >= 48 && key->height() >= 48);
                }
            }
            QTest::mouseRelease(&letter, Qt::LeftButton);
            QTest::mouseClick(dialog.findChild<QWidget*>("variants"), Qt::LeftButton,
                              Qt::NoModifier, {3, 3});
        }
    });
}

void tst_ScreenKeyboardVariants::heldLanguageKeyOffersAllLanguages()
{
    enter("", [](QWidget& dialog) {
        goRoundTo(dialog, "English");
        hold(dialog, key(dialog, "keyLanguage"));
        QCOMPARE(variants(dialog), QStringLiteral(u"ENБГDEFRESРУΕΛ"));
        QTest::mouseRelease(&key(dialog, "keyLanguage"), Qt::LeftButton);
        QTest::mouseClick(&keyWith(dialog, QStringLiteral(u"РУ")), Qt::LeftButton);
        QCOMPARE(key(dialog, "keySpace").text(), QStringLiteral(u"Русский"));
        goRoundTo(dialog, "English");
    });
}

NORVO_TEST(tst_ScreenKeyboardVariants)
#include "tst_ScreenKeyboardVariants.moc"
