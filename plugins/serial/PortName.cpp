// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/serial/PortName.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSerialPortInfo>
#include <QStringList>

namespace norvo {

namespace {

QVector<UsbPort> pluggedPorts()
{
    QVector<UsbPort> ports;
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
        if (info.hasVendorIdentifier() && info.hasProductIdentifier()) {
            ports.append({info.vendorIdentifier(), info.productIdentifier(), info.serialNumber(),
                          info.systemLocation()});
        }
    }
    return ports;
}

} // namespace

QString PortName::define(const QString& text)
{
    static const QRegularExpression usb("^usb:([0-9a-f]{4}):([0-9a-f]{4})(?::(.+))?$",
                                        QRegularExpression::CaseInsensitiveOption);
    const auto match = usb.match(text);
    if (text.startsWith("usb:", Qt::CaseInsensitive) && !match.hasMatch()) {
        return QString("\"%1\" is no USB identity; write vendor and product in four hexadecimal "
                       "digits each, such as usb:0403:6001, and :SERIALNUMBER where there are "
                       "several")
            .arg(text);
    }
    if (!match.hasMatch() && !text.startsWith('/')) {
        return QString("\"%1\" is no port; write a path such as /dev/ttyUSB0, or a USB identity "
                       "such as usb:0403:6001")
            .arg(text);
    }
    m_text = text;
    m_vendor = match.hasMatch() ? match.captured(1).toInt(nullptr, 16) : -1;
    m_product = match.captured(2).toInt(nullptr, 16);
    m_serialNumber = match.captured(3);
    return {};
}

QString PortName::find(QString& error) const
{
    if (isUsb()) {
        return findAmong(pluggedPorts(), error);
    }
    if (!QFileInfo::exists(m_text)) {
        error = QString("there is no port %1").arg(m_text);
        return {};
    }
    return m_text;
}

QString PortName::findAmong(const QVector<UsbPort>& ports, QString& error) const
{
    QStringList paths;
    for (const UsbPort& port : ports) {
        if (port.vendor == m_vendor && port.product == m_product &&
            (m_serialNumber.isEmpty() || port.serialNumber == m_serialNumber)) {
            paths.append(port.path);
        }
    }
    if (paths.size() == 1) {
        return paths.constFirst();
    }
    error = paths.isEmpty()
                ? QString("there is no port with the identity %1").arg(m_text)
                : QString("%1 are all %2; write the path, or the serial number behind the identity")
                      .arg(paths.join(" and "), m_text);
    return {};
}

} // namespace norvo
