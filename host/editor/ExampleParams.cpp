// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/ExampleParams.h"

#include "host/catalogue/TypeExample.h"
#include "host/panel/plan/Placement.h"

#include <algorithm>
#include <iterator>

namespace norvo {

QVector<ParamSetting> exampleParams(const TypeWords& words)
{
    QVector<ParamSetting> params;
    if (const auto example = TypeExample::device(words)) {
        std::copy_if(example->params.cbegin(), example->params.cend(), std::back_inserter(params),
                     [](const ParamSetting& param) { return !isPlacementParam(param.name.text); });
    }
    return params;
}

} // namespace norvo
