// SPDX-License-Identifier: LGPL-3.0-or-later

#include "norvo/NumpadDialog.h"

#include "host/gui/dialogs/EntryDialog.h"
#include "host/gui/dialogs/NumberEntry.h"
#include "host/gui/dialogs/TouchKey.h"
#include "norvo/Truncation.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>

#include <functional>
#include <utility>

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
    QLayout* createLimits();
    QLayout* createKeys();
    TouchKey* acting(TouchKey* key, std::function<void()> act);
    bool typeCharacter(QChar character);
    void showEntry();
    bool isLow() const { return room().height() < kRows; }

    static constexpr int kRows = 4;

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
    : EntryDialog(parent, flags, title, label), m_entry(limits)
{
    setObjectName("NumpadDialog");
    setFocusPolicy(Qt::StrongFocus);
    m_display->setReadOnly(true);
    m_display->setFocusPolicy(Qt::NoFocus);
    m_display->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    placeHead({5, kRows}, createLimits())->addLayout(createKeys(), 1);
    showEntry();
    fitIntoScreen({560, 480}, isLow() ? kRows - 1 : kRows);
    setFocus();
}

QLayout* Numpad::createLimits()
{
    auto* const limits = new QVBoxLayout;
    limits->addWidget(createLabel("range", tr("Allowed: %1").arg(m_entry.rangeText())));
    limits->addWidget(createLabel("oldValue", tr("Old value: %1").arg(m_entry.startText())));
    return limits;
}

/// Where the screen has room for three rows only, the lowest one goes to the right of them.
QLayout* Numpad::createKeys()
{
    using Symbol = TouchKey::Symbol;
    const bool low = isLow();
    auto* const keys = new QGridLayout;
    const auto add = [&](QPoint usual, QPoint inLow, TouchKey* key, std::function<void()> act) {
        const QPoint place = low ? inLow : usual;
        keys->addWidget(acting(key, std::move(act)), place.y(), place.x());
    };
    for (int digit = 0; digit <= 9; ++digit) {
        const QPoint place(digit == 0 ? 1 : (digit - 1) % 3, 3 - (digit + 2) / 3);
        add(place, digit == 0 ? QPoint(3, 2) : place,
            new TouchKey(QString("key%1").arg(digit), QString::number(digit)),
            [this, digit] { m_entry.typeDigit(digit); });
    }
    add({0, 3}, {3, 1}, new TouchKey("keySign", QString(QChar(0xb1))),
        [this] { m_entry.turnSign(); });
    if (m_entry.hasPoint()) {
        add({2, 3}, {4, 1}, new TouchKey("keyPoint", "."), [this] { m_entry.typePoint(); });
    }
    add({3, 0}, {3, 0}, new TouchKey("keyBackspace", Symbol::Backspace, tr("Backspace")),
        [this] { m_entry.backspace(); });
    auto* const clear = new TouchKey("keyClear", "C");
    clear->setAccessibleName(tr("Clear"));
    add({3, 1}, {4, 0}, clear, [this] { m_entry.clear(); });
    add({4, 0}, {5, 0}, new TouchKey("keyUp", Symbol::Up, tr("Step up")),
        [this] { m_entry.step(1); });
    add({4, 1}, {5, 1}, new TouchKey("keyDown", Symbol::Down, tr("Step down")),
        [this] { m_entry.step(-1); });
    keys->addWidget(m_cancel, 2, low ? 4 : 3, 1, low ? 1 : 2);
    keys->addWidget(m_ok, low ? 2 : 3, low ? 5 : 3, 1, low ? 1 : 2);
    const int columns = low ? 6 : 5;
    for (int column = 0; column < columns; ++column) {
        keys->setColumnStretch(column, 1);
        keys->setColumnMinimumWidth(column, leastKeyWidth(columns));
    }
    return keys;
}

TouchKey* Numpad::acting(TouchKey* key, std::function<void()> act)
{
    connect(key, &QPushButton::clicked, this, [this, act = std::move(act)] {
        act();
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
    const bool isAccepted = norvo::EntryDialog::runModal(numpad, ok);
    const double number = isAccepted ? numpad->value() : value;
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
