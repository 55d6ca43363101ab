// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

namespace norvo {

/// The tone of an alarm of that priority ("high", "medium", "low") as samples of 16 bits with sign,
/// the low byte first: the more urgent, the higher, and the more strokes. Under a second; empty for
/// any other priority. `rate` is in samples per second, 8,000 at least.
QByteArray toneOf(const QByteArray& priority, int rate, int channels);

} // namespace norvo
