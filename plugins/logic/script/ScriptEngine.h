// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/logic/Expression.h"
#include "plugins/logic/script/Watchdog.h"

#include <QJSEngine>

namespace norvo {

/// Evaluates expressions with Qt's engine for JavaScript.
///
/// Everything in it is frozen, so that no expression changes what another sees. What would run
/// later (promises) or hold large memory by a few characters (typed arrays) is not there, and
/// functions that can run long in one step take texts and arrays of limited length only. Memory is
/// bounded by the time alone: a text that doubles itself in a loop can reach some hundred MB.
class ScriptEngine : public ExpressionEngine
{
public:
    ScriptEngine();

    bool canName(const QString& input) const override;
    bool knows(const QString& name) const override;
    std::unique_ptr<Expression> compile(const QString& text, const QStringList& inputs,
                                        QString& error) override;

    ExpressionResult call(QJSValue& function, const QJSValueList& arguments);

private:
    ExpressionResult resultOf(const QJSValue& value);

    mutable QJSEngine m_engine;
    Watchdog m_watchdog;
    QJSValue m_lengthOf; ///< A function; of a text.
};

} // namespace norvo
