// SPDX-License-Identifier: LGPL-3.0-or-later

#include "norvo/SourceDevice.h"

void SourceDevice::setConnected(bool on)
{
    if (m_connected != on) {
        m_connected = on;
        emit connected(on);
    }
}

void SourceDevice::reportFault(const QString& text)
{
    alert(text);
    emit fault(text);
}
