// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/mqtt/Outbox.h"
#include "TestMain.h"

#include <QtTest>

using norvo::Outbox;
using norvo::Publication;

class tst_Outbox : public QObject
{
    Q_OBJECT

private slots:
    void orderStays();
    void countIsBounded();
    void bytesAreBounded();
    void clearLeavesRoomForAll();

private:
    static Publication of(const QByteArray& payload) { return {"t", payload, 1, false}; }
    static Publication ofSize(qint64 size) { return of(QByteArray(int(size), 'x')); }
};

void tst_Outbox::orderStays()
{
    Outbox outbox;
    QVERIFY(!outbox.takeFirst());
    QVERIFY(outbox.push(of("a")));
    QVERIFY(outbox.push(of("b")));
    QCOMPARE(outbox.takeFirst()->payload, QByteArray("a"));
    QCOMPARE(outbox.takeFirst()->payload, QByteArray("b"));
    QVERIFY(!outbox.takeFirst());
}

void tst_Outbox::countIsBounded()
{
    Outbox outbox;
    for (std::size_t i = 0; i < Outbox::kMaxCount; ++i) {
        QVERIFY(outbox.push(of("x")));
    }
    QVERIFY(!outbox.push(of("refused")));
    QVERIFY(outbox.takeFirst());
    QVERIFY(outbox.push(of("last")));
    QVERIFY(!outbox.push(of({})));
}

void tst_Outbox::bytesAreBounded()
{
    Outbox outbox;
    QVERIFY(outbox.push(ofSize(Outbox::kMaxBytes - 10)));
    QVERIFY(!outbox.push(ofSize(11)));
    QVERIFY(outbox.push(ofSize(10)));
    QVERIFY(outbox.push(of({})));
    QVERIFY(!outbox.push(ofSize(1)));
    QVERIFY(outbox.takeFirst());
    QVERIFY(outbox.push(ofSize(Outbox::kMaxBytes - 10)));
    QVERIFY(!outbox.push(ofSize(1)));
}

void tst_Outbox::clearLeavesRoomForAll()
{
    Outbox outbox;
    QVERIFY(outbox.push(ofSize(Outbox::kMaxBytes - 1)));
    QVERIFY(outbox.push(ofSize(1)));
    QCOMPARE(outbox.clear(), std::size_t(2));
    QCOMPARE(outbox.clear(), std::size_t(0));
    QVERIFY(!outbox.takeFirst());
    QVERIFY(outbox.push(ofSize(Outbox::kMaxBytes)));
}

NORVO_GUILESS_TEST(tst_Outbox)
#include "tst_Outbox.moc"
