// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/wiring/ports/Port.h"

#include "host/catalogue/TypeWords.h"

#include <QHash>

#include <algorithm>
#include <iterator>

namespace norvo {

namespace {

QString translated(const QString& word)
{
    static const QHash<QString, QString> words{
        {"number", Port::tr("number")}, {"text", Port::tr("text")},
        {"yes/no", Port::tr("yes/no")}, {"array", Port::tr("array")},
        {"bytes", Port::tr("bytes")},   {"value", Port::tr("any value")},
        {"pulse", Port::tr("a pulse")}};
    return words.value(word, word);
}

} // namespace

QString carriedBy(const QString& signature)
{
    QStringList words = MethodWords{signature, {}, false}.carries().split(", ");
    std::transform(words.cbegin(), words.cend(), words.begin(), translated);
    return words.join(", ");
}

QString Port::carries() const
{
    QStringList kinds;
    std::transform(signatures.cbegin(), signatures.cend(), std::back_inserter(kinds), carriedBy);
    kinds.removeDuplicates();
    const QString last = kinds.takeLast();
    return kinds.isEmpty() ? last : tr("%1 or %2").arg(kinds.join(", "), last);
}

bool Port::operator==(const Port& other) const
{
    return device == other.device && name == other.name && isOutput == other.isOutput;
}

} // namespace norvo
