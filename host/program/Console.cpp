#include "host/program/Console.h"

namespace norvo {

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
