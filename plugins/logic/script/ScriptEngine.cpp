// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/logic/script/ScriptEngine.h"

#include <QFile>

#include <cmath>

namespace {

constexpr int kMaxLength = 100000; ///< Of what functions that cannot be interrupted work on.
constexpr int kMaxTextLength = 65536;

/// A primitive where it works; an error with a plain text where it throws anything.
const QString kFunction =
    QStringLiteral("(function(%1) { \"use strict\"; try { return (\n%2\n"
                   "); } catch (e) { throw new Error(e instanceof Error ? `${e.name}: ${e.message}`"
                   " : `it throws \"${e}\"`); } })");

QString prelude()
{
    QFile file(":/norvo/script/Prelude.js");
    file.open(QIODevice::ReadOnly);
    return QString::fromUtf8(file.readAll());
}

QJSValue scriptValue(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::Double:
        return value.toDouble();
    case QMetaType::Bool:
        return value.toBool();
    default:
        return value.toString();
    }
}

class ScriptExpression : public norvo::Expression
{
public:
    ScriptExpression(norvo::ScriptEngine& engine, QJSValue function, int inputs)
        : m_engine(engine), m_function(std::move(function))
    {
        for (int i = 0; i < inputs; ++i) {
            m_arguments.append(QJSValue());
        }
    }

    void setInput(int input, const QVariant& value) override
    {
        m_arguments[input] = scriptValue(value);
    }

    norvo::ExpressionResult evaluate() override { return m_engine.call(m_function, m_arguments); }

private:
    norvo::ScriptEngine& m_engine;
    QJSValue m_function;
    QJSValueList m_arguments;
};

} // namespace

norvo::ScriptEngine::ScriptEngine() : m_watchdog(m_engine, kMaxExpressionTimeMs)
{
    m_lengthOf = m_engine.evaluate("(function(text) { return text.length; })");
    m_engine.evaluate(prelude()).call({m_engine.globalObject(), kMaxLength});
}

bool norvo::ScriptEngine::canName(const QString& input) const
{
    const QString named = QString("(function(%1) { \"use strict\"; })").arg(input);
    return m_engine.evaluate(named).isCallable();
}

bool norvo::ScriptEngine::knows(const QString& name) const
{
    return m_engine.globalObject().hasProperty(name);
}

std::unique_ptr<norvo::Expression>
norvo::ScriptEngine::compile(const QString& text, const QStringList& inputs, QString& error)
{
    const QJSValue function = m_engine.evaluate(kFunction.arg(inputs.join(", "), text), {}, 0);
    if (function.isCallable()) {
        return std::make_unique<ScriptExpression>(*this, function, inputs.size());
    }
    // Line 0 and the last one are not the author's.
    const bool isAtEnd = function.property("lineNumber").toInt() > text.count('\n') + 1;
    error = isAtEnd ? QString("it ends too early, or closes a bracket that is not open")
                    : function.property("message").toString().replace('`', '\'');
    return nullptr;
}

norvo::ExpressionResult norvo::ScriptEngine::call(QJSValue& function, const QJSValueList& arguments)
{
    m_watchdog.begin();
    const QJSValue value = function.call(arguments);
    const bool isInterrupted = m_watchdog.end();
    return isInterrupted && value.isError() ? ExpressionResult{ExpressionResult::TooLong, 0.0, {}}
                                            : resultOf(value);
}

norvo::ExpressionResult norvo::ScriptEngine::resultOf(const QJSValue& value)
{
    using Result = ExpressionResult;

    if (value.isNumber()) {
        const double number = value.toNumber();
        return std::isfinite(number) ? Result{Result::Number, number, {}}
               : std::isnan(number)  ? Result{Result::Failure, 0.0, "the result is no number (NaN)"}
                                     : Result{Result::Failure, 0.0, "the result is infinite"};
    }
    if (value.isBool()) {
        return {Result::YesNo, value.toBool() ? 1.0 : 0.0, {}};
    }
    if (value.isString()) {
        const bool isLong = m_lengthOf.call({value}).toNumber() > kMaxTextLength;
        return isLong
                   ? Result{Result::Failure, 0.0,
                            QString("the result has more than %1 characters").arg(kMaxTextLength)}
                   : Result{Result::Text, 0.0, value.toString()};
    }
    if (value.isNull()) {
        return {};
    }
    return {Result::Failure, 0.0,
            value.isError()       ? value.property("message").toString()
            : value.isUndefined() ? QString("the result is undefined")
                                  : QString("the result is no number, yes or no, or text")};
}

extern "C" Q_DECL_EXPORT void
norvoExpressionEngine(std::shared_ptr<norvo::ExpressionEngine>& engine)
{
    static std::weak_ptr<norvo::ExpressionEngine> shared;
    engine = shared.lock();
    if (!engine) {
        engine = std::make_shared<norvo::ScriptEngine>();
        shared = engine;
    }
}
