// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/form/FormHead.h"

#include "host/catalogue/Catalogue.h"
#include "host/editor/EditSession.h"
#include "host/editor/form/FormText.h"
#include "host/editor/form/ParamStates.h"
#include "host/window/touch/LineKeyboard.h"

#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace norvo {

FormHead::FormHead(EditSession& session)
    : m_session(session),
      m_title(FormText::name({})),
      m_idField(new QLineEdit),
      m_purpose(FormText::small({})),
      m_fixed(FormText::fault({})),
      m_problems(FormText::fault({}))
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    column->addWidget(m_title);
    column->addWidget(m_purpose);
    column->addWidget(m_idField);
    column->addWidget(m_fixed);
    column->addWidget(m_problems);
    m_title->setObjectName("formTitle");
    m_fixed->setObjectName("whyFixed");
    m_problems->setObjectName("deviceProblems");
    m_idField->setObjectName("deviceId");
    m_idField->setAccessibleName(tr("Id of the device"));
    FormText::prepare(*m_idField);
    new LineKeyboard(*m_idField);
    connect(m_idField, &QLineEdit::editingFinished, this, &FormHead::askToRename);
}

void FormHead::showDevices(const QStringList& ids)
{
    const QString id = ids.size() == 1 ? ids.first() : QString();
    const DeviceSetting* const device = m_session.device(id);
    const TypeWords* const words =
        device ? m_session.catalogue().words(device->type.text) : nullptr;
    if (id != m_id) {
        m_refused.clear();
    }
    m_id = id;
    m_title->setText(ids.isEmpty() ? tr("Nothing is selected")
                     : words       ? words->title
                     : device      ? device->type.text
                                   : tr("%1 devices").arg(ids.size()));
    setText(*m_purpose, ids.isEmpty() ? tr("Select a device on the panel.")
                        : words       ? words->purpose
                        : device      ? QString()
                                      : ids.join(", "));
    m_idField->setVisible(device);
    if (m_refused.isEmpty() && m_idField->text() != id) {
        m_idField->setText(id);
    }
    QString fixed;
    for (int i = 0; i < ids.size() && fixed.isEmpty(); ++i) {
        fixed = m_session.whyFixed(ids[i]);
    }
    m_idField->setReadOnly(!fixed.isEmpty());
    setText(*m_fixed, fixed);
    if (m_refused.isEmpty()) {
        setText(*m_problems, ParamStates::problems(m_session, id).join('\n'));
    }
}

void FormHead::setText(QLabel& label, const QString& text)
{
    label.setText(text);
    label.setVisible(!text.isEmpty());
}

void FormHead::askToRename()
{
    const QString newId = m_idField->text();
    if (newId == m_id && !m_refused.isEmpty()) {
        m_refused.clear();
        showDevices({m_id});
    } else if (newId != m_id && newId != m_refused && !m_id.isEmpty()) {
        m_refused.clear();
        emit renameWanted(m_id, newId);
    }
}

void FormHead::refuseId(const QString& fault)
{
    m_refused = m_idField->text();
    setText(*m_problems, fault);
}

} // namespace norvo
