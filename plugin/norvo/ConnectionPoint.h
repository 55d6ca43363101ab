// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "norvo/Export.h"

#include <QString>
#include <QStringList>

/// Something that wires end in.
class NORVO_EXPORT ConnectionPoint
{
public:
    virtual ~ConnectionPoint();
    /// The far ends of the wires that end here, as noted with addSignal(), oldest first.
    virtual QStringList getIncomingConnections() const = 0;
    /// Notes the far end of a wire that ends here, such as "cpu.memory(double)".
    virtual void addSignal(const QString& signal) = 0;
};
