// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/state/StateFile.h"
#include "Harness.h"

#include <QFile>

using norvo::require;
using norvo::StateFile;

/// Any file is read or set aside, and what was read is the same once it was written and read again.
NORVO_HARNESS(StateFile)
{
    norvo::withFile(input, [&input](const QString& fileName) {
        StateFile first(fileName);
        first.read();
        const norvo::PanelState state = first.state();
        first.set("a device", "a parameter", "\x01\n\"a value\"");
        first.save();
        StateFile second(fileName, StateFile::Mode::ReadOnly);
        second.read();
        norvo::PanelState expected = second.state();
        const bool isWritten = expected["a device"].contains("a parameter");
        expected["a device"] = state["a device"];
        QFile file(fileName);
        require(isWritten || (file.open(QIODevice::ReadOnly) && file.readAll() == input),
                "a change is written, or the file is none of ours and stays");
        for (auto device = state.cbegin(); isWritten && device != state.cend(); ++device) {
            require(expected.value(device.key()) == *device, "what was written is read again");
        }
        QFile::remove(fileName + ".bad");
    });
}
