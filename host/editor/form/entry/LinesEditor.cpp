// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/form/entry/LinesEditor.h"

#include "host/catalogue/TypeWords.h"
#include "host/window/touch/KeyboardKey.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTextBlock>
#include <QVBoxLayout>

namespace norvo {

namespace {

constexpr int kLines = 7; ///< That are seen at a time.

} // namespace

LinesEditor::LinesEditor(const ParamWords& words) : m_lines(new QPlainTextEdit)
{
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    row->addWidget(m_lines, 1);
    row->addLayout(makeKeys(words.name));
    m_lines->setObjectName(words.name);
    m_lines->setAccessibleName(words.name);
    m_lines->setAccessibleDescription(words.meaning);
    m_lines->setMinimumWidth(target());
    m_lines->setTabChangesFocus(true);
    m_lines->setLineWrapMode(QPlainTextEdit::NoWrap);
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSize(qMax(8, this->font().pointSize() - 2));
    m_lines->setFont(font);
    m_lines->setFixedHeight(m_lines->fontMetrics().lineSpacing() * kLines + target() / 2);
    m_lines->installEventFilter(this);
    setFocusProxy(m_lines);
    connect(m_lines, &QPlainTextEdit::textChanged, this, [this] {
        if (!m_isShowing) {
            emit typed();
        }
    });
}

QString LinesEditor::text() const
{
    return m_lines->toPlainText();
}

void LinesEditor::showText(const QString& text, Shown how)
{
    m_lines->setPlaceholderText(how == Shown::Value       ? QString()
                                : how == Shown::Different ? differentValues()
                                                          : text);
    const QString written = how == Shown::Value ? text : QString();
    if (m_lines->toPlainText() != written) {
        m_isShowing = true;
        m_lines->setPlainText(written);
        m_isShowing = false;
    }
}

QVBoxLayout* LinesEditor::makeKeys(const QString& name)
{
    auto* const keyboard = new KeyboardKey;
    auto* const more = new QPushButton(QString(QChar(0x21B5)));
    keyboard->setObjectName(name + " keyboard");
    more->setObjectName(name + " line");
    more->setAccessibleName(tr("%1: one more line").arg(name));
    more->setToolTip(more->accessibleName());
    more->setFixedSize(target(), target());
    more->setAutoDefault(false);
    more->setFocusPolicy(Qt::NoFocus);
    connect(keyboard, &QAbstractButton::clicked, this, &LinesEditor::askForLine);
    connect(more, &QAbstractButton::clicked, this, &LinesEditor::addLine);
    auto* const column = new QVBoxLayout;
    column->setSpacing(4);
    column->addWidget(keyboard);
    column->addWidget(more);
    column->addStretch(1);
    return column;
}

/// A line that nothing is left of goes.
void LinesEditor::askForLine()
{
    m_lines->setFocus();
    const QPointer<LinesEditor> guard(this);
    QTextCursor cursor = m_lines->textCursor();
    const QString text =
        KeyboardKey::askForText(*window(), m_lines->accessibleName(), cursor.block().text());
    if (!guard || text.isNull()) {
        return;
    }
    cursor.movePosition(QTextCursor::StartOfBlock);
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    cursor.insertText(text);
    if (text.isEmpty()) {
        cursor.block().next().isValid() ? cursor.deleteChar() : cursor.deletePreviousChar();
    }
    m_lines->setTextCursor(cursor);
    emit entered();
}

void LinesEditor::addLine()
{
    m_lines->setFocus();
    m_lines->moveCursor(QTextCursor::EndOfBlock);
    m_lines->insertPlainText("\n");
}

bool LinesEditor::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusOut) {
        emit entered();
    } else if (event->type() == QEvent::KeyPress) {
        const auto* const key = static_cast<QKeyEvent*>(event);
        const bool isEnter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
        if (isEnter && key->modifiers() & Qt::ControlModifier) {
            emit entered();
            return true;
        }
    }
    return ParamEditor::eventFilter(watched, event);
}

} // namespace norvo
