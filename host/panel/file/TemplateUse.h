// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelDescription.h"
#include "host/panel/file/ReadContext.h"
#include "host/panel/file/TemplateLibrary.h"

#include <QHash>
#include <QString>

#include <memory>
#include <optional>

namespace norvo {

/// What the uses of templates may still add to a panel.
struct ExpansionBudget
{
    int values = YamlTree::kMaxValues;
    int characters = kMaxTextSize;

    bool isSpent() const { return values < 0 || characters < 0; }
};

/// One use of a template: what its placeholders stand for, and where its devices go.
class TemplateUse
{
public:
    /// `outer` is where the use is written. `id` holds what stands before the names of its
    /// devices.
    TemplateUse(const Template& used, const PlacedText& id, const ReadContext& outer,
                ExpansionBudget& budget);

    /// Reads "with" and "at", and reports what is wrong with them.
    void read(const YamlNode& settings);

    const Template& used() const { return m_template; }
    const TemplateUse* outer() const { return m_outer.use(); } ///< Null for one of the panel.
    const std::shared_ptr<const PlaceOrigin>& origin() const { return m_origin; }

    /// The text with its placeholders replaced; empty where that is more than the budget.
    QString filled(const QString& text) const;
    /// What is put before the name of a device that is written so: where a placeholder begins it,
    /// that of the place where the placeholder's value is written. Counts as filled in.
    QString prefixOf(const QString& text) const;
    /// The file that holds the beginning of a text: where a placeholder begins it, that in which
    /// the placeholder's value is written. Empty for the panel's own.
    QString fileOf(const QString& text) const;
    QString ownPrefix() const { return prefixOf({}); } ///< Of the devices of the use.
    void move(DeviceSetting& device) const; ///< Also as the uses around this one ask for.

private:
    struct Value
    {
        QString text;
        QString prefix; ///< Of the names of devices where it was written.
        QString file;   ///< In which it was written; empty: the panel's own.
    };

    void readValues(const YamlEntry& with);
    void readPosition(const YamlEntry& at);
    void readNumber(const YamlEntry& entry, int& number);
    void addDefaults();

    const Template& m_template;
    const PlacedText& m_id;
    const ReadContext& m_outer;
    ExpansionBudget& m_budget;
    std::shared_ptr<const PlaceOrigin> m_origin;
    QHash<QString, Value> m_values;
    int m_row = 0;
    int m_column = 0;
    std::optional<PlacedText> m_area;
};

} // namespace norvo
