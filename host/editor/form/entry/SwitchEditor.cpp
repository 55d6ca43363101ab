// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/form/entry/SwitchEditor.h"

#include "host/catalogue/TypeWords.h"

#include "norvo/Param.h"

#include <QCheckBox>
#include <QHBoxLayout>

namespace norvo {

SwitchEditor::SwitchEditor(const ParamWords& words) : m_box(new QCheckBox)
{
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_box, 1);
    m_box->setObjectName(words.name);
    m_box->setAccessibleName(words.name);
    m_box->setAccessibleDescription(words.meaning);
    m_box->setMinimumHeight(target());
    setFocusProxy(m_box);
    connect(m_box, &QCheckBox::clicked, this, [this] {
        m_box->setTristate(false);
        nameState();
        emit typed();
        emit entered();
    });
}

QString SwitchEditor::text() const
{
    return m_box->isChecked() ? "true" : "false";
}

void SwitchEditor::showText(const QString& text, Shown how)
{
    Param param({}, text, {}, true, {});
    m_box->setTristate(how == Shown::Different);
    m_box->setCheckState(how == Shown::Different ? Qt::PartiallyChecked
                         : bool(param)           ? Qt::Checked
                                                 : Qt::Unchecked);
    grey(*m_box, how == Shown::Default);
    nameState();
}

void SwitchEditor::nameState()
{
    m_box->setText(m_box->checkState() == Qt::PartiallyChecked ? differentValues()
                   : m_box->isChecked()                        ? tr("yes")
                                                               : tr("no"));
}

} // namespace norvo
