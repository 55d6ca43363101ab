// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace norvo {

/// The known name whose edit distance to the wanted one is 2 at most: a letter too many, a letter
/// missing, a wrong letter, and two neighbours swapped count 1 each; upper and lower case are
/// equal. Where no name is near, what stands after the last slash of each is compared. The nearest,
/// of equally near ones the first; empty when there is none.
QString nearestName(const QString& wanted, const QStringList& known);

/// `; did you mean "name"?` for the nearest name, to end an error with; empty when there is none.
QString didYouMean(const QString& wanted, const QStringList& known);
/// The same; where no name is near, all of them: `; valid names: "a", "b"`.
QString didYouMeanOneOf(const QString& wanted, const QStringList& known);
/// The same for ids of devices, of which a use's first device, "p1-start", is nearest to "p1".
QString didYouMeanDevice(const QString& wanted, const QStringList& ids);

} // namespace norvo
