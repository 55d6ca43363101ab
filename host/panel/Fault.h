#pragma once

#include <QString>
#include <QVector>

namespace norvo {

/// A place in a text file. Lines and columns count from 1, columns in characters; 0: unknown.
struct Place
{
    int line = 0;
    int column = 0;
};

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

/// The text in quotation marks, to stand in a fault: on one line, and shortened where it is long.
QString inQuotes(const QString& text);

} // namespace norvo
