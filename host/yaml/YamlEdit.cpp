// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/YamlEdit.h"

#include "host/yaml/Quote.h"
#include "host/yaml/YamlReread.h"
#include "host/yaml/YamlSplices.h"

#include <algorithm>
#include <iterator>

namespace norvo {

namespace {

int indexOf(const YamlNode& node, const QString& step)
{
    if (node.kind == YamlNode::Kind::List) {
        bool isNumber = false;
        const int index = step.toInt(&isNumber);
        return isNumber && index < int(node.entries.size()) ? index : -1;
    }
    const auto found =
        std::find_if(node.entries.cbegin(), node.entries.cend(), [&step](const YamlEntry& entry) {
            return entry.key->isText() && entry.key->text == step;
        });
    return found == node.entries.cend() ? -1 : int(std::distance(node.entries.cbegin(), found));
}

TextError usedElsewhere(const Place& place, const Place& use)
{
    return {place, QString("the alias in %1 uses this value, too; write a value there in its place "
                           "first")
                       .arg(toString(use))};
}

TextError aliasInTheWay(const YamlEntry& alias)
{
    return {alias.place, QString("this alias stands for the value in %1; change it there, for all "
                                 "who use it, or write a value here in the alias's place first")
                             .arg(toString(alias.value->place))};
}

} // namespace

YamlEdit::YamlEdit(const QByteArray& text) : m_source(std::make_shared<const SourceText>(text))
{
    readWhole();
}

YamlEdit::YamlEdit(const QByteArray& text, const YamlEdit& similar)
    : m_source(std::make_shared<const SourceText>(text))
{
    const TextChange change = TextChange::between(similar.text(), text);
    const YamlReread reread(*similar.m_source, similar.m_root, *m_source, change.begin,
                            change.oldEnd, change.newEnd);
    if (const YamlNodePtr tree = similar.error() ? nullptr : reread.tree()) {
        setRoot(tree);
    } else {
        readWhole();
    }
}

void YamlEdit::readWhole()
{
    m_root.value = std::make_shared<const YamlNode>();
    const auto tree = YamlTree::read(*m_source);
    if (const auto* error = std::get_if<TextError>(&tree)) {
        m_error = *error;
    } else {
        setRoot(std::get<YamlNodePtr>(tree));
    }
}

void YamlEdit::setRoot(const YamlNodePtr& root)
{
    m_root.value = root;
    m_root.mark = root->mark;
}

YamlEdit::Error YamlEdit::setText(const Path& path, const QString& text)
{
    Trail trail;
    Error error = find(path, trail);
    error = error ? error : refuseShared(trail);
    if (error) {
        return error;
    }
    const YamlEntry& entry = *trail.entries.back();
    if (!entry.value->isText() || trail.indices.empty()) {
        return TextError{entry.place, "this is a list or a map, not a text"};
    }
    const YamlEntry& parent = **(trail.entries.cend() - 2);
    const auto expected = YamlTree::changed(root(), trail.indices, [&text](YamlNode& node) {
        node.kind = YamlNode::Kind::Text;
        node.text = text;
    });
    return apply(YamlSplices(*m_source, m_root).replacements(parent, trail.indices.back(), text),
                 expected, entry.place);
}

YamlEdit::Error YamlEdit::renameKey(const Path& path, const QString& key)
{
    Trail trail;
    if (Error error = find(path, trail)) {
        return error;
    }
    const YamlEntry& entry = *trail.entries.back();
    if (!entry.key || trail.indices.empty()) {
        return TextError{entry.place, "this is no entry of a map"};
    }
    const int index = trail.indices.back();
    const YamlTree::Uses uses = YamlTree::usesOf(m_root, *m_source);
    const Place use = uses.value(entry.key.get());
    if (use.line > 0) {
        return usedElsewhere(entry.key->place, use);
    }
    trail.entries.pop_back();
    trail.indices.pop_back();
    if (Error error = refuseShared(trail)) {
        return error;
    }
    const YamlEntry& parent = *trail.entries.back();
    if (indexOf(*parent.value, key) >= 0) {
        return TextError{entry.key->place,
                         QString("the key %1 is there already").arg(inQuotes(key))};
    }
    const auto expected = YamlTree::changed(root(), trail.indices, [&](YamlNode& node) {
        node.entries[size_t(index)].key = YamlTree::text(key);
    });
    return apply(YamlSplices(*m_source, m_root).renamings(parent, index, key), expected,
                 entry.key->place);
}

YamlEdit::Error YamlEdit::insert(const Path& map, const QString& key, const YamlNodePtr& value,
                                 const QString& after)
{
    return insertKey(map, key, value, after);
}

YamlEdit::Error YamlEdit::insertFirst(const Path& map, const QString& key, const YamlNodePtr& value)
{
    return insertKey(map, key, value, std::nullopt);
}

/// Behind the key `after`; null: last; none: first.
YamlEdit::Error YamlEdit::insertKey(const Path& map, const QString& key, const YamlNodePtr& value,
                                    const std::optional<QString>& after)
{
    Trail trail;
    if (Error error = find(map, trail)) {
        return error;
    }
    const YamlEntry& target = *trail.entries.back();
    if (target.value->kind != YamlNode::Kind::Map && target.value->kind != YamlNode::Kind::Absent) {
        return TextError{target.place, "this is not a map"};
    }
    if (indexOf(*target.value, key) >= 0) {
        return TextError{target.place, QString("the key %1 is there already").arg(inQuotes(key))};
    }
    const bool isBehind = after && !after->isNull();
    const int behind = isBehind ? indexOf(*target.value, *after) : -1;
    if (isBehind && behind < 0) {
        return TextError{target.place, QString("there is no key %1").arg(inQuotes(*after))};
    }
    const bool isLast = after && !isBehind;
    YamlEntry entry;
    entry.key = YamlTree::text(key);
    entry.value = value;
    return insertEntry(trail, entry, isLast ? int(target.value->entries.size()) : behind + 1);
}

YamlEdit::Error YamlEdit::add(const Path& list, const YamlNodePtr& value, int after)
{
    Trail trail;
    if (Error error = find(list, trail)) {
        return error;
    }
    const YamlEntry& target = *trail.entries.back();
    if (target.value->kind != YamlNode::Kind::List &&
        target.value->kind != YamlNode::Kind::Absent) {
        return TextError{target.place, "this is not a list"};
    }
    if (after >= int(target.value->entries.size())) {
        return TextError{target.place, QString("there is no entry %1").arg(after)};
    }
    YamlEntry entry;
    entry.value = value;
    return insertEntry(trail, entry, after < 0 ? int(target.value->entries.size()) : after + 1);
}

YamlEdit::Error YamlEdit::remove(const Path& path)
{
    Trail trail;
    if (Error error = find(path, trail)) {
        return error;
    }
    const YamlEntry& entry = *trail.entries.back();
    if (trail.indices.empty()) {
        return TextError{entry.place, "the whole text cannot be removed"};
    }
    const Place use = YamlTree::useIn(entry, YamlTree::usesOf(m_root, *m_source, &entry));
    if (use.line > 0) {
        return usedElsewhere(entry.place, use);
    }
    const int index = trail.indices.back();
    trail.entries.pop_back();
    trail.indices.pop_back();
    if (Error error = refuseShared(trail)) {
        return error;
    }
    const auto expected = YamlTree::changed(root(), trail.indices, [index](YamlNode& node) {
        node.entries.erase(node.entries.begin() + index);
    });
    return apply({YamlSplices(*m_source, m_root).removal(*trail.entries.back(), index)}, expected,
                 entry.place);
}

YamlEdit::Error YamlEdit::unfold(const Path& map)
{
    Trail trail;
    if (Error error = find(map, trail)) {
        return error;
    }
    if (trail.indices.empty()) {
        return std::nullopt;
    }
    const YamlEntry& parent = **(trail.entries.cend() - 2);
    const auto splice = YamlSplices(*m_source, m_root).unfolding(parent, trail.indices.back());
    return splice ? apply({*splice}, m_root.value, trail.entries.back()->place) : std::nullopt;
}

int YamlEdit::lineLength(const Path& path) const
{
    Trail trail;
    if (find(path, trail) || trail.indices.empty()) {
        return 0;
    }
    const YamlEntry& entry = *trail.entries.back();
    const int mark = entry.key ? entry.keyMark : entry.mark;
    return m_source->lineEnd(mark) - m_source->lineStart(mark);
}

YamlEdit::Error YamlEdit::find(const Path& path, Trail& trail) const
{
    if (m_error) {
        return m_error;
    }
    trail.entries = {&m_root};
    for (const QString& step : path) {
        const YamlEntry& parent = *trail.entries.back();
        const int index = indexOf(*parent.value, step);
        if (index < 0) {
            return TextError{parent.place, QString("there is no entry %1").arg(inQuotes(step))};
        }
        trail.indices.push_back(index);
        trail.entries.push_back(&parent.value->entries[size_t(index)]);
    }
    return std::nullopt;
}

YamlEdit::Error YamlEdit::refuseShared(const Trail& trail) const
{
    const YamlTree::Uses uses = YamlTree::usesOf(m_root, *m_source);
    for (const YamlEntry* entry : trail.entries) {
        if (entry->isAlias) {
            return aliasInTheWay(*entry);
        }
        const Place use = uses.value(entry->value.get());
        if (use.line > 0) {
            return usedElsewhere(entry->place, use);
        }
    }
    return std::nullopt;
}

/// As the entry of that index.
YamlEdit::Error YamlEdit::insertEntry(const Trail& trail, const YamlEntry& entry, int index)
{
    if (Error error = refuseShared(trail)) {
        return error;
    }
    const YamlEntry& target = *trail.entries.back();
    const int depth = int(trail.indices.size());
    const bool isEmpty = target.value->entries.empty();
    const bool isAbsent = target.value->kind == YamlNode::Kind::Absent;
    const YamlEntry* const parent = depth == 0 ? nullptr : *(trail.entries.cend() - 2);
    std::vector<YamlSplice> candidates;
    for (const bool writesLines : {true, false}) {
        const YamlSplices splices(*m_source, m_root, writesLines);
        if (isAbsent || (depth == 1 && isEmpty && !parent->value->isFlow)) {
            candidates.push_back(
                splices.creation(parent, depth == 0 ? -1 : trail.indices.back(), entry, depth));
        }
        if (!isAbsent) {
            candidates.push_back(splices.insertion(target, entry, index - 1, depth));
        }
    }
    const auto expected = YamlTree::changed(root(), trail.indices, [&](YamlNode& node) {
        node.kind = entry.key ? YamlNode::Kind::Map : YamlNode::Kind::List;
        node.entries.insert(node.entries.begin() + index, entry);
    });
    return apply(candidates, expected, target.place);
}

YamlEdit::Error YamlEdit::setTexts(const std::vector<std::pair<Path, QString>>& texts)
{
    if (texts.size() > 1 && setTextsTogether(texts)) {
        return std::nullopt;
    }
    YamlEdit next = *this;
    for (const auto& [path, text] : texts) {
        if (Error error = next.setText(path, text)) {
            return error;
        }
    }
    *this = next;
    return std::nullopt;
}

/// False where they are to be set one by one, as what that refuses needs to be told.
bool YamlEdit::setTextsTogether(const std::vector<std::pair<Path, QString>>& texts)
{
    const YamlTree::Uses uses = YamlTree::usesOf(m_root, *m_source);
    std::vector<YamlSplice> splices;
    YamlTree::NewTexts newTexts;
    for (const auto& [path, text] : texts) {
        Trail trail;
        if (!uses.isEmpty() || find(path, trail) || trail.indices.empty() ||
            !trail.entries.back()->value->isText()) {
            return false;
        }
        const YamlEntry& parent = **(trail.entries.cend() - 2);
        splices.push_back(
            YamlSplices(*m_source, m_root).replacements(parent, trail.indices.back(), text)[0]);
        newTexts.insert(trail.entries.back()->value.get(), text);
    }
    std::sort(splices.begin(), splices.end(),
              [](const YamlSplice& a, const YamlSplice& b) { return a.begin < b.begin; });
    QByteArray result;
    int end = 0;
    for (const YamlSplice& splice : splices) {
        if (splice.begin < end) {
            return false;
        }
        result += text().mid(end, splice.begin - end) + splice.text.toUtf8();
        end = splice.end;
    }
    const int newEnd = result.size();
    YamlEdit next(result + text().mid(end), *this);
    if (next.error() || !YamlTree::isSameWith(root(), next.root(), newTexts)) {
        return false;
    }
    next.m_editBegin = splices.front().begin;
    next.m_editEnd = newEnd;
    *this = next;
    return true;
}

/// The first splice after which the text reads as expected.
YamlEdit::Error YamlEdit::apply(const std::vector<YamlSplice>& candidates,
                                const YamlNodePtr& expected, const Place& place)
{
    for (const YamlSplice& splice : candidates) {
        const QByteArray written = splice.text.toUtf8();
        YamlEdit next(QByteArray(text()).replace(splice.begin, splice.end - splice.begin, written),
                      *this);
        if (!next.error() && YamlTree::isSame(next.root(), *expected)) {
            next.m_editBegin = splice.begin;
            next.m_editEnd = splice.begin + written.size();
            *this = next;
            return std::nullopt;
        }
    }
    return TextError{place, "what is written here cannot be edited without changing more than was "
                            "asked for; edit it by hand"};
}

} // namespace norvo
