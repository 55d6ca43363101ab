// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/form/ParamStates.h"

#include "host/catalogue/Catalogue.h"
#include "host/catalogue/TypeExample.h"
#include "host/editor/EditSession.h"
#include "host/panel/file/PanelFile.h"
#include "host/window/PanelPages.h"

#include <QCoreApplication>

#include <algorithm>

namespace norvo {

namespace {

struct ParamStatesTexts
{
    Q_DECLARE_TR_FUNCTIONS(norvo::ParamStates)
};

const TypeWords* wordsOf(const EditSession& session, const QString& id)
{
    const DeviceSetting* const device = session.device(id);
    return device ? session.catalogue().words(device->type.text) : nullptr;
}

const ParamSetting* settingOf(const DeviceSetting& device, const QString& name)
{
    const auto found = std::find_if(
        device.params.cbegin(), device.params.cend(), [&name](const ParamSetting& param) {
            return param.name.text.compare(name, Qt::CaseInsensitive) == 0;
        });
    return found == device.params.cend() ? nullptr : &*found;
}

/// Of the device as it runs by its file.
QString textOf(const DeviceSetting& device, const TypeWords& type, const QString& name)
{
    const ParamSetting* const setting = settingOf(device, name);
    const ParamWords* const words = type.param(name);
    return setting ? setting->value.text : words ? words->defaultValue : QString();
}

QString whyDisabled(const DeviceSetting& device, const TypeWords& type, const ParamWords& words)
{
    for (auto other = words.enabledWhen.cbegin(); other != words.enabledWhen.cend(); ++other) {
        if (!other->contains(textOf(device, type, other.key()), Qt::CaseInsensitive)) {
            return ParamStatesTexts::tr("has an effect only where %1 is %2")
                .arg(other.key(), other->join(", "));
        }
    }
    return {};
}

ParamWords keyWords(const QString& name, const QString& meaning, ParamKind kind,
                    const QString& defaultText, const QStringList& options = {})
{
    ParamWords words;
    words.name = name;
    words.meaning = meaning;
    words.kind = kind;
    words.defaultValue = defaultText;
    words.options = options;
    return words;
}

bool isSame(const ParamWords& a, const ParamWords& b)
{
    return a.kind == b.kind && a.options == b.options && a.unit == b.unit;
}

QString keyText(const DeviceSetting& device, const QString& key)
{
    if (key == "network") {
        return device.network ? "true" : QString();
    }
    if (key == "keep") {
        return device.keep == Keep::No         ? "false"
               : device.keep == Keep::Silently ? "silent"
               : device.keep == Keep::Sending  ? "send"
                                               : QString();
    }
    if (key == "access") {
        return device.access.role ? nameOf(*device.access.role) : QString();
    }
    return !device.access.isConfirmed         ? QString()
           : device.access.question.isEmpty() ? QString("true")
                                              : device.access.question;
}

} // namespace

QVector<ParamWords> ParamStates::common(const EditSession& session, const QStringList& ids)
{
    const TypeWords* const first = ids.isEmpty() ? nullptr : wordsOf(session, ids.first());
    if (!first) {
        return {};
    }
    QVector<ParamWords> params;
    for (const ParamWords& words : first->params) {
        const bool isCommon = std::all_of(ids.cbegin(), ids.cend(), [&](const QString& id) {
            const TypeWords* const type = wordsOf(session, id);
            const ParamWords* const own = type ? type->param(words.name) : nullptr;
            return own && isSame(*own, words);
        });
        if (isCommon && !words.isOfEveryType) {
            params.append(words);
        }
    }
    return params;
}

QVector<ParamWords> ParamStates::ofPlace(const EditSession& session, const QString& id)
{
    QVector<ParamWords> params;
    const TypeWords* const type = wordsOf(session, id);
    if (!type || !session.live().cells().contains(id)) {
        return params;
    }
    const QStringList& pages = session.live().pages().areas();
    for (ParamWords words : type->params) {
        if (words.isOfEveryType && words.name == "widget/area") {
            words.kind = ParamKind::Choice;
            words.options = pages;
        }
        if (words.isOfEveryType && (words.name != "widget/area" || pages.size() > 1)) {
            params.append(words);
        }
    }
    return params;
}

QVector<ParamWords> ParamStates::ofKeys(const EditSession& session, const QString& id)
{
    using Texts = ParamStatesTexts;
    QVector<ParamWords> keys;
    const TypeWords* const type = wordsOf(session, id);
    if (!type) {
        return keys;
    }
    const auto& params = type->params;
    if (std::any_of(params.cbegin(), params.cend(),
                    [](const auto& words) { return words.kind == ParamKind::QmlFile; })) {
        keys.append(keyWords("network", Texts::tr("Whether its document may reach the network."),
                             ParamKind::YesNo, "false"));
    }
    if (type->kept) {
        keys.append(keyWords("keep",
                             Texts::tr("Whether the value that an operator gives is put back at "
                                       "the next start; send: and sent."),
                             ParamKind::Choice, "silent", {"silent", "send", "false"}));
    }
    if (type->control != Control::None) {
        keys.append(keyWords("access", Texts::tr("Who may operate it."), ParamKind::Choice, {},
                             roleNames().keys()));
    }
    if (type->control == Control::Asks) {
        keys.append(keyWords("confirm", Texts::tr("What is asked before it changes."),
                             ParamKind::Text, {}));
    }
    return keys;
}

ParamState ParamStates::param(const EditSession& session, const QStringList& ids,
                              const ParamWords& words)
{
    ParamState state;
    bool isFirst = true;
    for (const QString& id : ids) {
        const DeviceSetting* const device = session.device(id);
        const TypeWords* const type = wordsOf(session, id);
        if (!device || !type) {
            continue;
        }
        const ParamSetting* const setting = settingOf(*device, words.name);
        const QString text = textOf(*device, *type, words.name);
        state.isSet = state.isSet || setting;
        if (isFirst) {
            state.text = text;
            state.shown = setting ? ParamEditor::Shown::Value : ParamEditor::Shown::Default;
        } else if (text != state.text) {
            state.shown = ParamEditor::Shown::Different;
        } else if (setting && state.shown == ParamEditor::Shown::Default) {
            state.shown = ParamEditor::Shown::Value;
        }
        isFirst = false;
        state.whyDisabled = whyDisabled(*device, *type, words);
        if (setting) {
            state.problems += problemsAt(session, {setting->value.place, setting->name.place});
        }
    }
    return state;
}

ParamState ParamStates::place(const EditSession& session, const QString& id,
                              const ParamWords& words)
{
    const Cells cells = session.live().cells().value(id);
    ParamState state = param(session, {id}, words);
    state.text = words.name == "widget/row"       ? QString::number(cells.row)
                 : words.name == "widget/column"  ? QString::number(cells.column)
                 : words.name == "widget/rowspan" ? QString::number(cells.rowspan)
                 : words.name == "widget/colspan" ? QString::number(cells.colspan)
                                                  : cells.area;
    return state;
}

ParamState ParamStates::key(const EditSession& session, const QString& id, const ParamWords& words)
{
    const DeviceSetting* const device = session.device(id);
    ParamState state;
    if (!device) {
        return state;
    }
    const QString text = keyText(*device, words.name);
    state.isSet = !text.isEmpty();
    state.text = state.isSet ? text : words.defaultValue;
    state.shown = state.isSet ? ParamEditor::Shown::Value : ParamEditor::Shown::Default;
    const Place place = words.name == "access"    ? device->access.rolePlace
                        : words.name == "confirm" ? device->access.confirmPlace
                        : words.name == "keep"    ? device->keepPlace
                                                  : Place();
    state.problems = problemsAt(session, {place});
    return state;
}

QSet<QString> ParamStates::essential(const EditSession& session, const QString& id)
{
    QSet<QString> names;
    const TypeWords* const type = wordsOf(session, id);
    if (!type) {
        return names;
    }
    if (const auto example = TypeExample::device(*type)) {
        for (const ParamSetting& param : example->params) {
            names.insert(param.name.text.toLower());
        }
    }
    return names;
}

QStringList ParamStates::problems(const EditSession& session, const QString& id)
{
    const DeviceSetting* const device = session.device(id);
    return device ? problemsAt(session, {device->id.place, device->type.place}) : QStringList();
}

QStringList ParamStates::problemsAt(const EditSession& session, const QVector<Place>& places)
{
    QStringList texts;
    const QString& file = session.live().description().file;
    for (const Diagnostic& problem : session.live().problems()) {
        const bool isThere =
            std::any_of(places.cbegin(), places.cend(), [&problem](const Place& place) {
                return place.line > 0 && !place.origin && problem.place.line == place.line &&
                       problem.place.column == place.column;
            });
        if (isThere && problem.file == file && problem.use.isEmpty()) {
            texts.append(problem.text);
        }
    }
    return texts;
}

} // namespace norvo
