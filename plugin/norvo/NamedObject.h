// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "norvo/Export.h"

#include <QString>

/// Something with a name that a panel's author knows it by.
class NORVO_EXPORT NamedObject
{
public:
    virtual ~NamedObject();
    virtual QString getObjectName() const = 0;
};
