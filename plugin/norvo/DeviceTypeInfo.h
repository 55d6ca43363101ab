#pragma once

#include <QString>
#include <QStringList>

/// What the host knows of a device type without making a device of it.
struct DeviceTypeInfo
{
    QString title;          ///< Empty: the type key is shown.
    QString description;    ///< May be empty.
    QStringList categories; ///< The places of the type in the catalogue; see Categories.h.
    qint32 kind = 0;        ///< 2: has a widget; 0: has none.
    qint32 flag = 0;        ///< 1: outputs and inputs are known only after initialise().
    QString widgetGroup;    ///< The group of the parameters that only shape the widget.
};
