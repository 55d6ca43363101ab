// SPDX-License-Identifier: LGPL-3.0-or-later

#include "norvo/ConnectionPoint.h"
#include "norvo/NamedObject.h"

// The interfaces' type information lives here, so that a cast finds one of it in the whole process.
ConnectionPoint::~ConnectionPoint() = default;
NamedObject::~NamedObject() = default;
