// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/common/JsonPath.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace norvo {

/// A JSON text with a place for a value: "%1" in it is the value, and part of a text where it
/// stands in quotes. A JSON path alone stands for an object that holds nothing else.
class JsonTemplate
{
public:
    /// What is wrong with it, or an empty text.
    QString define(const QString& definition);

    /// `text`: the value as it stands within quotes.
    QString filled(const QJsonValue& value, const QString& text) const;

private:
    bool split(const QString& definition);

    std::optional<JsonPath> m_path;
    QStringList m_pieces;         ///< Between the places.
    std::vector<bool> m_isQuoted; ///< Of each place.
};

} // namespace norvo
