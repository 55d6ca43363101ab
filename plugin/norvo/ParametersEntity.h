// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "norvo/CaseInsensetiveDictionary.h"
#include "norvo/Export.h"
#include "norvo/Param.h"

#include <QString>
#include <QStringList>

#include <memory>

/// Something with named parameters. Names are found whatever their case.
///
/// Several entities can share one set: the first owns it, and what the others write goes through
/// the owner, so that it hears of every change. A set outlives its owner as long as it is shared.
class NORVO_EXPORT ParametersEntity
{
public:
    ParametersEntity();
    /// Shares the parameters of `owner`; an empty set of its own when that is null.
    explicit ParametersEntity(ParametersEntity* owner);
    ParametersEntity(const ParametersEntity&) = delete;
    ParametersEntity& operator=(const ParametersEntity&) = delete;

    /// Stores a parameter's text. An undeclared name is reported through alert(), nothing is
    /// stored.
    virtual void setParam(QString name, QString value);
    virtual const CaseInsensetiveDictionary<Param>& params() const;
    /// The parameter of that name; for an undeclared one an empty Param of no consequence.
    virtual Param& getParam(QString name);
    virtual ~ParametersEntity();
    virtual void sendParamChanged();  ///< Announces all values again; does nothing here.
    virtual bool error(QString text); ///< Reports a fault; returns false.
    virtual bool alert(QString text); ///< Reports a warning; returns true.

    /// Declares a parameter. `options` empty: free text; `flag`: meant to be set by a panel's
    /// author; `enabledConditions`: other parameter to its values under which this one is enabled.
    void addParam(QString name, QString defaultText, QStringList options = {}, bool flag = true,
                  QMap<QString, QStringList> enabledConditions = {});
    /// The same without a default text: the value starts as the first option, if there is one.
    void addParam(QString name, QStringList options, bool flag = true,
                  QMap<QString, QStringList> enabledConditions = {});

    bool paramsOk() const;           ///< True when paramFaults() is empty.
    QStringList paramFaults() const; ///< A line for each value that does not read as its kind.
    QStringList paramNames() const;  ///< In the order of declaration.

protected:
    /// Stores the text. The parameter, where that changed it; null where it did not. An undeclared
    /// name is reported through alert().
    const Param* storeParam(const QString& name, const QString& value);

private:
    struct Store;

    ParametersEntity* foreignOwner() const; ///< The living owner, where that is another entity.
    void declare(const Param& param);

    std::shared_ptr<Store> m_store;
    Param m_undeclared;
};
