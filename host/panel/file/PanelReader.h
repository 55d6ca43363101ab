// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelDescription.h"
#include "host/yaml/SourceText.h"
#include "host/yaml/YamlTree.h"

#include <QHash>

namespace norvo {

/// Finds a panel in a YAML tree, for PanelFile. Goes on after each error, to report them all.
class PanelReader
{
public:
    static constexpr int kMaxNameLength = 256;   ///< Of a parameter, in characters.
    static constexpr int kMaxArrowLength = 1000; ///< In characters.

    PanelReader(const SourceText& source, const QString& fileName, Diagnostics& diagnostics);

    PanelDescription read(const YamlNode& root);

private:
    enum class Keys { Any, Panel, Devices };
    struct Params;

    void checkKeys(const YamlNode& node, Keys keys);
    void readTitle(const YamlEntry& entry);
    void readDevices(const YamlEntry& entry);
    void readDevice(const YamlEntry& entry);
    void checkId(const PlacedText& id);
    void readSettings(const YamlNode& value, DeviceSetting& device);
    void readSetting(const YamlEntry& entry, DeviceSetting& device);
    void readType(const YamlEntry& entry, DeviceSetting& device);
    void readNetwork(const YamlEntry& entry, DeviceSetting& device);
    void readParams(const YamlEntry& entry, DeviceSetting& device);
    void readParam(const YamlEntry& entry, const QString& prefix, Params& params);
    void readConnections(const YamlEntry& entry);
    void readArrow(const YamlEntry& entry);
    bool readEndpoint(const YamlNode& node, int begin, int end, bool isSource, Endpoint& endpoint);

    void refuse(const Place& place, const QString& text);

    const SourceText& m_source;
    Diagnostics& m_diagnostics;
    PanelDescription m_description;
};

} // namespace norvo
