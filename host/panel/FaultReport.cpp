#include "host/panel/FaultReport.h"

#include <QStringList>

#include <algorithm>

namespace norvo {

namespace {

QString counted(int count, const QString& what)
{
    return QString("%1 %2%3").arg(count).arg(what, count == 1 ? "" : "s");
}

} // namespace

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

void print(FILE* stream, const QString& line)
{
    std::fputs((line + '\n').toUtf8().constData(), stream);
    std::fflush(stream);
}

void print(FILE* stream, const Faults& faults)
{
    for (const Fault& fault : faults) {
        print(stream, fault.toString());
    }
}

void complain(const QString& text)
{
    print(stderr, "norvo-panel: " + text);
}

} // namespace norvo
