// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

/// What the host knows of a device type without making a device of it.
struct DeviceTypeInfo
{
    static constexpr qint32 kWithWidget = 2;             ///< A kind; the other one is 0.
    static constexpr qint32 kMethodsAfterInitialise = 1; ///< A flag.

    QString title;            ///< Empty: the type key is shown.
    QString description;      ///< May be empty.
    QStringList categories;   ///< The places of the type in the catalogue; see Categories.h.
    qint32 kind = 0;          ///< kWithWidget, or 0 without a widget.
    qint32 flag = 0;          ///< Whether methods are known only after initialise().
    QString widgetGroup = {}; ///< The group of the parameters that only shape the widget.
};
