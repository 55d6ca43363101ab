// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/PortDefinition.h"

#include <QByteArray>
#include <QStringList>

namespace norvo {

/// The definition of an output or input in one line: its text, and behind a tab each its options,
/// "name=value".
inline PortDefinition portDefinitionOf(const QByteArray& line)
{
    const QStringList parts = QString::fromUtf8(line).split('\t');
    PortDefinition definition(parts.first());
    for (const QString& option : parts.mid(1)) {
        definition.options.insert(option.section('=', 0, 0), option.section('=', 1));
    }
    return definition;
}

} // namespace norvo
