// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/dialogs/KeyboardLayouts.h"

namespace norvo {

const QVector<KeyboardLayout>& languageLayouts()
{
    // clang-format off
    static const QVector<KeyboardLayout> layouts{
        {"EN", "English",
         {"qwertyuiop-", "asdfghjkl'/", "zxcvbnm,."},
         {"QWERTYUIOP_", "ASDFGHJKL\"@", "ZXCVBNM!?"}},
        {QStringLiteral(u"БГ"), QStringLiteral(u"Български"),
         {QStringLiteral(u"явертъуиопш"), QStringLiteral(u"асдфгхйклщю"), QStringLiteral(u"зьцжбнмч.")},
         {QStringLiteral(u"ЯВЕРТЪУИОПШ"), QStringLiteral(u"АСДФГХЙКЛЩЮ"), QStringLiteral(u"ЗЬЦЖБНМЧ,")}},
    };
    // clang-format on
    return layouts;
}

const KeyboardLayout& symbolLayout()
{
    static const KeyboardLayout layout{"abc",
                                       "Symbols",
                                       {"!\"#$%&'()*+", ",-./:;<=>?@", "[\\]^_{|}~"},
                                       {QStringLiteral(u"°µΩ±×÷²³½¼¾"),
                                        QStringLiteral(u"€£¥§©®←→↑↓•"),
                                        QStringLiteral(u"`´¨«»¿¡–—")}};
    return layout;
}

} // namespace norvo
