#pragma once

#include "host/yaml/Place.h"
#include "host/yaml/Quote.h"

#include <QString>
#include <QVector>

namespace norvo {

/// Something that is wrong with a panel, in one line.
struct Fault
{
    enum class Severity { Error, Warning };

    Severity severity = Severity::Error;
    QString file; ///< As the user named it.
    Place place;
    QString text; ///< What is wrong, and what would be right.

    /// "file:line:column: error: text"; line and column are left out where they are unknown. It is
    /// one line whatever the text holds.
    QString toString() const;
};

using Faults = QVector<Fault>;

void sortByPlace(Faults& faults);     ///< Those of one place keep their order.
bool hasErrors(const Faults& faults); ///< True when one of them is more than a warning.

/// How many there are of each kind: "2 errors, 1 warning"; "no faults" for none.
QString summary(const Faults& faults);

} // namespace norvo
