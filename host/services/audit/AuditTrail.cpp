// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/audit/AuditTrail.h"

#include "host/services/values/ValueTable.h"

namespace norvo {

namespace {

/// Numbers, yes and no stay what they are; whatever else becomes a text.
QVariant plain(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::UnknownType:
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::Double:
    case QMetaType::QString:
        return value;
    default:
        return shownText(value);
    }
}

} // namespace

AuditTrail::AuditTrail(const AuditSetting& setting, const QString& panel)
    : m_setting(setting), m_panel(panel), m_file(setting.file, {setting.maxBytes, setting.kept})
{
    connect(&m_file, &AuditFile::problem, this, &AuditTrail::problem);
}

bool AuditTrail::isOf(const AuditSetting& setting, const QString& panel) const
{
    return panel == m_panel && setting.file == m_setting.file &&
           setting.maxBytes == m_setting.maxBytes && setting.kept == m_setting.kept;
}

void AuditTrail::noteStart()
{
    note("start", {{"panel", m_panel}});
}

void AuditTrail::noteStop()
{
    note("stop", {{"panel", m_panel}});
}

void AuditTrail::noteValue(const QString& device, const QString& output, const QVariant& value)
{
    note("value", {{"device", device}, {"output", output}, {"value", plain(value)}});
}

void AuditTrail::note(const QString& event, const AuditFields& fields)
{
    AuditFields all{{"event", event}};
    all += fields;
    if (!m_role.isEmpty()) {
        all.append({"role", m_role});
    }
    m_file.write(all);
}

} // namespace norvo
