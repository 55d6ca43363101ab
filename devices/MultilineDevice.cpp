// SPDX-License-Identifier: GPL-3.0-or-later

#include "devices/MultilineDevice.h"

MultilineDevice::MultilineDevice()
{
    addParam(kFontSize, "30");
    addParam(kDisableScrolling, "false");
}

void MultilineDevice::input(unsigned char value)
{
    input(QString::number(value, 10));
}

void MultilineDevice::input(int value)
{
    input(QString::number(value, 10));
}

void MultilineDevice::input(QString value)
{
    if (isRunning()) {
        emit output(value);
    }
}

void MultilineDevice::input(double value)
{
    input(QString::number(value, 'g', 6));
}

void MultilineDevice::input(QByteArray value)
{
    QByteArray dump = value.toHex(' ').toUpper();
    if (!dump.isEmpty()) {
        dump += ' ';
    }
    input(QString::fromLatin1(dump));
}

void MultilineDevice::input(bool value)
{
    input(QString(value ? "true" : "false"));
}
