// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/catalogue/Catalogue.h"

#include "norvo/DeviceManager.h"
#include "norvo/PortsDevice.h"

#include <QMetaMethod>

#include <utility>

// A static library's resource is left out of a program that does not ask for it.
static void initResource()
{
    Q_INIT_RESOURCE(catalogue);
}

namespace norvo {

namespace {

const QString kTables = QStringLiteral(":/norvo/words");
const QString kMultiline = QStringLiteral("multiline"); ///< A unit that stands for a kind.

/// What the parameter's own declaration says of its kind.
ParamKind kindOf(const Param& param)
{
    bool isNumber = false;
    param.defaultValue().toDouble(&isNumber);
    if (!param.options().isEmpty()) {
        return ParamKind::Choice;
    }
    if (isNumber) {
        return ParamKind::Number;
    }
    if (param.defaultValue() == "true" || param.defaultValue() == "false") {
        return ParamKind::YesNo;
    }
    return param.unit() == kMultiline ? ParamKind::Lines : ParamKind::Text;
}

ParamWords describe(const Param& param)
{
    ParamWords words;
    words.name = param.name();
    words.meaning = param.description();
    words.kind = kindOf(param);
    words.defaultValue = param.defaultValue();
    words.unit = param.unit() == kMultiline ? QString() : param.unit();
    words.options = param.options();
    words.isKept = param.isPersistent();
    words.enabledWhen = param.enabledConditions();
    return words;
}

QVector<MethodWords> methods(const BaseDevice& device, QMetaMethod::MethodType type)
{
    const QStringList forAuthors = device.grabMethods(QString(), type, false);
    QVector<MethodWords> found;
    for (const QString& signature : device.grabMethods(QString(), type, true)) {
        found.append({signature, {}, !forAuthors.contains(signature)});
    }
    return found;
}

} // namespace

Catalogue::Catalogue(const DeviceManager& manager) : m_manager(manager)
{
    initResource();
}

/// Plug-ins bring their tables along when they are loaded.
void Catalogue::readTables() const
{
    const int count = m_manager.factories().size();
    if (count == m_typesOfTables) {
        return;
    }
    m_typesOfTables = count;
    m_tables = WordsTables(kTables, m_problems);
    for (const QString& type : m_tables.types()) {
        if (!m_manager.factories().contains(type)) {
            m_problems.append(
                QString("the words tables describe the unknown device type \"%1\"").arg(type));
        }
    }
}

const QStringList& Catalogue::problems() const
{
    readTables();
    return m_problems;
}

QStringList Catalogue::keys() const
{
    return m_manager.factories().keys();
}

const TypeWords* Catalogue::words(const QString& typeKey, const BaseDevice* device) const
{
    return find(m_types, WordsTables::Part::All, typeKey, device);
}

const TypeWords* Catalogue::wordsForCheck(const QString& typeKey, const BaseDevice* device) const
{
    return find(m_typesForCheck, WordsTables::Part::ForCheck, typeKey, device);
}

const TypeWords* Catalogue::find(Types& types, WordsTables::Part part, const QString& typeKey,
                                 const BaseDevice* device) const
{
    const QString key = m_manager.factories().storedKey(typeKey);
    if (key.isEmpty()) {
        return nullptr;
    }
    auto& type = types[key];
    if (!type) {
        readTables();
        const std::unique_ptr<const BaseDevice> made(device ? nullptr
                                                            : m_manager.createDevice(key));
        type = std::make_shared<const TypeWords>(describe(key, part, device ? *device : *made));
    }
    return type.get();
}

TypeWords Catalogue::describe(const QString& key, WordsTables::Part part,
                              const BaseDevice& device) const
{
    const DeviceTypeInfo info = m_manager.typeInfos().value(key);
    TypeWords type;
    type.key = key;
    type.title = info.title.isEmpty() ? key : info.title;
    type.purpose = info.description;
    type.categories = info.categories;
    type.hasWidget = info.kind == DeviceTypeInfo::kWithWidget;
    type.takesPorts = dynamic_cast<const PortsDevice*>(&device);
    type.hasLateMethods = info.flag == DeviceTypeInfo::kMethodsAfterInitialise;
    for (const QString& name : device.paramNames()) {
        type.params.append(norvo::describe(device.params().value(name)));
    }
    if (!type.hasLateMethods && part == WordsTables::Part::All) {
        type.outputs = methods(device, QMetaMethod::Signal);
        type.inputs = methods(device, QMetaMethod::Slot);
    }
    m_tables.addTo(type, part, m_problems);
    return type;
}

} // namespace norvo
