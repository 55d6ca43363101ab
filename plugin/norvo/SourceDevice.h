// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "norvo/PortsDevice.h"

#include <optional>

/// A device that reaches something outside the panel, which may be away.
///
/// While it is away nothing leaves but connected(false), and what is written to it is refused,
/// never kept for later.
class NORVO_EXPORT SourceDevice : public PortsDevice
{
    Q_OBJECT

signals:
    void connected(bool on);  ///< Whether the other side is there; at each change.
    void fault(QString text); ///< What has gone wrong with it; also raised as an alert.

protected:
    bool isConnected() const { return m_connected.value_or(false); }
    void setConnected(bool on); ///< Emits connected() where that is news; the first time it is.
    void reportFault(const QString& text);

private:
    std::optional<bool> m_connected;
};
