// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVector>

namespace norvo {

/// A serial port that is plugged in by USB.
struct UsbPort
{
    int vendor;
    int product;
    QString serialNumber; ///< Often empty.
    QString path;
};

/// A port by its path, or by what is plugged in: "usb:0403:6001", with ":" and a serial number
/// behind it where there are several of the kind.
class PortName
{
public:
    /// What is wrong with the text, and the name is as before, or an empty text.
    QString define(const QString& text);

    bool isUsb() const { return m_vendor >= 0; }
    /// Where the port is, as it stands now; empty, and `error` says why, where it is not there.
    QString find(QString& error) const;
    /// The same of those ports.
    QString findAmong(const QVector<UsbPort>& ports, QString& error) const;

private:
    QString m_text;
    int m_vendor = -1; ///< Below 0: the text is a path.
    int m_product = 0;
    QString m_serialNumber;
};

} // namespace norvo
