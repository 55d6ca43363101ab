#include <QCoreApplication>

namespace {

/// Without this Qt draws the icons of style sheets in single resolution on every screen.
void useSharpIcons()
{
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(useSharpIcons)
