// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

/// What a Recorder of a HeldKey notes.
inline const QStringList kOn{"handOn()"};
inline const QStringList kOff{"handOff()"};
inline const QStringList kNothing;
