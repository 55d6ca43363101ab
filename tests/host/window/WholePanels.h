// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ShownPanel.h"
#include "host/catalogue/Catalogue.h"

#include <QDir>

/// An example, read where it stands, since its files are named from there.
inline norvo::PanelDescription exampleOf(const QString& name)
{
    QDir::setCurrent(NORVO_SOURCE_DIR "/examples/" + name);
    QFile file("panel.yaml");
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("%s", qPrintable(file.errorString()));
    }
    return panelOf(file.readAll());
}

/// The smallest examples of all types that have a widget, in three columns: each with the devices
/// that give it its values. The names of their files are those of the gallery.
inline norvo::PanelDescription allTypes()
{
    QDir::setCurrent(NORVO_SOURCE_DIR "/examples/gallery");
    const norvo::Catalogue catalogue(builtTypes());
    const auto types = builtTypes().typeInfos();
    const auto isShown = [&types](const QString& type) {
        return types.contains(type) && types[type].kind == DeviceTypeInfo::kWithWidget;
    };
    norvo::PanelDescription all;
    int place = 0;
    for (const QString& type : catalogue.keys()) {
        if (!isShown(type)) {
            continue;
        }
        norvo::PanelDescription one = panelOf(catalogue.words(type)->example.toUtf8());
        for (norvo::DeviceSetting& device : one.devices) {
            device.id.text.prepend(type + '_');
            if (isShown(device.type.text)) {
                device.params +=
                    norvo::ParamSetting{{"widget/row", {}}, {QString::number(place / 3), {}}};
                device.params +=
                    norvo::ParamSetting{{"widget/column", {}}, {QString::number(place % 3), {}}};
                ++place;
            }
        }
        for (norvo::ConnectionSetting& connection : one.connections) {
            connection.from.device.text.prepend(type + '_');
            connection.to.device.text.prepend(type + '_');
        }
        all.devices += one.devices;
        all.connections += one.connections;
    }
    return all;
}
