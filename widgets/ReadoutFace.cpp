// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/ReadoutFace.h"

#include "norvo/Truncation.h"
#include "widgets/Looks.h"
#include "widgets/PlateLabel.h"
#include "widgets/ShownText.h"

#include <algorithm>
#include <cmath>

namespace Looks = norvo::Looks;

void ReadoutFace::createLabels(const QString& captionText)
{
    digits = new PlateLabel;
    show(0);

    caption = new QLabel;
    norvo::showText(*caption, captionText);
    caption->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
}

bool ReadoutFace::isOutOfRange(double value) const
{
    return minThreshold > value || value > maxThreshold;
}

void ReadoutFace::show(double value)
{
    digits->setPlainText(QString::number(value, 'f', precision));
}

void ReadoutFace::blink()
{
    const bool wasDark = blinkTimer.objectName() == QLatin1String("1");
    blinkTimer.setObjectName(wasDark ? "0" : "1");
    Looks::apply(caption, wasDark ? Looks::kCaptionRed : Looks::kCaptionDark);
}

int ReadoutFace::makeRoom(double oneEnd, double otherEnd, int more)
{
    const double magnitude = std::fmax(std::fabs(oneEnd), std::fabs(otherEnd));
    const int whole = QString::number(norvo::truncatedToInt(magnitude + 0.5)).size();
    const QString sample = QString(whole, '3') + '.' + QString(std::max(0, precision) + more, '3');
    digits->ensurePolished(); // A style may give it a margin.
    const int width = digits->fontMetrics().horizontalAdvance(sample) + 2 * digits->margin();
    digits->setMinimumWidth(width);
    digits->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    return width;
}
