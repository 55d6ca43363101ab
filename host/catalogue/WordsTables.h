// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/catalogue/TypeWords.h"
#include "host/yaml/YamlTree.h"

#include <QMap>
#include <QString>
#include <QStringList>

namespace norvo {

/// The words that the plug-ins bring along for their types: one YAML file for each plug-in, a map
/// from type key to purpose, parameters, outputs, inputs, relations and example. What the entry "*"
/// says of parameters holds for every type that has them.
///
/// Panels use few of the many types: an entry begins with its key at the first column of a line,
/// and is read once its type is asked for.
class WordsTables
{
public:
    WordsTables() = default;
    /// Looks through all files of the folder. One that cannot be opened is a line in `problems`.
    WordsTables(const QString& folder, QStringList& problems);

    QStringList types() const { return m_entries.keys(); } ///< But "*".
    /// What of the words is wanted: parameters and what else the check needs, or all.
    enum class Part { ForCheck, All };
    /// Adds the words of the type's entry to what is known of it. What is wrong with the entry is a
    /// line in `problems`, as is a parameter, an output or an input that the type does not have.
    void addTo(TypeWords& type, Part part, QStringList& problems) const;

private:
    struct Entry
    {
        QString file;
        int line = 0; ///< Of its first character, from 0.
        QByteArray text;
    };

    void splitFile(const QString& fileName, QStringList& problems);
    void add(const Entry& entry);
    static YamlNodePtr read(const Entry& entry, const QByteArray& text, QStringList& problems);

    QMap<QString, Entry> m_entries;     ///< By type key.
    Entry m_general;                    ///< Of "*"; without text where there is none.
    mutable YamlNodePtr m_generalWords; ///< What it says; null until it is asked for.
};

} // namespace norvo
