// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelDescription.h"
#include "host/panel/file/ReadContext.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace norvo {

/// A file that holds templates: the panel's own, or an included one.
struct SourceFile
{
    QString name; ///< As messages name it.
    SourceText source;
    YamlNodePtr root;
    bool isPanel = false;
};

/// A group of devices and connections with placeholders.
struct Template
{
    struct Placeholder
    {
        std::optional<QString> byDefault; ///< None: each use gives a value.
        Place place;
        bool isUsed = false;
    };

    PlacedText name;
    QMap<QString, Placeholder> placeholders;
    YamlEntry devices; ///< The value is absent where the key is.
    YamlEntry connections;
    YamlEntry alarms;
    const SourceFile* file = nullptr;
    int values = 0; ///< Of all three, aliases followed.

    /// The error for a name that is not one of its placeholders.
    QString unknownPlaceholder(const QString& name) const;
};

/// The templates of a panel, from its own file and from those that it includes.
class TemplateLibrary
{
public:
    static constexpr int kMaxFiles = 100; ///< Included ones; 4 MiB and 100,000 values together.

    explicit TemplateLibrary(Diagnostics& diagnostics) : m_diagnostics(diagnostics) {}

    /// Takes the templates of the panel's file, which is to outlive the library.
    void addPanel(const SourceFile& panel);

    /// Absolute paths of the included files, also of those that cannot be read.
    QStringList included() const { return m_known.mid(1); }
    const Template* find(const QString& name) const; ///< Null when there is none.
    /// Ends the error about a template that there is not.
    QString suggestion(const QString& wanted) const;

private:
    void readTemplates(const YamlEntry& entry, const SourceFile& file, const ReadContext& context);
    void readTemplate(const YamlEntry& entry, const SourceFile& file, const ReadContext& context);
    void readPlaceholders(const YamlEntry& with, const ReadContext& context, Template& made);
    void checkTexts(const YamlNode& node, const ReadContext& context, Template& made);
    void checkText(const YamlNode& node, const ReadContext& context, Template& made);
    void warnOfUnused(const ReadContext& context, const Template& made);
    void readIncludes(const YamlEntry& entry, const SourceFile& file, const ReadContext& context);
    void include(const YamlEntry& entry, const SourceFile& file, const ReadContext& context);
    std::unique_ptr<SourceFile> load(const QString& name, const YamlEntry& entry,
                                     const ReadContext& context);
    void readIncluded(const SourceFile& file);

    Diagnostics& m_diagnostics;
    QMap<QString, Template> m_templates;
    std::vector<std::unique_ptr<SourceFile>> m_files;
    QStringList m_known; ///< Absolute paths of all files that were read.
    QStringList m_open;  ///< Of those that are being read, the panel first.
    QStringList m_names; ///< Theirs, as messages name them.
    int m_bytes = 0;
    int m_values = 0;
};

} // namespace norvo
