// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/sources/process/RestartDelay.h"
#include "TestMain.h"

#include <QtTest>

using norvo::RestartDelay;
using namespace std::chrono_literals;

class tst_RestartDelay : public QObject
{
    Q_OBJECT

private slots:
    void growsToALimit();
    void isShortAgainAfterAStableRun();
};

void tst_RestartDelay::growsToALimit()
{
    RestartDelay delay;
    for (const auto expected : {500ms, 1000ms, 2000ms, 4000ms, 8000ms, 16000ms, 30000ms, 30000ms}) {
        QCOMPARE(delay.next(9999ms).count(), expected.count());
    }
}

void tst_RestartDelay::isShortAgainAfterAStableRun()
{
    RestartDelay delay;
    delay.next(0ms);
    delay.next(0ms);
    QCOMPARE(delay.next(10000ms).count(), (500ms).count());
    QCOMPARE(delay.next(0ms).count(), (1000ms).count());
}

NORVO_APPLESS_TEST(tst_RestartDelay)
#include "tst_RestartDelay.moc"
