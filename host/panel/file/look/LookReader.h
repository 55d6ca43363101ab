// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/look/PanelLook.h"
#include "host/panel/file/ReadContext.h"

namespace norvo {

/// The keys of a panel that say how it is shown.
const QStringList& lookKeys();
/// What such a key holds one of; empty: it holds something else.
QStringList lookNames(const QString& key);
/// Which of them a panel without the key has.
QString lookDefault(const QString& key);

/// Reads the entry of such a key; what is wrong with it is reported, and leaves the look as it was.
void readLook(const YamlEntry& entry, const ReadContext& context, PanelLook& look);

/// Reports what does not go together once all keys are read. `fitPlace` is where "fit" stands.
void checkLook(const PanelLook& look, const Place& fitPlace, const ReadContext& context);

/// The theme of that name; none for another name. For the command line, too.
const QMap<QString, PanelLook::Theme>& themeNames();

} // namespace norvo
