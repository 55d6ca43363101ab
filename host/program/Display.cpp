// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/Display.h"

#include "host/program/Console.h"

#include <unistd.h>

#include <vector>

namespace norvo {

namespace {

const QString kAdvice = QStringLiteral("a picture of the panel needs no display: norvo-panel "
                                       "--screenshot OUT.png PANEL.yaml");

struct Message
{
    QtMsgType type;
    QString text;
};

std::vector<Message>* s_held = nullptr; ///< The messages held back while a MessageKeeper lives.

/// Holds back what Qt reports while the display is being opened. A fatal message ends the process
/// in one line, with the first thing that Qt had to say for a reason.
void holdMessage(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    s_held->push_back({type, text.simplified()});
    if (type == QtFatalMsg) {
        Console::complain(
            QString("the display cannot be opened (%1); %2").arg(s_held->front().text, kAdvice));
        Console::finish();
        _exit(1);
    }
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

    void passOn() const
    {
        for (const Message& message : m_messages) {
            m_before(message.type, QMessageLogContext(), message.text);
        }
    }

private:
    std::vector<Message> m_messages;
    QtMessageHandler m_before;
};

bool displayIsNamed(const QStringList& qtArguments)
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") || qtArguments.contains("-platform") ||
           qtArguments.contains("-display");
}

/// The command line as Qt sees it, which keeps references to it to the end. Where to draw is said
/// by an option, so that child processes do not inherit it.
QApplication* makeApplication(Display::Kind kind, const QStringList& qtArguments)
{
    QStringList arguments("norvo-panel");
    if (kind == Display::Kind::OffScreen) {
        arguments << "-platform"
                  << "offscreen";
    }
    static std::vector<QByteArray> texts;
    static std::vector<char*> pointers;
    for (const QString& argument : arguments + qtArguments) {
        texts.push_back(argument.toLocal8Bit());
    }
    pointers.reserve(texts.size() + 1);
    for (QByteArray& text : texts) {
        pointers.push_back(text.data());
    }
    static int count = int(pointers.size());
    pointers.push_back(nullptr);
    return new QApplication(count, pointers.data());
}

} // namespace

std::unique_ptr<QApplication> Display::open(Kind kind, const QStringList& qtArguments,
                                            QString& reason)
{
    if (kind == Kind::Screen && !displayIsNamed(qtArguments)) {
        reason = "there is no display (neither DISPLAY nor WAYLAND_DISPLAY is set); " + kAdvice;
        return nullptr;
    }
    std::unique_ptr<QApplication> application;
    {
        const MessageKeeper keeper;
        application.reset(makeApplication(kind, qtArguments));
        keeper.passOn();
    }
    return application;
}

} // namespace norvo
