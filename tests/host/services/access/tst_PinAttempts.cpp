// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/access/PinAttempts.h"
#include "TestMain.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using namespace norvo;

/// What a wrong PIN costs.
class tst_PinAttempts : public QObject
{
    Q_OBJECT

private slots:
    void waitGrowsWithEachWrongPin_data();
    void waitGrowsWithEachWrongPin();
    void waitEndsByTheClock();
    void rolesCountByThemselves();
    void rightPinForgetsItsRoleAndThoseBelow();
    void restartWaitsInFull();
    void panelsOnOneFileCountForThemselves();
    void countIsOnDiskBeforeThePinIsLookedAt();
    void damagedFileCostsTheLongestWait_data();
    void damagedFileCostsTheLongestWait();
    void fileThatCannotBeWrittenIsToldOnce();

private:
    PinAttempts::Clock clock()
    {
        return [this] { return m_now; };
    }

    qint64 m_now = 1000;
};

void tst_PinAttempts::waitGrowsWithEachWrongPin_data()
{
    QTest::addColumn<int>("wrongPins");
    QTest::addColumn<qint64>("waitMs");
    const QMap<int, int> seconds{{0, 0},    {1, 0},    {2, 0},    {3, 1},    {4, 2},
                                 {5, 4},    {6, 8},    {7, 16},   {8, 32},   {9, 64},
                                 {10, 128}, {11, 256}, {12, 300}, {13, 300}, {1000, 300}};
    for (auto row = seconds.cbegin(); row != seconds.cend(); ++row) {
        QTest::addRow("%d", row.key()) << row.key() << row.value() * qint64(1000);
    }
}

void tst_PinAttempts::waitGrowsWithEachWrongPin()
{
    QFETCH(int, wrongPins);
    QTEST(PinAttempts::waitAfter(wrongPins), "waitMs");
    PinAttempts attempts({}, clock());
    for (int i = 0; i < wrongPins; ++i) {
        attempts.count({Role::Operate});
    }
    QTEST(attempts.waitMs(Role::Operate), "waitMs");
}

void tst_PinAttempts::waitEndsByTheClock()
{
    PinAttempts attempts({}, clock());
    for (int i = 0; i < 4; ++i) {
        attempts.count({Role::Operate});
    }
    m_now += 1500;
    QCOMPARE(attempts.waitMs(Role::Operate), 500);
    m_now += 500;
    QCOMPARE(attempts.waitMs(Role::Operate), 0);
    m_now += 1000000;
    QCOMPARE(attempts.waitMs(Role::Operate), 0);
    attempts.count({Role::Operate});
    QCOMPARE(attempts.waitMs(Role::Operate), 4000);
}

void tst_PinAttempts::rolesCountByThemselves()
{
    PinAttempts attempts({}, clock());
    for (int i = 0; i < 3; ++i) {
        attempts.count({Role::Engineer});
    }
    QCOMPARE(attempts.waitMs(Role::Operate), 0);
    QCOMPARE(attempts.waitMs(Role::Engineer), 1000);
}

void tst_PinAttempts::rightPinForgetsItsRoleAndThoseBelow()
{
    PinAttempts attempts({}, clock());
    for (int i = 0; i < 5; ++i) {
        attempts.count({Role::Operate, Role::Engineer});
    }
    attempts.forget(Role::Operate);
    QCOMPARE(attempts.waitMs(Role::Operate), 0);
    QCOMPARE(attempts.waitMs(Role::Engineer), 4000);
    attempts.count({Role::Operate});
    QCOMPARE(attempts.waitMs(Role::Operate), 0);
    attempts.forget(Role::Engineer);
    QCOMPARE(attempts.waitMs(Role::Engineer), 0);
}

void tst_PinAttempts::restartWaitsInFull()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("count");
    {
        PinAttempts attempts(file, clock());
        for (int i = 0; i < 5; ++i) {
            attempts.count({Role::Operate});
        }
        m_now += 3000;
        QCOMPARE(attempts.waitMs(Role::Operate), 1000);
    }
    m_now = 7; // Another boot, and perhaps another date.
    PinAttempts again(file, clock());
    again.read();
    QCOMPARE(again.waitMs(Role::Operate), 4000);
    QCOMPARE(again.waitMs(Role::Engineer), 0);
    again.forget(Role::Operate);
    PinAttempts third(file, clock());
    third.read();
    QCOMPARE(third.waitMs(Role::Operate), 0);
}

void tst_PinAttempts::panelsOnOneFileCountForThemselves()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("count");
    PinAttempts first(file, clock());
    PinAttempts second(file, clock());
    for (int i = 0; i < 4; ++i) {
        first.count({Role::Operate});
    }
    QCOMPARE(first.waitMs(Role::Operate), 2000);
    QCOMPARE(second.waitMs(Role::Operate), 0);
    second.count({Role::Operate});
    QFile kept(file);
    QVERIFY(kept.open(QIODevice::ReadOnly));
    QCOMPARE(kept.readAll(), QByteArray("operate: 1\n"));
    QCOMPARE(first.waitMs(Role::Operate), 2000);
}

void tst_PinAttempts::countIsOnDiskBeforeThePinIsLookedAt()
{
    const QTemporaryDir folder;
    PinAttempts attempts(folder.filePath("count"), clock());
    attempts.count({Role::Operate, Role::Engineer});
    QFile file(folder.filePath("count"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("operate: 1\nengineer: 1\n"));
}

void tst_PinAttempts::damagedFileCostsTheLongestWait_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("no number") << QByteArray("operate: many\n");
    QTest::newRow("negative") << QByteArray("operate: -5\n");
    QTest::newRow("unknown role") << QByteArray("owner: 1\n");
    QTest::newRow("binary") << QByteArray("\x00\xff\x01", 3);
}

void tst_PinAttempts::damagedFileCostsTheLongestWait()
{
    QFETCH(QByteArray, content);
    const QTemporaryDir folder;
    QFile file(folder.filePath("count"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    PinAttempts attempts(file.fileName(), clock());
    attempts.read();
    QCOMPARE(attempts.waitMs(Role::Operate), PinAttempts::kMaxWaitMs);
    QCOMPARE(attempts.waitMs(Role::Engineer), PinAttempts::kMaxWaitMs);
}

void tst_PinAttempts::fileThatCannotBeWrittenIsToldOnce()
{
    const QTemporaryDir folder;
    PinAttempts attempts(folder.path(), clock()); // A folder.
    const QSignalSpy problems(&attempts, &PinAttempts::problem);
    for (int i = 0; i < 3; ++i) {
        attempts.count({Role::Operate});
    }
    QCOMPARE(problems.size(), 1);
    QVERIFY(problems[0][0].toString().startsWith(folder.path()));
    QCOMPARE(attempts.waitMs(Role::Operate), 1000);
}

NORVO_TEST(tst_PinAttempts)
#include "tst_PinAttempts.moc"
