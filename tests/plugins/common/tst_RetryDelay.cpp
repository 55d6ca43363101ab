// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/common/RetryDelay.h"
#include "TestMain.h"

#include <QtTest>

using norvo::RetryDelay;
using namespace std::chrono_literals;

class tst_RetryDelay : public QObject
{
    Q_OBJECT

private slots:
    void growsToALimit();
    void isShortAgainAfterAStableRun();
    void growsToTheLimitGiven();
    void jitterIsAQuarterAtMost();
};

void tst_RetryDelay::growsToALimit()
{
    RetryDelay delay;
    for (const auto expected : {500ms, 1000ms, 2000ms, 4000ms, 8000ms, 16000ms, 30000ms, 30000ms}) {
        QCOMPARE(delay.next(9999ms).count(), expected.count());
    }
}

void tst_RetryDelay::isShortAgainAfterAStableRun()
{
    RetryDelay delay;
    delay.next(0ms);
    delay.next(0ms);
    QCOMPARE(delay.next(10000ms).count(), (500ms).count());
    QCOMPARE(delay.next(0ms).count(), (1000ms).count());
}

void tst_RetryDelay::growsToTheLimitGiven()
{
    RetryDelay delay(1500ms);
    for (const auto expected : {500ms, 1000ms, 1500ms, 1500ms}) {
        QCOMPARE(delay.next(0ms).count(), expected.count());
    }
}

void tst_RetryDelay::jitterIsAQuarterAtMost()
{
    QSet<qint64> seen;
    for (int i = 0; i < 100; ++i) {
        RetryDelay delay;
        seen += delay.nextJittered(0ms).count();
        QCOMPARE(delay.next(0ms).count(), (1000ms).count());
    }
    QVERIFY(*std::min_element(seen.begin(), seen.end()) >= 375);
    QVERIFY(*std::max_element(seen.begin(), seen.end()) <= 625);
    QVERIFY(seen.size() > 20);
}

NORVO_APPLESS_TEST(tst_RetryDelay)
#include "tst_RetryDelay.moc"
