// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ModalDialog.h"

#include "norvo/ScreenKeyboardDialog.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

/// Ways to use a ScreenKeyboardDialog as a finger would.

using Check = std::function<bool(QString)>;

struct Answer
{
    QString text;
    bool ok = false;
    int dialogs = 0;
};

inline Answer enter(const QString& start, std::function<void(QWidget&)> use,
                    const Check& check = {}, const QString& hint = {}, const QString& reason = {})
{
    Answer answer;
    ModalDialog modal(std::move(use));
    answer.text = ScreenKeyboardDialog::getText(nullptr, "Input value", start, Qt::WindowFlags(),
                                                &answer.ok, hint, reason, check);
    answer.dialogs = modal.count();
    return answer;
}

inline QLineEdit& display(QWidget& dialog)
{
    return *dialog.findChild<QLineEdit*>("display");
}

inline QString reason(QWidget& dialog)
{
    return dialog.findChild<QLabel*>("reason")->text();
}

inline QPushButton& key(QWidget& dialog, const QString& name)
{
    return *dialog.findChild<QPushButton*>(name);
}

/// Taps the keys that show these characters.
inline void tapCharacters(QWidget& dialog, const QString& characters)
{
    for (const QString& character : characters.split("", Qt::SkipEmptyParts)) {
        const QString face = character == "&" ? "&&" : character;
        const auto keys = dialog.findChildren<QPushButton*>();
        const auto found = std::find_if(keys.cbegin(), keys.cend(), [&](const QPushButton* key) {
            return key->isVisible() && key->text() == face;
        });
        QVERIFY2(found != keys.cend(), qPrintable("no key shows " + character));
        QTest::mouseClick(*found, Qt::LeftButton);
    }
}

/// The faces of all keys for characters, row by row.
inline QStringList faces(QWidget& dialog)
{
    QStringList rows;
    for (int row = 1; row <= 3; ++row) {
        QString characters;
        for (int column = 0;; ++column) {
            const auto* const key =
                dialog.findChild<QPushButton*>(QString("key%1-%2").arg(row).arg(column));
            if (!key || !key->isVisible()) {
                break;
            }
            characters += key->text();
        }
        rows.append(characters.replace("&&", "&"));
    }
    return rows;
}

/// Taps the language key until the keyboard has the letters of that language.
inline void goRoundTo(QWidget& dialog, const QString& language)
{
    for (int i = 0; i < 10 && key(dialog, "keySpace").text() != language; ++i) {
        tap(dialog, "keyLanguage");
    }
    QCOMPARE(key(dialog, "keySpace").text(), language);
}

/// Rows of a test's data: the languages and the letters of their alphabets.
inline void keyboardLayouts()
{
    const QString latin("abcdefghijklmnopqrstuvwxyz");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("letters");
    QTest::newRow("en") << "English" << latin;
    QTest::newRow("bg") << QStringLiteral(u"Български")
                        << QStringLiteral(u"абвгдежзийклмнопрстуфхцчшщъьюя");
    QTest::newRow("de") << "Deutsch" << latin + QStringLiteral(u"äöüß");
    QTest::newRow("fr") << QStringLiteral(u"Français") << latin + QStringLiteral(u"éèàùç");
    QTest::newRow("es") << QStringLiteral(u"Español") << latin + QStringLiteral(u"ñ¿¡");
    QTest::newRow("ru") << QStringLiteral(u"Русский")
                        << QStringLiteral(u"абвгдеёжзийклмнопрстуфхцчшщъыьэюя");
    QTest::newRow("el") << QStringLiteral(u"Ελληνικά")
                        << QStringLiteral(u"αβγδεζηθικλμνξοπρσςτυφχψω");
}

inline bool isRed(QWidget& dialog)
{
    const QColor colour =
        display(dialog).grab().toImage().pixelColor(display(dialog).width() - 9, 30);
    return colour.red() > 150 && colour.green() < 80 && colour.blue() < 80;
}
