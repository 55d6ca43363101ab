// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/catalogue/TypeWords.h"
#include "host/catalogue/WordsTables.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <memory>

class BaseDevice;
class DeviceManager;

namespace norvo {

/// The device types described, for a panel's author and for the check.
///
/// Names, defaults, options and signatures are those of the live types. The words are those of the
/// tables that plug-ins bring along in the resource folder :/norvo/words; a type without one is
/// described by what it says of itself. Types that plug-ins enter later are known from then on.
class Catalogue
{
public:
    explicit Catalogue(const DeviceManager& manager); ///< Which must outlive it.

    /// The type, in any case; null for an unknown one. It is described the first time that it is
    /// asked for: from `device`, which is of that type, or from one that is made for it.
    const TypeWords* words(const QString& typeKey, const BaseDevice* device = nullptr) const;
    /// The same without notes, outputs, inputs and example, and sooner: a running panel needs no
    /// more.
    const TypeWords* wordsForCheck(const QString& typeKey,
                                   const BaseDevice* device = nullptr) const;

    const DeviceManager& manager() const { return m_manager; }
    QStringList keys() const; ///< Of all types, in the order of the alphabet.
    /// What is wrong with the tables, in lines of their own; of the types that were asked for.
    const QStringList& problems() const;

private:
    using Types = QMap<QString, std::shared_ptr<const TypeWords>>; ///< By their key.

    void readTables() const;
    const TypeWords* find(Types& types, WordsTables::Part part, const QString& typeKey,
                          const BaseDevice* device) const;
    TypeWords describe(const QString& key, WordsTables::Part part, const BaseDevice& device) const;

    const DeviceManager& m_manager;
    mutable QStringList m_problems;
    mutable WordsTables m_tables;
    mutable int m_typesOfTables = -1; ///< How many types there were when they were read.
    mutable Types m_types;
    mutable Types m_typesForCheck;
};

} // namespace norvo
