// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/dialogs/KeyboardLayouts.h"

#include <QCoreApplication>
#include <QHash>
#include <QLocale>
#include <QVariant>

namespace norvo {

// clang-format off
const QVector<KeyboardLayout>& KeyboardLayouts::languages()
{
    static const QVector<KeyboardLayout> layouts{
        {"en", "EN", "English",
         {"qwertyuiop-", "asdfghjkl'/", "zxcvbnm,."},
         {"QWERTYUIOP_", "ASDFGHJKL\"@", "ZXCVBNM!?"}},
        {"bg", QStringLiteral(u"БГ"), QStringLiteral(u"Български"),
         {QStringLiteral(u"явертъуиопш"), QStringLiteral(u"асдфгхйклщю"), QStringLiteral(u"зьцжбнмч.")},
         {QStringLiteral(u"ЯВЕРТЪУИОПШ"), QStringLiteral(u"АСДФГХЙКЛЩЮ"), QStringLiteral(u"ЗЬЦЖБНМЧ,")}},
        {"de", "DE", "Deutsch",
         {QStringLiteral(u"qwertzuiopüß"), QStringLiteral(u"asdfghjklöä"), "yxcvbnm,.-"},
         {QStringLiteral(u"QWERTZUIOPÜ?"), QStringLiteral(u"ASDFGHJKLÖÄ"), "YXCVBNM;:_"}},
        {"fr", "FR", QStringLiteral(u"Français"),
         {QStringLiteral(u"azertyuiopéè"), QStringLiteral(u"qsdfghjklmàù"), QStringLiteral(u"wxcvbnç',.-")},
         {QStringLiteral(u"AZERTYUIOPÉÈ"), QStringLiteral(u"QSDFGHJKLMÀÙ"), QStringLiteral(u"WXCVBNÇ\"?!_")}},
        {"es", "ES", QStringLiteral(u"Español"),
         {QStringLiteral(u"qwertyuiop¡"), QStringLiteral(u"asdfghjklñ¿"), "zxcvbnm,.-"},
         {"QWERTYUIOP!", QStringLiteral(u"ASDFGHJKLÑ?"), "ZXCVBNM;:_"}},
        {"ru", QStringLiteral(u"РУ"), QStringLiteral(u"Русский"),
         {QStringLiteral(u"йцукенгшщзхъ"), QStringLiteral(u"фывапролджэё"), QStringLiteral(u"ячсмитьбю.-")},
         {QStringLiteral(u"ЙЦУКЕНГШЩЗХЪ"), QStringLiteral(u"ФЫВАПРОЛДЖЭЁ"), QStringLiteral(u"ЯЧСМИТЬБЮ,_")}},
        {"el", QStringLiteral(u"ΕΛ"), QStringLiteral(u"Ελληνικά"),
         {QStringLiteral(u"ςερτυθιοπ'"), QStringLiteral(u"ασδφγηξκλ;"), QStringLiteral(u"ζχψωβνμ,.-")},
         {QStringLiteral(u"ΣΕΡΤΥΘΙΟΠ\""), QStringLiteral(u"ΑΣΔΦΓΗΞΚΛ:"), QStringLiteral(u"ΖΧΨΩΒΝΜ!?_")}},
    };
    return layouts;
}

const KeyboardLayout& KeyboardLayouts::symbols()
{
    static const KeyboardLayout layout{
        "", "abc", "Symbols",
        {"!\"#$%&'()*+", ",-./:;<=>?@", "[\\]^_{|}~"},
        {QStringLiteral(u"°µΩ±×÷²³½¼¾"), QStringLiteral(u"€£¥§©®←→↑↓•"), QStringLiteral(u"`´¨«»¿¡–—")}};
    return layout;
}

QString KeyboardLayouts::variants(QChar letter)
{
    static const QHash<QChar, QString> table{
        {'a', QStringLiteral(u"áàâäãåæ")}, {'c', QStringLiteral(u"çćč")},
        {'d', QStringLiteral(u"ďðđ")},     {'e', QStringLiteral(u"éèêëęě")},
        {'g', QStringLiteral(u"ğ")},       {'i', QStringLiteral(u"íìîï")},
        {'l', QStringLiteral(u"ł")},       {'n', QStringLiteral(u"ñńň")},
        {'o', QStringLiteral(u"óòôöõøœ")}, {'r', QStringLiteral(u"ř")},
        {'s', QStringLiteral(u"śšş")},     {'t', QStringLiteral(u"ťþ")},
        {'u', QStringLiteral(u"úùûüů")},   {'y', QStringLiteral(u"ýÿ")},
        {'z', QStringLiteral(u"źžż")},     {u'ß', QStringLiteral(u"ẞ")},
        {u'е', QStringLiteral(u"ёѐ")},     {u'и', QStringLiteral(u"ѝі")},
        {u'ь', QStringLiteral(u"ъ")},      {u'α', QStringLiteral(u"ά")},
        {u'ε', QStringLiteral(u"έ")},      {u'η', QStringLiteral(u"ή")},
        {u'ι', QStringLiteral(u"ίϊΐ")},    {u'ο', QStringLiteral(u"ό")},
        {u'υ', QStringLiteral(u"ύϋΰ")},    {u'ω', QStringLiteral(u"ώ")},
    };
    QString found = table.value(letter.toLower());
    if (letter.isUpper()) {
        for (QChar& variant : found) {
            variant = variant.toUpper(); // a single one, or itself where it has none
        }
    }
    return found;
}
// clang-format on

int KeyboardLayouts::preferred()
{
    const QString asked = QCoreApplication::instance()->property("norvoLanguage").toString();
    for (const QString& name : {asked, QLocale::system().name()}) {
        for (int i = 0; i < languages().size(); ++i) {
            if (languages()[i].language == name.left(2)) {
                return i;
            }
        }
    }
    return 0;
}

} // namespace norvo
