// SPDX-License-Identifier: GPL-3.0-or-later

#include "AlikeTrees.h"
#include "host/yaml/YamlReread.h"
#include "TestMain.h"

#include <QtTest>

using namespace norvo;

/// What an edit has touched is read by itself, so that edits of a long text are quick.
class tst_YamlReread : public QObject
{
    Q_OBJECT

private slots:
    void touchedLinesAreReadAlone_data();
    void touchedLinesAreReadAlone();
};

void tst_YamlReread::touchedLinesAreReadAlone_data()
{
    QTest::addColumn<QByteArray>("old");
    QTest::addColumn<QByteArray>("now");
    QTest::newRow("a line") << QByteArray("b: 2\n") << QByteArray("b: 20\n");
    QTest::newRow("a text in it") << QByteArray("2\n") << QByteArray("20\n");
    QTest::newRow("the last line") << QByteArray("  d: 4\n") << QByteArray("  d: 40\n");
    QTest::newRow("the last lines") << QByteArray("c:\n  d: 4\n") << QByteArray("c:\n  e: 5\n");
    QTest::newRow("the first line") << QByteArray("a: 1\n") << QByteArray("a: 10\n");
}

void tst_YamlReread::touchedLinesAreReadAlone()
{
    QFETCH(QByteArray, old);
    QFETCH(QByteArray, now);
    const QByteArray text = "a: 1\nb: 2\nc:\n  d: 4\n";
    const int begin = text.indexOf(old);
    const SourceText before(text);
    const SourceText after(QByteArray(text).replace(begin, old.size(), now));
    YamlEntry root;
    root.value = std::get<YamlNodePtr>(YamlTree::read(before));
    const YamlNodePtr tree =
        YamlReread(before, root, after, begin, begin + old.size(), begin + now.size()).tree();
    QVERIFY(tree);
    QVERIFY(isAlike(*tree, *std::get<YamlNodePtr>(YamlTree::read(after))));
}

NORVO_APPLESS_TEST(tst_YamlReread)
#include "tst_YamlReread.moc"
