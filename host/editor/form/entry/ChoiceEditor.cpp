// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/form/entry/ChoiceEditor.h"

#include "host/catalogue/TypeWords.h"

#include <QComboBox>
#include <QFocusEvent>
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
    m_box->installEventFilter(this);
    connect(m_box, QOverload<int>::of(&QComboBox::activated), this, &ParamEditor::stepped);
}

/// By arrows a hand goes through several options to the one that it means.
bool ChoiceEditor::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusOut &&
        static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) {
        emit entered();
    }
    return ParamEditor::eventFilter(watched, event);
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
