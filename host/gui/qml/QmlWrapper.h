// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "host/gui/qml/QmlMethods.h"

#include "norvo/DynamicPorts.h"

#include <QPointer>

namespace norvo {

/// Stands for a QML item in the wiring: has a signal and a slot for each form of the item's own
/// methods, passes signals on from the item and calls on to it, and converts on the way.
class QmlWrapper
{
public:
    explicit QmlWrapper(QObject& item);

    /// Whether `item` has the same methods, so that it can take the place of the item before.
    bool fits(const QObject& item) const;
    /// Stands for `item`, which must fit, from now on; the wires stay.
    void bind(QObject& item);
    void unbind(); ///< Hears the item no more, and calls it no more.

    DynamicPorts& ports() { return m_ports; } ///< What is wired.

private:
    void passOn(int signal, void** arguments);
    void callItem(const QmlMethod& slot, void** arguments) const;

    QPointer<QObject> m_item;
    QmlMethods m_signals; ///< In the order of the ports.
    QmlMethods m_slots;
    DynamicPorts m_ports;
    DynamicPorts m_ear; ///< A slot for each signal of the item.
};

} // namespace norvo
