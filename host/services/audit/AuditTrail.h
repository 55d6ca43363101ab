// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/services/AuditSetting.h"
#include "host/services/audit/AuditFile.h"

namespace norvo {

/// What is done at a panel, as lines of the audit: what, where, the value, and in which role. The
/// names of fields and events are fixed; see docs/audit.md.
class AuditTrail : public QObject
{
    Q_OBJECT

public:
    /// `panel` is what the lines call it. The file is relative to the working folder of now.
    AuditTrail(const AuditSetting& setting, const QString& panel);

    /// Whether it keeps what such a key asks for, of a panel that is called so.
    bool isOf(const AuditSetting& setting, const QString& panel) const;

    void setRole(const QString& role) { m_role = role; } ///< Of what follows; empty: none is known.

    void noteStart();
    void noteStop();
    void noteValue(const QString& device, const QString& output, const QVariant& value);
    /// Any other event; `fields` stand between its name and the role.
    void note(const QString& event, const AuditFields& fields = {});

signals:
    void problem(QString line); ///< One line for the user.

private:
    const AuditSetting m_setting;
    const QString m_panel;
    AuditFile m_file;
    QString m_role;
};

} // namespace norvo
