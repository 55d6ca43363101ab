#include "host/panel/Fault.h"

#include <algorithm>

namespace norvo {

QString Fault::toString() const
{
    const QString kind = severity == Severity::Error ? "error" : "warning";
    QString where = file;
    if (place.line > 0) {
        where += QString(":%1:%2").arg(place.line).arg(place.column);
    }
    return QString("%1: %2: %3").arg(where, kind, text);
}

bool hasErrors(const Faults& faults)
{
    return std::any_of(faults.cbegin(), faults.cend(), [](const Fault& fault) {
        return fault.severity == Fault::Severity::Error;
    });
}

} // namespace norvo
