// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/edit/Mentions.h"

#include "host/panel/edit/PanelTree.h"

#include <algorithm>

namespace norvo {

namespace {

using Path = YamlEdit::Path;

/// The one that stands in this part of the text.
Mention mentionIn(const QString& text, int begin, int end)
{
    const auto skipSpaces = [&](int at) {
        while (at < end && text.at(at).isSpace()) {
            ++at;
        }
        return at;
    };
    Mention mention;
    mention.whole = text;
    const int point = text.indexOf('.', begin);
    const int middle = point < 0 || point > end ? end : point;
    mention.deviceAt = skipSpaces(begin);
    mention.device = text.mid(mention.deviceAt, middle - mention.deviceAt).trimmed();
    mention.methodAt = skipSpaces(std::min(middle + 1, end));
    const QString method = text.mid(mention.methodAt, end - mention.methodAt);
    mention.method = method.section('(', 0, 0).trimmed();
    return mention;
}

void append(const Path& entry, const Path& path, const QString& text, bool isKey,
            QVector<Mention>& mentions)
{
    for (Mention& mention : Mentions::in(text)) {
        mention.entry = entry;
        mention.text = path;
        mention.isKey = isKey;
        mentions.append(mention);
    }
}

/// Of a list or map of texts, or of maps with the key "signal".
void appendAll(const Path& list, const YamlNode* node, QVector<Mention>& mentions)
{
    for (size_t i = 0; node && i < node->entries.size(); ++i) {
        const YamlEntry& one = node->entries[i];
        const Path entry = list + Path{one.key ? one.key->text : QString::number(i)};
        if (one.key) {
            append(entry, entry, one.key->text, true, mentions);
        } else if (one.value->isText()) {
            append(entry, entry, one.value->text, false, mentions);
        } else if (const YamlNode* signal = PanelTree::valueOf(one.value.get(), "signal")) {
            append(entry, entry + Path{"signal"}, signal->text, false, mentions);
        }
    }
}

} // namespace

QVector<Mention> Mentions::in(const QString& text)
{
    const QString sign = "->";
    const int at = text.indexOf(sign);
    if (at < 0) {
        return {mentionIn(text, 0, text.size())};
    }
    Mention target = mentionIn(text, at + sign.size(), text.size());
    target.isSource = false;
    return {mentionIn(text, 0, at), target};
}

QVector<Mention> Mentions::find(const YamlEdit& edit, const Filter& filter)
{
    QVector<Mention> all;
    const YamlNode* const root = &edit.root();
    appendAll({"connections"}, PanelTree::valueOf(root, "connections"), all);
    appendAll({"alarms"}, PanelTree::valueOf(root, "alarms"), all);
    appendAll({"history", "signals"},
              PanelTree::valueOf(PanelTree::valueOf(root, "history"), "signals"), all);
    QVector<Mention> found;
    std::copy_if(all.cbegin(), all.cend(), std::back_inserter(found), filter);
    return found;
}

Mentions::Error Mentions::remove(YamlEdit& edit, const Filter& filter)
{
    QVector<Path> entries;
    for (const Mention& mention : find(edit, filter)) {
        if (entries.isEmpty() || entries.last() != mention.entry) {
            entries.append(mention.entry);
        }
    }
    // From the end, so that the numbers of those to come stay.
    for (int i = entries.size() - 1; i >= 0; --i) {
        const Path list = entries[i].mid(0, entries[i].size() - 1);
        const YamlNode* node = &edit.root();
        for (const QString& key : list) {
            node = PanelTree::valueOf(node, key);
        }
        const bool isLast = node->entries.size() == 1; // A history without signals is none.
        if (Error error = edit.remove(isLast ? list.mid(0, 1) : entries[i])) {
            return error;
        }
    }
    return std::nullopt;
}

Mentions::Error Mentions::replace(YamlEdit& edit, const Filter& filter, bool isDevice,
                                  const std::function<QString(const Mention&)>& name)
{
    const QVector<Mention> mentions = find(edit, filter);
    QString whole;
    std::vector<std::pair<Path, QString>> texts;
    // The target of a connection before its source, whose place stays then.
    for (int i = mentions.size() - 1; i >= 0; --i) {
        const Mention& mention = mentions[i];
        const bool isContinued = i + 1 < mentions.size() && mentions[i + 1].text == mention.text;
        whole = isContinued ? whole : mention.whole;
        const int at = isDevice ? mention.deviceAt : mention.methodAt;
        const QString& old = isDevice ? mention.device : mention.method;
        whole.replace(at, old.size(), name(mention));
        if (i > 0 && mentions[i - 1].text == mention.text) {
            continue;
        }
        if (!mention.isKey) {
            texts.emplace_back(mention.text, whole);
        } else if (Error error = edit.renameKey(mention.text, whole)) {
            return error;
        }
    }
    return edit.setTexts(texts);
}

} // namespace norvo
