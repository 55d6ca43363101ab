// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/Place.h"

#include <QMap>
#include <QString>

#include <chrono>
#include <optional>

namespace norvo {

/// What one may do at a panel; each may what those before it may.
enum class Role { View, Operate, Engineer };

/// "view", "operate", "engineer"; also what a user sees in an untranslated message.
const QMap<QString, Role>& roleNames();
QString nameOf(Role role);

/// Who may operate the panel. Without PINs nothing is locked.
struct PanelAccess
{
    static constexpr std::chrono::minutes kDefaultLockAfter{5};

    QMap<Role, QString> pins; ///< A hash for each role that has a PIN; never for Role::View.
    std::chrono::milliseconds lockAfter = kDefaultLockAfter; ///< 0: only by hand.
    Place place = {};                                        ///< Of the key; line 0: not given.

    bool isGiven() const { return place.line > 0; }
};

/// What a device asks for before it takes anything from a hand.
struct DeviceAccess
{
    std::optional<Role> role; ///< None: what the kind of the device says.
    Place rolePlace = {};
    bool isConfirmed = false;
    QString question; ///< Empty: one that names the device.
    Place confirmPlace = {};
};

} // namespace norvo
