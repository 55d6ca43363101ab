// SPDX-License-Identifier: GPL-3.0-or-later

#include "devices/QmlParts.h"

/// Programs that link the plug-in's classes have this part among them.
const QmlParts* qmlParts(QString&)
{
    return norvoQmlParts();
}
