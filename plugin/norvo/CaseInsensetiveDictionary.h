// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QHash>
#include <QMap>
#include <QString>

/// A map by text that can also be asked without regard to case.
///
/// The map itself keeps every key as it was given and in QString's order. Beside it stands a hash
/// from the lower-case form to the newest spelling; contains(), value() and storedKey() go through
/// that hash. Two keys that differ only in case are two entries, and look-ups find the newer one.
template <class T>
class CaseInsensetiveDictionary : public QMap<QString, T>
{
public:
    using Map = QMap<QString, T>;

    virtual ~CaseInsensetiveDictionary() = default;

    void insert(const QString& key, const T& value)
    {
        m_alias.insert(key.toLower(), key);
        Map::insert(key, value);
    }

    bool contains(const QString& key) const { return find(key) != Map::constEnd(); }

    /// The value under `key`, written in any case; `fallback` where there is none.
    T value(const QString& key, const T& fallback = T()) const
    {
        const auto entry = find(key);
        return entry == Map::constEnd() ? fallback : *entry;
    }

    /// The newest spelling under which `key`, written in any case, is stored; empty when unknown.
    QString storedKey(const QString& key) const { return m_alias.value(key.toLower()); }

    /// Look-ups in any case; end() and constEnd() when unknown.
    typename Map::iterator find(const QString& key)
    {
        const auto alias = m_alias.constFind(key.toLower());
        return alias == m_alias.constEnd() ? Map::end() : Map::find(*alias);
    }
    typename Map::const_iterator find(const QString& key) const
    {
        const auto alias = m_alias.constFind(key.toLower());
        return alias == m_alias.constEnd() ? Map::constEnd() : Map::constFind(*alias);
    }

private:
    QHash<QString, QString> m_alias; ///< Lower-case form to newest spelling.
};
