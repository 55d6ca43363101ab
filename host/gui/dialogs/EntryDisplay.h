// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QLineEdit>

namespace norvo {

/// The line of a touch dialog that shows what is being entered.
class EntryDisplay : public QLineEdit
{
    Q_OBJECT

public:
    EntryDisplay();

    void setError(bool isError); ///< Red while what it shows cannot be accepted.

private:
    bool m_isError = false;
};

} // namespace norvo
