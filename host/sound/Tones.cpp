// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/sound/Tones.h"

#include <QHash>
#include <QtEndian>

#include <algorithm>
#include <cmath>

namespace norvo {

namespace {

struct Tone
{
    int strokes = 0;
    double hertz = 0;
};

constexpr double kStroke = 0.16; // seconds, as the next two
constexpr double kGap = 0.1;
constexpr double kEdge = 0.01; // In which a stroke comes and goes, so that it does not crack.
constexpr double kLoudness = 0.5;
constexpr double kTurn = 6.283185307179586;

/// Of the stroke at this time; with an overtone, as a sound of one frequency alone is hard to
/// locate.
double strokeAt(double time, double hertz)
{
    const double edge = std::min({time, kStroke - time, kEdge}) / kEdge;
    return kLoudness * edge *
           (0.8 * std::sin(kTurn * hertz * time) + 0.2 * std::sin(kTurn * 2 * hertz * time));
}

} // namespace

QByteArray toneOf(const QByteArray& priority, int rate, int channels)
{
    static const QHash<QByteArray, Tone> tones{
        {"high", {3, 880}}, {"medium", {2, 660}}, {"low", {1, 440}}};
    const Tone tone = tones.value(priority);
    const int perStroke = int((kStroke + kGap) * rate);
    QByteArray samples(tone.strokes * perStroke * channels * 2, Qt::Uninitialized);
    char* next = samples.data();
    for (int i = 0; i < tone.strokes * perStroke; ++i) {
        const double time = double(i % perStroke) / rate;
        const double value = time < kStroke ? strokeAt(time, tone.hertz) : 0;
        for (int channel = 0; channel < channels; ++channel) {
            qToLittleEndian(qint16(std::lround(value * 32767)), next);
            next += sizeof(qint16);
        }
    }
    return samples;
}

} // namespace norvo
