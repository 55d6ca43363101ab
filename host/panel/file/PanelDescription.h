// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/Diagnostics.h"
#include "host/panel/file/look/PanelLook.h"
#include "host/panel/file/services/AccessSetting.h"
#include "host/panel/file/services/AlarmSetting.h"
#include "host/panel/file/services/AuditSetting.h"
#include "host/panel/file/services/HistorySetting.h"

#include <QMap>
#include <QString>
#include <QVector>

namespace norvo {

/// A text of the panel file and where its first character stands.
struct PlacedText
{
    QString text;
    Place place;
};

struct ParamSetting
{
    PlacedText name;         ///< Nested maps are joined: "widget/row".
    PlacedText value;        ///< Verbatim.
    bool isOptional = false; ///< No error where the device does not have it.
    QString file = {};       ///< That the value, if a file, is relative to; empty: the panel's own.
};

/// An output or an input that the panel's author names.
struct PortSetting
{
    bool isOutput = false;
    PlacedText name;
    PlacedText definition;          ///< Where it is a map, the text behind "as".
    QMap<QString, QString> options; ///< What else the map holds.
};

/// Whether the value that an operator gave to a device is put back at the next start, and whether
/// the device sends it then.
enum class Keep { Unsaid, No, Silently, Sending };

struct DeviceSetting
{
    PlacedText id;
    PlacedText type; ///< The type key.
    QVector<ParamSetting> params;
    QVector<PortSetting> ports; ///< In the order of the file.
    bool network = false;       ///< The key "network: true" stands at this device.
    Keep keep = Keep::Unsaid;
    Place keepPlace = {}; ///< Where that is said.
    DeviceAccess access = {};
};

struct Endpoint
{
    PlacedText device; ///< The id.
    PlacedText method; ///< A name or a full signature.
};

struct ConnectionSetting
{
    Endpoint from;
    Endpoint to;
    PlacedText whole; ///< As written; with the ids of the use where a template holds it.
};

/// What a panel file says, before anybody knows whether such devices exist.
struct PanelDescription
{
    QString file; ///< As the user named it.
    PlacedText title;
    QVector<DeviceSetting> devices;         ///< In the order of the file.
    QVector<ConnectionSetting> connections; ///< In the order of the file.
    PanelLook look = {};
    PanelAccess access = {};
    QVector<AlarmSetting> alarms = {}; ///< In the order of the file.
    AuditSetting audit = {};
    HistorySetting history = {};
    QStringList included = {}; ///< Absolute paths, also of files that cannot be read.
};

} // namespace norvo
