// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/Display.h"

#include "host/program/streams/Console.h"

#include <QFont>
#include <QPair>
#include <QVector>

#include <unistd.h>

#include <utility>
#include <vector>

namespace norvo {

namespace {

const QString kAdvice = QStringLiteral("a picture of the panel needs no display: norvo-panel "
                                       "--screenshot OUT.png PANEL.yaml");

/// What Qt reported while the display was being opened.
QVector<QPair<QtMsgType, QString>> s_held;

/// A fatal message ends the process in one line, with the first thing that Qt had to say for a
/// reason.
void holdMessage(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    s_held.append({type, text.simplified()});
    if (type == QtFatalMsg) {
        Console::reportError(
            QString("the display cannot be opened (%1); %2").arg(s_held.first().second, kAdvice));
        Console::finish();
        _exit(1);
    }
}

bool displayIsNamed(const QStringList& qtArguments)
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") || qtArguments.contains("-platform") ||
           qtArguments.contains("-display");
}

/// NAME=VALUE of the first variable that makes Qt draw smaller; empty where none does.
QString shrinkingFactor()
{
    for (const char* const name : {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS"}) {
        const QString value = qEnvironmentVariable(name);
        for (const QString& screen : value.split(';')) { // "1.5;2" or "HDMI-1=1.5;HDMI-2=2"
            bool isNumber = false;
            const double factor = screen.section('=', -1).toDouble(&isNumber);
            if (isNumber && factor > 0 && factor < 1) {
                return QString("%1=%2").arg(name, value);
            }
        }
    }
    return {};
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
    const QString factor = shrinkingFactor();
    if (!factor.isEmpty()) {
        reason = QString("%1 is below 1, which Qt cannot draw without holes; \"fit: scale\" and "
                         "\"design: WxH\" in the panel file draw a panel smaller")
                     .arg(factor);
        return nullptr;
    }
    const QtMessageHandler usualHandler = qInstallMessageHandler(holdMessage);
    std::unique_ptr<QApplication> application(makeApplication(kind, qtArguments));
    qInstallMessageHandler(usualHandler);
    for (const auto& [type, text] : qAsConst(s_held)) {
        usualHandler(type, QMessageLogContext(), text);
    }
    s_held.clear();
    return application;
}

/// Qt looks at what stands in for a family only when that family is not installed. For Arial, which
/// most texts ask for, the system's own settings of fonts name Liberation Sans; named here too, Qt
/// would search all fonts a second time at each start.
void Display::substituteFonts()
{
    for (const auto& [family, replacement] :
         {std::pair("Digital-7", "DSEG7 Classic"), std::pair("Courier", "Liberation Mono")}) {
        QFont::insertSubstitution(family, replacement);
    }
}

} // namespace norvo
