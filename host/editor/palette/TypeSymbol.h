// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

class QPalette;

namespace norvo {

struct TypeWords;

/// The symbol of a device type without a widget: a box with the names of its outputs and inputs.
namespace TypeSymbol {

QImage draw(const TypeWords& words, const QSize& size, const QPalette& palette);

} // namespace TypeSymbol

} // namespace norvo
