// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "norvo/Export.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <utility>

/// One parameter of a device: a text with a default, and what a panel's author should know of it.
///
/// The value is held as text and converted at each reading. Spaces around it are ignored by
/// the three conversions to bool, int and double; none of them ever fails or throws.
class NORVO_EXPORT Param
{
public:
    using EnabledConditions = QMap<QString, QStringList>;

    Param() = default;
    Param(QString name, QString defaultText, QStringList options, bool flag,
          EnabledConditions enabledConditions);

    operator QString() const; ///< The text as it stands.
    operator bool() const;    ///< "true", "yes", "on" and "1" in any case are true, all else false.
    operator int() const;     ///< As an int; else a double cut toward zero and clamped; else 0.
    operator double() const;  ///< With "." for the decimal point; 0 for what is no number.

    QString name() const { return m_name; }
    QString value() const { return m_value; }
    QString defaultValue() const { return m_default; }
    QStringList options() const { return m_options; } ///< Empty: free text.
    QString displayName() const { return m_displayName; }
    QString description() const { return m_description; }
    QString unit() const { return m_unit; }
    bool flag() const { return m_flag; } ///< True: meant to be set by a panel's author.
    /// True: its device writes it while it runs, and the host keeps it across starts.
    bool isPersistent() const { return m_persistent; }
    /// Other parameter to the values of it under which this one is enabled; empty: always.
    EnabledConditions enabledConditions() const { return m_enabledConditions; }

    void setValue(const QString& value) { m_value = value; }
    void setDisplayName(QString displayName) { m_displayName = std::move(displayName); }
    void setDescription(QString description) { m_description = std::move(description); }
    void setUnit(QString unit) { m_unit = std::move(unit); }
    void setPersistent(bool persistent = true) { m_persistent = persistent; }
    void addEnabledCondition(QString otherParam, QStringList enablingValues);

    /// What is wrong with the value, or an empty text. Only a value whose default is a number or
    /// true/false is judged: it must read as the same kind.
    QString fault() const;

private:
    QString m_name;
    QString m_value;
    QString m_default;
    QStringList m_options;
    QString m_displayName;
    QString m_description;
    QString m_unit;
    EnabledConditions m_enabledConditions;
    bool m_flag = true;
    bool m_persistent = false;
};
