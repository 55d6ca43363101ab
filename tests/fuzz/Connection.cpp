// SPDX-License-Identifier: GPL-3.0-or-later

#include "Harness.h"
#include "host/panel/edit/Mentions.h"
#include "host/panel/file/PanelFile.h"
#include "host/yaml/YamlText.h"

using norvo::require;

/// A connection text reads for the panel as it does for the edits, and is given back as written.
NORVO_HARNESS(Connection)
{
    const QString text = QString::fromUtf8(input);
    const QByteArray panel =
        "title: x\nconnections: [" + norvo::YamlText::doubleQuoted(text).toUtf8() + "]\n";
    norvo::Diagnostics diagnostics("panel.yaml");
    const auto description = norvo::PanelFile::parse(panel, "panel.yaml", diagnostics);
    const auto mentions = norvo::Mentions::in(text);
    for (const norvo::Mention& one : mentions) {
        require(text.mid(one.deviceAt, one.device.size()) == one.device, "a device is in the text");
        require(text.mid(one.methodAt, one.method.size()) == one.method, "a method is in the text");
    }
    if (description.connections.isEmpty()) {
        return;
    }
    const norvo::ConnectionSetting& read = description.connections.first();
    require(mentions.size() == 2, "the edits find both ends");
    require(mentions[0].device == read.from.device.text &&
                mentions[1].device == read.to.device.text,
            "the edits find the same devices");
    require(read.from.method.text.startsWith(mentions[0].method) &&
                read.to.method.text.startsWith(mentions[1].method),
            "the edits find the same methods");
}
