// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/edit/PortEdit.h"

namespace norvo {

PortEdit::Error PortEdit::add(YamlEdit&, const QString&, bool, const QString&, const QString&)
{
    return TextError{{}, "not done yet"};
}

PortEdit::Error PortEdit::setDefinition(YamlEdit&, const QString&, bool, const QString&,
                                        const QString&)
{
    return TextError{{}, "not done yet"};
}

PortEdit::Error PortEdit::rename(YamlEdit&, const QString&, bool, const QString&, const QString&)
{
    return TextError{{}, "not done yet"};
}

PortEdit::Error PortEdit::remove(YamlEdit&, const QString&, bool, const QString&)
{
    return TextError{{}, "not done yet"};
}

} // namespace norvo
