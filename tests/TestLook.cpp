// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"
#include "WornLook.h"

namespace {

const norvo::TestLook s_look([] {
    if (auto* const application = qobject_cast<QApplication*>(QCoreApplication::instance())) {
        norvo::wearLook(*application);
    }
});

} // namespace
