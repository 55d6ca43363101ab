// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/websocket/ServerSettings.h"

#include "norvo/ParametersEntity.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace norvo {

namespace {

constexpr qint64 kMaxFileSize = 1048576;
constexpr double kMinSilence = 0.5; ///< In seconds, as the next one.
constexpr double kMaxSilence = 3600;

QString readUrl(const QString& text, ServerSettings& settings)
{
    static const QString right = "write ws://host, ws://host:9090/path or wss://host";

    const QUrl url(text.trimmed(), QUrl::StrictMode);
    if (!url.userInfo().isEmpty()) {
        return "an address holds no user and no password; give them by \"headerFile\"";
    }
    const bool isRight = url.isValid() && (url.scheme() == "ws" || url.scheme() == "wss") &&
                         !url.host().isEmpty() && !url.hasFragment() && url.port() != 0;
    settings.url = url;
    return isRight          ? QString()
           : text.isEmpty() ? "it is empty; " + right
                            : QString("\"%1\" is not the address of a server; %2").arg(text, right);
}

QString readFile(const QString& path, QByteArray& bytes)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        return QString("cannot read \"%1\"").arg(path);
    }
    bytes = file.read(kMaxFileSize + 1);
    return bytes.size() <= kMaxFileSize ? QString()
                                        : QString("\"%1\" is longer than 1 MiB").arg(path);
}

QString readAuthorities(const QString& path, ServerSettings& settings)
{
    if (path.isEmpty()) {
        return {};
    }
    if (settings.url.scheme() != "wss") {
        return "ws:// is not encrypted; write wss:// in \"url\"";
    }
    QByteArray bytes;
    const QString error = readFile(path, bytes);
    settings.authorities = QSslCertificate::fromData(bytes, QSsl::Pem);
    return !error.isEmpty() || !settings.authorities.isEmpty()
               ? error
               : QString("\"%1\" holds no certificate in PEM").arg(path);
}

QString readHeaders(const QString& path, ServerSettings& settings)
{
    // What belongs to the protocol is not for a file to say.
    static const QRegularExpression form(
        "^(?!(?:host|connection|upgrade|content-|transfer-|sec-websocket-))"
        "([!#$%&'*+.^_`|~0-9a-z-]+):[ \\t]*([ \\t\\x21-\\x7e]*?)[ \\t]*$",
        QRegularExpression::CaseInsensitiveOption);

    QByteArray bytes;
    QString error = path.isEmpty() ? QString() : readFile(path, bytes);
    int number = 0;
    for (const QByteArray& line : bytes.split('\n')) {
        ++number;
        if (line.trimmed().isEmpty()) {
            continue;
        }
        const auto match = form.match(QString::fromLatin1(line.trimmed()));
        if (!match.hasMatch()) { // The line itself may be a secret.
            return QString("line %1 of \"%2\" is not a header; write such as "
                           "Authorization: Bearer ...")
                .arg(number)
                .arg(path);
        }
        settings.headers.append({match.captured(1).toLatin1(), match.captured(2).toLatin1()});
    }
    return error;
}

QString readSilence(double seconds, ServerSettings& settings)
{
    if (!(seconds >= kMinSilence && seconds <= kMaxSilence)) {
        return QString("%1 is not from %2 to %3").arg(seconds).arg(kMinSilence).arg(kMaxSilence);
    }
    settings.maxSilence = std::chrono::milliseconds(qint64(seconds * 1000));
    return {};
}

} // namespace

void declareSettings(ParametersEntity& entity)
{
    const auto declare = [&entity](const char* name, const char* value, const char* description) {
        entity.addParam(name, QString(value));
        entity.getParam(name).setDescription(description);
    };
    declare("url", "", "Address of the server: ws://host:9090/path or wss://host");
    declare("caFile", "", "Certificates of the authorities that the server's one is checked with");
    declare("headerFile", "", "File with a header in each line that the server is asked with");
    declare("keepAlive", "2", "How long the server may be silent before it counts as away");
    entity.getParam("keepAlive").setUnit("s");
}

QString readSettings(ParametersEntity& entity, ServerSettings& settings)
{
    settings = ServerSettings();
    QString wrong = "url";
    QString error = readUrl(entity.getParam(wrong), settings);
    if (error.isEmpty()) {
        wrong = "caFile";
        error = readAuthorities(entity.getParam(wrong), settings);
    }
    if (error.isEmpty()) {
        wrong = "headerFile";
        error = readHeaders(entity.getParam(wrong), settings);
    }
    if (error.isEmpty()) {
        wrong = "keepAlive";
        error = readSilence(entity.getParam(wrong), settings);
    }
    return error.isEmpty() ? QString() : QString("parameter \"%1\": %2").arg(wrong, error);
}

} // namespace norvo
