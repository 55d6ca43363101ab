// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/PortDefinition.h"

#include <QJsonValue>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <vector>

namespace norvo {

/// How the values of outputs and inputs stand in the messages of a server; messages are texts.
class Dialect
{
public:
    struct Value
    {
        int output;
        QVariant value; ///< A double, bool or QString.
    };
    /// Whether the output of that number is connected to anything.
    using IsHeard = std::function<bool(int output)>;

    Dialect() = default;
    Dialect(const Dialect&) = delete;
    Dialect& operator=(const Dialect&) = delete;
    virtual ~Dialect() = default;

    virtual QStringList outputOptions() const = 0; ///< That a definition may have.
    virtual QStringList inputOptions() const = 0;
    /// Takes the definition of the next output; they count from 0. What is wrong, and it is not
    /// taken, or an empty text.
    virtual QString defineOutput(const PortDefinition& definition) = 0;
    virtual QString defineInput(const PortDefinition& definition) = 0; ///< The same.

    /// What a new connection begins with; forgets what has been said on the one before.
    virtual QStringList opening() { return {}; }
    /// What asks the server for that which is heard, and is news to it.
    virtual QStringList requests(const IsHeard&) { return {}; }
    virtual QStringList closing() { return {}; } ///< The last words of a connection.

    /// Puts what the message means for outputs that are heard into `values`. False: it means
    /// nothing for any output. `error` becomes what the server complains of, if it does.
    virtual bool read(const QJsonValue& message, const IsHeard& isHeard, std::vector<Value>& values,
                      QString& error) = 0;
    /// The message that says that an input has got that value. `text`: the same as text.
    virtual QString write(int input, const QJsonValue& value, const QString& text) = 0;
};

} // namespace norvo
