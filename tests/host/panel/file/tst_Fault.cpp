#include "host/panel/file/Fault.h"
#include "TestMain.h"

#include <QtTest>

using norvo::Fault;
using norvo::Faults;
using norvo::inQuotes;

class tst_Fault : public QObject
{
    Q_OBJECT

private slots:
    void oneLineSaysAll()
    {
        QCOMPARE((Fault{Fault::Severity::Error, "a.yaml", {3, 14}, "no %1 here"}).toString(),
                 QString("a.yaml:3:14: error: no %1 here"));
        QCOMPARE((Fault{Fault::Severity::Warning, "%1.yaml", {3, 14}, "x"}).toString(),
                 QString("%1.yaml:3:14: warning: x"));
    }

    void unknownPlaceIsLeftOut()
    {
        QCOMPARE((Fault{Fault::Severity::Error, "a.yaml", {}, "x"}).toString(),
                 QString("a.yaml: error: x"));
    }

    void itIsOneLineWhateverTheTextHolds()
    {
        const QString text = QString("a\nb\tc\rd") + QChar(0x2028) + QChar(0);
        QCOMPARE((Fault{Fault::Severity::Error, "a\n.yaml", {1, 1}, text}).toString(),
                 QString("a\\n.yaml:1:1: error: a\\nb\\tc\\u000dd\\u2028\\u0000"));
    }

    void onlyAnErrorIsOne()
    {
        const Fault warning{Fault::Severity::Warning, "a", {1, 1}, "x"};
        const Fault error{Fault::Severity::Error, "a", {1, 1}, "x"};
        QVERIFY(!norvo::hasErrors({}));
        QVERIFY(!norvo::hasErrors({warning, warning}));
        QVERIFY(norvo::hasErrors({warning, error}));
    }

    void quotedTexts_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("short") << "a b"
                               << "\"a b\"";
        QTest::newRow("empty") << ""
                               << "\"\"";
        QTest::newRow("line ends") << "a\nb"
                                   << "\"a\\nb\"";
        QTest::newRow("as long as may be") << QString(60, 'x') << '"' + QString(60, 'x') + '"';
        QTest::newRow("longer") << QString(61, 'x') << '"' + QString(57, 'x') + "...\"";
        const QString pair = QString::fromUtf8("\xf0\x9f\x98\x80");
        QTest::newRow("a pair is not cut in two")
            << QString(56, 'x') + pair + "yyyy" << '"' + QString(56, 'x') + "...\"";
    }
    void quotedTexts()
    {
        QFETCH(QString, text);
        QTEST(inQuotes(text), "expected");
    }
};

NORVO_GUILESS_TEST(tst_Fault)
#include "tst_Fault.moc"
