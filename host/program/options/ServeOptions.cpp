// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/options/ServeOptions.h"

#include <QCommandLineParser>
#include <QFile>
#include <QRegularExpression>

#include <arpa/inet.h>

namespace norvo {

namespace {

const QCommandLineOption kServe("serve", {}, "[ADDRESS:]PORT");
const QCommandLineOption kToken("serve-token", {}, "FILE");
const QCommandLineOption kCertificate("serve-cert", {}, "FILE");
const QCommandLineOption kKey("serve-key", {}, "FILE");
const QCommandLineOption kViewers("serve-viewers", {}, "N");

constexpr int kMinToken = 16; // Characters; fewer could be guessed.
constexpr int kMaxToken = 1000;
constexpr int kMaxViewers = 100;

// By the system, as Qt's network would cost the start of every panel.
bool isAddress(const QString& text)
{
    in6_addr bytes{};
    return ::inet_pton(AF_INET, text.toLatin1().constData(), &bytes) == 1 ||
           ::inet_pton(AF_INET6, text.toLatin1().constData(), &bytes) == 1;
}

bool isLoopback(const QString& address)
{
    return address == "::1" || (address.startsWith("127.") && isAddress(address));
}

/// "8080", "0.0.0.0:8080", "[::1]:8080", "localhost:8080".
void readPlace(const QString& text, ViewSettings& settings, QString& error)
{
    static const QRegularExpression pattern("^(?:(.+):)?(\\d{1,5})$");
    const auto match = pattern.match(text);
    const int port = match.captured(2).toInt();
    QString address = match.captured(1);
    static const QRegularExpression brackets("^\\[(.*:.*)\\]$");
    const auto inBrackets = brackets.match(address);
    address = inBrackets.hasMatch()    ? inBrackets.captured(1)
              : address == "localhost" ? QString("127.0.0.1")
                                       : address;
    const bool isBare = !inBrackets.hasMatch() && address.contains(':');
    if (!match.hasMatch() || port > 65535 || isBare ||
        (!address.isEmpty() && !isAddress(address))) {
        error = QString("--serve needs a port, or an address and a port like 0.0.0.0:8080 or "
                        "[::]:8080, not \"%1\"")
                    .arg(text);
        return;
    }
    settings.address = address.isEmpty() ? settings.address : address;
    settings.port = quint16(port);
}

void readToken(const QString& fileName, ViewSettings& settings, QString& error)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        error = QString("--serve-token: %1: %2").arg(fileName, file.errorString());
        return;
    }
    settings.token = file.readLine(kMaxToken + 2).trimmed();
    if (settings.token.size() < kMinToken || settings.token.size() > kMaxToken) {
        error = QString("--serve-token: the first line of %1 is to be the token, of %2 to %3 "
                        "characters")
                    .arg(fileName)
                    .arg(kMinToken)
                    .arg(kMaxToken);
    }
}

void readViewers(const QString& text, ViewSettings& settings, QString& error)
{
    bool isNumber = false;
    settings.maxViewers = text.toInt(&isNumber);
    if (!isNumber || settings.maxViewers < 1 || settings.maxViewers > kMaxViewers) {
        error = QString("--serve-viewers needs a number from 1 to %1, not \"%2\"")
                    .arg(kMaxViewers)
                    .arg(text);
    }
}

} // namespace

QList<QCommandLineOption> ServeOptions::all()
{
    return {kServe, kToken, kCertificate, kKey, kViewers};
}

std::optional<ViewSettings> ServeOptions::read(const QCommandLineParser& parser, QString& error)
{
    if (!parser.isSet(kServe)) {
        for (const QCommandLineOption* option : {&kToken, &kCertificate, &kKey, &kViewers}) {
            if (parser.isSet(*option)) {
                error = QString("--%1 goes with --serve only").arg(option->names().constFirst());
            }
        }
        return std::nullopt;
    }
    ViewSettings settings;
    readPlace(parser.value(kServe), settings, error);
    if (error.isEmpty() && parser.isSet(kToken)) {
        readToken(parser.value(kToken), settings, error);
    }
    if (error.isEmpty() && parser.isSet(kViewers)) {
        readViewers(parser.value(kViewers), settings, error);
    }
    settings.certificateFile = parser.value(kCertificate);
    settings.keyFile = parser.value(kKey);
    if (error.isEmpty() && settings.certificateFile.isEmpty() != settings.keyFile.isEmpty()) {
        error = "--serve-cert and --serve-key need each other";
    }
    if (error.isEmpty() && settings.token.isEmpty() && !isLoopback(settings.address)) {
        error = QString("--serve at %1 can be reached from other machines and needs --serve-token "
                        "FILE, a file whose first line is what viewers must know")
                    .arg(settings.address);
    }
    return settings;
}

} // namespace norvo
