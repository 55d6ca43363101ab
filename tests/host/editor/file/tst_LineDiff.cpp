// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/file/LineDiff.h"

#include "TestMain.h"

#include <QtTest>

class tst_LineDiff : public QObject
{
    Q_OBJECT

private slots:
    void marksWhatOneSideHas_data();
    void marksWhatOneSideHas();
};

void tst_LineDiff::marksWhatOneSideHas_data()
{
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("right");
    QTest::addColumn<QString>("onlyLeft"); // An x for each marked line.
    QTest::addColumn<QString>("onlyRight");
    QTest::newRow("equal") << "abc"
                           << "abc"
                           << "..."
                           << "...";
    QTest::newRow("changed") << "abc"
                             << "aXc"
                             << ".x."
                             << ".x.";
    QTest::newRow("added") << "ac"
                           << "abc"
                           << ".."
                           << ".x.";
    QTest::newRow("removed") << "abc"
                             << "ac"
                             << ".x."
                             << "..";
    QTest::newRow("two places") << "abcde"
                                << "aBcDe"
                                << ".x.x."
                                << ".x.x.";
    QTest::newRow("moved") << "abcd"
                           << "acdb"
                           << ".x.."
                           << "...x";
    QTest::newRow("nothing") << ""
                             << "ab"
                             << ""
                             << "xx";
    QTest::newRow("repeated") << "aa"
                              << "aaa"
                              << ".."
                              << "..x";
}

void tst_LineDiff::marksWhatOneSideHas()
{
    QFETCH(QString, left);
    QFETCH(QString, right);
    const auto lines = [](const QString& text) {
        return text.split(QString(), Qt::SkipEmptyParts);
    };
    const auto marks = [](const QVector<bool>& isOnly) {
        QString text;
        for (const bool is : isOnly) {
            text += is ? 'x' : '.';
        }
        return text;
    };
    const norvo::LineDiff diff(lines(left), lines(right));
    QTEST(marks(diff.onlyLeft), "onlyLeft");
    QTEST(marks(diff.onlyRight), "onlyRight");
}

NORVO_TEST(tst_LineDiff)
#include "tst_LineDiff.moc"
