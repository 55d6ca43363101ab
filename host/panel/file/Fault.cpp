#include "host/panel/file/Fault.h"

#include <QStringList>

#include <algorithm>
#include <tuple>

namespace norvo {

namespace {

QString counted(int count, const QString& what)
{
    return QString("%1 %2%3").arg(count).arg(what, count == 1 ? "" : "s");
}

} // namespace

QString Fault::toString() const
{
    const QString kind = severity == Severity::Error ? "error" : "warning";
    QString where = file;
    if (place.line > 0) {
        where += QString(":%1:%2").arg(place.line).arg(place.column);
    }
    return onOneLine(QString("%1: %2: %3").arg(where, kind, text));
}

void sortByPlace(Faults& faults)
{
    std::stable_sort(faults.begin(), faults.end(), [](const Fault& a, const Fault& b) {
        return std::tie(a.place.line, a.place.column) < std::tie(b.place.line, b.place.column);
    });
}

bool hasErrors(const Faults& faults)
{
    return std::any_of(faults.cbegin(), faults.cend(),
                       [](const Fault& fault) { return fault.severity == Fault::Severity::Error; });
}

QString summary(const Faults& faults)
{
    const int errors = int(std::count_if(faults.cbegin(), faults.cend(), [](const Fault& fault) {
        return fault.severity == Fault::Severity::Error;
    }));
    const int warnings = faults.size() - errors;
    QStringList parts;
    if (errors > 0) {
        parts += counted(errors, "error");
    }
    if (warnings > 0) {
        parts += counted(warnings, "warning");
    }
    return parts.isEmpty() ? QString("no faults") : parts.join(", ");
}

} // namespace norvo
