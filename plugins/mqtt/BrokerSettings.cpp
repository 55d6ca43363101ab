// SPDX-License-Identifier: LGPL-3.0-or-later

#include "plugins/mqtt/BrokerSettings.h"

#include "plugins/mqtt/TopicPort.h"
#include "norvo/ParametersEntity.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QUuid>

#include <algorithm>

namespace norvo {

namespace {

constexpr int kMaxPasswordLength = 4096;
constexpr double kMinSilence = 0.5; ///< In seconds, as the next one.
constexpr double kMaxSilence = 3600;
constexpr int kPort = 1883;
constexpr int kEncryptedPort = 8883;

QString about(const QString& param, const QString& error)
{
    return QString("parameter \"%1\": %2").arg(param, error);
}

QString readAddress(const QString& text, BrokerSettings& settings)
{
    static const QRegularExpression form(
        R"x(^(mqtts?)://(?:\[([0-9A-Fa-f:.]+)\]|([^\s/:@\[\]]+))(?::([0-9]{1,5}))?/?$)x");
    static const QString right = "write mqtt://host, mqtt://host:1883 or mqtts://host:8883";

    if (text.isEmpty()) {
        return "it is empty; " + right;
    }
    if (text.contains('@')) {
        return "an address holds no user and no password; give them by \"user\" and "
               "\"passwordFile\"";
    }
    const auto match = form.match(text);
    if (!match.hasMatch()) {
        return QString("\"%1\" is not the address of a broker; %2").arg(text, right);
    }
    settings.isEncrypted = match.captured(1) == "mqtts";
    settings.host = (match.captured(2) + match.captured(3)).toUtf8();
    const QString port = match.captured(4);
    settings.port = port.isEmpty() ? (settings.isEncrypted ? kEncryptedPort : kPort) : port.toInt();
    return settings.port >= 1 && settings.port <= 65535
               ? QString()
               : QString("port %1 is not one from 1 to 65535").arg(port);
}

/// The first line of the file.
QString readPassword(const QString& path, QByteArray& password)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return QString("cannot read \"%1\": %2").arg(path, file.errorString());
    }
    password = file.read(kMaxPasswordLength + 1);
    const int end = password.indexOf('\n');
    password.truncate(end < 0 ? password.size() : end);
    if (password.endsWith('\r')) {
        password.chop(1);
    }
    const bool isRight = !password.isEmpty() && password.size() <= kMaxPasswordLength;
    return isRight ? QString()
                   : QString("the first line of \"%1\" is not a password; it has 1 to %2 bytes")
                         .arg(path)
                         .arg(kMaxPasswordLength);
}

/// Takes the name of a file that must be there.
QString readFileName(const QString& path, QByteArray& name)
{
    name = QFile::encodeName(path);
    const QFileInfo file(path);
    return path.isEmpty() || (file.isFile() && file.isReadable())
               ? QString()
               : QString("cannot read \"%1\"").arg(path);
}

QString readFiles(ParametersEntity& entity, BrokerSettings& settings)
{
    const std::pair<const char*, QByteArray*> files[] = {
        {"caFile", &settings.caFile},
        {"certificateFile", &settings.certificateFile},
        {"keyFile", &settings.keyFile}};
    for (const auto& [param, name] : files) {
        const QString error = readFileName(entity.getParam(param), *name);
        if (!error.isEmpty()) {
            return about(param, error);
        }
        if (!name->isEmpty() && !settings.isEncrypted) {
            return about(param, "mqtt:// is not encrypted; write mqtts:// in \"broker\"");
        }
    }
    if (settings.certificateFile.isEmpty() != settings.keyFile.isEmpty()) {
        return about(settings.keyFile.isEmpty() ? "certificateFile" : "keyFile",
                     "\"certificateFile\" and \"keyFile\" are given together");
    }
    return {};
}

QString readUser(ParametersEntity& entity, BrokerSettings& settings)
{
    settings.user = QString(entity.getParam("user")).toUtf8();
    const QString passwordFile = entity.getParam("passwordFile");
    if (passwordFile.isEmpty()) {
        return {};
    }
    if (settings.user.isEmpty()) {
        return about("passwordFile", "a password needs a \"user\"");
    }
    const QString error = readPassword(passwordFile, settings.password);
    return error.isEmpty() ? QString() : about("passwordFile", error);
}

} // namespace

QString BrokerSettings::address() const
{
    const QString name = QString::fromUtf8(host);
    return QString("%1://%2:%3")
        .arg(isEncrypted ? "mqtts" : "mqtt", name.contains(':') ? '[' + name + ']' : name)
        .arg(port);
}

void declareSettings(ParametersEntity& entity)
{
    const auto declare = [&entity](const char* name, const char* value, const char* description) {
        entity.addParam(name, QString(value));
        entity.getParam(name).setDescription(description);
    };
    declare("broker", "", "Address of the broker: mqtt://host:1883 or mqtts://host:8883");
    declare("user", "", "Name by which the broker knows the panel");
    declare("passwordFile", "", "File whose first line is the password");
    declare("clientId", "", "Name of the connection; empty: another one for each start");
    declare("status", "", "Topic that holds online while the panel is connected, else offline");
    declare("keepAlive", "2", "How long the broker may be silent before it counts as away");
    entity.getParam("keepAlive").setUnit("s");
    declare("caFile", "", "Certificates of the authorities that the broker's one is checked with");
    declare("certificateFile", "", "The panel's own certificate");
    declare("keyFile", "", "The key of the panel's own certificate");
    entity.addParam("version", QStringList{"v5", "v3.1.1"});
    entity.getParam("version").setDescription("Version of the protocol");
}

QString readSettings(ParametersEntity& entity, BrokerSettings& settings)
{
    QString error = readAddress(entity.getParam("broker"), settings);
    if (!error.isEmpty()) {
        return about("broker", error);
    }
    error = readUser(entity, settings);
    error = error.isEmpty() ? readFiles(entity, settings) : error;
    if (!error.isEmpty()) {
        return error;
    }
    settings.statusTopic = QString(entity.getParam("status")).toUtf8();
    error = settings.statusTopic.isEmpty() ? QString() : topicError(settings.statusTopic);
    if (!error.isEmpty()) {
        return about("status", error);
    }
    const double silence = entity.getParam("keepAlive");
    if (!(silence >= kMinSilence && silence <= kMaxSilence)) {
        return about(
            "keepAlive",
            QString("%1 is not from %2 to %3").arg(silence).arg(kMinSilence).arg(kMaxSilence));
    }
    settings.maxSilence = std::chrono::milliseconds(qint64(silence * 1000));
    settings.isVersion5 = QString(entity.getParam("version")) != "v3.1.1";
    settings.clientId = QString(entity.getParam("clientId")).toUtf8();
    if (settings.clientId.isEmpty()) {
        settings.clientId = "norvo" + QUuid::createUuid().toRfc4122().toHex().left(16);
    }
    return {};
}

} // namespace norvo
