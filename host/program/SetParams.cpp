// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/SetParams.h"

#include "host/panel/file/NewProblems.h"
#include "host/panel/edit/ParamEdit.h"
#include "host/panel/file/PanelFile.h"
#include "host/panel/plan/PanelPlan.h"
#include "host/panel/state/AtomicFile.h"
#include "host/panel/state/StateFile.h"
#include "host/program/streams/Console.h"
#include "host/yaml/Quote.h"

#include "norvo/BaseDevice.h"
#include "norvo/DeviceManager.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <memory>

namespace norvo {

namespace {

void report(Diagnostic::Severity severity, const QString& file, const TextError& what)
{
    Console::report(Diagnostic{severity, file, what.place, what.text}.toString());
}

/// Null where the panel has no such device.
const DeviceSetting* find(const QString& id, const PanelDescription& panel)
{
    const auto found = std::find_if(panel.devices.cbegin(), panel.devices.cend(),
                                    [&id](const DeviceSetting& one) { return one.id.text == id; });
    return found == panel.devices.cend() ? nullptr : &*found;
}

/// What the device's type has against a change, whatever the value.
YamlEdit::Error unknownName(const ParamChange& change, const YamlEdit& edit,
                            const PanelDescription& panel, const DeviceManager& manager)
{
    const DeviceSetting* const setting = find(change.device, panel);
    const bool isInFile = ParamEdit::hasDevice(edit, change.device);
    if (!setting && !isInFile) {
        return std::nullopt; // The edit says so.
    }
    if (!setting) {
        return TextError{{},
                         inQuotes(change.device) +
                             " uses a template; change what it gives it, or the template"};
    }
    if (!isInFile) {
        return TextError{{},
                         QString("the device %1 comes from a template; change it there, or what "
                                 "its use gives")
                             .arg(inQuotes(change.device))};
    }
    const std::unique_ptr<BaseDevice> device(manager.createDevice(setting->type.text));
    if (!device) {
        return TextError{setting->type.place, unknownType(setting->type.text, manager)};
    }
    if (!device->params().contains(change.param)) {
        return TextError{setting->id.place,
                         unknownParam(setting->type.text, change.param, *device)};
    }
    return std::nullopt;
}

/// A panel as the check reads it.
struct Reading
{
    Reading(const QByteArray& text, const QString& file)
        : diagnostics(file), panel(PanelFile::parse(text, file, diagnostics))
    {}

    DiagnosticList check(const DeviceManager& manager, const TypeKnowledge& knowledge)
    {
        PanelPlan::make(panel, manager, {}, diagnostics, {}, knowledge);
        return diagnostics.sorted();
    }

    Diagnostics diagnostics;
    PanelDescription panel;
};

/// What the check reports now and has not reported before.
void reportNew(const DiagnosticList& before, const DiagnosticList& now)
{
    const DiagnosticList added = newProblems(before, now);
    for (const Diagnostic& one : added) {
        report(Diagnostic::Severity::Warning, one.file, {one.place, one.text});
    }
}

/// What devices have stored replaces the values of the panel file at each start.
void reportStored(const StateFile& state, const QVector<ParamChange>& changes,
                  const PanelDescription& panel, const DeviceManager& manager)
{
    for (const ParamChange& change : changes) {
        const auto stored = state.state().value(change.device);
        const DeviceSetting* const setting = find(change.device, panel);
        const std::unique_ptr<BaseDevice> device(
            stored.isEmpty() || !setting ? nullptr : manager.createDevice(setting->type.text));
        const QString name = device ? device->params().storedKey(change.param) : QString();
        if (stored.contains(name) && stored.value(name) != change.value &&
            device->getParam(name).isPersistent()) {
            report(Diagnostic::Severity::Warning, state.fileName(),
                   {state.places().value(change.device).value(name),
                    QString("%1 has stored %2 for %3, which replaces the value in the panel file "
                            "at the start; remove this line for %4 to count")
                        .arg(inQuotes(change.device), inQuotes(stored.value(name)), inQuotes(name),
                             inQuotes(change.value))});
        }
    }
}

} // namespace

int setParams(const QString& file, const QString& stateFile, const QVector<ParamChange>& changes,
              const DeviceManager& manager, const TypeKnowledge& knowledge)
{
    StateFile state(stateFile, StateFile::Mode::ReadOnly);
    const QString path = QFileInfo(file).absoluteFilePath();
    QString reason;
    const auto text = readTextFile(path, reason);
    if (!text) {
        report(Diagnostic::Severity::Error, file, {{}, reason});
        return 1;
    }
    YamlEdit edit(*text);
    Reading before(*text, file);
    bool isRefused = false;
    for (const ParamChange& change : changes) {
        YamlEdit::Error error = unknownName(change, edit, before.panel, manager);
        error =
            error ? error : ParamEdit::setParam(edit, change.device, change.param, change.value);
        if (error) {
            report(Diagnostic::Severity::Error, file, *error);
            isRefused = true;
        }
        if (edit.error()) {
            break;
        }
    }
    if (isRefused) {
        return 1;
    }
    Reading now(edit.text(), file);
    QDir::setCurrent(QFileInfo(path).path()); // Files in the panel are relative to it.
    reportNew(before.check(manager, knowledge), now.check(manager, knowledge));
    const auto isUnchanged = [&path, &text] {
        QString ignoredReason;
        return readTextFile(path, ignoredReason) == text;
    };
    if (edit.text() != *text && !writeFileAtomically(path, edit.text(), reason, isUnchanged)) {
        report(Diagnostic::Severity::Error, file, {{}, "nothing was written: " + reason});
        return 1;
    }
    if (!stateFile.isEmpty()) {
        state.read();
        reportStored(state, changes, now.panel, manager);
    }
    return 0;
}

} // namespace norvo
