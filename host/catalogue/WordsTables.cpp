// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/catalogue/WordsTables.h"

#include "host/catalogue/EntryReader.h"

#include <QDir>
#include <QFile>

#include <variant>

namespace norvo {

namespace {

constexpr char kEveryType[] = "*";

/// The entry without the keys that only people read, on the same lines. They are most of it.
QByteArray withoutTexts(const QByteArray& entry)
{
    static const QList<QByteArray> left{"notes", "outputs", "inputs", "ports", "example"};
    QByteArray rest;
    int indentation = 0; // Of the entry's keys.
    bool isLeft = false;
    for (int begin = 0; begin < entry.size();) {
        const int found = entry.indexOf('\n', begin);
        const int end = found < 0 ? entry.size() : found + 1;
        const QByteArray line = entry.mid(begin, end - begin);
        int blanks = 0;
        while (blanks < line.size() && line.at(blanks) == ' ') {
            ++blanks;
        }
        const bool isText = blanks < line.size() && !QByteArray("#\r\n").contains(line.at(blanks));
        indentation = indentation == 0 && isText ? blanks : indentation;
        if (isText && blanks <= indentation) {
            isLeft = blanks > 0 && left.contains(line.mid(blanks, line.indexOf(':') - blanks));
        }
        rest += isLeft ? QByteArray("\n") : line;
        begin = end;
    }
    return rest;
}

} // namespace

WordsTables::WordsTables(const QString& folder, QStringList& problems)
{
    const QDir dir(folder);
    for (const QString& name : dir.entryList(QDir::Files, QDir::Name)) {
        if (name.endsWith(".yaml", Qt::CaseInsensitive)) {
            splitFile(dir.filePath(name), problems);
        }
    }
}

void WordsTables::splitFile(const QString& fileName, QStringList& problems)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        problems.append(fileName + ": " + file.errorString());
        return;
    }
    const QByteArray text = file.readAll();
    const QByteArray noKey = " #\n\r"; // What a line begins with that belongs to the entry before.
    Entry entry{fileName, 0, {}};
    int entryBegin = 0;
    int line = 0;
    for (int begin = 0; begin < text.size(); ++line) {
        if (begin > 0 && !noKey.contains(text.at(begin))) {
            entry.text = text.mid(entryBegin, begin - entryBegin);
            add(entry);
            entryBegin = begin;
            entry.line = line;
        }
        const int end = text.indexOf('\n', begin);
        begin = end < 0 ? text.size() : end + 1;
    }
    entry.text = text.mid(entryBegin);
    add(entry);
}

void WordsTables::add(const Entry& entry)
{
    const QByteArray text = entry.text.trimmed();
    const int end = text.indexOf('\n');
    const QByteArray firstLine = end < 0 ? text : text.left(end);
    const int colon = firstLine.startsWith('#') ? -1 : firstLine.indexOf(':');
    QByteArray key = firstLine.left(colon).trimmed();
    if (key.startsWith('"') || key.startsWith('\'')) {
        key = key.mid(1, key.size() - 2);
    }
    if (key == kEveryType) {
        m_general = entry;
    } else if (colon >= 0) {
        m_entries.insert(QString::fromUtf8(key), entry);
    }
}

/// What stands behind the key; an empty text where that is nothing, or cannot be read.
YamlNodePtr WordsTables::read(const Entry& entry, const QByteArray& text, QStringList& problems)
{
    const auto read = YamlTree::read(SourceText(QByteArray(entry.line, '\n') + text));
    if (const auto* const error = std::get_if<TextError>(&read)) {
        problems.append(QString("%1:%2:%3: %4")
                            .arg(entry.file)
                            .arg(error->place.line)
                            .arg(error->place.column)
                            .arg(error->text));
        return YamlTree::text({});
    }
    const YamlNodePtr& root = std::get<YamlNodePtr>(read);
    const bool hasEntry = root->kind == YamlNode::Kind::Map && !root->entries.empty();
    return hasEntry ? root->entries.front().value : YamlTree::text({});
}

void WordsTables::addTo(TypeWords& type, Part part, QStringList& problems) const
{
    const auto entry = m_entries.constFind(type.key);
    if (entry != m_entries.constEnd()) {
        const QByteArray text = part == Part::All ? entry->text : withoutTexts(entry->text);
        EntryReader(entry->file, type, problems).read(*read(*entry, text, problems));
    }
    if (part == Part::All) {
        if (!m_generalWords) {
            m_generalWords = read(m_general, m_general.text, problems);
        }
        EntryReader(m_general.file, type, problems).readGeneral(*m_generalWords);
    }
}

} // namespace norvo
