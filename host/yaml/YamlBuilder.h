// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/YamlTree.h"

#include <yaml-cpp/eventhandler.h>
#include <yaml-cpp/mark.h>

#include <QHash>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace norvo {

/// Builds a tree from the events of the parser. What it refuses it throws, as a TextError.
class YamlBuilder : public YAML::EventHandler
{
public:
    explicit YamlBuilder(const SourceText& source) : m_source(source) {}

    YamlNodePtr root() const { return m_root; } ///< Null without any document.
    /// The offset of the innermost open bracket of this kind; -1 without one.
    int openBracket(char bracket) const;
    /// Where the innermost open list or map begins; unknown without one.
    Place innermost() const;

    int reported() const { return m_reported; } ///< The offset of the latest event.

    void OnDocumentStart(const YAML::Mark& mark) override;
    void OnDocumentEnd() override { settleUnsure(-1); }
    void OnNull(const YAML::Mark& mark, YAML::anchor_t anchor) override;
    void OnAlias(const YAML::Mark& mark, YAML::anchor_t anchor) override;
    void OnScalar(const YAML::Mark& mark, const std::string& tag, YAML::anchor_t anchor,
                  const std::string& value) override;
    void OnSequenceStart(const YAML::Mark& mark, const std::string& tag, YAML::anchor_t anchor,
                         YAML::EmitterStyle::value style) override;
    void OnSequenceEnd() override { end(); }
    void OnMapStart(const YAML::Mark& mark, const std::string& tag, YAML::anchor_t anchor,
                    YAML::EmitterStyle::value style) override;
    void OnMapEnd() override { end(); }

private:
    using Node = std::shared_ptr<YamlNode>;

    /// A list or map that is not at its end yet.
    struct Level
    {
        Node node;
        YAML::anchor_t anchor = 0;
        int mark = 0;         ///< Offset of its event.
        int bracket = -1;     ///< Offset of the one that opens it; -1 for one without.
        int depth = 0;        ///< 1 for the outermost.
        int height = 1;       ///< Levels from here down, so far.
        int valuesBefore = 0; ///< In the file, before this one.
        YamlNodePtr key;      ///< Of a map: the one that waits for its value.
        int keyMark = -1;
        QHash<QString, Place> keys;
    };
    struct Anchored
    {
        YamlNodePtr node; ///< Null while it is not at its end.
        int values = 0;
        int height = 0;
    };
    /// A "~" or "null" that may as well be the key that follows an absent value.
    struct Unsure
    {
        Node node;
        Node parent; ///< Null at the top.
        Place placeIfAbsent;
        int mark = 0;   ///< Offset of its event.
        int offset = 0; ///< Of the word.
    };

    int enter(const YAML::Mark& mark);
    void settleUnsure(int offset);
    void refuseTab(int offset);
    bool isAtKey() const;
    QString nullWordAt(int offset) const;
    Place placeOfAbsent(int offset) const;
    Node newText(int offset, const QString& text) const;
    void describeText(YamlNode& node, int offset) const;
    void count(int values, int offset);
    void begin(YamlNode::Kind kind, const YAML::Mark& mark, YAML::anchor_t anchor,
               YAML::EmitterStyle::value style);
    void end();
    void add(const YamlNodePtr& node, int mark, const Place& place, bool isAlias = false);
    void remember(YAML::anchor_t anchor, const YamlNodePtr& node, int values, int height);

    const SourceText& m_source;
    YamlNodePtr m_root;
    bool m_hasDocument = false;
    int m_values = 0;
    int m_lastLineStart = -1;
    int m_reported = 0;
    std::vector<Level> m_levels;
    std::vector<Anchored> m_anchors;
    std::optional<Unsure> m_unsure;
};

} // namespace norvo
