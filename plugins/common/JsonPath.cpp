// SPDX-License-Identifier: LGPL-3.0-or-later

#include "plugins/common/JsonPath.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>
#include <utility>

namespace norvo {

namespace {

const QRegularExpression& oneStep()
{
    static const QRegularExpression expression(
        R"x(\.([\w-]+)|\['([^']+)'\]|\["([^"]+)"\]|\[([0-9]{1,9})\])x",
        QRegularExpression::UseUnicodePropertiesOption);
    return expression;
}

QString errorAt(int offset, const QString& what)
{
    return QString("broken JSON path: %1, at character %2").arg(what).arg(offset + 1);
}

/// The quote behind the text that begins at `begin`; the end where there is none.
int endOfText(const QByteArray& json, int begin)
{
    int at = begin + 1;
    while (at < json.size() && json.at(at) != '"') {
        at += json.at(at) == '\\' ? 2 : 1;
    }
    return std::min(at, json.size());
}

bool isBeforeColon(const QByteArray& json, int at)
{
    static const QByteArray blanks(" \t\n\r");
    while (at < json.size() && blanks.contains(json.at(at))) {
        ++at;
    }
    return at < json.size() && json.at(at) == ':';
}

/// A text in quotes as it stands without needless escapes; as it is where it is none.
QByteArray unescaped(const QByteArray& text)
{
    const QJsonDocument document = QJsonDocument::fromJson('[' + text + ']');
    return document.isNull() ? text : document.toJson(QJsonDocument::Compact).mid(1).chopped(1);
}

/// Whether an object names a member twice, in JSON; of a text that is none the answer may be
/// either.
bool namesMemberTwice(const QByteArray& json)
{
    std::vector<QByteArray> names;   // Of all objects that are open.
    std::vector<std::size_t> begins; // Where those of each one begin.
    for (int at = 0; at < json.size(); ++at) {
        if (json.at(at) == '{') {
            begins.push_back(names.size());
        } else if (json.at(at) == '}' && !begins.empty()) {
            const auto first = names.begin() + std::ptrdiff_t(begins.back());
            std::sort(first, names.end());
            if (std::adjacent_find(first, names.end()) != names.end()) {
                return true;
            }
            names.erase(first, names.end());
            begins.pop_back();
        } else if (json.at(at) == '"') {
            const int begin = at;
            at = endOfText(json, begin);
            if (isBeforeColon(json, at + 1)) {
                const QByteArray name = json.mid(begin, at + 1 - begin);
                const bool isEscaped = name.contains('\\');
                names.push_back(isEscaped ? unescaped(name) : name);
            }
        }
    }
    return false;
}

} // namespace

QString JsonPath::define(const QString& path)
{
    if (!path.startsWith('$')) {
        return errorAt(0, "it begins with \"$\", such as \"$.value\" or \"$.list[0]\"");
    }
    std::vector<Step> steps;
    for (int at = 1; at < path.size();) {
        const auto match = oneStep().match(path, at, QRegularExpression::NormalMatch,
                                           QRegularExpression::AnchoredMatchOption);
        if (!match.hasMatch()) {
            return errorAt(at, "expected \".name\", \"['name']\" or \"[0]\"");
        }
        const QString index = match.captured(4);
        if (index.toInt() > kMaxIndex) {
            return errorAt(at, QString("an index is at most %1").arg(kMaxIndex));
        }
        if (steps.size() == kMaxSteps) {
            return errorAt(at, QString("it has more than %1 steps").arg(kMaxSteps));
        }
        steps.push_back(
            {match.captured(match.lastCapturedIndex()), index.isEmpty() ? -1 : index.toInt()});
        at = match.capturedEnd();
    }
    m_steps = std::move(steps);
    return {};
}

QJsonValue JsonPath::valueIn(const QJsonValue& root) const
{
    QJsonValue value = root;
    for (const Step& step : m_steps) {
        value = step.index < 0 ? value[step.name] : value[step.index];
    }
    return value;
}

QJsonValue JsonPath::placed(const QJsonValue& value, const QJsonValue& root) const
{
    return placedFrom(0, value, root);
}

QJsonValue JsonPath::placedFrom(std::size_t step, const QJsonValue& value,
                                const QJsonValue& root) const
{
    if (step == m_steps.size()) {
        return value;
    }
    const Step& here = m_steps[step];
    if (here.index < 0) {
        QJsonObject object = root.toObject();
        object.insert(here.name, placedFrom(step + 1, value, object.value(here.name)));
        return object;
    }
    QJsonArray array = root.toArray();
    while (array.size() <= here.index) {
        array.append(QJsonValue());
    }
    array.replace(here.index, placedFrom(step + 1, value, array.at(here.index)));
    return array;
}

std::optional<QJsonValue> readJson(const QByteArray& text)
{
    if (namesMemberTwice(text)) {
        return std::nullopt; // Qt never frees what such a text holds.
    }
    // A document is an object or an array only.
    const QJsonDocument document = QJsonDocument::fromJson('[' + text + ']');
    return document.array().size() == 1 ? std::optional(document.array().at(0)) : std::nullopt;
}

QByteArray writeJson(const QJsonValue& value)
{
    const QByteArray text = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return text.mid(1, text.size() - 2);
}

QVariant variantOf(const QJsonValue& value)
{
    if (value.isArray() || value.isObject()) {
        return QString::fromUtf8(writeJson(value));
    }
    if (value.isDouble()) {
        return value.toDouble(); // Not as the whole number that it may be.
    }
    return value.isNull() || value.isUndefined() ? QVariant() : value.toVariant();
}

} // namespace norvo
