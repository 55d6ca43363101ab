#pragma once

#include <QString>
#include <QStringList>

namespace norvo {

/// The known name that is at most two slips away from the wanted one: a letter too many, a letter
/// missing, a wrong letter, or two neighbours changed over; upper and lower case count as equal.
/// The nearest, of equally near ones the first; empty when there is none.
QString nearestName(const QString& wanted, const QStringList& known);

/// `; did you mean "name"?` for the nearest name, to end a fault with; empty when there is none.
QString didYouMean(const QString& wanted, const QStringList& known);

} // namespace norvo
