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
class WordsTables
{
public:
    /// Reads all files of the folder. What is wrong with one is a line in `problems`, and what
    /// cannot be read is left out.
    WordsTables(const QString& folder, QStringList& problems);

    QStringList types() const { return m_entries.keys(); } ///< But "*".
    /// Adds the words of the type's entry to what is known of it. A parameter, an output or an
    /// input that it does not have is a line in `problems`.
    void addTo(TypeWords& type, QStringList& problems) const;

private:
    struct Entry
    {
        QString file;
        YamlNodePtr node;
    };

    void readFile(const QString& fileName, QStringList& problems);

    QMap<QString, Entry> m_entries; ///< By type key.
    Entry m_general;                ///< Of "*"; without a node where there is none.
};

} // namespace norvo
