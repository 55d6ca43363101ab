// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/qml/QmlRenderer.h"

#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QQuickWindow>

#include <algorithm>

namespace norvo {

namespace {

QtMessageHandler s_usualHandler = nullptr;

/// What a platform without OpenGL says to the question is no news.
void keepFatalMessages(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtFatalMsg && s_usualHandler) {
        s_usualHandler(type, context, message);
    }
}

bool hasUsefulOpenGl()
{
    if (QCoreApplication::testAttribute(Qt::AA_ForceRasterWidgets)) {
        return false; // The windows that stand take none.
    }
    if (QGuiApplication::platformName() == "offscreen") {
        return false; // It may offer one, of a display that is there by chance.
    }
    QOffscreenSurface surface;
    surface.create();
    QOpenGLContext context;
    if (!context.create() || !context.makeCurrent(&surface)) {
        return false;
    }
    const GLubyte* const name = context.functions()->glGetString(GL_RENDERER);
    return !isSoftwareOpenGl(reinterpret_cast<const char*>(name));
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
    if (isChosen()) {
        return;
    }
    s_usualHandler = qInstallMessageHandler(keepFatalMessages);
    const bool useHardware = hasUsefulOpenGl();
    qInstallMessageHandler(s_usualHandler);
    if (!useHardware) {
        QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software);
    }
}

bool isSoftwareOpenGl(const QByteArray& renderer)
{
    const QByteArray name = renderer.toLower();
    const auto names = {"llvmpipe", "softpipe", "swrast", "software rasterizer", "swiftshader"};
    return name.isEmpty() || std::any_of(names.begin(), names.end(), [&name](const char* software) {
               return name.contains(software);
           });
}

} // namespace norvo
