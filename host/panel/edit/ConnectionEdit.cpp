// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/edit/ConnectionEdit.h"

namespace norvo {

int ConnectionEdit::indexOf(const YamlEdit&, const ConnectionSetting&)
{
    return -1;
}

ConnectionEdit::Error ConnectionEdit::add(YamlEdit&, const QString&, const QString&)
{
    return TextError{{}, "not done yet"};
}

ConnectionEdit::Error ConnectionEdit::replace(YamlEdit&, int, const QString&, const QString&)
{
    return TextError{{}, "not done yet"};
}

ConnectionEdit::Error ConnectionEdit::remove(YamlEdit&, int)
{
    return TextError{{}, "not done yet"};
}

} // namespace norvo
