// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/dialogs/PinDialog.h"

#include "host/gui/dialogs/EntryDialog.h"
#include "host/gui/dialogs/TouchKey.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>

namespace norvo {
namespace {

class PinPad : public EntryDialog
{
public:
    PinPad(QWidget* parent, const QString& label);

    QString pin() const { return m_display->text(); }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QLayout* createKeys();

    static constexpr int kRows = 4;
};

PinPad::PinPad(QWidget* parent, const QString& label) : EntryDialog(parent, {}, label, label)
{
    constexpr int maxLength = 32;
    setObjectName("PinDialog");
    setFocusPolicy(Qt::StrongFocus);
    m_display->setReadOnly(true);
    m_display->setFocusPolicy(Qt::NoFocus);
    m_display->setEchoMode(QLineEdit::Password);
    m_display->setMaxLength(maxLength);
    m_display->setAlignment(Qt::AlignCenter);
    connect(m_display, &QLineEdit::textChanged, m_ok,
            [this] { m_ok->setEnabled(!pin().isEmpty()); });
    m_ok->setEnabled(false);
    m_reason->hide();
    placeHead({4, kRows})->addLayout(createKeys(), 1);
    fitIntoScreen({480, 440}, qMin(kRows, room().height()));
    setFocus();
}

/// Where the screen has room for three rows only, the lowest one goes to the right of them.
QLayout* PinPad::createKeys()
{
    const bool low = room().height() < kRows;
    auto* const keys = new QGridLayout;
    for (int digit = 0; digit <= 9; ++digit) {
        const QString text = QString::number(digit);
        auto* const key = new TouchKey("key" + text, text);
        connect(key, &QPushButton::clicked, m_display, [this, text] { m_display->insert(text); });
        if (digit == 0 && low) {
            keys->addWidget(key, 2, 3);
        } else {
            keys->addWidget(key, 3 - (digit + 2) / 3, digit == 0 ? 1 : (digit - 1) % 3);
        }
    }
    auto* const backspace =
        new TouchKey("keyBackspace", TouchKey::Symbol::Backspace, tr("Backspace"));
    connect(backspace, &QPushButton::clicked, m_display, &QLineEdit::backspace);
    auto* const clear = new TouchKey("keyClear", "C");
    clear->setAccessibleName(tr("Clear"));
    connect(clear, &QPushButton::clicked, m_display, &QLineEdit::clear);
    keys->addWidget(backspace, 0, 3);
    keys->addWidget(clear, 1, 3);
    const int last = low ? 4 : 3;
    keys->addWidget(m_cancel, low ? 1 : 2, last);
    keys->addWidget(m_ok, low ? 2 : 3, last);
    for (int column = 0; column <= last; ++column) {
        keys->setColumnMinimumWidth(column, leastKeyWidth(last + 1));
    }
    keys->setColumnStretch(last, 1);
    keys->setColumnMinimumWidth(last, m_cancel->sizeHint().width()); // In any language.
    return keys;
}

void PinPad::keyPressEvent(QKeyEvent* event)
{
    const QString text = event->text();
    if (event->key() == Qt::Key_Backspace) {
        m_display->backspace();
    } else if (text.size() == 1 && text.front().isDigit()) {
        m_display->insert(QString::number(text.front().digitValue()));
    } else {
        EntryDialog::keyPressEvent(event);
    }
}

} // namespace

std::optional<QString> PinDialog::getPin(QWidget* parent, const QString& label)
{
    const QPointer<PinPad> pad(new PinPad(parent, label));
    std::optional<QString> pin;
    if (EntryDialog::runModal(pad, nullptr)) {
        pin = pad->pin();
    }
    delete pad.data();
    return pin;
}

} // namespace norvo
