// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/Diagnostics.h"
#include "TestMain.h"

#include <QtTest>

using norvo::Diagnostic;
using norvo::Diagnostics;
using norvo::inQuotes;

static QStringList lines(const Diagnostics& diagnostics)
{
    QStringList lines;
    for (const Diagnostic& diagnostic : diagnostics.sorted()) {
        lines += diagnostic.toString();
    }
    return lines;
}

class tst_Diagnostics : public QObject
{
    Q_OBJECT

private slots:
    void oneLineSaysAll()
    {
        QCOMPARE(
            (Diagnostic{Diagnostic::Severity::Error, "a.yaml", {3, 14}, "no %1 here"}).toString(),
            QString("a.yaml:3:14: error: no %1 here"));
        QCOMPARE((Diagnostic{Diagnostic::Severity::Warning, "%1.yaml", {3, 14}, "x"}).toString(),
                 QString("%1.yaml:3:14: warning: x"));
    }

    void unknownPlaceIsLeftOut()
    {
        QCOMPARE((Diagnostic{Diagnostic::Severity::Error, "a.yaml", {}, "x"}).toString(),
                 QString("a.yaml: error: x"));
    }

    void itIsOneLineWhateverTheTextHolds()
    {
        const QString text = QString("a\nb\tc\rd") + QChar(0x2028) + QChar(0);
        QCOMPARE((Diagnostic{Diagnostic::Severity::Error, "a\n.yaml", {1, 1}, text}).toString(),
                 QString("a\\n.yaml:1:1: error: a\\nb\\tc\\u000dd\\u2028\\u0000"));
    }

    void onlyAnErrorIsOne()
    {
        Diagnostics diagnostics("a.yaml");
        QVERIFY(diagnostics.isEmpty());
        diagnostics.warning({1, 1}, "x");
        QVERIFY(!diagnostics.isEmpty());
        QVERIFY(!diagnostics.hasErrors());
        diagnostics.error({1, 1}, "x");
        QVERIFY(diagnostics.hasErrors());
    }

    void errorOfADeviceDoesNotPreventTheStart()
    {
        Diagnostics diagnostics("a.yaml");
        diagnostics.warning({1, 1}, "x");
        diagnostics.errorOfDevice({1, 1}, "x");
        QVERIFY(diagnostics.hasErrors());
        QVERIFY(!diagnostics.preventsStart());
        QCOMPARE(lines(diagnostics).last(), QString("a.yaml:1:1: error: x"));
        diagnostics.error({2, 1}, "x");
        QVERIFY(diagnostics.preventsStart());
    }

    void summaryCounts()
    {
        Diagnostics diagnostics("a.yaml");
        QCOMPARE(diagnostics.summary(), QString("no errors"));
        diagnostics.warning({1, 1}, "x");
        QCOMPARE(diagnostics.summary(), QString("1 warning"));
        diagnostics.error({1, 1}, "x");
        diagnostics.error({1, 2}, "x");
        QCOMPARE(diagnostics.summary(), QString("2 errors, 1 warning"));
    }

    void theyAreInTheOrderOfTheFile()
    {
        Diagnostics diagnostics("a");
        diagnostics.warning({2, 1}, "w");
        diagnostics.error({2, 1}, "later");
        diagnostics.error({10, 1}, "last");
        diagnostics.error({2, 1}, "even later");
        diagnostics.error({1, 9}, "first");
        QCOMPARE(lines(diagnostics),
                 (QStringList{"a:1:9: error: first", "a:2:1: warning: w", "a:2:1: error: later",
                              "a:2:1: error: even later", "a:10:1: error: last"}));
    }

    void sameTextAboutAPlaceIsReportedOnce()
    {
        Diagnostics diagnostics("a");
        for (int i = 0; i < 2; ++i) {
            diagnostics.error({1, 1}, "x");
            diagnostics.error({1, 1}, "y");
            diagnostics.error({1, 2}, "x");
            diagnostics.error({2, 1}, "x");
            diagnostics.warning({1, 1}, "x");
        }
        QCOMPARE(diagnostics.summary(), QString("4 errors, 1 warning"));
        QCOMPARE(lines(diagnostics).size(), 5);
    }

    void sameTextInTwoFilesIsReportedForBoth()
    {
        Diagnostics diagnostics("p");
        for (const char* file : {"a", "b", "a"}) {
            diagnostics.warningIn(file, {1, 1}, "x");
        }
        QCOMPARE(diagnostics.sorted().size(), 2);
        QCOMPARE(diagnostics.summary(), QString("2 warnings"));
    }

    void moreThanALotAreOnlyCounted()
    {
        Diagnostics diagnostics("a");
        for (int i = 1; i <= Diagnostics::kMaxOfAKind; ++i) {
            diagnostics.error({i, 1}, "x");
            diagnostics.warning({i, 2}, "x");
        }
        QCOMPARE(lines(diagnostics).size(), 2 * Diagnostics::kMaxOfAKind);
        QCOMPARE(lines(diagnostics).constLast(),
                 QString("a:%1:2: warning: x").arg(Diagnostics::kMaxOfAKind));
        diagnostics.error({1, 3}, "one more");
        diagnostics.warning({1, 4}, "more");
        diagnostics.warning({1, 5}, "more");
        const QStringList all = lines(diagnostics);
        QCOMPARE(all.size(), 2 * Diagnostics::kMaxOfAKind + 2);
        QCOMPARE(all.mid(all.size() - 2), (QStringList{"a: error: ... and 1 error more",
                                                       "a: warning: ... and 2 warnings more"}));
        QCOMPARE(diagnostics.summary(), QString("201 errors, 202 warnings"));
    }

    void longTextsAreCut()
    {
        Diagnostics diagnostics("a");
        const QString most(Diagnostics::kMaxTextLength, 'x');
        diagnostics.error({1, 1}, most);
        diagnostics.error({2, 1}, most + 'x');
        QCOMPARE(lines(diagnostics),
                 (QStringList{"a:1:1: error: " + most, "a:2:1: error: " + most + "..."}));
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

NORVO_GUILESS_TEST(tst_Diagnostics)
#include "tst_Diagnostics.moc"
