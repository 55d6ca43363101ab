// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

namespace norvo {

/// Writes the messages of Qt and of devices, which come through Qt, to standard error from now to
/// the end of the process. A warning that comes again and again is counted; see MessageFilter.
class QtMessages
{
public:
    /// `isVerbose`: debug messages too, and what Qt says about its surroundings.
    explicit QtMessages(bool isVerbose);
    ~QtMessages(); ///< Writes the counts that are left; comes at the end.
    Q_DISABLE_COPY(QtMessages)
};

} // namespace norvo
