#include "host/program/Display.h"

#include "host/gui/qml/QmlRenderer.h"

#include <cstdio>
#include <unistd.h>

namespace norvo {

namespace {

const QString kAdvice = QStringLiteral("a picture of the panel needs no display: norvo-panel "
                                       "--screenshot OUT.png PANEL.yaml");

QStringList* s_held = nullptr; ///< The messages held back while a MessageKeeper lives.

/// Holds back what Qt says while the display is being opened. A fatal message ends the process in
/// one line, with the first thing that Qt had to say for a reason.
void holdMessage(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    s_held->append(message.simplified());
    if (type != QtFatalMsg) {
        return;
    }
    const QString line = QString("norvo-panel: the display cannot be opened (%1); %2\n")
                             .arg(s_held->constFirst(), kAdvice);
    std::fputs(qPrintable(line), stderr);
    std::fflush(stderr);
    _exit(1);
}

class MessageKeeper
{
public:
    MessageKeeper() : m_before(qInstallMessageHandler(holdMessage)) { s_held = &m_messages; }
    ~MessageKeeper()
    {
        qInstallMessageHandler(m_before);
        s_held = nullptr;
    }
    Q_DISABLE_COPY(MessageKeeper)

    const QStringList& messages() const { return m_messages; }

private:
    QStringList m_messages;
    QtMessageHandler m_before;
};

QtMessageHandler s_usualHandler = nullptr;

/// What the off-screen platform says of itself is true and helps nobody.
void dropPlatformRemarks(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (!message.startsWith("This plugin does not support ")) {
        s_usualHandler(type, context, message);
    }
}

bool isOffScreen()
{
    return QGuiApplication::platformName() == "offscreen";
}

bool displayIsNamed()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

/// The command line as Qt sees it, which keeps references to it: of ours it knows nothing, and an
/// option says where to draw so that child processes do not inherit it.
QApplication* makeApplication(Display::Kind kind)
{
    static char program[] = "norvo-panel";
    static char option[] = "-platform";
    static char platform[] = "offscreen";
    static char* arguments[] = {program, option, platform, nullptr};
    static int count = 3;
    if (kind == Display::Kind::Screen) {
        count = 1;
        arguments[1] = nullptr;
    }
    return new QApplication(count, arguments);
}

} // namespace

std::unique_ptr<QApplication> Display::open(Kind kind, QString& reason)
{
    if (kind == Kind::Screen && !displayIsNamed()) {
        reason = "there is no display (neither DISPLAY nor WAYLAND_DISPLAY is set); " + kAdvice;
        return nullptr;
    }
    std::unique_ptr<QApplication> application;
    QStringList messages;
    {
        const MessageKeeper keeper;
        application.reset(makeApplication(kind));
        messages = keeper.messages();
    }
    for (const QString& message : qAsConst(messages)) {
        qWarning().noquote() << message;
    }
    {
        const MessageKeeper
            keeper; // What a platform without OpenGL says to the question is no news.
        chooseQuickRenderer();
    }
    if (isOffScreen() && !s_usualHandler) {
        s_usualHandler = qInstallMessageHandler(dropPlatformRemarks);
    }
    return application;
}

} // namespace norvo
