// SPDX-License-Identifier: GPL-3.0-or-later

#include "devices/OutputVector.h"

#include "devices/Caption.h"

OutputVector::OutputVector()
{
    addParam(kName, "");
    addParam(kMinValue, "0");
    addParam(kMaxValue, "1");
    addParam(kFillArea, "true");
}

bool OutputVector::initialise()
{
    resolveCaption(*this, kName);
    return paramsOk();
}

void OutputVector::input(DoubleVec data)
{
    if (isRunning()) {
        emit output(data);
    }
}
