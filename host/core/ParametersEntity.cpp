// SPDX-License-Identifier: LGPL-3.0-or-later

#include "norvo/ParametersEntity.h"

#include <QDebug>

#include <utility>

struct ParametersEntity::Store
{
    CaseInsensetiveDictionary<Param> params;
    QStringList names; ///< In the order of declaration.
    ParametersEntity* owner = nullptr;
};

ParametersEntity::ParametersEntity() : m_store(std::make_shared<Store>())
{
    m_store->owner = this;
}

ParametersEntity::ParametersEntity(ParametersEntity* owner)
    : m_store(owner ? owner->m_store : std::make_shared<Store>())
{
    if (!owner) {
        m_store->owner = this;
    }
}

ParametersEntity::~ParametersEntity()
{
    if (m_store->owner == this) {
        m_store->owner = nullptr;
    }
}

ParametersEntity* ParametersEntity::foreignOwner() const
{
    return m_store->owner == this ? nullptr : m_store->owner;
}

void ParametersEntity::setParam(QString name, QString value)
{
    if (ParametersEntity* owner = foreignOwner()) {
        owner->setParam(name, value);
    } else {
        storeParam(name, value);
    }
}

const Param* ParametersEntity::storeParam(const QString& name, const QString& value)
{
    const auto param = m_store->params.find(name);
    if (param == m_store->params.end()) {
        alert(QString("There is no parameter \"%1\"").arg(name));
        return nullptr;
    }
    if (param->value() == value) {
        return nullptr;
    }
    param->setValue(value);
    return &*param;
}

const CaseInsensetiveDictionary<Param>& ParametersEntity::params() const
{
    return m_store->params;
}

Param& ParametersEntity::getParam(QString name)
{
    const auto param = m_store->params.find(name);
    if (param != m_store->params.end()) {
        return *param;
    }
    m_undeclared = Param();
    return m_undeclared;
}

void ParametersEntity::sendParamChanged() {}

bool ParametersEntity::error(QString text)
{
    if (ParametersEntity* owner = foreignOwner()) {
        return owner->error(text);
    }
    qWarning().noquote() << text;
    return false;
}

bool ParametersEntity::alert(QString text)
{
    if (ParametersEntity* owner = foreignOwner()) {
        return owner->alert(text);
    }
    qWarning().noquote() << text;
    return true;
}

void ParametersEntity::addParam(QString name, QString defaultText, QStringList options, bool flag,
                                QMap<QString, QStringList> enabledConditions)
{
    declare(Param(name, defaultText, options, flag, enabledConditions));
}

void ParametersEntity::addParam(QString name, QStringList options, bool flag,
                                QMap<QString, QStringList> enabledConditions)
{
    declare(Param(name, options.value(0), options, flag, enabledConditions));
}

void ParametersEntity::declare(const Param& param)
{
    if (!m_store->names.contains(param.name())) {
        m_store->names.append(param.name());
    }
    m_store->params.insert(param.name(), param);
}

bool ParametersEntity::paramsOk() const
{
    return paramFaults().isEmpty();
}

QStringList ParametersEntity::paramFaults() const
{
    QStringList faults;
    for (const QString& name : std::as_const(m_store->names)) {
        const QString fault = m_store->params.value(name).fault();
        if (!fault.isEmpty()) {
            faults.append(QString("parameter \"%1\": %2").arg(name, fault));
        }
    }
    return faults;
}

QStringList ParametersEntity::paramNames() const
{
    return m_store->names;
}
