// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelDescription.h"

#include <QByteArray>

namespace norvo {

class YamlEdit;

/// Reads panel files. It knows the form of a panel and no device.
class PanelFile
{
public:
    /// Reads the file and reports all that is wrong with it at once. The description holds what
    /// could be read and is to be used only when there is no error.
    static PanelDescription read(const QString& fileName, Diagnostics& diagnostics);
    /// The same from a text; `fileName` is the one that the description names.
    static PanelDescription parse(const QByteArray& text, const QString& fileName,
                                  Diagnostics& diagnostics);
    /// The same from a text whose tree is known.
    static PanelDescription parse(const YamlEdit& text, const QString& fileName,
                                  Diagnostics& diagnostics);
    /// The title, or without one the file's name.
    static QString shownTitle(const PanelDescription& description);
};

} // namespace norvo
