// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/form/entry/ChoiceEditor.h"

#include "host/catalogue/TypeWords.h"

#include <QComboBox>
#include <QHBoxLayout>

namespace norvo {

ChoiceEditor::ChoiceEditor(const ParamWords& words) : m_options(words.options), m_box(new QComboBox)
{
    if (!words.also.isEmpty()) {
        m_options.append(words.also);
    }
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_box, 1);
    m_box->setObjectName(words.name);
    m_box->setAccessibleName(words.name);
    m_box->setAccessibleDescription(words.meaning);
    m_box->setMinimumSize(target(), target());
    m_box->setMinimumContentsLength(1);
    m_box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_box->setFocusPolicy(Qt::StrongFocus);
    setFocusProxy(m_box);
    connect(m_box, QOverload<int>::of(&QComboBox::activated), this, [this] {
        emit typed();
        emit entered();
    });
}

QString ChoiceEditor::text() const
{
    return m_box->currentText();
}

void ChoiceEditor::showText(const QString& text, Shown how)
{
    QStringList items = m_options;
    if (how != Shown::Different && !items.contains(text, Qt::CaseInsensitive)) {
        items.append(text);
    }
    QStringList there;
    for (int i = 0; i < m_box->count(); ++i) {
        there.append(m_box->itemText(i));
    }
    if (items != there) {
        m_box->clear();
        m_box->addItems(items);
    }
    m_box->setCurrentIndex(how == Shown::Different ? -1
                                                   : m_box->findText(text, Qt::MatchFixedString));
    grey(*m_box, how == Shown::Default);
}

} // namespace norvo
