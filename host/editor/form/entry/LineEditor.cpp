// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/form/entry/LineEditor.h"

#include "host/catalogue/TypeWords.h"
#include "host/editor/form/FormText.h"
#include "host/window/touch/KeyboardKey.h"
#include "host/window/touch/LineKeyboard.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>

namespace norvo {

LineEditor::LineEditor(const ParamWords& words)
    : m_line(new QLineEdit), m_row(new QHBoxLayout(this))
{
    m_row->setContentsMargins(0, 0, 0, 0);
    m_row->setSpacing(4);
    m_row->addWidget(m_line, 1);
    m_line->setObjectName(words.name);
    m_line->setAccessibleName(words.name);
    m_line->setAccessibleDescription(words.meaning);
    m_line->setMinimumWidth(target());
    FormText::prepare(*m_line);
    new LineKeyboard(*m_line, [this] { return askOnScreen(); });
    setFocusProxy(m_line);
    connect(m_line, &QLineEdit::textEdited, this, &ParamEditor::typed);
    connect(m_line, &QLineEdit::editingFinished, this, &ParamEditor::entered);
}

LineEditor::~LineEditor()
{
    m_line->disconnect(this); // It dies later, and loses the focus then.
}

QPushButton* LineEditor::addKey(const QString& text, const QString& what)
{
    auto* const key = new QPushButton(text);
    key->setFixedSize(target(), target());
    key->setAutoDefault(false);
    key->setFocusPolicy(Qt::TabFocus);
    key->setAccessibleName(what);
    key->setToolTip(what);
    m_row->addWidget(key);
    return key;
}

QString LineEditor::text() const
{
    return m_line->text();
}

/// What stands there already keeps its cursor.
void LineEditor::showText(const QString& text, Shown how)
{
    m_shown = how == Shown::Different ? QString() : text;
    m_line->setPlaceholderText(how == Shown::Value       ? QString()
                               : how == Shown::Different ? differentValues()
                                                         : text);
    const QString written = how == Shown::Value ? text : QString();
    if (m_line->text() != written) {
        m_line->setText(written);
        m_line->setCursorPosition(0);
    }
}

void LineEditor::enter(const QString& text)
{
    m_line->setText(text);
    emit typed();
    emit entered();
}

QString LineEditor::askOnScreen()
{
    return KeyboardKey::askForText(*window(), m_line->objectName(), m_line->text(),
                                   m_line->placeholderText());
}

} // namespace norvo
