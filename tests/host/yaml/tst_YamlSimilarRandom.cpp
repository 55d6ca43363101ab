// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/YamlEdit.h"
#include "AlikeTrees.h"
#include "Seed.h"
#include "TestMain.h"

#include <QtTest>

#include <random>

using norvo::YamlEdit;

/// A text that is read by what another one says of it is the same as one that is read by itself:
/// its tree with all places, or its error.
class tst_YamlSimilarRandom : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void panelsReadTheSame();
    void anyTextsReadTheSame();
    void whatIsOutsideIsNotReadAgain();

private:
    unsigned pick(unsigned count) { return m_random() % count; }
    QByteArray piece() { return m_pieces[int(pick(unsigned(m_pieces.size())))]; }
    QByteArray changed(const QByteArray& text);
    QString difference(const QByteArray& before, const QByteArray& after);

    const QList<QByteArray> m_pieces{"a",        "b",         "c",
                                     ": ",       ": ",        ":",
                                     "- ",       "- ",        "? ",
                                     "\n",       "\n",        "\n  ",
                                     "\n  ",     "\n    ",    "{",
                                     "}",        "[",         "]",
                                     ", ",       "\"",        "'",
                                     "|\n",      ">-\n",      "|+\n",
                                     "&a ",      "*a ",       "!!str ",
                                     "~",        " # c",      "---\n",
                                     "...\n",    "\xc3\xa9",  "\r\n",
                                     "%",        "x y",       "\"q\"",
                                     "'s'",      "a: 1\n",    "\xef\xbb\xbf",
                                     "\n# x\n",  "\xc3",      "\t",
                                     "null",     "<<: ",      "b: |\n  x\n",
                                     "\nb: 2\n", "\n- x: 1\n"};
    std::mt19937 m_random;
    QList<QByteArray> m_panels;
    int m_errors = 0;
};

void tst_YamlSimilarRandom::initTestCase()
{
    for (const char* folder : {"tests/panels", "examples"}) {
        QDirIterator files(folder, {"*.yaml"}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            if (file.size() < 20000) {
                m_panels += file.readAll();
            }
        }
    }
    QVERIFY(m_panels.size() > 100);
}

/// With some bytes gone, and others there: pieces, or bytes of another place.
QByteArray tst_YamlSimilarRandom::changed(const QByteArray& text)
{
    const int begin = int(pick(unsigned(text.size()) + 1));
    const bool isOfLines = pick(3) == 0;
    const auto lineAt = [&](int at) { return at == 0 ? 0 : text.lastIndexOf('\n', at - 1) + 1; };
    const int from = isOfLines ? lineAt(begin) : begin;
    const int length = int(pick(pick(2) == 0 ? 4 : 200));
    const int end = std::min(from + length, text.size());
    const int to = isOfLines ? std::max(from, lineAt(end)) : end;
    QByteArray written;
    if (isOfLines && pick(2) == 0) {
        const int other = lineAt(int(pick(unsigned(text.size()) + 1)));
        written = text.mid(other, std::max(0, lineAt(std::min(other + 80, text.size())) - other));
    } else {
        for (unsigned i = pick(4); i > 0; --i) {
            written += piece();
        }
    }
    return text.left(from) + written + text.mid(to);
}

/// Empty where both ways to read the text agree.
QString tst_YamlSimilarRandom::difference(const QByteArray& before, const QByteArray& after)
{
    const YamlEdit similar(after, YamlEdit(before));
    const YamlEdit whole(after);
    m_errors += whole.error() ? 1 : 0;
    if (bool(similar.error()) != bool(whole.error())) {
        return whole.error() ? "no error, " + whole.error()->text
                             : "an error, " + similar.error()->text;
    }
    if (whole.error()) {
        return similar.error()->text == whole.error()->text &&
                       norvo::isAt(similar.error()->place, whole.error()->place)
                   ? QString()
                   : QString("another error");
    }
    return norvo::isAlike(similar.root(), whole.root()) ? QString() : QString("another tree");
}

void tst_YamlSimilarRandom::panelsReadTheSame()
{
    const unsigned first = norvo::testSeed();
    qInfo("NORVO_TEST_SEED=%u", first);
    for (unsigned round = 0; round < 5000; ++round) {
        m_random.seed(first + round);
        const QByteArray before = m_panels[int(pick(unsigned(m_panels.size())))];
        const QByteArray after = changed(before);
        const QString wrong = difference(before, after);
        QVERIFY2(
            wrong.isEmpty(),
            qPrintable(
                QString("NORVO_TEST_SEED=%1: %2\n%3\n=======\n%4")
                    .arg(first + round)
                    .arg(wrong,
                         QString(before.mid(
                             std::max(0, norvo::TextChange::between(before, after).begin - 900),
                             1800)),
                         QString(after.mid(
                             std::max(0, norvo::TextChange::between(before, after).begin - 900),
                             1800)))));
    }
    qInfo("%d of them are errors", m_errors);
    QVERIFY(m_errors < 4000);
}

void tst_YamlSimilarRandom::anyTextsReadTheSame()
{
    m_errors = 0;
    const unsigned first = norvo::testSeed();
    for (unsigned round = 0; round < 50000; ++round) {
        m_random.seed(first + round);
        QByteArray before = pick(2) == 0 ? "a: 1\nb:\n  - c\n  - d: 2\n" : "";
        for (unsigned i = 1 + pick(10); i > 0; --i) {
            before += piece();
        }
        const QByteArray after = changed(before);
        const QString wrong = difference(before, after);
        QVERIFY2(
            wrong.isEmpty(),
            qPrintable(
                QString("NORVO_TEST_SEED=%1: %2\n%3\n=======\n%4")
                    .arg(first + round)
                    .arg(wrong, QString(before),
                         QString(after.mid(
                             std::max(0, norvo::TextChange::between(before, after).begin - 900),
                             1800)))));
    }
    qInfo("%d of them are errors", m_errors);
    QVERIFY(m_errors < 45000);
}

void tst_YamlSimilarRandom::whatIsOutsideIsNotReadAgain()
{
    const YamlEdit before("devices:\n  a: {device: button}\n  b: {device: button}\ntitle: T\n");
    const YamlEdit after("devices:\n  a: {device: button}\n  b: {device: label}\ntitle: T\n",
                         before);
    const auto deviceOf = [](const YamlEdit& text, size_t index) {
        return text.root().entries[0].value->entries[index].value;
    };
    QCOMPARE(deviceOf(after, 0), deviceOf(before, 0));
    QVERIFY(deviceOf(after, 1) != deviceOf(before, 1));
}

NORVO_GUILESS_TEST(tst_YamlSimilarRandom)
#include "tst_YamlSimilarRandom.moc"
