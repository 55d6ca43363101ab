// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/plain/PlainYaml.h"
#include "AlikeTrees.h"
#include "Seed.h"
#include "TestMain.h"

#include <QtTest>

#include <yaml-cpp/exceptions.h>
#include <yaml-cpp/parser.h>

#include <random>
#include <sstream>

using norvo::PlainYaml;
using norvo::SourceText;
using norvo::TextError;
using norvo::YamlBuilder;
using norvo::YamlNodePtr;

namespace {

YamlNodePtr readPlain(const QByteArray& text)
{
    const SourceText source(text);
    if (source.firstBadByte()) { // which is refused before anything is read
        return nullptr;
    }
    YamlBuilder builder(source);
    try {
        return PlainYaml(source, builder).read() ? builder.root() : nullptr;
    } catch (const TextError&) {
        return nullptr;
    }
}

YamlNodePtr readByParser(const QByteArray& text)
{
    const SourceText source(text);
    YamlBuilder builder(source);
    try {
        std::istringstream stream(text.toStdString());
        YAML::Parser parser(stream);
        while (parser.HandleNextDocument(builder)) {
        }
    } catch (const TextError&) {
        return nullptr;
    } catch (const YAML::Exception&) {
        return nullptr;
    }
    return builder.root();
}

/// Whether the parser reads the same, places and all.
bool isReadAlike(const QByteArray& text, const YamlNodePtr& plain)
{
    const YamlNodePtr parsed = readByParser(text);
    if (parsed && isAlike(*plain, *parsed)) {
        return true;
    }
    qWarning().noquote() << (parsed ? "read otherwise:\n" : "not read by the parser:\n") + text;
    return false;
}

} // namespace

/// What it reads the parser reads alike; anything else it leaves to the parser.
class tst_PlainYaml : public QObject
{
    Q_OBJECT

private slots:
    void plainTextsAreRead_data();
    void plainTextsAreRead();
    void othersAreLeftToTheParser_data();
    void othersAreLeftToTheParser();
    void panelsAreReadAsByTheParser();
    void changedPanelsAreReadAsByTheParser();
    void madeUpTextsAreReadAsByTheParser();

private:
    static QList<QByteArray> panels();
    unsigned pick(int count) { return m_random() % unsigned(count); }

    std::mt19937 m_random{norvo::testSeed()};
};

void tst_PlainYaml::plainTextsAreRead_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("map") << QByteArray("a: b\nc:  d e \n");
    QTest::newRow("maps in maps") << QByteArray("a:\n  b:\n     c: 1\n     d: 2\n  e: 3\nf: 4\n");
    QTest::newRow("list") << QByteArray("a:\n  - b\n  -   c d\nb: -1\n");
    QTest::newRow("list alone") << QByteArray("- b\n- 'c'\n");
    QTest::newRow("brackets") << QByteArray("a: {b: c, d: [1, 2.5 , 'x', {}, []]}\n");
    QTest::newRow("comments") << QByteArray("# a\na: b # c\n  # d\n\n   \nb: {c: d} # e\nf: # g\n"
                                            "  h: \"i\" # j\nk: l#m\n# n\n");
    QTest::newRow("quotes") << QByteArray("'a ''b': \"c, d: e\"\n\"k\": 'it''s # {'\nl: ''\n");
    QTest::newRow("addresses") << QByteArray("a: tcp://x:1\nb: {c: tcp://x:1, d: 12:30}\n");
    QTest::newRow("words of YAML") << QByteArray("a: no\nb: true\nc: 1e5\nd: nullable\ne: '~'\n");
    QTest::newRow("arrows") << QByteArray("c:\n  - a.b(double) -> c.d(QString)\n");
    QTest::newRow("other letters") << QByteArray("ä: µ\nb: {°C: Ω ≤ 3}\n");
    QTest::newRow("a key twice") << QByteArray("a: 1\na: 2\n");
}

void tst_PlainYaml::plainTextsAreRead()
{
    QFETCH(QByteArray, text);
    const YamlNodePtr plain = readPlain(text);
    QVERIFY(plain);
    QVERIFY(isReadAlike(text, plain));
}

void tst_PlainYaml::othersAreLeftToTheParser_data()
{
    QTest::addColumn<QByteArray>("text");
    for (const char* text : {"",
                             "# a\n",
                             "a\nb: c\n",
                             "a: b",
                             " a: b\n",
                             "a: b\r\n",
                             "a:\tb\n",
                             "\xef\xbb\xbf"
                             "a: b\n",
                             "a:\n",
                             "a: ~\n",
                             "a: null\n",
                             "null: a\n",
                             "a: &x b\n",
                             "a: *x\n",
                             "a: !t b\n",
                             "a: |\n  b\n",
                             "a: >\n  b\n",
                             "a: b\n  c\n",
                             "a: 'b\n  c'\n",
                             "a: \"b\\n\"\n",
                             "a: 'b\n",
                             "a: 'b' c\n",
                             "a: 'b'#c\n",
                             "a: b: c\n",
                             "a: b:\n",
                             "a : b\n",
                             "? a\n: b\n",
                             "a: b\n c: d\n",
                             "a:\n   b: c\n  d: e\n",
                             "a:\n- b\n",
                             "- a: b\n",
                             "- - a\n",
                             "-\n  a\n",
                             "- a\nb: c\n",
                             "a: b\n- c\n",
                             "---\na: b\n",
                             "a: b\n...\n",
                             "%YAML 1.2\na: b\n",
                             "a: {b: c\n",
                             "a: {b: c,\n  d: e}\n",
                             "a: [b, ]\n",
                             "a: {b: c, }\n",
                             "a: {b}\n",
                             "a: {b: }\n",
                             "a: {b: , c: d}\n",
                             "a: [b: c]\n",
                             "a: [b, , c]\n",
                             "a: [b c}\n",
                             "a: {b: c} d\n",
                             "a: [b?]\n",
                             "a: {b: c #}\n",
                             "a: {'b':c}\n",
                             "a: @b\n",
                             "a: `b`\n",
                             "{a: b}: c\n",
                             "<<: b\n",
                             "a: {b: [c]d}\n",
                             "a: {b:[c]}\n",
                             "a: b\n---\nc: d\n"}) {
        QTest::newRow(text) << QByteArray(text);
    }
    QTest::newRow("a long key") << QByteArray(1030, 'k') + ": v\n";
    QTest::newRow("deep") << "a: " + QByteArray(100, '[') + QByteArray(100, ']') + '\n';
}

void tst_PlainYaml::othersAreLeftToTheParser()
{
    QFETCH(QByteArray, text);
    QVERIFY(!readPlain(text));
}

QList<QByteArray> tst_PlainYaml::panels()
{
    QList<QByteArray> panels;
    for (const char* folder : {"tests/panels", "examples"}) {
        QDirIterator files(folder, {"*.yaml"}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            if (file.open(QIODevice::ReadOnly) && file.size() < 100000) {
                panels += file.readAll();
            }
        }
    }
    return panels;
}

void tst_PlainYaml::panelsAreReadAsByTheParser()
{
    int read = 0;
    const QList<QByteArray> all = panels();
    for (const QByteArray& text : all) {
        if (const YamlNodePtr plain = readPlain(text)) {
            ++read;
            QVERIFY(isReadAlike(text, plain));
        }
    }
    QVERIFY2(read > 20, qPrintable(QString("%1 of %2").arg(read).arg(all.size())));
}

void tst_PlainYaml::changedPanelsAreReadAsByTheParser()
{
    static const QList<QByteArray> pieces{" ", "  ", "\n", "\n  ", ":", ": ",       ", ",      ",",
                                          "#", " #", "'",  "\"",   "{", "}",        "[",       "]",
                                          "-", "- ", "?",  "~",    "a", "\n- ",     "\n---\n", "|",
                                          "&", "*",  "!",  "%",    "@", "\xc2\xb0", "."};
    int read = 0;
    for (const QByteArray& panel : panels()) {
        if (panel.size() > 3000 || !readPlain(panel)) {
            continue;
        }
        for (int i = 0; i < 150; ++i) {
            QByteArray text = panel;
            for (unsigned changes = 1 + pick(3); changes > 0; --changes) {
                const int at = int(pick(text.size()));
                text.remove(at, int(pick(3)));
                text.insert(at, pieces[int(pick(pieces.size()))]);
            }
            if (const YamlNodePtr plain = readPlain(text)) {
                ++read;
                QVERIFY(isReadAlike(text, plain));
            }
        }
    }
    QVERIFY2(read > 1000, qPrintable(QString::number(read)));
}

void tst_PlainYaml::madeUpTextsAreReadAsByTheParser()
{
    static const QList<QByteArray> pieces{"a",   "b",     "1",     "-",       ":",    ": ", " ",
                                          "\n",  "\n ",   "\n  ",  "- ",      "'",    "\"", "{",
                                          "}",   "[",     "]",     ",",       ", ",   "#",  " #",
                                          "a: ", "\na: ", "\nb: ", ".",       "null", "$",  "+",
                                          "(",   "/",     "''",    "\xc3\xa4"};
    int read = 0;
    for (int i = 0; i < 60000; ++i) {
        QByteArray text = "a: ";
        for (unsigned count = 1 + pick(9); count > 0; --count) {
            text += pieces[int(pick(pieces.size()))];
        }
        text += '\n';
        if (const YamlNodePtr plain = readPlain(text)) {
            ++read;
            QVERIFY(isReadAlike(text, plain));
        }
    }
    QVERIFY2(read > 1000, qPrintable(QString::number(read)));
}

NORVO_TEST(tst_PlainYaml)
#include "tst_PlainYaml.moc"
