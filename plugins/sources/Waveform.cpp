// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/sources/Waveform.h"

#include <cmath>

namespace norvo {

namespace {

constexpr double kPi = 3.14159265358979323846;

enum class Stream : quint64 { Shape = 0x9e3779b97f4a7c15u, AddedNoise = 0xd1b54a32d192ed03u };

quint64 mixed(quint64 bits)
{
    bits = (bits ^ (bits >> 30)) * 0xbf58476d1ce4e5b9u;
    bits = (bits ^ (bits >> 27)) * 0x94d049bb133111ebu;
    return bits ^ (bits >> 31);
}

/// Evenly spread over -1 to 1 (1 left out).
double randomAt(quint64 seed, Stream stream, qint64 tick)
{
    const quint64 bits = mixed(mixed(seed + quint64(stream)) + quint64(tick) * 0x9e3779b97f4a7c15u);
    return double(bits >> 11) * 0x1p-52 - 1.0;
}

/// How far into its period the tick is, 0 to 1.
double phaseAt(qint64 tick, int intervalMs, double periodSeconds)
{
    const double period = periodSeconds * 1000.0;
    if (!(period > 0.0) || std::isinf(period)) {
        return 0.0;
    }
    const double rest = std::fmod(double(tick) * intervalMs, period);
    return (rest < 0.0 ? rest + period : rest) / period;
}

} // namespace

double Waveform::valueAt(qint64 tick) const
{
    const double phase = phaseAt(tick, intervalMs, periodSeconds);
    double unit = 0.0;
    switch (shape) {
    case Shape::Sine:
        unit = std::sin(2.0 * kPi * phase);
        break;
    case Shape::Ramp:
        unit = 2.0 * phase - 1.0;
        break;
    case Shape::Square:
        unit = phase < 0.5 ? 1.0 : -1.0;
        break;
    case Shape::Noise:
        unit = randomAt(seed, Stream::Shape, tick);
        break;
    }
    return offset + amplitude * unit + noise * randomAt(seed, Stream::AddedNoise, tick);
}

bool DropOuts::isSilentAt(qint64 tick, int intervalMs) const
{
    if (!(offSeconds > 0.0)) {
        return false;
    }
    const double on = onSeconds > 0.0 ? onSeconds * 1000.0 : 0.0;
    return std::fmod(double(tick) * intervalMs, on + offSeconds * 1000.0) >= on;
}

} // namespace norvo
