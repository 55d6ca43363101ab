// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/templates/TemplateSheet.h"

#include "host/editor/form/FormText.h"
#include "host/editor/templates/TemplateSet.h"
#include "host/window/look/TouchSize.h"
#include "host/window/touch/LineKeyboard.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace norvo {

TemplateSheet::TemplateSheet(QWidget& opener, TemplateSet& templates, const QByteArray& panel)
    : Sheet(opener, tr("Save as a template")),
      m_templates(templates),
      m_panel(panel),
      m_name(new QLineEdit),
      m_fault(FormText::fault({}))
{
    setObjectName("saveTemplate");
    auto* const text = new QLabel(
        tr("The selected devices and the connections among them will stand in Add, under "
           "Templates, for every panel that you edit."));
    text->setFont(font());
    text->setWordWrap(true);
    QLabel* const caption = FormText::name(tr("Name of the template"));
    caption->setBuddy(m_name);
    m_name->setObjectName("templateName");
    m_name->setAccessibleName(tr("Name of the template"));
    m_name->setMinimumHeight(TouchSize::pixels(PanelLook::Touch::Fingers, *screen()));
    FormText::prepare(*m_name);
    new LineKeyboard(*m_name);
    m_fault->setObjectName("templateFault");
    m_fault->hide();
    content().addWidget(text);
    content().addWidget(caption);
    content().addWidget(m_name);
    content().addWidget(m_fault);
    content().addStretch(1);
    closeKey()->setText(tr("Cancel"));
    QPushButton* const save = addKey(tr("Save"));
    save->setObjectName("save");
    save->setDefault(true);
    connect(save, &QPushButton::clicked, this, &TemplateSheet::save);
    m_name->setFocus();
}

void TemplateSheet::save()
{
    const QString fault = m_templates.save(m_name->text(), m_panel);
    m_fault->setText(fault);
    m_fault->setVisible(!fault.isEmpty());
    if (fault.isEmpty()) {
        accept();
    }
}

} // namespace norvo
