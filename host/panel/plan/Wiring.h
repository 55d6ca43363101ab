// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelDescription.h"

#include <QObject>
#include <QString>
#include <QVector>

#include <optional>

class BaseDevice;

namespace norvo {

/// A connection of the panel file between two live objects. The signatures are normalised.
struct Wire
{
    QObject* provider = nullptr;
    QString signal;
    QObject* receiver = nullptr;
    QString slot;
};

/// Finds out which signal and which slot a connection means.
///
/// A signature written in full must exist. One left out is chosen among the overloads that fit:
/// the slot takes the first arguments of the signal, in order, or all of them. Where several pairs
/// fit, one with equal arguments goes first, and between two ports that the panel's author has
/// named that of the texts; where that still leaves several, nothing is guessed. Every error says
/// what would be right.
std::optional<Wire> resolveConnection(const ConnectionSetting& connection, BaseDevice& from,
                                      BaseDevice& to, Diagnostics& diagnostics);

/// All that the connection can mean by these rules: one where it is resolved, several where the
/// author has to choose, none where nothing fits.
QVector<Wire> possibleWires(const ConnectionSetting& connection, BaseDevice& from, BaseDevice& to);

/// Whether the values of the wire can be stored, which a queued connection needs.
bool canBeQueued(const Wire& wire);

/// Connects the two. An invalid connection when `type` is queued and the values cannot be stored.
QMetaObject::Connection connectWire(const Wire& wire, Qt::ConnectionType type);

} // namespace norvo
