// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/catalogue/TypeWords.h"

#include <QString>
#include <QVector>

namespace norvo {

class Catalogue;

/// The catalogue as texts for people and programs, without a line end behind the last line.
namespace Listing {

enum class Format { Text, Markdown, Json };
using Types = QVector<const TypeWords*>;

Types allTypes(const Catalogue& catalogue); ///< In the order of the alphabet.

QString lines(const Types& types); ///< A line for each.
/// Everything about these types. As markdown, all types are the page docs/devices.md, with pictures
/// from the folder pictures/devices beside it.
QString text(const Types& types);
QString markdown(const Types& types);
QString json(const Types& types);
QString as(Format format, const Types& types);

/// What may stand behind a parameter's name: "whole number in ms, at least 0".
QString valuesOf(const ParamWords& param);
/// When the parameter counts: "where type is int or spin"; empty: always.
QString conditionOf(const ParamWords& param);

} // namespace Listing

} // namespace norvo
