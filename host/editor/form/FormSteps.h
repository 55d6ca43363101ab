// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/EditSession.h"

namespace norvo {

class ParamRow;

/// The steps that the rows of a form ask for. Those of one entry into a row are undone together;
/// why one cannot be done is said at its row.
class FormSteps
{
public:
    explicit FormSteps(EditSession& session) : m_session(session) {}

    /// `owner` is whose row it is. Returns why the step cannot be done where the row is gone
    /// afterwards, and cannot say it.
    QString take(ParamRow& row, const QString& owner, const QString& what,
                 const EditSession::Edit& edit);
    void endEntry() { m_entered = nullptr; } ///< The next step is of another one.

private:
    EditSession& m_session;
    int m_entry = 0;
    const ParamRow* m_entered = nullptr; ///< The row of it; never followed.
};

} // namespace norvo
