#include "host/program/Console.h"

namespace norvo {

void print(FILE* stream, const QString& line)
{
    std::fputs((line + '\n').toUtf8().constData(), stream);
    std::fflush(stream);
}

void print(FILE* stream, const Diagnostics& diagnostics)
{
    const DiagnosticList list = diagnostics.sorted();
    for (const Diagnostic& diagnostic : list) {
        print(stream, diagnostic.toString());
    }
}

void complain(const QString& text)
{
    print(stderr, "norvo-panel: " + text);
}

} // namespace norvo
