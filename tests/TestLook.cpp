// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"

#include "host/window/look/Look.h"

namespace {

/// NORVO_TEST_LOOK=light or dark: the types are tested as a panel shows them.
void wearLook()
{
    const QByteArray theme = qgetenv("NORVO_TEST_LOOK");
    auto* const application = qobject_cast<QApplication*>(QCoreApplication::instance());
    if (!application || theme.isEmpty()) {
        return;
    }
    norvo::PanelLook look;
    look.theme = theme == "dark" ? norvo::PanelLook::Theme::Dark : norvo::PanelLook::Theme::Light;
    norvo::Look::apply(*application, look);
}

const norvo::TestLook s_look(wearLook);

} // namespace
