// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimer>

class PlateLabel;
class QLabel;

/// The digits of a readout and the caption above them.
struct ReadoutFace
{
    /// The digits get their first look by the state that is shown once they have their place: each
    /// look that they have before is worked out anew there.
    void createLabels(const QString& captionText);
    bool isOutOfRange(double value) const; ///< A value on an edge is in range, and NaN is.
    void show(double value);               ///< In digits alone; looks are set apart.
    void blink();                          ///< Gives the caption its next phase.

    /// Widens the digits to the numbers whose magnitude is at most that of either end, and to
    /// `more` further digits. Returns the width in pixels.
    int makeRoom(double oneEnd, double otherEnd, int more = 0);

    PlateLabel* digits = nullptr; ///< Null before createLabels(), as is the caption.
    QLabel* caption = nullptr;
    QTimer blinkTimer; ///< Its object name holds the phase.
    double minThreshold = 0;
    double maxThreshold = 0;
    int precision = 0;
};
