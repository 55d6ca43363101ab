// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/catalogue/EntryReader.h"

#include "host/yaml/Quote.h"

#include <QMap>

#include <algorithm>
#include <vector>

namespace norvo {

namespace {

/// The entries of a map; none of anything else.
const std::vector<YamlEntry>& entriesOf(const YamlNode& node)
{
    static const std::vector<YamlEntry> none;
    return node.kind == YamlNode::Kind::Map ? node.entries : none;
}

QString tidy(const YamlNode& value)
{
    return value.text.simplified();
}

ParamWords* paramOf(TypeWords& type, const QString& name)
{
    const auto found =
        std::find_if(type.params.begin(), type.params.end(),
                     [&name](const ParamWords& param) { return param.name == name; });
    return found == type.params.end() ? nullptr : &*found;
}

} // namespace

void EntryReader::read(const YamlNode& entry)
{
    for (const YamlEntry& part : entriesOf(entry)) {
        readTypeKey(part.key->text, part);
    }
}

void EntryReader::readTypeKey(const QString& key, const YamlEntry& entry)
{
    const YamlNode& value = *entry.value;
    if (key == "purpose") {
        m_type.purpose = tidy(value);
    } else if (key == "notes") {
        m_type.notes = tidy(value);
    } else if (key == "example") {
        m_type.example = value.text;
    } else if (key == "params") {
        readParams(value);
    } else if (key == "outputs") {
        readMethods(value, "output", m_type.outputs);
    } else if (key == "inputs") {
        readMethods(value, "input", m_type.inputs);
    } else if (key == "relations") {
        readRelations(value);
    } else if (key == "breaksCycles") {
        m_type.breaksCycles = value.text == "true";
    } else if (key == "drawsByOpenGl") {
        m_type.drawsByOpenGl = value.text == "true";
    } else if (key == "startsNothing") {
        m_type.startsNothing = value.text == "true";
    } else if (key == "keeps") {
        readKept(value);
    } else if (key == "control") {
        readControl(value);
    } else if (key == "shows" || key == "showsState") {
        m_type.shown = ShownSignal{value.text, key == "showsState"};
    } else if (key == "ports") {
        readPorts(value);
    } else if (key == "curves") {
        readCurves(value);
    } else {
        problem(entry.key->place, QString("unknown key %1").arg(inQuotes(key)));
    }
}

void EntryReader::readKept(const YamlNode& methods)
{
    KeptMethods kept;
    for (const YamlEntry& entry : entriesOf(methods)) {
        const QString& key = entry.key->text;
        if (key == "output") {
            kept.output = entry.value->text;
        } else if (key == "input") {
            kept.input = entry.value->text;
        } else if (key == "widget") {
            kept.widgetInput = entry.value->text;
        } else {
            problem(entry.key->place, QString("unknown key %1").arg(inQuotes(key)));
        }
    }
    m_type.kept = kept;
}

void EntryReader::readControl(const YamlNode& value)
{
    static const QMap<QString, Control> kinds{
        {"asks", Control::Asks}, {"held", Control::Held}, {"always", Control::Always}};
    if (kinds.contains(value.text)) {
        m_type.control = kinds.value(value.text);
    } else {
        problem(value.place, QString("unknown kind of control %1").arg(inQuotes(value.text)));
    }
}

void EntryReader::readParams(const YamlNode& params)
{
    for (const YamlEntry& entry : entriesOf(params)) {
        if (ParamWords* const param = paramOf(m_type, entry.key->text)) {
            readParam(*entry.value, *param);
        } else {
            problem(entry.key->place,
                    QString("%1 has no parameter %2").arg(m_type.key, inQuotes(entry.key->text)));
        }
    }
}

void EntryReader::readGeneral(const YamlNode& entry)
{
    for (const YamlEntry& part : entriesOf(entry)) {
        for (const YamlEntry& param : entriesOf(*part.value)) {
            ParamWords* const known = paramOf(m_type, param.key->text);
            if (part.key->text == "params" && known && known->meaning.isEmpty()) {
                readParam(*param.value, *known);
                known->isOfEveryType = true;
            }
        }
    }
}

void EntryReader::readParam(const YamlNode& node, ParamWords& param)
{
    for (const YamlEntry& entry : entriesOf(node)) {
        if (!readParamKey(entry.key->text, *entry.value, param)) {
            problem(entry.key->place, QString("unknown key %1").arg(inQuotes(entry.key->text)));
        }
    }
}

bool EntryReader::readParamKey(const QString& key, const YamlNode& value, ParamWords& param)
{
    if (key == "meaning") {
        param.meaning = tidy(value);
    } else if (key == "unit") {
        param.unit = tidy(value);
    } else if (key == "also") {
        param.also = tidy(value);
    } else if (key == "kind") {
        readKind(value, param);
    } else if (key == "min") {
        readNumber(value, param.min);
    } else if (key == "above") {
        readNumber(value, param.above);
    } else if (key == "max") {
        readNumber(value, param.max);
    } else if (key == "error") {
        param.isErrorOutside = value.text == "true";
    } else {
        return false;
    }
    return true;
}

void EntryReader::readKind(const YamlNode& value, ParamWords& param)
{
    for (int kind = 0; !toString(ParamKind(kind)).isEmpty(); ++kind) {
        if (toString(ParamKind(kind)) == value.text) {
            param.kind = ParamKind(kind);
            return;
        }
    }
    problem(value.place, QString("unknown kind %1").arg(inQuotes(value.text)));
}

void EntryReader::readNumber(const YamlNode& value, std::optional<double>& number)
{
    bool isNumber = false;
    number = value.text.toDouble(&isNumber);
    if (!isNumber) {
        number.reset();
        problem(value.place, QString("%1 is not a number").arg(inQuotes(value.text)));
    }
}

void EntryReader::readMethods(const YamlNode& node, const QString& what,
                              QVector<MethodWords>& methods)
{
    for (const YamlEntry& entry : entriesOf(node)) {
        const QString signature = entry.key->text;
        const auto method =
            std::find_if(methods.begin(), methods.end(), [&signature](const MethodWords& words) {
                return words.signature == signature;
            });
        if (method == methods.end()) {
            problem(entry.key->place,
                    QString("%1 has no %2 %3").arg(m_type.key, what, inQuotes(signature)));
        } else {
            method->meaning = tidy(*entry.value);
        }
    }
}

void EntryReader::readPorts(const YamlNode& node)
{
    for (const YamlEntry& entry : entriesOf(node)) {
        if (entry.key->text == "outputs") {
            m_type.outputDefinition = tidy(*entry.value);
        } else if (entry.key->text == "inputs") {
            m_type.inputDefinition = tidy(*entry.value);
        } else {
            problem(entry.key->place, QString("unknown key %1").arg(inQuotes(entry.key->text)));
        }
    }
    if (!m_type.takesPorts) {
        problem(node.place,
                QString("%1 takes no outputs and inputs of its author's").arg(m_type.key));
    }
}

void EntryReader::readCurves(const YamlNode& node)
{
    for (const YamlEntry& entry : entriesOf(node)) {
        if (entry.key->text == "input") {
            m_type.curveInput = entry.value->text;
        } else if (entry.key->text == "name") {
            m_type.curveNameInput = entry.value->text;
        } else if (entry.key->text == "advice") {
            m_type.curveAdvice = tidy(*entry.value);
        } else {
            problem(entry.key->place, QString("unknown key %1").arg(inQuotes(entry.key->text)));
        }
    }
}

void EntryReader::readRelations(const YamlNode& node)
{
    for (const YamlEntry& entry : node.entries) {
        const YamlNode& value = *entry.value;
        if (value.isText()) {
            if (const auto relation = relationIn(value)) {
                m_type.relations.append(*relation);
            }
            continue;
        }
        // {relation: a < b, error: true}
        std::optional<Relation> relation;
        bool isError = false;
        for (const YamlEntry& part : entriesOf(value)) {
            if (part.key->text == "relation") {
                relation = relationIn(*part.value);
            } else {
                isError = isError || (part.key->text == "error" && part.value->text == "true");
            }
        }
        if (relation) {
            relation->isError = isError;
            m_type.relations.append(*relation);
        }
    }
}

std::optional<Relation> EntryReader::relationIn(const YamlNode& node)
{
    const int sign = node.text.lastIndexOf(" <") + 1;
    const int behind = node.text.indexOf(' ', sign);
    const QString relation = node.text.mid(sign, behind - sign);
    const ParamWords* const smaller = paramOf(m_type, node.text.left(sign - 1));
    const ParamWords* const larger = paramOf(m_type, node.text.mid(behind + 1));
    if (!smaller || !larger || (relation != "<" && relation != "<=")) {
        problem(node.place, QString("%1 is not a relation of two parameters of %2")
                                .arg(inQuotes(node.text), m_type.key));
        return std::nullopt;
    }
    return Relation{smaller->name, larger->name, relation == "<=", false};
}

} // namespace norvo
