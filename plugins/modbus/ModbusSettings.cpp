// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/modbus/ModbusSettings.h"

#include <QUrl>

#include <algorithm>

namespace norvo {

namespace {

constexpr int kDefaultPort = 502;
constexpr int kMaxMs = 3600000;

const QStringList kParities{"even", "odd", "none"};

void declareOne(ParametersEntity& entity, const QString& name, const QString& value,
                const QString& description, const QString& unit = {})
{
    entity.addParam(name, value);
    entity.getParam(name).setDescription(description);
    entity.getParam(name).setUnit(unit);
}

QString readWhole(ParametersEntity& entity, const QString& name, int min, int max, int& value)
{
    const QString text = entity.getParam(name).value();
    bool isNumber = false;
    value = text.trimmed().toInt(&isNumber);
    return isNumber && value >= min && value <= max
               ? QString()
               : QString("parameter \"%1\": \"%2\" is not a whole number from %3 to %4")
                     .arg(name, text)
                     .arg(min)
                     .arg(max);
}

} // namespace

void ModbusSettings::declare(ParametersEntity& entity)
{
    declareOne(entity, "target", "", "The server: tcp://host:port or rtu:///dev/name");
    declareOne(entity, "unit", "1", "Number of the server on its line, or behind its gateway");
    declareOne(entity, "poll", "500", "Time between two readings of all values", "ms");
    declareOne(entity, "timeout", "500", "How long to wait for one answer", "ms");
    declareOne(entity, "retries", "1", "How often a request for values without answer is repeated");
    declareOne(entity, "baud", "19200", "Of a serial line: bits per second");
    entity.addParam("parity", kParities);
    entity.getParam("parity").setDescription("Of a serial line");
    entity.addParam("stopBits", QStringList{"1", "2"});
    entity.getParam("stopBits").setDescription("Of a serial line");
}

QString ModbusSettings::read(ParametersEntity& entity)
{
    target = entity.getParam("target").value().trimmed();
    QString wrong = readTarget();
    if (!wrong.isEmpty()) {
        return wrong;
    }
    for (const QString& error :
         {readWhole(entity, "unit", isSerial() ? 1 : 0, isSerial() ? 247 : 255, unit),
          readWhole(entity, "poll", 10, kMaxMs, pollMs),
          readWhole(entity, "timeout", 10, 60000, timeoutMs),
          readWhole(entity, "retries", 0, 10, retries),
          readWhole(entity, "baud", 50, 4000000, serial.baud)}) {
        if (!error.isEmpty()) {
            return error;
        }
    }
    constexpr QSerialPort::Parity parities[] = {QSerialPort::EvenParity, QSerialPort::OddParity,
                                                QSerialPort::NoParity};
    serial.parity = parities[std::max(0, kParities.indexOf(entity.getParam("parity")))];
    serial.stopBits =
        entity.getParam("stopBits").value() == "2" ? QSerialPort::TwoStop : QSerialPort::OneStop;
    return {};
}

QString ModbusSettings::readTarget()
{
    const QUrl url(target, QUrl::StrictMode);
    const bool isBare = url.userInfo().isEmpty() && !url.hasFragment() && !url.hasQuery();
    const bool isHost = url.scheme() == "tcp" && !url.host().isEmpty() && url.path().size() < 2;
    const bool isFile = url.scheme() == "rtu" && url.host().isEmpty() && url.path().startsWith('/');
    host = isHost ? url.host() : QString();
    port = quint16(url.port(kDefaultPort));
    serial.path = isFile ? url.path() : QString();
    return isBare && (isHost || isFile) ? QString()
                                        : QString("parameter \"target\": \"%1\" is neither "
                                                  "tcp://host:port nor rtu:///dev/name")
                                              .arg(target);
}

} // namespace norvo
