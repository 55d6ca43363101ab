// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelDescription.h"

#include <QSet>

class BaseDevice;

namespace norvo {

/// Gives devices the outputs and inputs that the panel's author names, and keeps in mind which have
/// been refused: a connection to one of these is no error of its own.
class NamedPorts
{
public:
    explicit NamedPorts(Diagnostics& diagnostics) : m_diagnostics(diagnostics) {}

    /// Reports each one that is refused, at the place of its definition.
    void add(const DeviceSetting& setting, BaseDevice& device);
    bool isRefused(const Endpoint& end) const;

private:
    Diagnostics& m_diagnostics;
    QSet<QString> m_refused; ///< "id.name"
};

} // namespace norvo
