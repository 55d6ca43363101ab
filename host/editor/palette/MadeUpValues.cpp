// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/palette/MadeUpValues.h"

#include "host/catalogue/TypeWords.h"

#include "norvo/BaseDevice.h"

#include <QTime>

#include <algorithm>
#include <cmath>

namespace norvo {

namespace {

constexpr double kMiddle = 50;
constexpr double kSwing = 40;
constexpr double kTurn = 0.4; ///< Radians, from one value to the next.
constexpr int kLength = 60;   ///< Of an array.

} // namespace

void MadeUpValues::feed(BaseDevice& device, const TypeWords& words, const QString& input)
{
    for (const char* const type : {"double", "bool", "QString", "DoubleVec"}) {
        const QString signature = QString("%1(%2)").arg(input.section('(', 0, 0), type);
        const bool isThere = std::any_of(
            words.inputs.cbegin(), words.inputs.cend(),
            [&signature](const MethodWords& method) { return method.signature == signature; });
        if (!isThere || (input.contains('(') && input != signature)) {
            continue;
        }
        QString slot;
        QObject* const receiver = device.getReceiver(signature, slot);
        if (receiver) {
            connect(this, qPrintable(QString("2output(%1)").arg(type)), receiver,
                    qPrintable('1' + slot));
            return;
        }
    }
}

void MadeUpValues::send()
{
    const double wave = std::sin(kTurn * m_count);
    DoubleVec array;
    for (int i = 0; i < kLength; ++i) {
        array.append(std::sin(kTurn * (m_count + i) / 2));
    }
    emit output(kMiddle + kSwing * wave);
    emit output(true);
    emit output(QTime(12, 0).addSecs(m_count).toString("hh:mm:ss"));
    emit output(array);
    ++m_count;
}

} // namespace norvo
