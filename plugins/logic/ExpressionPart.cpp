// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/logic/Expression.h"

#include "norvo/LibraryPart.h"

std::shared_ptr<norvo::ExpressionEngine> norvo::expressionEngine(QString& error)
{
    static const char here = 0;
    const auto give = reinterpret_cast<decltype(&norvoExpressionEngine)>(
        symbolOfPart(&here, "script/libnorvoscript.so", "norvoExpressionEngine", error));
    std::shared_ptr<ExpressionEngine> engine;
    if (give) {
        give(engine);
    }
    return engine;
}
