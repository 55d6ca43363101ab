// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelFile.h"

#include <QString>
#include <QStringList>

/// What tests see of panel files: plain texts that compare well.
namespace panels {

inline norvo::PanelDescription parse(const QByteArray& text, norvo::Diagnostics& diagnostics)
{
    return norvo::PanelFile::parse(text, "p", diagnostics);
}

/// The errors and warnings of a text, one in a line, without the file's name.
inline QString errorsOf(const QByteArray& text)
{
    norvo::Diagnostics diagnostics("p");
    parse(text, diagnostics);
    QStringList lines;
    for (const norvo::Diagnostic& diagnostic : diagnostics.sorted()) {
        lines += diagnostic.toString().mid(2);
    }
    return lines.join('\n');
}

/// The panel; an empty one when there is any.
inline norvo::PanelDescription sound(const QByteArray& text)
{
    norvo::Diagnostics diagnostics("p");
    const norvo::PanelDescription panel = parse(text, diagnostics);
    return diagnostics.isEmpty() ? panel : norvo::PanelDescription();
}

/// "line:column text"
inline QString shown(const norvo::PlacedText& text)
{
    return QString("%1:%2 %3").arg(text.place.line).arg(text.place.column).arg(text.text);
}

/// All settings of all devices: "line:column name = line:column value".
inline QStringList settings(const norvo::PanelDescription& panel)
{
    QStringList lines;
    for (const auto& device : panel.devices) {
        for (const auto& param : device.params) {
            lines += shown(param.name) + " = " + shown(param.value);
        }
    }
    return lines;
}

/// The parts of a connection: "1:5 a | 1:7 x | 1:12 b | 1:14 y".
inline QString shown(const norvo::ConnectionSetting& arrow)
{
    return QStringList{shown(arrow.from.device), shown(arrow.from.method), shown(arrow.to.device),
                       shown(arrow.to.method)}
        .join(" | ");
}

} // namespace panels
