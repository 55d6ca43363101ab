// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

namespace norvo {

/// A signal as a pure function of the tick: the same numbers in each run and on every machine.
/// Nothing here fails; what cannot be computed is NaN.
struct Waveform
{
    enum class Shape { Sine, Ramp, Square, Noise };

    Shape shape = Shape::Sine;
    double periodSeconds = 10.0; ///< Not above 0, NaN or infinite: the phase stays 0.
    double amplitude = 1.0;      ///< From the middle to the top.
    double offset = 0.0;         ///< The middle.
    double noise = 0.0;          ///< Added at random, up to this much either way.
    int intervalMs = 100;        ///< From tick to tick.
    quint64 seed = 1;

    double valueAt(qint64 tick) const;
};

/// Times in which nothing comes: `on` seconds of values, `off` seconds of silence, and again.
struct DropOuts
{
    double onSeconds = 10.0;
    double offSeconds = 0.0; ///< Not above 0: no silence.

    bool isSilentAt(qint64 tick, int intervalMs) const;
};

} // namespace norvo
