// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/Diagnostics.h"
#include "host/yaml/YamlTree.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace norvo {

class TemplateUse;

/// Whether the entry of a map can be read; otherwise ReadContext::checkKeys() has reported why.
bool isUsable(const YamlEntry& entry);

/// What the readers of a panel's parts share: the file that they read, the use of a template whose
/// values they fill in, and how errors are reported.
class ReadContext
{
public:
    /// What the keys of a map are, to name them in errors.
    enum class Keys { Any, Panel, Devices };

    /// `origin` is null for the panel's own file outside of uses. All is to outlive the context.
    ReadContext(const SourceText& source, std::shared_ptr<const PlaceOrigin> origin,
                Diagnostics& diagnostics, const TemplateUse* use = nullptr);

    const TemplateUse* use() const { return m_use; } ///< Null outside of uses.

    QString text(const YamlNode& node) const { return filled(node.text); }
    QString filled(const QString& text) const; ///< The text with the values of the use filled in.
    Place at(const Place& place) const;        ///< The place with its origin.
    Place placeOf(const YamlNode& node, int index) const;

    /// What the map or list of this entry holds; nothing where it is absent, or refused.
    const std::vector<YamlEntry>& entriesOf(const YamlEntry& entry, YamlNode::Kind kind,
                                            const QString& error) const;
    /// Whether the keys of this map, and of all below it, are texts and stand there once.
    void checkKeys(const YamlNode& node, Keys keys) const;

    void refuse(const Place& place, const QString& text) const;
    void refuseKey(const YamlNode& key, const QString& where, const QStringList& known,
                   const QString& all) const;
    void warn(const Place& place, const QString& text) const;

    /// What ends a message on a key without a value, where that looks like a mistake; else empty.
    QString reasonOfAbsence(const YamlEntry& entry) const;

private:
    const SourceText& m_source;
    std::shared_ptr<const PlaceOrigin> m_origin;
    Diagnostics& m_diagnostics;
    const TemplateUse* m_use;
};

} // namespace norvo
