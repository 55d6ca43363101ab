// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/plan/Placement.h"
#include "host/yaml/YamlEdit.h"

#include <QPair>
#include <QString>
#include <QVector>

namespace norvo {

/// A device that is to be written into a panel file.
struct NewDevice
{
    QString id;
    QString type;                            ///< The type key.
    QVector<QPair<QString, QString>> params; ///< Names as declared, "widget/row".
};

/// Edits of the devices of a panel file. Those of templates and of included files are none of them.
namespace DeviceEdit {

using Error = YamlEdit::Error;

/// An id that the file does not use yet: `base`, or `base` with the first number that is free.
QString freeId(const YamlEdit& edit, const QString& base);

/// Behind the device `after`, or last.
Error add(YamlEdit& edit, const NewDevice& device, const QString& after = {});
/// With its connections, and whatever else in the file names it.
Error remove(YamlEdit& edit, const QString& device);
/// Wherever the file names it. An id that is in use, or none, is refused.
Error rename(YamlEdit& edit, const QString& device, const QString& newId);
/// Writes what differs from where the device stands by what the file says now; a span of 1 and the
/// first area are written only where the file gives others.
Error place(YamlEdit& edit, const QString& device, const Cells& cells);
/// Gives one of the keys beside the parameters, "network", "keep", "access" or "confirm", a value;
/// an empty text removes it.
Error setKey(YamlEdit& edit, const QString& device, const QString& key, const QString& value);

/// The devices and the connections among them, as the text of a panel file of their own.
QByteArray copy(const YamlEdit& edit, const QStringList& devices);
/// Of what was pasted: the id in the text, and the one that it has now.
using NewIds = QVector<QPair<QString, QString>>;

/// Adds the devices of such a text, with ids that are free, and its connections from one of them to
/// another. Cells are those of the text, moved by these rows and columns and into this area.
Error paste(YamlEdit& edit, const QByteArray& copied, const Cells& moveBy, NewIds& ids);

} // namespace DeviceEdit

} // namespace norvo
