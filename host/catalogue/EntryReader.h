// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/catalogue/TypeWords.h"
#include "host/yaml/YamlTree.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

namespace norvo {

/// One type's entry of a table, and the type that it describes.
class EntryReader
{
public:
    EntryReader(const QString& file, TypeWords& type, QStringList& problems)
        : m_file(file), m_type(type), m_problems(problems)
    {}

    void read(const YamlNode& entry);
    /// Parameters alone, and only those that the type has and that are not described yet.
    void readGeneral(const YamlNode& entry);

private:
    void problem(const Place& place, const QString& text)
    {
        m_problems.append(
            QString("%1:%2:%3: %4").arg(m_file).arg(place.line).arg(place.column).arg(text));
    }
    void readTypeKey(const QString& key, const YamlEntry& entry);
    void readKept(const YamlNode& methods);
    void readControl(const YamlNode& value);
    void readParams(const YamlNode& params);
    void readParam(const YamlNode& node, ParamWords& param);
    bool readParamKey(const QString& key, const YamlNode& value, ParamWords& param);
    void readKind(const YamlNode& value, ParamWords& param);
    void readNumber(const YamlNode& value, std::optional<double>& number);
    void readMethods(const YamlNode& node, const QString& what, QVector<MethodWords>& methods);
    void readPorts(const YamlNode& node);
    void readCurves(const YamlNode& node);
    void readRelations(const YamlNode& node);
    std::optional<Relation> relationIn(const YamlNode& node);

    const QString& m_file;
    TypeWords& m_type;
    QStringList& m_problems;
};

} // namespace norvo
