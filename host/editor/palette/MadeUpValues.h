// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/DoubleVec.h"

#include <QObject>

class BaseDevice;

namespace norvo {

struct TypeWords;

/// Values for a display that shows an example, in the place of the devices that it would be fed by.
class MadeUpValues : public QObject
{
    Q_OBJECT

public:
    /// Feeds the input, which is a name or a signature; where it takes several types, a number
    /// first. What takes none of them stays without.
    void feed(BaseDevice& device, const TypeWords& words, const QString& input);

    void send(); ///< The next ones.

signals:
    void output(double value); // clazy:exclude=overloaded-signal
    void output(bool value);
    void output(QString value);
    void output(DoubleVec value);

private:
    int m_count = 0;
};

} // namespace norvo
