// SPDX-License-Identifier: LGPL-3.0-or-later

#include "norvo/NumpadDialog.h"

#include "host/gui/dialogs/EntryDialog.h"
#include "host/gui/dialogs/EntryDisplay.h"
#include "host/gui/dialogs/NumberEntry.h"
#include "host/gui/dialogs/TouchKey.h"
#include "norvo/Truncation.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>

namespace norvo {
namespace {

class Numpad : public EntryDialog
{
public:
    Numpad(QWidget* parent, Qt::WindowFlags flags, const QString& title, const QString& label,
           const NumberLimits& limits);

    double value() const { return m_entry.value().value_or(0); }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QLayout* createHead();
    QLayout* createKeys();
    TouchKey* actingKey(TouchKey* key, void (NumberEntry::*action)());
    TouchKey* digitKey(int digit);
    TouchKey* stepKey(const QString& name, TouchKey::Symbol symbol, const QString& accessibleName,
                      int count);
    bool typeCharacter(QChar character);
    void showEntry();

    NumberEntry m_entry;
};

QLabel* createLabel(const QString& objectName, const QString& text)
{
    auto* const label = new QLabel(text);
    label->setObjectName(objectName);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

Numpad::Numpad(QWidget* parent, Qt::WindowFlags flags, const QString& title, const QString& label,
               const NumberLimits& limits)
    : EntryDialog(parent, flags, title), m_entry(limits)
{
    setObjectName("NumpadDialog");
    setFocusPolicy(Qt::StrongFocus);
    auto* const layout = new QVBoxLayout(this);
    if (!label.isEmpty()) {
        layout->addWidget(createLabel("label", label));
    }
    layout->addLayout(createHead());
    layout->addWidget(m_reason);
    layout->addLayout(createKeys(), 1);
    showEntry();
    fitIntoScreen({560, 480});
    setFocus();
}

QLayout* Numpad::createHead()
{
    m_display->setReadOnly(true);
    m_display->setFocusPolicy(Qt::NoFocus);
    m_display->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* const head = new QGridLayout;
    head->addWidget(m_display, 0, 0, 2, 1);
    head->addWidget(createLabel("range", tr("Allowed: %1").arg(m_entry.rangeText())), 0, 1);
    head->addWidget(createLabel("oldValue", tr("Old value: %1").arg(m_entry.startText())), 1, 1);
    head->setColumnStretch(0, 3);
    head->setColumnStretch(1, 2);
    return head;
}

QLayout* Numpad::createKeys()
{
    auto* const keys = new QGridLayout;
    for (int digit = 1; digit <= 9; ++digit) {
        keys->addWidget(digitKey(digit), 2 - (digit - 1) / 3, (digit - 1) % 3);
    }
    keys->addWidget(
        actingKey(new TouchKey("keySign", QString(QChar(0xb1))), &NumberEntry::turnSign), 3, 0);
    keys->addWidget(digitKey(0), 3, 1);
    if (m_entry.hasPoint()) {
        keys->addWidget(actingKey(new TouchKey("keyPoint", "."), &NumberEntry::typePoint), 3, 2);
    }
    auto* const backspace =
        new TouchKey("keyBackspace", TouchKey::Symbol::Backspace, tr("Backspace"));
    backspace->setAutoRepeat(true);
    keys->addWidget(actingKey(backspace, &NumberEntry::backspace), 0, 3);
    auto* const clear = new TouchKey("keyClear", "C");
    clear->setAccessibleName(tr("Clear"));
    keys->addWidget(actingKey(clear, &NumberEntry::clear), 1, 3);
    keys->addWidget(stepKey("keyUp", TouchKey::Symbol::Up, tr("Step up"), 1), 0, 4);
    keys->addWidget(stepKey("keyDown", TouchKey::Symbol::Down, tr("Step down"), -1), 1, 4);
    keys->addWidget(m_cancel, 2, 3, 1, 2);
    keys->addWidget(m_ok, 3, 3, 1, 2);
    for (int column = 0; column < 5; ++column) {
        keys->setColumnStretch(column, 1);
    }
    return keys;
}

TouchKey* Numpad::actingKey(TouchKey* key, void (NumberEntry::*action)())
{
    connect(key, &QPushButton::clicked, this, [this, action] {
        (m_entry.*action)();
        showEntry();
    });
    return key;
}

TouchKey* Numpad::digitKey(int digit)
{
    auto* const key = new TouchKey(QString("key%1").arg(digit), QString::number(digit));
    connect(key, &QPushButton::clicked, this, [this, digit] {
        m_entry.typeDigit(digit);
        showEntry();
    });
    return key;
}

TouchKey* Numpad::stepKey(const QString& name, TouchKey::Symbol symbol,
                          const QString& accessibleName, int count)
{
    auto* const key = new TouchKey(name, symbol, accessibleName);
    key->setAutoRepeat(true);
    connect(key, &QPushButton::clicked, this, [this, count] {
        m_entry.step(count);
        showEntry();
    });
    return key;
}

bool Numpad::typeCharacter(QChar character)
{
    if (character.isDigit()) {
        m_entry.typeDigit(character.digitValue());
    } else if (character == '.' || character == ',') {
        m_entry.typePoint();
    } else if (character == '-') {
        m_entry.typeMinus();
    } else {
        return false;
    }
    return true;
}

void Numpad::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Backspace:
        m_entry.backspace();
        break;
    case Qt::Key_Delete:
        m_entry.clear();
        break;
    case Qt::Key_Up:
        m_entry.step(1);
        break;
    case Qt::Key_Down:
        m_entry.step(-1);
        break;
    default:
        if (event->text().size() != 1 || !typeCharacter(event->text().front())) {
            EntryDialog::keyPressEvent(event);
        }
    }
    showEntry();
}

void Numpad::showEntry()
{
    m_display->setText(m_entry.text());
    showError(m_entry.error());
}

} // namespace
} // namespace norvo

double NumpadDialog::getDouble(QWidget* parent, const QString& title, const QString& label,
                               double value, double min, double max, int decimals, bool* ok,
                               Qt::WindowFlags flags, double step)
{
    const QPointer<norvo::Numpad> numpad(
        new norvo::Numpad(parent, flags, title, label, {value, min, max, step, decimals}));
    const bool isConfirmed = norvo::EntryDialog::runModal(numpad);
    if (ok) {
        *ok = isConfirmed;
    }
    const double number = isConfirmed ? numpad->value() : value;
    delete numpad.data();
    return number;
}

int NumpadDialog::getInt(QWidget* parent, const QString& title, const QString& label, double value,
                         int min, int max, int step, bool* ok, Qt::WindowFlags flags)
{
    const double start = norvo::truncatedToInt(value);
    return norvo::truncatedToInt(
        getDouble(parent, title, label, start, min, max, 0, ok, flags, step));
}
