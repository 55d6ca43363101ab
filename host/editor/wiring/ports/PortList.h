// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/wiring/ports/Port.h"
#include "host/panel/plan/PlannedWire.h"

#include <QHash>
#include <QSet>

#include <optional>

class BaseDevice;

namespace norvo {

class EditSession;
struct ConnectionSetting;
struct DeviceSetting;

/// One way to connect an output with an input.
struct WireChoice
{
    QString from; ///< As a person would write it: "bench.temperature(double)", "lamp.input".
    QString to;
    QString carries; ///< What arrives: "number".
};

/// What connects an output with an input: one choice where one fits, several where one has to be
/// chosen, the first of them the one declared first.
struct PortFit
{
    QVector<WireChoice> choices;
    QString whyNot; ///< Where there is no choice.

    bool isPossible() const { return !choices.isEmpty(); }
};

/// The outputs and inputs of the devices of a panel as it runs now, and what fits what, by the
/// rules of the plan. To be made anew when the panel has changed.
class PortList
{
    Q_DECLARE_TR_FUNCTIONS(norvo::PortList)

public:
    /// `except`: this connection of the panel is left aside, as it is about to change.
    explicit PortList(const EditSession& session, int except = -1);

    /// Those that the panel's author has named, then in the order of declaration; without those for
    /// the device's own widget. None of a device that is unknown, or whose ports are known after a
    /// start only that has failed.
    const QVector<Port>& outputs(const QString& device) const;
    const QVector<Port>& inputs(const QString& device) const;
    /// Those that can be the other end of the port.
    const QVector<Port>& opposites(const Port& port, const QString& device) const;

    /// The ports may be given in either order.
    PortFit fit(const Port& one, const Port& other) const;
    bool fits(const Port& one, const Port& other) const; ///< Without the words.
    /// The circle of devices that a connection between the two would close, "a -> b -> a"; empty:
    /// none. That is no reason against it.
    QString circle(const QString& from, const QString& to) const;

    /// What a connection of the panel is, as it was made; none where it could not be made.
    std::optional<PlannedWire> wire(const ConnectionSetting& connection) const;

private:
    struct Ports
    {
        QVector<Port> outputs;
        QVector<Port> inputs;
    };
    /// What stands behind the two names of a connection: "" or a list of arguments.
    struct Suffix
    {
        QString from;
        QString to;
        QString carries;
    };

    const Ports& ports(const QString& device) const;
    Ports makePorts(const DeviceSetting& setting, const BaseDevice& device) const;
    bool hasMethodsOfItsOwn(const DeviceSetting& setting) const;
    QString shapeOf(const Port& port) const;
    const QVector<Suffix>& suffixes(const Port& output, const Port& input) const;
    QVector<Suffix> findSuffixes(const Port& output, const Port& input) const;
    bool isConnected(const Port& output, const Port& input) const;
    const DeviceSetting* setting(const QString& device) const;

    const EditSession& m_session;
    QHash<QString, int> m_places;          ///< Of the devices in the description, by id.
    QSet<QString> m_connected;             ///< "from.output to.input", without arguments.
    mutable QHash<QString, Ports> m_ports; ///< By device.
    mutable QHash<QString, Ports> m_portsOfType;
    mutable QHash<QString, QVector<Suffix>> m_suffixes; ///< By the shapes of the two ports.
    mutable QHash<QString, PlannedWire> m_wires;        ///< By types and methods.
};

} // namespace norvo
