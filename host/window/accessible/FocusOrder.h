// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QGridLayout;

namespace norvo {

/// Lets the tab key go through a page by row and column, whatever the order of the file.
void orderFocus(const QGridLayout& grid);

} // namespace norvo
