// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelDescription.h"

#include <QMap>

/// Makes the parts of a panel's description as if they had been read from a file.
namespace describe {

inline norvo::DeviceSetting device(const QString& id, const QString& type,
                                   const QMap<QString, QString>& params = {}, int line = 0)
{
    norvo::DeviceSetting setting;
    setting.id = {id, {line, 1}};
    setting.type = {type, {line, 2}};
    for (auto param = params.cbegin(); param != params.cend(); ++param) {
        setting.params.append(
            norvo::ParamSetting{{param.key(), {line, 3}}, {param.value(), {line, 4}}});
    }
    return setting;
}

/// From "a.output -> b.input"; columns count from the first letter.
inline norvo::ConnectionSetting arrow(const QString& text, int line = 1)
{
    const int second = text.indexOf("-> ") + 3;
    const auto end = [&text, line](int begin, int size) {
        const int dot = text.indexOf('.', begin);
        return norvo::Endpoint{{text.mid(begin, dot - begin), {line, begin + 1}},
                               {text.mid(dot + 1, begin + size - dot - 1), {line, dot + 2}}};
    };
    return {end(0, second - 4), end(second, text.size() - second), {text, {line, 1}}};
}

/// Connections stand in the lines 1, 2, ...
inline norvo::PanelDescription panel(const QVector<norvo::DeviceSetting>& devices,
                                     const QStringList& arrows = {})
{
    norvo::PanelDescription description;
    description.file = "panel.yaml";
    description.devices = devices;
    for (const QString& text : arrows) {
        description.connections.append(arrow(text, description.connections.size() + 1));
    }
    return description;
}

inline QStringList lines(const norvo::Diagnostics& diagnostics)
{
    QStringList texts;
    for (const norvo::Diagnostic& diagnostic : diagnostics.sorted()) {
        texts.append(diagnostic.toString());
    }
    return texts;
}

} // namespace describe
