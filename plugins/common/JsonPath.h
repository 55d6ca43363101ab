// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QString>
#include <QVariant>

#include <optional>
#include <vector>

namespace norvo {

/// Where in a JSON value another one stands: "$" is the value itself, and behind it come, as often
/// as needed, ".name", "['name']" or "[\"name\"]" for a member and "[0]" for an element.
///
/// A bare name holds letters, digits, "_" and "-"; a quoted one anything but its quote. There are
/// no wildcards, slices, filters or negative indexes.
class JsonPath
{
public:
    static constexpr int kMaxSteps = 64;
    static constexpr int kMaxIndex = 99999;

    /// What is wrong with the path, and the object is as before, or an empty text.
    QString define(const QString& path);

    /// Undefined where there is nothing of that place.
    QJsonValue valueIn(const QJsonValue& root) const;
    /// `root` with the value at this place. What is missing on the way is made, elements before an
    /// index as null, and what is of another kind is replaced.
    QJsonValue placed(const QJsonValue& value, const QJsonValue& root = {}) const;

private:
    struct Step
    {
        QString name;
        int index = -1; ///< Below 0: a member.
    };

    QJsonValue placedFrom(std::size_t step, const QJsonValue& value, const QJsonValue& root) const;

    std::vector<Step> m_steps;
};

/// The value that the text is, a bare number, text or null as well; nothing where it is not JSON in
/// UTF-8, or an object in it names a member twice, of which JSON does not say what it means.
std::optional<QJsonValue> readJson(const QByteArray& text);
/// On one line, without spaces; a number that JSON cannot hold becomes null.
QByteArray writeJson(const QJsonValue& value);
/// As an output sends it: a double, bool or QString; an object or array as its text. Invalid for
/// null and undefined.
QVariant variantOf(const QJsonValue& value);

} // namespace norvo
