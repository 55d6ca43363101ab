// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"

#include <cstdio>
#include <cstring>
#include <vector>

namespace {

struct Entry
{
    const char* name;
    norvo::TestEntry::Run run;
};

std::vector<Entry>& entries()
{
    static std::vector<Entry> all;
    return all;
}

norvo::TestLook::Wear s_wear = nullptr;

} // namespace

norvo::TestLook::TestLook(Wear how)
{
    s_wear = how;
}

void norvo::TestLook::wear()
{
    if (s_wear) {
        s_wear();
    }
}

norvo::TestEntry::TestEntry(const char* name, Run run)
{
    entries().push_back({name, run});
}

/// PROGRAM CLASS [arguments of Qt Test]: runs one test class. Without one: names them all.
int main(int argc, char** argv)
{
    if (argc < 2) {
        for (const Entry& entry : entries()) {
            std::puts(entry.name);
        }
        return 2;
    }
    for (const Entry& entry : entries()) {
        if (std::strcmp(entry.name, argv[1]) == 0) {
            argv[1] = argv[0];
            return entry.run(argc - 1, argv + 1);
        }
    }
    std::fprintf(stderr, "%s holds no test %s\n", argv[0], argv[1]);
    return 2;
}
