// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/services/AccessReader.h"

#include "host/panel/file/services/Duration.h"

#include <QRegularExpression>
#include <QStringList>

namespace norvo {

namespace {

const char kMakePin[] = "made by \"norvo-panel --make-pin\"";
constexpr int kMaxMemoryKiB = 256 * 1024; // What checking a PIN may take.
constexpr int kMaxPasses = 16;

/// A hash that can be checked within seconds, whoever has made it.
bool isHash(const QString& text)
{
    static const QRegularExpression form(
        "^\\$argon2id\\$v=19\\$m=(\\d{1,7}),t=(\\d{1,3}),p=1\\$[A-Za-z0-9+/]{11,64}\\$"
        "[A-Za-z0-9+/]{22,64}$");
    const auto match = form.match(text);
    return match.hasMatch() && match.captured(1).toInt() <= kMaxMemoryKiB &&
           match.captured(2).toInt() <= kMaxPasses;
}

void readRole(const YamlEntry& entry, const ReadContext& context, PanelAccess& access)
{
    const QString& key = entry.key->text;
    if (key == nameOf(Role::View)) {
        return context.refuse(entry.key->place,
                              "the role view has no PIN; it is what a locked panel is left with");
    }
    if (!roleNames().contains(key)) {
        return context.refuseKey(*entry.key, " of roles", {"operate", "engineer"},
                                 "roles are operate and engineer");
    }
    if (!entry.value->isText() || !isHash(entry.value->text)) {
        return context.refuse(entry.place,
                              QString("the PIN of %1 must be a hash %2").arg(key, kMakePin));
    }
    access.pins.insert(roleNames().value(key), entry.value->text);
}

void readRoles(const YamlEntry& entry, const ReadContext& context, PanelAccess& access)
{
    for (const YamlEntry& role :
         context.entriesOf(entry, YamlNode::Kind::Map,
                           QString("roles must be a map: operate, engineer, and the hash of the "
                                   "PIN of each, %1")
                               .arg(kMakePin))) {
        if (isUsable(role)) {
            readRole(role, context, access);
        }
    }
}

} // namespace

const QMap<QString, Role>& roleNames()
{
    static const QMap<QString, Role> names{
        {"view", Role::View}, {"operate", Role::Operate}, {"engineer", Role::Engineer}};
    return names;
}

QString nameOf(Role role)
{
    return roleNames().key(role);
}

void readAccess(const YamlEntry& entry, const ReadContext& context, PanelAccess& access)
{
    access.place = context.at(entry.key->place);
    bool lacksRoles = entry.value->kind != YamlNode::Kind::Text;
    for (const YamlEntry& setting :
         context.entriesOf(entry, YamlNode::Kind::Map,
                           "access must be a map with the keys roles and lockAfter")) {
        if (!isUsable(setting)) {
            continue;
        }
        const QString& key = setting.key->text;
        if (key == "roles") {
            lacksRoles = false;
            readRoles(setting, context, access);
        } else if (key == "lockAfter") {
            access.lockAfter = readDuration(setting, context).value_or(access.lockAfter);
        } else {
            lacksRoles = false; // Perhaps it is they.
            context.refuseKey(*setting.key, " of access", {"roles", "lockAfter"},
                              "access has roles and lockAfter");
        }
    }
    if (lacksRoles) {
        context.refuse(entry.key->place, QString("access needs a PIN at least, as in \"roles: "
                                                 "{operate: HASH}\" with a hash %1")
                                             .arg(kMakePin));
    }
}

void readDeviceAccess(const YamlEntry& entry, const ReadContext& context, DeviceAccess& access)
{
    const QString text = context.text(*entry.value);
    const auto role = roleNames().constFind(text);
    if (!entry.value->isText() || role == roleNames().constEnd()) {
        return context.refuse(entry.place,
                              "access of a device must be view, operate or engineer" +
                                  (entry.value->isText() ? ", not " + inQuotes(text) : QString()));
    }
    access.role = *role;
    access.rolePlace = context.at(entry.key->place);
}

void readConfirm(const YamlEntry& entry, const ReadContext& context, DeviceAccess& access)
{
    const QString text = context.text(*entry.value).trimmed();
    if (!entry.value->isText() || text.isEmpty()) {
        return context.refuse(entry.place, "confirm must be a question such as \"Really start pump "
                                           "1?\", or yes for one that names the device");
    }
    const bool isYes = QStringList{"yes", "true"}.contains(text);
    access.isConfirmed = isYes || !QStringList{"no", "false"}.contains(text);
    access.question = isYes || !access.isConfirmed ? QString() : text;
    access.confirmPlace = context.at(entry.key->place);
}

void checkAccess(const PanelDescription& description, Diagnostics& diagnostics)
{
    const PanelAccess& panel = description.access;
    for (const DeviceSetting& device : description.devices) {
        const Role role = device.access.role.value_or(Role::View);
        if (role == Role::View) {
            continue;
        }
        if (!panel.isGiven()) {
            diagnostics.error(device.access.rolePlace,
                              QString("%1 is not locked, because the panel has no PINs; add "
                                      "\"access: {roles: {%2: HASH}}\" to the panel")
                                  .arg(inQuotes(device.id.text), nameOf(role)));
        } else if (!panel.pins.isEmpty() && panel.pins.lastKey() < role) {
            diagnostics.error(device.access.rolePlace,
                              QString("nobody can operate %1, because the panel's access has no "
                                      "PIN for the role %2")
                                  .arg(inQuotes(device.id.text), nameOf(role)));
        }
    }
}

} // namespace norvo
