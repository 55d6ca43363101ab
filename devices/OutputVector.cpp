#include "devices/OutputVector.h"

#include "devices/Caption.h"

OutputVector::OutputVector()
{
    addParam("name", "", {}, true, {});
    addParam("widget/minValue", "0", {}, true, {});
    addParam("widget/maxValue", "1", {}, true, {});
    addParam("widget/fillArea", "true", {}, true, {});
}

bool OutputVector::initialise()
{
    settleCaption(*this, "name");
    return paramsOk();
}

void OutputVector::input(DoubleVec data)
{
    if (isRunning()) {
        emit output(data);
    }
}
