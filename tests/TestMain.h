// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtTest>
#include <QtWidgets>

namespace norvo {

/// Enters a test class into the program's list; TestMain.cpp runs the one that is asked for.
class TestEntry
{
public:
    using Run = int (*)(int argc, char** argv);

    TestEntry(const char* name, Run run);
};

/// Dresses the application of each test that has one, where the program links TestLook.cpp and the
/// environment asks for it.
class TestLook
{
public:
    using Wear = void (*)();

    explicit TestLook(Wear how);
    static void wear();
};

} // namespace norvo

#define NORVO_TEST_WITH(Class, Application)                                                        \
    static const norvo::TestEntry entryOf_##Class(#Class, [](int argc, char** argv) {              \
        const Application application(argc, argv);                                                 \
        norvo::TestLook::wear();                                                                   \
        Class test;                                                                                \
        return QTest::qExec(&test, argc, argv);                                                    \
    });

/// The last line of a test file: a test that needs widgets, one that needs an event loop alone, and
/// one that needs no application.
#define NORVO_TEST(Class) NORVO_TEST_WITH(Class, QApplication)
#define NORVO_GUILESS_TEST(Class) NORVO_TEST_WITH(Class, QCoreApplication)
#define NORVO_APPLESS_TEST(Class)                                                                  \
    static const norvo::TestEntry entryOf_##Class(#Class, [](int argc, char** argv) {              \
        Class test;                                                                                \
        return QTest::qExec(&test, argc, argv);                                                    \
    });
