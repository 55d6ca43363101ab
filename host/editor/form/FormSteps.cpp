// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/form/FormSteps.h"

#include "host/editor/form/ParamRow.h"

#include <QPointer>

namespace norvo {

QString FormSteps::take(ParamRow& row, const QString& owner, const QString& what,
                        const EditSession::Edit& edit)
{
    if (m_entered != &row) {
        m_entered = &row;
        ++m_entry;
    }
    const QPointer<ParamRow> guard(&row);
    const QString joinKey = QString("%1.%2#%3").arg(owner, row.words().name).arg(m_entry);
    QString fault = m_session.change(what, edit, joinKey);
    if (!guard) {
        return fault;
    }
    guard->setFault(fault);
    return {};
}

} // namespace norvo
