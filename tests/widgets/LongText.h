// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <QtTest>

#include <ctime>

/// Of all threads of this process.
inline double cpuSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}

inline void show(QWidget& widget)
{
    widget.resize(400, 200);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
}
