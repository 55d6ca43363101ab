// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelDescription.h"

#include <QHash>
#include <QStringList>

namespace norvo {

class Catalogue;

/// Names of files, and of programs with a "/" in them, that stand in an included file are relative
/// to its folder; this makes them relative to the panel's folder, where devices look for them. Only
/// parameters whose words say that they are files or commands are changed.
void rebaseIncludedFiles(PanelDescription& description, const Catalogue& catalogue);

/// The pictures and QML documents that parameters name, and what these documents import, by device,
/// as absolute paths; `folder` is the panel's.
QHash<QString, QStringList> shownFiles(PanelDescription description, const Catalogue& catalogue,
                                       const QString& folder);

} // namespace norvo
