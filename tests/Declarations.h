// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/ParametersEntity.h"

#include <QMetaMethod>
#include <QStringList>

/// A device's declared parameters as a table, one line each in the order of declaration and without
/// the host's five placement parameters: `name = default [option, option]`, then whatever else was
/// said of it.
inline QStringList parameterTable(ParametersEntity& entity)
{
    static const QStringList placement{"widget/row", "widget/column", "widget/rowspan",
                                       "widget/colspan", "widget/area"};
    QStringList table;
    const QStringList names = entity.paramNames();
    for (const QString& name : names) {
        if (placement.contains(name)) {
            continue;
        }
        const Param& param = entity.getParam(name);
        QString line = param.name() + " = " + param.defaultValue();
        if (!param.options().isEmpty()) {
            line += " [" + param.options().join(", ") + "]";
        }
        if (!param.displayName().isEmpty()) {
            line += " shown as " + param.displayName();
        }
        if (!param.description().isEmpty()) {
            line += " described as " + param.description();
        }
        if (!param.unit().isEmpty()) {
            line += " in " + param.unit();
        }
        const Param::EnabledConditions conditions = param.enabledConditions();
        for (auto other = conditions.cbegin(); other != conditions.cend(); ++other) {
            line += " when " + other.key() + " is " + other->join(" or ");
        }
        table.append(line + (param.flag() ? "" : " without the flag"));
    }
    return table;
}

/// The methods that a class itself declares, in meta-object order: `signal toggled(bool)`.
inline QStringList methodTable(const QMetaObject& meta)
{
    QStringList table;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        const char* kind = method.methodType() == QMetaMethod::Signal ? "signal " : "slot ";
        table.append(kind + QString::fromLatin1(method.methodSignature()) +
                     (method.access() == QMetaMethod::Public ? "" : " (not public)"));
    }
    return table;
}
