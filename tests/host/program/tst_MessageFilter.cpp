// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/streams/MessageFilter.h"
#include "TestMain.h"

#include <QtTest>

using norvo::MessageFilter;

namespace {

const QStringList kNothing;
constexpr qint64 kInterval = MessageFilter::kIntervalMs;

} // namespace

class tst_MessageFilter : public QObject
{
    Q_OBJECT

private slots:
    void newMessageIsWrittenAtOnce();
    void repeatedMessageIsCountedAndReportedAtIntervals();
    void messageThatStayedAwayIsNewAgain();
    void numbersMakeNoOtherMessage_data();
    void numbersMakeNoOtherMessage();
    void countsAreReportedAtTheEnd();
    void kindsAreBounded();
};

void tst_MessageFilter::newMessageIsWrittenAtOnce()
{
    MessageFilter filter;
    QCOMPARE(filter.take("one", 0), QStringList("one"));
    QCOMPARE(filter.take("another", 0), QStringList("another"));
    QCOMPARE(filter.take("", 0), QStringList(""));
}

void tst_MessageFilter::repeatedMessageIsCountedAndReportedAtIntervals()
{
    MessageFilter filter;
    filter.take("value 1 is bad", 1000);
    for (int i = 2; i <= 500; ++i) {
        QCOMPARE(filter.take(QString("value %1 is bad").arg(i), 1000 + i), kNothing);
    }
    QCOMPARE(filter.due(1000 + kInterval - 1), kNothing);
    QCOMPARE(filter.due(1000 + kInterval), QStringList("value 500 is bad (499 more times)"));
    QCOMPARE(filter.take("value 501 is bad", 1000 + kInterval), kNothing);
    QCOMPARE(filter.take("value 502 is bad", 1000 + 2 * kInterval),
             QStringList("value 501 is bad (1 more times)"));
}

void tst_MessageFilter::messageThatStayedAwayIsNewAgain()
{
    MessageFilter filter;
    filter.take("bad", 0);
    QCOMPARE(filter.take("bad", kInterval), QStringList("bad"));
    QCOMPARE(filter.take("bad", kInterval + 1), kNothing);
    QCOMPARE(filter.take("bad", 3 * kInterval), QStringList("bad (1 more times)"));
}

void tst_MessageFilter::numbersMakeNoOtherMessage_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<bool>("isSame");
    QTest::newRow("number") << "missing: CPU, 1"
                            << "missing: CPU, 23.5" << true;
    QTest::newRow("signs and powers") << "got -1e+05 here"
                                      << "got +7 here" << true;
    QTest::newRow("in quotes") << "got \"1\""
                               << "got \"-2.5\"" << true;
    QTest::newRow("text") << "missing: CPU, a"
                          << "missing: CPU, b" << false;
    QTest::newRow("line") << "Gauge.qml:12: no x"
                          << "Gauge.qml:13: no x" << false;
    QTest::newRow("column") << "Gauge.qml:12:3: no x"
                            << "Gauge.qml:12:4: no x" << false;
    QTest::newRow("device") << "pump1: bad"
                            << "pump2: bad" << false;
}

void tst_MessageFilter::numbersMakeNoOtherMessage()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    MessageFilter filter;
    filter.take(first, 0);
    QTEST(filter.take(second, 0).isEmpty(), "isSame");
}

void tst_MessageFilter::countsAreReportedAtTheEnd()
{
    MessageFilter filter;
    filter.take("once", 0);
    filter.take("twice", 0);
    filter.take("twice", 0);
    QCOMPARE(filter.dueAtTheEnd(), QStringList("twice (1 more times)"));
    QCOMPARE(filter.dueAtTheEnd(), kNothing);
}

void tst_MessageFilter::kindsAreBounded()
{
    MessageFilter filter;
    QString word;
    int written = 0;
    for (int i = 0; i < 1000; ++i) {
        word += 'x';
        written += filter.take(word, 0).size();
    }
    QCOMPARE(written, MessageFilter::kMaxKinds);
    const int others = 1000 - MessageFilter::kMaxKinds;
    QCOMPARE(filter.due(kInterval), QStringList(QString("%1 other warnings").arg(others)));
    QCOMPARE(filter.take("new", kInterval), QStringList("new"));
}

NORVO_GUILESS_TEST(tst_MessageFilter)
#include "tst_MessageFilter.moc"
