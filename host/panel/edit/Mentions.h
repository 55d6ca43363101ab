// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/YamlEdit.h"

#include <QVector>

#include <functional>

namespace norvo {

/// One "device.method" in a panel file: an end of a connection, the signal of an alarm, or one that
/// is recorded.
struct Mention
{
    YamlEdit::Path entry; ///< What goes when the device does.
    YamlEdit::Path text;  ///< That holds it; the path of the key where it is one.
    bool isKey = false;
    bool isSource = true; ///< False for the target of a connection.
    QString whole;        ///< The text.
    int deviceAt = 0;     ///< In the text.
    QString device;
    int methodAt = 0;
    QString method; ///< A name, without a signature.
};

/// Edits of all that names devices, in templates excepted.
namespace Mentions {

using Error = YamlEdit::Error;
using Filter = std::function<bool(const Mention&)>;

/// In the order of the file's lists.
QVector<Mention> find(const YamlEdit& edit, const Filter& filter);
/// Of a text of its own, "device.method" or "a.b -> c.d".
QVector<Mention> in(const QString& text);

/// Removes the entries that hold them, and a list that becomes empty with its key.
Error remove(YamlEdit& edit, const Filter& filter);
/// Writes others in their place: the device where `isDevice`, else the method's name.
Error replace(YamlEdit& edit, const Filter& filter, bool isDevice,
              const std::function<QString(const Mention&)>& name);

} // namespace Mentions

} // namespace norvo
