// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

namespace norvo {

/// What an expression gives.
struct ExpressionResult
{
    enum Kind { Number, YesNo, Text, Nothing, Failure, TooLong };

    Kind kind = Nothing;
    double number = 0.0; ///< Finite; 1 or 0 of a yes or no.
    QString text;        ///< Of a text; of a failure what is wrong.
};

/// A compiled expression. It keeps nothing from one evaluation to the next but its inputs.
class Expression
{
public:
    virtual ~Expression() = default;

    /// A double, bool or QString; `input` counts from 0 in the list that compile() was given.
    virtual void setInput(int input, const QVariant& value) = 0;
    virtual ExpressionResult evaluate() = 0;
};

/// Compiles JavaScript expressions, and evaluates them within kMaxExpressionTimeMs each.
class ExpressionEngine
{
public:
    virtual ~ExpressionEngine() = default;

    virtual bool canName(const QString& input) const = 0; ///< Whether an expression can say it.
    /// Whether a name that is no input stands for something.
    virtual bool knows(const QString& name) const = 0;
    /// Null where the text is no expression; `error` then says why.
    virtual std::unique_ptr<Expression> compile(const QString& text, const QStringList& inputs,
                                                QString& error) = 0;
};

constexpr int kMaxExpressionTimeMs = 50; ///< Of processor time.

/// The one engine of the process, which lives as long as it is used. Its library is loaded at the
/// first call, because few panels need it. Null where it is not there; `error` then says why.
std::shared_ptr<ExpressionEngine> expressionEngine(QString& error);

} // namespace norvo

/// What that library exports.
extern "C" void norvoExpressionEngine(std::shared_ptr<norvo::ExpressionEngine>& engine);
