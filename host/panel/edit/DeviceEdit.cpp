// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/edit/DeviceEdit.h"

namespace norvo {

QString DeviceEdit::freeId(const YamlEdit&, const QString&)
{
    return {};
}

DeviceEdit::Error DeviceEdit::add(YamlEdit&, const NewDevice&, const QString&)
{
    return TextError{{}, "not done yet"};
}

DeviceEdit::Error DeviceEdit::remove(YamlEdit&, const QString&)
{
    return TextError{{}, "not done yet"};
}

DeviceEdit::Error DeviceEdit::rename(YamlEdit&, const QString&, const QString&)
{
    return TextError{{}, "not done yet"};
}

DeviceEdit::Error DeviceEdit::place(YamlEdit&, const QString&, const Cells&)
{
    return TextError{{}, "not done yet"};
}

DeviceEdit::Error DeviceEdit::setKey(YamlEdit&, const QString&, const QString&, const QString&)
{
    return TextError{{}, "not done yet"};
}

QByteArray DeviceEdit::copy(const YamlEdit&, const QStringList&)
{
    return {};
}

DeviceEdit::Error DeviceEdit::paste(YamlEdit&, const QByteArray&, const Cells&, QStringList&)
{
    return TextError{{}, "not done yet"};
}

} // namespace norvo
