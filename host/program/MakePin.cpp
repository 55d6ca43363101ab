// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/MakePin.h"

#include "host/program/streams/Console.h"
#include "host/services/access/PinHash.h"

#include <QByteArray>
#include <QString>

#include <algorithm>

#include <termios.h>
#include <unistd.h>

namespace norvo {

namespace {

/// Keeps what is typed off the terminal; a signal that came meanwhile would leave it so.
class NoEcho
{
public:
    NoEcho() : m_isOn(::tcgetattr(STDIN_FILENO, &m_before) == 0)
    {
        termios quiet = m_before;
        quiet.c_lflag &= ~tcflag_t(ECHO | ISIG);
        m_isOn = m_isOn && ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &quiet) == 0;
    }
    ~NoEcho()
    {
        if (m_isOn) {
            ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &m_before);
        }
    }
    Q_DISABLE_COPY(NoEcho)

private:
    termios m_before = {};
    bool m_isOn = false;
};

QString readLine()
{
    constexpr int maxLength = 1000;
    QByteArray line;
    char character = 0;
    while (line.size() < maxLength && ::read(STDIN_FILENO, &character, 1) == 1 &&
           character != '\n') {
        line += character;
    }
    return QString::fromUtf8(line).trimmed();
}

/// What is wrong with it, or nothing. Only what the PIN pad has keys for.
QString errorOf(const QString& pin)
{
    const bool isDigits = std::all_of(pin.cbegin(), pin.cend(), [](QChar character) {
        return character >= '0' && character <= '9';
    });
    return isDigits && pin.size() >= PinHash::kMinDigits && pin.size() <= PinHash::kMaxDigits
               ? QString()
               : QString("a PIN has %1 to %2 digits and nothing else")
                     .arg(PinHash::kMinDigits)
                     .arg(PinHash::kMaxDigits);
}

int fail(const QString& error)
{
    Console::reportError(error);
    return 1;
}

} // namespace

int makePin()
{
    if (!PinHash::isAvailable()) {
        return fail(PinHash::kUnavailable);
    }
    const bool isTerminal = ::isatty(STDIN_FILENO) == 1;
    QString pin;
    QString again;
    {
        const NoEcho noEcho;
        if (isTerminal) {
            Console::report(
                QString("PIN, %1 digits at least; it is not shown:").arg(PinHash::kMinDigits));
        }
        pin = readLine();
        if (isTerminal && errorOf(pin).isEmpty()) {
            Console::report("The same PIN again:");
            again = readLine();
        }
    }
    if (!errorOf(pin).isEmpty()) {
        return fail(errorOf(pin));
    }
    if (isTerminal && pin != again) {
        return fail("these were two different PINs");
    }
    const QString hash = PinHash::make(pin);
    if (hash.isEmpty()) {
        return fail("there is not enough memory to make a hash");
    }
    Console::print(hash);
    Console::report("In the panel file it stands as\n"
                    "  access: {roles: {operate: \"" +
                    hash + "\"}}");
    return 0;
}

} // namespace norvo
