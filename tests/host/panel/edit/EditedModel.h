// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelFile.h"

#include <QMap>
#include <QStringList>

/// What a panel file says, without its style: to be changed as an edit is to change the file.
struct EditedModel
{
    struct Device
    {
        QString type;
        QMap<QString, QString> params; ///< Names in lower case.
        QMap<QString, QString> outputs;
        QMap<QString, QString> inputs;
        int keep = 0;
    };

    QStringList ids; ///< In the order of the file.
    QMap<QString, Device> devices;
    QStringList connections; ///< "a.b -> c.d"
    QStringList alarms;      ///< "a.b", and the limit.
    QStringList recorded;
    QStringList pages;
    QString title;
    QStringList errors; ///< Of the text.

    static EditedModel read(const QByteArray& text)
    {
        norvo::Diagnostics diagnostics("panel.yaml");
        const auto panel = norvo::PanelFile::parse(text, "panel.yaml", diagnostics);
        EditedModel model;
        for (const norvo::Diagnostic& one : diagnostics.sorted()) {
            model.errors += one.text;
        }
        for (const norvo::DeviceSetting& setting : panel.devices) {
            Device device;
            device.type = setting.type.text;
            device.keep = int(setting.keep);
            for (const norvo::ParamSetting& param : setting.params) {
                device.params.insert(param.name.text.toLower(), param.value.text);
            }
            for (const norvo::PortSetting& port : setting.ports) {
                (port.isOutput ? device.outputs : device.inputs)
                    .insert(port.name.text, port.definition.text);
            }
            model.ids += setting.id.text;
            model.devices.insert(setting.id.text, device);
        }
        for (const norvo::ConnectionSetting& one : panel.connections) {
            model.connections += textOf(one.from) + " -> " + textOf(one.to);
        }
        for (const norvo::AlarmSetting& one : panel.alarms) {
            model.alarms += one.device + '.' + one.signal + '|' + one.limit.text;
        }
        for (const norvo::HistorySignal& one : panel.history.recorded) {
            model.recorded += one.device + '.' + one.signal;
        }
        model.pages = panel.look.pages;
        model.title = panel.title.text;
        return model;
    }

    QStringList lines() const
    {
        QStringList all{"title " + title, "pages " + pages.join('|')};
        for (const QString& id : ids) {
            const Device& device = devices[id];
            all += QString("device %1 %2 %3").arg(id, device.type).arg(device.keep);
            append(id + " param ", device.params, all);
            append(id + " output ", device.outputs, all);
            append(id + " input ", device.inputs, all);
        }
        return all + connections + alarms + recorded + errors;
    }

    /// The device goes, and all that names it; with a method, only what names that.
    void forget(const QString& device, const QString& method, bool isSource, bool isTarget)
    {
        const auto names = [&](const QString& end) {
            return end.section('.', 0, 0) == device &&
                   (method.isEmpty() || methodOf(end) == method);
        };
        const auto erase = [](QStringList& list, const auto& isGone) {
            list.erase(std::remove_if(list.begin(), list.end(), isGone), list.end());
        };
        erase(connections, [&](const QString& one) {
            return (isSource && names(one.section(" -> ", 0, 0))) ||
                   (isTarget && names(one.section(" -> ", 1)));
        });
        if (isSource) {
            erase(alarms, [&](const QString& one) { return names(one.section('|', 0, 0)); });
            erase(recorded, names);
        }
    }

    /// What names the device, or its method, names another one.
    void rename(const QString& device, const QString& method, const QString& newName, bool isSource,
                bool isTarget)
    {
        const auto renamed = [&](const QString& end) {
            const bool isIt =
                end.section('.', 0, 0) == device && (method.isEmpty() || methodOf(end) == method);
            const QString rest = end.section('.', 1);
            return !isIt              ? end
                   : method.isEmpty() ? newName + '.' + rest
                                      : device + '.' + newName + rest.mid(method.size());
        };
        for (QString& one : connections) {
            const QString from = one.section(" -> ", 0, 0);
            const QString to = one.section(" -> ", 1);
            one = (isSource ? renamed(from) : from) + " -> " + (isTarget ? renamed(to) : to);
        }
        for (QString& one : alarms) {
            one = isSource ? renamed(one.section('|', 0, 0)) + '|' + one.section('|', 1) : one;
        }
        for (QString& one : recorded) {
            one = isSource ? renamed(one) : one;
        }
    }

private:
    static QString textOf(const norvo::Endpoint& end)
    {
        return end.device.text + '.' + end.method.text;
    }
    static QString methodOf(const QString& end)
    {
        return end.section('.', 1).section('(', 0, 0).trimmed();
    }
    static void append(const QString& what, const QMap<QString, QString>& map, QStringList& all)
    {
        for (auto one = map.cbegin(); one != map.cend(); ++one) {
            all += what + one.key() + " = " + *one;
        }
    }
};
