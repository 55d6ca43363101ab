// SPDX-License-Identifier: LGPL-3.0-or-later

#include <QBackingStore>
#include <QRegion>

#include <cstdio>
#include <ctime>
#include <unistd.h>

/// Preloaded into a program, this ends it at the first picture that it would show, and prints the
/// processor time until then, in ms.
void QBackingStore::flush(const QRegion&, QWindow*, const QPoint&)
{
    timespec used{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    std::printf("\n%.3f\n", double(used.tv_sec) * 1e3 + double(used.tv_nsec) / 1e6);
    std::fflush(stdout);
    _exit(0);
}
