// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/TemplateUse.h"

#include "host/panel/file/EditDistance.h"
#include "host/panel/file/Placeholders.h"

#include <algorithm>
#include <utility>

namespace norvo {

namespace {

constexpr int kMaxShift = 999;  // Rows and columns; a panel has no more.
constexpr int kMaxShownId = 60; // In characters.

/// "in use p1 (line 40)", then the uses around it.
QString describeUse(const PlacedText& id, const TemplateUse* around)
{
    const bool isInPanel = !around || around->used().file->isPanel;
    return QString("in use %1 (line %2%3)%4")
        .arg(onOneLine(id.text.left(kMaxShownId)), QString::number(id.place.line),
             isInPanel ? QString() : " of " + around->used().file->name,
             around ? ", " + around->origin()->use : QString());
}

ParamSetting* findParam(DeviceSetting& device, const QString& name)
{
    const auto found = std::find_if(
        device.params.begin(), device.params.end(),
        [&name](const ParamSetting& param) { return param.name.text.toLower() == name; });
    return found == device.params.end() ? nullptr : &*found;
}

void shift(DeviceSetting& device, const QString& param, int by)
{
    ParamSetting* const setting = by > 0 ? findParam(device, param) : nullptr;
    bool ok = false;
    const int number = setting ? setting->value.text.trimmed().toInt(&ok) : 0;
    if (ok && number >= 0 && number <= kMaxShift) { // -1 stands for the next free one.
        setting->value.text = QString::number(number + by);
    }
}

} // namespace

TemplateUse::TemplateUse(const Template& used, const PlacedText& id, const ReadContext& outer,
                         ExpansionBudget& budget)
    : m_template(used), m_id(id), m_outer(outer), m_budget(budget)
{
    m_budget.values -= used.values;
    m_origin = std::make_shared<const PlaceOrigin>(
        PlaceOrigin{used.file->name, describeUse(id, outer.use()), id.text + '-'});
}

void TemplateUse::read(const YamlNode& settings)
{
    for (const YamlEntry& entry : settings.entries) {
        if (!isUsable(entry)) {
            continue;
        }
        const QString& key = entry.key->text;
        if (key == "with") {
            readValues(entry);
        } else if (key == "at") {
            readPosition(entry);
        } else if (key != "use") {
            m_outer.refuseKey(*entry.key, " of the use " + inQuotes(m_id.text),
                              {"use", "with", "at"}, "a use has use, with and at");
        }
    }
    addDefaults();
}

void TemplateUse::readValues(const YamlEntry& with)
{
    for (const YamlEntry& entry :
         m_outer.entriesOf(with, YamlNode::Kind::Map,
                           "with must be a map: the name of each placeholder, and its value")) {
        if (!isUsable(entry)) {
            continue;
        }
        const QString& name = entry.key->text;
        if (!m_template.placeholders.contains(name)) {
            m_outer.refuse(entry.key->place, m_template.unknownPlaceholder(name));
            continue;
        }
        if (!entry.value->isText()) {
            m_outer.refuse(entry.place,
                           QString("the value of %1 must be a text").arg(inQuotes(name)));
        }
        const TemplateUse* const around = outer();
        m_values.insert(name, {m_outer.text(*entry.value),
                               around ? around->prefixOf(entry.value->text) : QString(),
                               around ? around->fileOf(entry.value->text) : QString()});
    }
}

void TemplateUse::addDefaults()
{
    for (auto one = m_template.placeholders.cbegin(); one != m_template.placeholders.cend();
         ++one) {
        if (m_values.contains(one.key())) {
            continue;
        }
        if (!one->byDefault) {
            m_outer.refuse(m_id.place,
                           QString("the use %1 lacks a value for %2; add \"with: {%3: ...}\"")
                               .arg(inQuotes(m_id.text), inQuotes(one.key()), one.key()));
        }
        m_values.insert(one.key(),
                        {one->byDefault.value_or(QString()), m_origin->prefix, m_origin->file});
    }
}

void TemplateUse::readPosition(const YamlEntry& at)
{
    for (const YamlEntry& entry : m_outer.entriesOf(
             at, YamlNode::Kind::Map, "at must be a map, such as {row: 2, column: 0}")) {
        if (!isUsable(entry)) {
            continue;
        }
        const QString& key = entry.key->text;
        if (key == "row") {
            readNumber(entry, m_row);
        } else if (key == "column") {
            readNumber(entry, m_column);
        } else if (key != "area") {
            m_outer.refuseKey(*entry.key, " of \"at\"", {"row", "column", "area"},
                              "a position has row, column and area");
        } else if (entry.value->isText()) {
            m_area = PlacedText{m_outer.text(*entry.value), m_outer.at(entry.place)};
        } else {
            m_outer.refuse(entry.place, "the area must be a text");
        }
    }
}

void TemplateUse::readNumber(const YamlEntry& entry, int& number)
{
    const QString text = m_outer.text(*entry.value);
    bool ok = false;
    const int read = text.trimmed().toInt(&ok);
    if (!entry.value->isText() || !ok || read < 0 || read > kMaxShift) {
        m_outer.refuse(
            entry.place,
            QString("%1 must be a whole number from 0 to %2").arg(entry.key->text).arg(kMaxShift));
        return;
    }
    number = read;
}

QString TemplateUse::filled(const QString& text) const
{
    if (!text.contains("$(")) {
        return text;
    }
    QString result;
    for (const TextPiece& piece : piecesOf(text)) {
        const auto value = piece.kind == TextPiece::Kind::Placeholder
                               ? m_values.constFind(piece.text)
                               : m_values.constEnd();
        const QString part = value != m_values.constEnd() ? value->text : piece.text;
        m_budget.characters -= part.size();
        if (m_budget.isSpent()) {
            return {};
        }
        result += part;
    }
    return result;
}

QString TemplateUse::prefixOf(const QString& text) const
{
    const QString name = firstPlaceholder(text);
    const QString found = name.isEmpty() ? m_origin->prefix : m_values.value(name).prefix;
    m_budget.characters -= found.size();
    return m_budget.isSpent() ? QString() : found;
}

QString TemplateUse::fileOf(const QString& text) const
{
    const QString name = firstPlaceholder(text);
    return name.isEmpty() ? m_origin->file : m_values.value(name).file;
}

void TemplateUse::move(DeviceSetting& device) const
{
    shift(device, "widget/row", m_row);
    shift(device, "widget/column", m_column);
    if (m_area) {
        const QString name = "widget/area";
        if (ParamSetting* const area = findParam(device, name)) {
            area->value = *m_area;
        } else {
            ParamSetting setting{{name, m_area->place}, *m_area};
            setting.isOptional = true;
            device.params.append(setting);
        }
    }
    if (outer()) {
        outer()->move(device);
    }
}

} // namespace norvo
