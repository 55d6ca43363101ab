// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/edit/PageEdit.h"

namespace norvo {

PageEdit::Error PageEdit::add(YamlEdit&, const QStringList&, const QString&)
{
    return TextError{{}, "not done yet"};
}

PageEdit::Error PageEdit::rename(YamlEdit&, const CellsById&, const QString&, const QString&)
{
    return TextError{{}, "not done yet"};
}

PageEdit::Error PageEdit::remove(YamlEdit&, const CellsById&, const QString&)
{
    return TextError{{}, "not done yet"};
}

PageEdit::Error PageEdit::order(YamlEdit&, const QStringList&)
{
    return TextError{{}, "not done yet"};
}

PageEdit::Error PageEdit::insertRow(YamlEdit&, const CellsById&, const QString&, int)
{
    return TextError{{}, "not done yet"};
}

PageEdit::Error PageEdit::insertColumn(YamlEdit&, const CellsById&, const QString&, int)
{
    return TextError{{}, "not done yet"};
}

PageEdit::Error PageEdit::removeRow(YamlEdit&, const CellsById&, const QString&, int)
{
    return TextError{{}, "not done yet"};
}

PageEdit::Error PageEdit::removeColumn(YamlEdit&, const CellsById&, const QString&, int)
{
    return TextError{{}, "not done yet"};
}

} // namespace norvo
