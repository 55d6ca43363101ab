// SPDX-License-Identifier: GPL-3.0-or-later

#include "devices/QmlParts.h"

#include "norvo/LibraryPart.h"

const QmlParts* qmlParts(QString& error)
{
    static const char here = 0;
    const auto parts = reinterpret_cast<decltype(&norvoQmlParts)>(
        norvo::symbolOfPart(&here, "qml/libnorvoqmlwidget.so", "norvoQmlParts", error));
    return parts ? parts() : nullptr;
}
