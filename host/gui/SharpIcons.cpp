// SPDX-License-Identifier: LGPL-3.0-or-later

#include <QCoreApplication>

namespace {

/// Without this Qt draws the icons of style sheets in single resolution on every screen. It holds
/// for the whole process, as Qt knows no narrower place. It is set here rather than by norvo-panel,
/// since the icons are this library's and every host that loads it shows them.
void useSharpIcons()
{
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(useSharpIcons)
