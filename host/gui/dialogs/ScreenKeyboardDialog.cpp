// SPDX-License-Identifier: LGPL-3.0-or-later

#include "norvo/ScreenKeyboardDialog.h"

#include "host/gui/dialogs/EntryDialog.h"
#include "host/gui/dialogs/KeyboardLayouts.h"
#include "host/gui/dialogs/TouchKey.h"
#include "host/gui/dialogs/VariantKeys.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QStringList>
#include <QVector>

namespace norvo {
namespace {

QStringList languageNames()
{
    QStringList names;
    for (const KeyboardLayout& layout : KeyboardLayouts::languages()) {
        names.append(layout.shortName);
    }
    return names;
}

class ScreenKeyboard : public EntryDialog
{
public:
    using Check = std::function<bool(QString)>;

    ScreenKeyboard(QWidget* parent, Qt::WindowFlags flags, const QString& title,
                   const QString& text, const QString& hint, const QString& refusal, Check check);

    QString text() const { return m_display->text(); }

private:
    QHBoxLayout* addRow();
    void widenKeys(const QHBoxLayout& row);
    void createDigitRow();
    void createCharacterRows();
    void createBottomRow();
    void fitRow(int row);
    TouchKey* createCharacterKey(int row, int column);
    QStringList variants(int row, int column) const;
    void chooseLanguage(int language);
    TouchKey* editingKey(const QString& name, TouchKey::Symbol symbol,
                         const QString& accessibleName, std::function<void()> edit);
    TouchKey* switchKey(TouchKey* key);
    const KeyboardLayout& layoutInUse() const;
    QChar character(int row, int column) const;
    void type(const QString& text);
    void showLayout();
    void judge();

    static constexpr int kSpacing = 4;
    static constexpr int kMargin = 2 * kSpacing;

    /// The last language chosen stays for the dialogs to come; none is chosen at first.
    static inline int s_chosenLanguage = -1;

    int m_language = s_chosenLanguage < 0 ? KeyboardLayouts::preferred() : s_chosenLanguage;
    QHBoxLayout* m_rows[3] = {};
    QVector<TouchKey*> m_characterKeys[3]; ///< Of the longest layout so far; the rest are hidden.
    VariantKeys* m_variants;
    TouchKey* m_shift;
    TouchKey* m_caps;
    TouchKey* m_symbols;
    TouchKey* m_nextLanguage;
    TouchKey* m_space;
    const Check m_check;
    const QString m_refusal;
};

ScreenKeyboard::ScreenKeyboard(QWidget* parent, Qt::WindowFlags flags, const QString& title,
                               const QString& text, const QString& hint, const QString& refusal,
                               Check check)
    : EntryDialog(parent, flags, title, QString()),
      m_variants(new VariantKeys(*this)),
      m_shift(switchKey(new TouchKey("keyShift", TouchKey::Symbol::Shift, tr("Shift")))),
      m_caps(switchKey(new TouchKey("keyCaps", TouchKey::Symbol::Caps, tr("Capital letters")))),
      m_symbols(switchKey(new TouchKey("keySymbols", "#+="))),
      m_nextLanguage(new TouchKey("keyLanguage", QString())),
      m_space(new TouchKey("keySpace", QString())),
      m_check(std::move(check)),
      m_refusal(refusal.isEmpty() ? tr("This text is not accepted") : refusal)
{
    setObjectName("ScreenKeyboardDialog");
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(kSpacing);
    layout->addWidget(m_label);
    layout->addWidget(m_display);
    layout->addWidget(m_reason);
    createDigitRow();
    createCharacterRows();
    createBottomRow();
    m_display->setText(text);
    m_display->setPlaceholderText(hint);
    m_display->setFocus();
    connect(m_display, &QLineEdit::textChanged, this, &ScreenKeyboard::judge);
    showLayout();
    judge();
    fitIntoScreen({960, 480}, 5);
}

QHBoxLayout* ScreenKeyboard::addRow()
{
    auto* const row = new QHBoxLayout;
    static_cast<QVBoxLayout*>(layout())->addLayout(row, 1);
    return row;
}

void ScreenKeyboard::widenKeys(const QHBoxLayout& row)
{
    for (int i = 0; i < row.count(); ++i) {
        row.itemAt(i)->widget()->setMinimumWidth(leastKeyWidth(row.count()));
    }
}

void ScreenKeyboard::createDigitRow()
{
    QHBoxLayout* const row = addRow();
    for (int column = 0; column < 10; ++column) {
        const QString digit = QString::number((column + 1) % 10);
        auto* const key = new TouchKey("key" + digit, digit);
        connect(key, &QPushButton::clicked, this, [this, digit] { type(digit); });
        row->addWidget(key, 1);
    }
    row->addWidget(editingKey("keyBackspace", TouchKey::Symbol::Backspace, tr("Backspace"),
                              [this] { m_display->backspace(); }),
                   1);
    widenKeys(*row);
}

void ScreenKeyboard::createCharacterRows()
{
    for (QHBoxLayout*& row : m_rows) {
        row = addRow();
    }
    m_rows[2]->addWidget(m_shift, 1);
    m_rows[2]->addWidget(m_caps, 1);
}

TouchKey* ScreenKeyboard::createCharacterKey(int row, int column)
{
    auto* const key = new TouchKey(QString("key%1-%2").arg(row + 1).arg(column), QString());
    connect(key, &QPushButton::clicked, this,
            [this, row, column] { type(character(row, column)); });
    m_variants->watch(
        *key, [this, row, column] { return variants(row, column); },
        [this](const QString& variant) { type(variant); });
    m_rows[row]->insertWidget(row == 2 ? column + 1 : column, key, 1);
    return key;
}

/// As many keys as the layout has, not wider at the least than the screen lets them.
void ScreenKeyboard::fitRow(int row)
{
    const int length = layoutInUse().rows[row].size();
    QVector<TouchKey*>& keys = m_characterKeys[row];
    while (keys.size() < length) {
        keys.append(createCharacterKey(row, keys.size()));
    }
    const int inRow = length + (row == 2 ? 2 : 0);
    const int width = leastKeyWidth(inRow);
    for (int column = 0; column < keys.size(); ++column) {
        keys[column]->setVisible(column < length);
        keys[column]->setMinimumWidth(width);
    }
    m_shift->setMinimumWidth(width); // the last row counts
    m_caps->setMinimumWidth(width);
}

void ScreenKeyboard::createBottomRow()
{
    connect(m_nextLanguage, &QPushButton::clicked, this,
            [this] { chooseLanguage((m_language + 1) % KeyboardLayouts::languages().size()); });
    m_variants->watch(
        *m_nextLanguage, [] { return languageNames(); },
        [this](const QString& name) { chooseLanguage(languageNames().indexOf(name)); });
    connect(m_space, &QPushButton::clicked, this, [this] { type(" "); });
    QHBoxLayout* const row = addRow();
    row->addWidget(m_symbols, 1);
    row->addWidget(m_nextLanguage, 1);
    row->addWidget(editingKey("keyLeft", TouchKey::Symbol::Left, tr("Cursor left"),
                              [this] { m_display->cursorBackward(false); }),
                   1);
    row->addWidget(m_space, 3);
    row->addWidget(editingKey("keyRight", TouchKey::Symbol::Right, tr("Cursor right"),
                              [this] { m_display->cursorForward(false); }),
                   1);
    row->addWidget(m_cancel, 2);
    row->addWidget(m_ok, 2);
    widenKeys(*row);
}

void ScreenKeyboard::chooseLanguage(int language)
{
    m_language = s_chosenLanguage = language;
    m_symbols->setChecked(false);
    showLayout();
}

TouchKey* ScreenKeyboard::editingKey(const QString& name, TouchKey::Symbol symbol,
                                     const QString& accessibleName, std::function<void()> edit)
{
    auto* const key = new TouchKey(name, symbol, accessibleName);
    connect(key, &QPushButton::clicked, this, edit);
    return key;
}

TouchKey* ScreenKeyboard::switchKey(TouchKey* key)
{
    key->setCheckable(true);
    connect(key, &QPushButton::toggled, this, &ScreenKeyboard::showLayout);
    return key;
}

const KeyboardLayout& ScreenKeyboard::layoutInUse() const
{
    return m_symbols->isChecked() ? KeyboardLayouts::symbols()
                                  : KeyboardLayouts::languages()[m_language];
}

/// Capitals change letters alone, and shift turns them back.
QChar ScreenKeyboard::character(int row, int column) const
{
    const KeyboardLayout& layout = layoutInUse();
    const QChar plain = layout.rows[row][column];
    const bool hasCapital = plain.toUpper() != plain && !m_symbols->isChecked();
    const bool isShifted = m_shift->isChecked() != (hasCapital && m_caps->isChecked());
    return isShifted ? layout.shiftedRows[row][column] : plain;
}

QStringList ScreenKeyboard::variants(int row, int column) const
{
    return KeyboardLayouts::variants(character(row, column)).split("", Qt::SkipEmptyParts);
}

void ScreenKeyboard::type(const QString& text)
{
    m_display->insert(text);
    m_shift->setChecked(false);
}

void ScreenKeyboard::showLayout()
{
    for (int row = 0; row < 3; ++row) {
        fitRow(row);
        for (int column = 0; column < layoutInUse().rows[row].size(); ++column) {
            m_characterKeys[row][column]->setPlainText(character(row, column));
        }
    }
    const QVector<KeyboardLayout>& languages = KeyboardLayouts::languages();
    const KeyboardLayout& next = languages[(m_language + 1) % languages.size()];
    m_nextLanguage->setText(next.shortName);
    m_nextLanguage->setAccessibleName(next.name);
    m_space->setText(languages[m_language].name);
    m_symbols->setText(m_symbols->isChecked() ? KeyboardLayouts::symbols().shortName : "#+=");
}

void ScreenKeyboard::judge()
{
    showError(!m_check || m_check(text()) ? QString() : m_refusal);
}

} // namespace
} // namespace norvo

QString ScreenKeyboardDialog::getText(QWidget* parent, QString title, QString text,
                                      Qt::WindowFlags flags, bool* ok, QString hint, QString reason,
                                      std::function<bool(QString)> check)
{
    const QPointer<norvo::ScreenKeyboard> keyboard(
        new norvo::ScreenKeyboard(parent, flags, title, text, hint, reason, std::move(check)));
    const bool isAccepted = norvo::EntryDialog::runModal(keyboard, ok);
    QString entered = isAccepted ? keyboard->text() : text;
    delete keyboard.data();
    return entered;
}
