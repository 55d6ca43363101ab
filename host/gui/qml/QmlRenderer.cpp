#include "host/gui/qml/QmlRenderer.h"

#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QQuickWindow>

namespace norvo {

namespace {

bool hasOpenGl()
{
    if (QGuiApplication::platformName() == "offscreen") {
        return false; // It may offer one, of a display that is there by chance.
    }
    QOffscreenSurface surface;
    surface.create();
    QOpenGLContext context;
    return context.create() && context.makeCurrent(&surface);
}

bool isChosen()
{
    return !QQuickWindow::sceneGraphBackend().isEmpty() ||
           !qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND") ||
           !qEnvironmentVariableIsEmpty("QMLSCENE_DEVICE");
}

} // namespace

void chooseQuickRenderer()
{
    static bool isDone = false;
    if (isDone || !qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        return;
    }
    isDone = true;
    if (!isChosen() && !hasOpenGl()) {
        QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software);
    }
}

} // namespace norvo
