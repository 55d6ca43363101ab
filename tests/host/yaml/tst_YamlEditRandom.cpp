// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/YamlEdit.h"
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

/// One entry of a tree, by its path and by the line where it begins.
struct Spot
{
    YamlEdit::Path path;
    const YamlNode* node = nullptr;
    const YamlNode* parent = nullptr;
    int line = 0;
    int lines = 0;
    QString prefix; ///< Of its lines.
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
        below.parent = &node;
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

private:
    unsigned pick(unsigned count) { return m_random() % count; }
    QString anyText();
    bool edit(const QByteArray& text, QString& reason);

    std::mt19937 m_random;
    QList<QByteArray> m_panels;
    int m_done = 0;
    int m_refused = 0;
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

/// One edit; false with a reason where it went wrong.
bool tst_YamlEditRandom::edit(const QByteArray& text, QString& reason)
{
    const YamlEdit before(text);
    YamlEdit panel(text);
    QStringList expected = linesOf(before.root());
    QVector<Spot> spots;
    int line = 0;
    collect(before.root(), {}, spots, line);
    const Spot spot = spots[int(pick(unsigned(spots.size())))];
    const QString value = anyText();
    const bool isRoot = spot.path.isEmpty();
    const bool isRemoved = !isRoot && pick(4) == 0;
    YamlEdit::Error error;
    if (isRemoved) {
        reason = "remove";
        error = panel.remove(spot.path);
        expected.erase(expected.begin() + spot.line, expected.begin() + spot.line + spot.lines);
    } else if (spot.node->isText() && !isRoot) {
        reason = "set " + value;
        error = panel.setText(spot.path, value);
        expected[spot.line] = spot.prefix + " = " + value;
    } else if (spot.node->kind == YamlNode::Kind::List) {
        reason = "add " + value;
        const int after = int(pick(unsigned(spot.node->entries.size()) + 1)) - 1;
        error = panel.add(spot.path, YamlTree::text(value), after);
        int place = spot.line + 1;
        const int count = after < 0 ? int(spot.node->entries.size()) : after + 1;
        for (int i = 0; i < count; ++i) {
            QStringList item;
            appendLines(*spot.node->entries[size_t(i)].value, {}, item);
            place += item.size();
        }
        expected.insert(place, spot.prefix + "\x1f- = " + value);
    } else {
        reason = "insert " + value;
        const QString key = "k" + value;
        const bool isMap = pick(2) == 0;
        const auto entry =
            isMap ? YamlTree::map({{"x", YamlTree::text(value)}}) : YamlTree::text(value);
        error = panel.insert(spot.path, key, entry);
        expected[spot.line] = spot.prefix + " {}";
        const QString path = spot.prefix + '\x1f' + key;
        const int place = spot.line + spot.lines;
        expected.insert(place, isMap ? path + "\x1fx = " + value : path + " = " + value);
        if (isMap) {
            expected.insert(place, path + " {}");
        }
    }
    reason += " at " + spot.path.join('/');
    const QByteArray now = panel.text();
    if (error) {
        ++m_refused;
        reason += ": refused: " + error->text;
        return now == text && !error->text.contains("by hand");
    }
    ++m_done;
    if (linesOf(YamlEdit(now).root()) != expected) {
        reason += ": another tree\n" + linesOf(YamlEdit(now).root()).join('\n') + "\nexpected\n" +
                  expected.join('\n');
        return false;
    }
    const int behind = now.size() - panel.editEnd();
    if (now.left(panel.editBegin()) != text.left(panel.editBegin()) ||
        now.right(behind) != text.right(behind) || panel.editBegin() + behind > text.size()) {
        reason += ": bytes outside the edit";
        return false;
    }
    if (text.contains("\r\n") && now.count('\n') != now.count("\r\n")) {
        reason += ": another line end";
        return false;
    }
    if (!isRemoved) {
        const QStringList after = commentsOf(now);
        for (const QString& comment : commentsOf(text)) {
            if (!after.contains(comment)) {
                reason += ": lost " + comment;
                return false;
            }
        }
    }
    return true;
}

void tst_YamlEditRandom::treesAreAsExpectedAndBytesOutsideEqual()
{
    const QByteArray given = qgetenv("NORVO_TEST_SEED");
    const unsigned first = given.isEmpty() ? std::random_device()() : given.toUInt();
    qInfo("NORVO_TEST_SEED=%u", first);
    for (unsigned round = 0; round < 10000; ++round) {
        m_random.seed(first + round);
        const QByteArray text = m_panels[int(pick(unsigned(m_panels.size())))];
        QString reason;
        QVERIFY2(edit(text, reason),
                 qPrintable(QString("NORVO_TEST_SEED=%1: %2\n%3")
                                .arg(first + round)
                                .arg(reason, QString::fromUtf8(text.left(3000)))));
    }
    qInfo("%d edits done, %d refused", m_done, m_refused);
    QVERIFY(m_refused < 1000);
}

NORVO_GUILESS_TEST(tst_YamlEditRandom)
#include "tst_YamlEditRandom.moc"
