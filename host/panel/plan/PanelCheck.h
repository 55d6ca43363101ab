#pragma once

#include "host/panel/file/PanelDescription.h"

class DeviceManager;

namespace norvo {

/// Compares what a panel file says with the devices that there are.
class PanelCheck
{
public:
    /// Reports everything that is wrong. Devices are made and given their
    /// parameters, but none is started; only one whose type says that its methods are known no
    /// sooner is initialised on its own. A device without a type is left to whoever read the file.
    static void check(const PanelDescription& description, const DeviceManager& manager,
                      Diagnostics& diagnostics);
};

} // namespace norvo
