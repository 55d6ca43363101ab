// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/logic/Expression.h"

/// Programs that link the plug-in's classes have this part among them.
std::shared_ptr<norvo::ExpressionEngine> norvo::expressionEngine(QString&)
{
    std::shared_ptr<ExpressionEngine> engine;
    norvoExpressionEngine(engine);
    return engine;
}
