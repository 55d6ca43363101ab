#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

/// Whether the changed code at this place is to run: NORVO_MUTANT names the one place of this run.
/// With NORVO_MUTANTS_REACHED the numbers of all places that are reached are added to that file.
inline bool norvoMutant(int number)
{
    static const char* const wanted = ::getenv("NORVO_MUTANT");
    static const int chosen = wanted ? std::atoi(wanted) : -1;
    static const char* const reached = ::getenv("NORVO_MUTANTS_REACHED");
    static unsigned char seen[10000] = {};
    if (reached && !seen[number]) {
        seen[number] = 1;
        char line[16];
        const int length = std::snprintf(line, sizeof(line), "%d\n", number);
        const int file = ::open(reached, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
        const bool isWritten = file >= 0 && ::write(file, line, size_t(length)) == length;
        ::close(file);
        if (!isWritten) {
            std::abort();
        }
    }
    return number == chosen;
}
