// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/YamlTree.h"

#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace norvo {

struct YamlSplice;

/// Edits a YAML text by splicing: every byte outside the place of an edit stays, comments too.
/// A copy is cheap.
///
/// What is written takes the style of what it replaces, or of its siblings. After each edit the new
/// text is read, and the edit counts only if it reads as it should. What would change a second use
/// of an anchored value is refused. An edit that returns an error has changed nothing.
class YamlEdit
{
public:
    using Error = std::optional<TextError>; ///< Nothing: the edit is done.
    /// From the root: the key in a map, as it is written there; the index, from 0, in a list.
    using Path = QStringList;

    explicit YamlEdit(const QByteArray& text);
    /// The same; of a text that differs little from `similar`, in one place, it reads no more than
    /// what stands around that.
    YamlEdit(const QByteArray& text, const YamlEdit& similar);

    /// Why the text given at first cannot be edited: it cannot be read.
    const Error& error() const { return m_error; }
    const QByteArray& text() const { return m_source->bytes(); }
    const SourceText& source() const { return *m_source; }
    const YamlNode& root() const { return *m_root.value; }
    const YamlNodePtr& sharedRoot() const
    {
        return m_root.value;
    } ///< As YamlTree::read() gives it.
    /// The offset where the latest edit began, and where what it has written ends.
    int editBegin() const { return m_editBegin; }
    int editEnd() const { return m_editEnd; }

    /// Replaces a text, or what is absent.
    Error setText(const Path& path, const QString& text);
    /// Several of them at once, which takes no longer than one; all or none.
    Error setTexts(const std::vector<std::pair<Path, QString>>& texts);
    /// Gives an entry of a map another key; it stays where it is.
    Error renameKey(const Path& path, const QString& key);
    /// Inserts an entry into a map, or where a value is absent; behind the key `after`, or last.
    Error insert(const Path& map, const QString& key, const YamlNodePtr& value,
                 const QString& after = {});
    /// The same, before all others.
    Error insertFirst(const Path& map, const QString& key, const YamlNodePtr& value);
    /// Adds an entry to a list, or where a value is absent; behind the index `after`, or last.
    Error add(const Path& list, const YamlNodePtr& value, int after = -1);
    /// Writes a map in brackets that stands on one line as lines; what it holds stays as it is
    /// written. Does nothing to other maps.
    Error unfold(const Path& map);
    /// The number of characters of the line that an entry begins on; 0: there is no such entry.
    int lineLength(const Path& path) const;
    /// Removes an entry of a map or a list; one that becomes empty stays, as "{}" or "[]".
    Error remove(const Path& path);

private:
    /// The way from the root to a value.
    struct Trail
    {
        std::vector<const YamlEntry*> entries; ///< The root first.
        std::vector<int> indices;              ///< One fewer.
    };

    Error find(const Path& path, Trail& trail) const;
    Error refuseShared(const Trail& trail) const;
    bool setTextsTogether(const std::vector<std::pair<Path, QString>>& texts);
    void readWhole();
    void setRoot(const YamlNodePtr& root);
    Error insertKey(const Path& map, const QString& key, const YamlNodePtr& value,
                    const std::optional<QString>& after);
    Error insertEntry(const Trail& trail, const YamlEntry& entry, int index);
    Error apply(const std::vector<YamlSplice>& candidates, const YamlNodePtr& expected,
                const Place& place);

    std::shared_ptr<const SourceText> m_source; ///< Copies share it.
    YamlEntry m_root;                           ///< A value without a key.
    Error m_error;
    int m_editBegin = 0;
    int m_editEnd = 0;
};

} // namespace norvo
