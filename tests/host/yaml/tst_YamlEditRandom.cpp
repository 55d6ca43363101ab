// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/YamlEdit.h"
#include "AlikeTrees.h"
#include "Seed.h"
#include "TestMain.h"

#include <QtTest>

#include <random>

using norvo::YamlEdit;
using norvo::YamlEntry;
using norvo::YamlNode;
namespace YamlTree = norvo::YamlTree;

namespace {

/// A tree as lines, "path = text" for each text, "path {}" for each map and "path []" for each
/// list, aliases followed. Keys that come twice are told apart by what stands before them.
void appendLines(const YamlNode& node, const QString& path, QStringList& lines)
{
    if (node.isText()) {
        lines += path + (node.kind == YamlNode::Kind::Absent ? " absent" : " = " + node.text);
        return;
    }
    lines += path + (node.kind == YamlNode::Kind::Map ? " {}" : " []");
    for (const YamlEntry& entry : node.entries) {
        appendLines(*entry.value, path + '\x1f' + (entry.key ? entry.key->text : "-"), lines);
    }
}

QStringList linesOf(const YamlNode& root)
{
    QStringList lines;
    appendLines(root, "", lines);
    return lines;
}

/// One entry of a tree, by its path and by its lines.
struct Spot
{
    YamlEdit::Path path;
    const YamlNode* node = nullptr;
    int line = 0; ///< The first of its lines.
    int lines = 0;
    int textLine = 0; ///< In the YAML text, of the value.
    QString prefix;   ///< Of its lines.
};

void collect(const YamlNode& node, const Spot& here, QVector<Spot>& spots, int& line)
{
    const int index = spots.size();
    Spot spot = here;
    spot.node = &node;
    spot.line = line++;
    spots.append(spot);
    for (size_t i = 0; i < node.entries.size(); ++i) {
        const YamlEntry& entry = node.entries[i];
        Spot below = here;
        below.textLine = entry.place.line;
        below.path += entry.key ? entry.key->text : QString::number(i);
        below.prefix += '\x1f' + (entry.key ? entry.key->text : QString("-"));
        collect(*entry.value, below, spots, line);
    }
    spots[index].lines = line - spots[index].line;
}

/// False where a path would not lead to this entry: keys that come twice or are no texts.
bool isPathUnique(const YamlNode& node)
{
    QStringList keys;
    for (const YamlEntry& entry : node.entries) {
        if ((entry.key && (!entry.key->isText() || keys.contains(entry.key->text))) ||
            !isPathUnique(*entry.value)) {
            return false;
        }
        keys += entry.key ? entry.key->text : QString::number(keys.size());
    }
    return true;
}

/// What is read as a comment; no panel holds "#" elsewhere before a space and behind one.
QStringList commentsOf(const QByteArray& text)
{
    QStringList comments;
    static const QRegularExpression pattern("(?:^|[ \t])(#[ ][^\r\n]*)",
                                            QRegularExpression::MultilineOption);
    auto matches = pattern.globalMatch(QString::fromUtf8(text));
    while (matches.hasNext()) {
        comments += matches.next().captured(1);
    }
    return comments;
}

} // namespace

/// Random edits of all panels that can be read: what comes out reads as the edit says, and the text
/// before and behind the place of the edit is the same.
class tst_YamlEditRandom : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void treesAreAsExpectedAndBytesOutsideEqual();
    void anyTextIsEditedAsExpectedOrRefused();

private:
    unsigned pick(unsigned count) { return m_random() % count; }
    QString anyText();
    YamlEdit::Error editAny(YamlEdit& panel, const Spot& spot, QStringList& expected,
                            QString& what);
    QString lossOutside(const QByteArray& text, const YamlEdit& panel, QPair<int, int> lines) const;
    QString edit(const QByteArray& text);

    std::mt19937 m_random;
    QList<QByteArray> m_panels;
    int m_done = 0;
    int m_refused = 0;
    bool m_isAnyText = false; ///< Written as nobody would.
};

void tst_YamlEditRandom::initTestCase()
{
    for (const char* folder : {"tests/panels", "examples"}) {
        QDirIterator files(folder, {"*.yaml"}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QByteArray text = file.readAll();
            const YamlEdit panel(text);
            if (!panel.error() && isPathUnique(panel.root()) && text.size() < 100000) {
                m_panels += text;
                m_panels += QByteArray(text).replace("\r\n", "\n").replace("\n", "\r\n");
                m_panels += "\xef\xbb\xbf" + text.trimmed();
            }
        }
    }
    QVERIFY(m_panels.size() > 100);
}

QString tst_YamlEditRandom::anyText()
{
    static const QStringList pieces{"no", "1.0", "~",  " ",  "a", ": ", " #",         "%1", "-",
                                    "'",  "\"",  "\\", "\n", ",", "[",  "}",          "&",  "*",
                                    "\t", "°",   "{",  "|",  ">", "?",  "\U0001f600", "@",  "!"};
    QString text;
    for (unsigned i = pick(6); i > 0; --i) {
        text += pieces[int(pick(unsigned(pieces.size())))];
    }
    return text;
}

/// One edit of any kind: does it, and says what the tree should become.
YamlEdit::Error tst_YamlEditRandom::editAny(YamlEdit& panel, const Spot& spot,
                                            QStringList& expected, QString& what)
{
    const QString value = anyText();
    const YamlNode& node = *spot.node;
    const bool isRoot = spot.path.isEmpty();
    if (!isRoot && pick(4) == 0) {
        what = "remove";
        expected.erase(expected.begin() + spot.line, expected.begin() + spot.line + spot.lines);
        return panel.remove(spot.path);
    }
    if (node.isText() && !isRoot) {
        what = "set " + value;
        expected[spot.line] = spot.prefix + " = " + value;
        return panel.setText(spot.path, value);
    }
    if (node.kind == YamlNode::Kind::List) {
        what = "add " + value;
        const int count = int(node.entries.size());
        const int after = int(pick(unsigned(count) + 1)) - 1;
        QStringList before;
        for (int i = 0; i < (after < 0 ? count : after + 1); ++i) {
            appendLines(*node.entries[size_t(i)].value, {}, before);
        }
        expected.insert(spot.line + 1 + before.size(), spot.prefix + "\x1f- = " + value);
        return panel.add(spot.path, YamlTree::text(value), after);
    }
    what = "insert " + value;
    const bool isMap = pick(2) == 0;
    const QString path = spot.prefix + "\x1fk" + value;
    const int place = spot.line + spot.lines;
    expected[spot.line] = spot.prefix + " {}";
    expected.insert(place, (isMap ? path + "\x1fx = " : path + " = ") + value);
    if (isMap) {
        expected.insert(place, path + " {}");
    }
    const auto text = YamlTree::text(value);
    return panel.insert(spot.path, "k" + value, isMap ? YamlTree::map({{"x", text}}) : text);
}

/// What has changed outside the edit; empty where nothing has. `lines`: the first that a new text
/// may touch, and the first behind it that it may not; 0: unknown.
QString tst_YamlEditRandom::lossOutside(const QByteArray& text, const YamlEdit& panel,
                                        QPair<int, int> lines) const
{
    const QByteArray now = panel.text();
    const int behind = now.size() - panel.editEnd();
    if (now.left(panel.editBegin()) != text.left(panel.editBegin()) ||
        now.right(behind) != text.right(behind) || panel.editBegin() + behind > text.size()) {
        return "bytes outside the edit";
    }
    const QList<QByteArray> before = text.split('\n');
    const QList<QByteArray> after = now.split('\n');
    if (lines.first > 0 && after.mid(0, lines.first - 1) != before.mid(0, lines.first - 1)) {
        return "lines before the edit";
    }
    const int rest = lines.second > lines.first ? before.size() - lines.second + 1 : 0;
    if (lines.first > 0 && after.mid(after.size() - rest) != before.mid(before.size() - rest)) {
        return "lines behind the edit";
    }
    const bool isCrLf = text.contains('\n') && text.count('\n') == text.count("\r\n");
    return isCrLf && now.count('\n') != now.count("\r\n") ? "another line end" : "";
}

/// One edit of the text; what went wrong, empty where nothing did.
QString tst_YamlEditRandom::edit(const QByteArray& text)
{
    const YamlEdit before(text);
    YamlEdit panel(text);
    QStringList expected = linesOf(before.root());
    QVector<Spot> spots;
    int line = 0;
    collect(before.root(), {}, spots, line);
    const int index = int(pick(unsigned(spots.size())));
    const Spot& spot = spots[index];
    QString what;
    const YamlEdit::Error error = editAny(panel, spot, expected, what);
    what += " at " + spot.path.join('/') + ": ";
    if (error) {
        ++m_refused;
        const bool isRefusable = m_isAnyText || !error->text.contains("by hand");
        return panel.text() == text && isRefusable ? QString() : what + "refused: " + error->text;
    }
    ++m_done;
    const YamlEdit read(panel.text());
    if (!norvo::isAlike(panel.root(), read.root())) {
        return what + "the tree is not as it is read again";
    }
    const QStringList tree = linesOf(read.root());
    if (tree != expected) {
        return what + "the tree is\n" + tree.join('\n') + "\nand not\n" + expected.join('\n');
    }
    const int next = index + 1 < spots.size() ? spots[index + 1].textLine : 0;
    const bool isSet = what.startsWith("set ");
    const QString loss =
        lossOutside(text, panel, isSet ? qMakePair(spot.textLine, next) : qMakePair(0, 0));
    if (!loss.isEmpty()) {
        return what + loss;
    }
    const QString now = QString::fromUtf8(panel.text());
    for (const QString& comment : commentsOf(text)) {
        if (!m_isAnyText && !what.startsWith("remove") && !now.contains(comment)) {
            return what + "lost " + comment;
        }
    }
    return {};
}

void tst_YamlEditRandom::treesAreAsExpectedAndBytesOutsideEqual()
{
    const unsigned first = norvo::testSeed();
    qInfo("NORVO_TEST_SEED=%u", first);
    for (unsigned round = 0; round < 10000; ++round) {
        m_random.seed(first + round);
        const QByteArray text = m_panels[int(pick(unsigned(m_panels.size())))];
        const QString wrong = edit(text);
        QVERIFY2(wrong.isEmpty(), qPrintable(QString("NORVO_TEST_SEED=%1: %2\n%3")
                                                 .arg(first + round)
                                                 .arg(wrong, QString::fromUtf8(text.left(3000)))));
    }
    qInfo("%d edits done, %d refused", m_done, m_refused);
    QVERIFY(m_refused < 1000);
}

void tst_YamlEditRandom::anyTextIsEditedAsExpectedOrRefused()
{
    const QList<QByteArray> pieces{
        "a",     "b",    "c",    ": ",     ": ",  ":",     "- ",     "- ",    "? ",   "\n",
        "\n",    "\n  ", "\n  ", "\n    ", "{",   "}",     "[",      "]",     ", ",   "\"",
        "'",     "|\n",  ">-\n", "|+\n",   "&a ", "*a ",   "!!str ", "~",     " # c", "---\n",
        "...\n", "é",    "\r\n", "%",      "x y", "\"q\"", "'s'",    "a: 1\n"};
    m_isAnyText = true;
    m_done = m_refused = 0;
    for (unsigned round = 0; round < 100000; ++round) {
        m_random.seed(round); // The same texts in every run.
        QByteArray text;
        for (unsigned i = 1 + pick(16); i > 0; --i) {
            text += pieces[int(pick(unsigned(pieces.size())))];
        }
        const YamlEdit panel(text);
        if (!panel.error() && isPathUnique(panel.root())) {
            const QString wrong = edit(text);
            QVERIFY2(
                wrong.isEmpty(),
                qPrintable(
                    QString("round %1: %2\n%3").arg(round).arg(wrong, QString::fromUtf8(text))));
        }
    }
    qInfo("%d edits done, %d refused", m_done, m_refused);
    QVERIFY(m_done > 1000);
}

NORVO_GUILESS_TEST(tst_YamlEditRandom)
#include "tst_YamlEditRandom.moc"
