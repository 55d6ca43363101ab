// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/touch/LineKeyboard.h"

#include "host/window/touch/KeyboardKey.h"

#include <QFocusEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTimer>
#include <QToolButton>

#include <utility>

namespace norvo {

LineKeyboard::LineKeyboard(QLineEdit& line, Ask ask)
    : QObject(&line), m_line(line), m_ask(std::move(ask)), m_key(new KeyboardKey(&line))
{
    m_key->hide();
    m_key->setObjectName("keyboard");
    line.setMinimumHeight(qMax(line.minimumHeight(), m_key->sizeHint().height()));
    connect(m_key, &QAbstractButton::clicked, this, &LineKeyboard::open);
    line.installEventFilter(this);
    showKey(line.hasFocus());
}

bool LineKeyboard::eventFilter(QObject* watched, QEvent* event)
{
    if (!qobject_cast<QLineEdit*>(watched)) {
        return false; // It is being deleted.
    }
    switch (event->type()) {
    case QEvent::FocusIn:
        showKey(true);
        break;
    case QEvent::FocusOut: {
        const Qt::FocusReason why = static_cast<QFocusEvent*>(event)->reason();
        if (why != Qt::ActiveWindowFocusReason && why != Qt::PopupFocusReason) {
            showKey(false);
        }
        break;
    }
    case QEvent::ReadOnlyChange:
    case QEvent::EnabledChange:
        showKey(m_line.hasFocus());
        break;
    case QEvent::LayoutDirectionChange:
        showKey(false);
        showKey(m_line.hasFocus());
        break;
    case QEvent::Resize:
        placeKey();
        break;
    case QEvent::MouseButtonRelease:
        if (static_cast<QMouseEvent*>(event)->source() != Qt::MouseEventNotSynthesized &&
            m_line.isEnabled() && !m_line.isReadOnly()) {
            QTimer::singleShot(0, this, &LineKeyboard::open);
        }
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void LineKeyboard::showKey(bool isShown)
{
    const bool canOpen = isShown && m_line.isEnabled() && !m_line.isReadOnly();
    if (!m_key || canOpen != m_key->isHidden()) {
        return;
    }
    m_key->setVisible(canOpen);
    if (!canOpen) {
        m_line.setTextMargins(m_margins);
        return;
    }
    m_margins = m_line.textMargins();
    const int room = m_key->sizeHint().width();
    const bool isMirrored = m_line.layoutDirection() == Qt::RightToLeft;
    m_line.setTextMargins(m_margins + QMargins(isMirrored ? room : 0, 0, isMirrored ? 0 : room, 0));
    placeKey();
}

/// Beside the key that clears the line, which has its place at the end.
void LineKeyboard::placeKey()
{
    if (!m_key) {
        return;
    }
    const auto* const clear = m_line.findChild<QToolButton*>();
    const int end = clear && m_line.isClearButtonEnabled() ? clear->width() : 0;
    const int width = m_key->sizeHint().width();
    const bool isMirrored = m_line.layoutDirection() == Qt::RightToLeft;
    m_key->setGeometry(isMirrored ? end : m_line.width() - end - width, 0, width, m_line.height());
}

QString LineKeyboard::askForText() const
{
    return KeyboardKey::askForText(*m_line.window(), m_line.accessibleName(), m_line.text(),
                                   m_line.placeholderText());
}

void LineKeyboard::open()
{
    const QPointer<LineKeyboard> guard(this);
    const QString text = m_ask ? m_ask() : askForText();
    if (!guard || text.isNull()) {
        return;
    }
    m_line.selectAll();
    m_line.insert(text);
    emit m_line.editingFinished();
}

} // namespace norvo
