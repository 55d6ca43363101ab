// SPDX-License-Identifier: GPL-3.0-or-later

#include "HarnessMain.h"

#include <QApplication>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // It is never deleted: the fuzzer ends the program without leaving main().
    static const auto* const application = new QApplication(*argc, *argv);
    Q_UNUSED(application)
    norvo::silenceMessages();
    return 0;
}

/// The program's one harness with the fuzzer's bytes.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    norvo::runHarness(norvo::harnesses().front(),
                      QByteArray(reinterpret_cast<const char*>(data), int(size)));
    return 0;
}
