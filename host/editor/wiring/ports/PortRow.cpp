// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/wiring/ports/PortRow.h"

#include "host/editor/EditSession.h"
#include "host/editor/wiring/ports/ListFont.h"
#include "host/panel/edit/PortEdit.h"
#include "host/window/look/TouchSize.h"
#include "host/window/touch/LineKeyboard.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>

namespace norvo {

PortRow::PortRow(EditSession& session, const QString& device, bool isOutput, const QString& name,
                 const QString& hint)
    : m_session(session),
      m_device(device),
      m_isOutput(isOutput),
      m_name(name),
      m_nameField(new QLineEdit(name)),
      m_definitionField(new QLineEdit),
      m_value(new QLabel),
      m_fault(new QLabel),
      m_key(new QPushButton(isNew() ? tr("Add") : tr("Remove")))
{
    const int target = TouchSize::pixels(PanelLook::Touch::Fingers, *screen());
    const QString shown = isNew() ? (isOutput ? tr("new output") : tr("new input")) : name;
    setObjectName(isNew() ? (isOutput ? "newOutput" : "newInput") : name);
    m_nameField->setObjectName("name");
    m_nameField->setPlaceholderText(isOutput ? tr("New output") : tr("New input"));
    m_nameField->setAccessibleName(tr("Name of %1").arg(shown));
    m_definitionField->setObjectName("definition");
    m_definitionField->setPlaceholderText(tr("Definition"));
    m_definitionField->setAccessibleName(tr("Definition of %1").arg(shown));
    m_definitionField->setToolTip(hint);
    m_value->setObjectName("value");
    m_value->setTextFormat(Qt::PlainText);
    m_fault->setObjectName("fault");
    m_fault->setTextFormat(Qt::PlainText);
    m_fault->setWordWrap(true);
    m_fault->hide();
    m_key->setObjectName("key");
    m_key->setAccessibleName((isNew() ? tr("Add %1") : tr("Remove %1")).arg(shown));
    m_key->setAutoDefault(false);
    for (QWidget* const part :
         std::initializer_list<QWidget*>{m_nameField, m_definitionField, m_value, m_fault}) {
        setListFont(*part);
    }
    QFont bold = m_fault->font();
    bold.setBold(true);
    m_fault->setFont(bold);
    for (QWidget* const part :
         std::initializer_list<QWidget*>{m_nameField, m_definitionField, m_key}) {
        part->setMinimumHeight(target);
    }
    new LineKeyboard(*m_nameField);
    new LineKeyboard(*m_definitionField);
    auto* const layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_nameField, 0, 0);
    layout->addWidget(m_value, 0, 1);
    layout->addWidget(m_key, 0, 2);
    layout->addWidget(m_definitionField, 1, 0, 1, 3);
    layout->addWidget(m_fault, 2, 0, 1, 3);
    layout->setColumnStretch(0, 3);
    layout->setColumnStretch(1, isOutput && !isNew() ? 2 : 0);

    if (isNew()) {
        connect(m_key, &QPushButton::clicked, this, &PortRow::add);
        connect(m_nameField, &QLineEdit::returnPressed, this, &PortRow::add);
        connect(m_definitionField, &QLineEdit::returnPressed, this, &PortRow::add);
    } else {
        connect(m_key, &QPushButton::clicked, this, &PortRow::remove);
        connect(m_nameField, &QLineEdit::editingFinished, this, &PortRow::rename);
        connect(m_definitionField, &QLineEdit::editingFinished, this, &PortRow::define);
    }
}

void PortRow::setDefinition(const QString& definition)
{
    const bool isUntouched = m_definitionField->text() == m_definition;
    m_definition = definition;
    if (isUntouched) {
        m_definitionField->setText(definition);
        m_definitionField->setCursorPosition(0);
    }
}

void PortRow::setFixed()
{
    m_nameField->setReadOnly(true);
    m_definitionField->setReadOnly(true);
    m_key->setEnabled(false);
}

void PortRow::setValue(const QString& value)
{
    const QString shown = fontMetrics().elidedText(value, Qt::ElideRight, m_value->width());
    if (m_value->text() != shown) {
        m_value->setText(shown);
        m_value->setToolTip(value);
    }
}

void PortRow::focusName()
{
    m_nameField->setFocus();
}

void PortRow::rename()
{
    const QString wanted = m_nameField->text().trimmed();
    if (wanted != m_name) {
        take(m_session.change(tr("Rename %1.%2").arg(m_device, m_name), [&](YamlEdit& edit) {
            return PortEdit::rename(edit, m_device, m_isOutput, m_name, wanted);
        }));
    }
}

void PortRow::define()
{
    const QString wanted = m_definitionField->text();
    if (wanted == m_definition) {
        take({});
        return;
    }
    take(m_session.change(tr("Define %1.%2").arg(m_device, m_name), [&](YamlEdit& edit) {
        return PortEdit::setDefinition(edit, m_device, m_isOutput, m_name, wanted);
    }));
}

void PortRow::add()
{
    const QString name = m_nameField->text().trimmed();
    if (take(m_session.change(tr("Add %1.%2").arg(m_device, name), [&](YamlEdit& edit) {
            return PortEdit::add(edit, m_device, m_isOutput, name, m_definitionField->text());
        }))) {
        emit added();
    }
}

void PortRow::remove()
{
    take(m_session.change(tr("Remove %1.%2").arg(m_device, m_name), [&](YamlEdit& edit) {
        return PortEdit::remove(edit, m_device, m_isOutput, m_name);
    }));
}

bool PortRow::take(const QString& fault)
{
    m_fault->setText(fault);
    m_fault->setVisible(!fault.isEmpty());
    return fault.isEmpty();
}

} // namespace norvo
