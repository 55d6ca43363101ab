#pragma once

#include "host/panel/file/PanelDescription.h"

#include <QByteArray>

namespace norvo {

/// Reads panel files. It knows the form of a panel and no device.
class PanelFile
{
public:
    /// Reads the file; what is wrong with it is appended to `faults`, all of it at once. The
    /// description holds what could be read and is to be used only when no fault is an error.
    static PanelDescription read(const QString& fileName, Faults& faults);
    /// The same from a text; `fileName` only names it in faults.
    static PanelDescription parse(const QByteArray& text, const QString& fileName, Faults& faults);
};

} // namespace norvo
