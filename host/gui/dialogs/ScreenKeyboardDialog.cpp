// SPDX-License-Identifier: LGPL-3.0-or-later

#include "norvo/ScreenKeyboardDialog.h"

#include "host/gui/dialogs/EntryDialog.h"
#include "host/gui/dialogs/TouchKey.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QStringList>
#include <QVector>

namespace norvo {
namespace {

constexpr int kColumns = 11;

/// What the three upper rows of a keyboard type, a character for each key. The rows of all layouts
/// are kRowLengths long, with shift as without.
struct KeyboardLayout
{
    static constexpr int kRowLengths[3] = {11, 11, 9};

    QString shortName; ///< For the key that switches to this layout.
    QString name;
    QStringList rows;
    QStringList shiftedRows;
};

const QVector<KeyboardLayout>& languageLayouts()
{
    // clang-format off
    static const QVector<KeyboardLayout> layouts{
        {"EN", "English",
         {"qwertyuiop-", "asdfghjkl'/", "zxcvbnm,."},
         {"QWERTYUIOP_", "ASDFGHJKL\"@", "ZXCVBNM!?"}},
        {QStringLiteral(u"БГ"), QStringLiteral(u"Български"),
         {QStringLiteral(u"явертъуиопш"), QStringLiteral(u"асдфгхйклщю"), QStringLiteral(u"зьцжбнмч.")},
         {QStringLiteral(u"ЯВЕРТЪУИОПШ"), QStringLiteral(u"АСДФГХЙКЛЩЮ"), QStringLiteral(u"ЗЬЦЖБНМЧ,")}},
    };
    // clang-format on
    return layouts;
}

const KeyboardLayout& symbolLayout()
{
    static const KeyboardLayout layout{"abc",
                                       "Symbols",
                                       {"!\"#$%&'()*+", ",-./:;<=>?@", "[\\]^_{|}~"},
                                       {QStringLiteral(u"°µΩ±×÷²³½¼¾"),
                                        QStringLiteral(u"€£¥§©®←→↑↓•"),
                                        QStringLiteral(u"`´¨«»¿¡–—")}};
    return layout;
}

class ScreenKeyboard : public EntryDialog
{
public:
    using Check = std::function<bool(QString)>;

    ScreenKeyboard(QWidget* parent, Qt::WindowFlags flags, const QString& title,
                   const QString& text, const QString& hint, const QString& refusal, Check check);

    QString text() const { return m_display->text(); }

private:
    struct CharacterKey
    {
        TouchKey* key;
        int row;
        int column;
    };

    void createDigitRow(QGridLayout& keys);
    void createCharacterRows(QGridLayout& keys);
    void createBottomRow(QGridLayout& keys);
    TouchKey* editingKey(const QString& name, TouchKey::Symbol symbol,
                         const QString& accessibleName, std::function<void()> edit);
    TouchKey* switchKey(TouchKey* key);
    const KeyboardLayout& layoutInUse() const;
    QChar character(int row, int column) const;
    void type(const QString& text);
    void showLayout();
    void judge();

    /// The last language chosen stays for the dialogs to come.
    static inline int s_language = 0;

    QVector<CharacterKey> m_characterKeys;
    TouchKey* m_shift;
    TouchKey* m_caps;
    TouchKey* m_symbols;
    TouchKey* m_language;
    TouchKey* m_space;
    const Check m_check;
    const QString m_refusal;
};

ScreenKeyboard::ScreenKeyboard(QWidget* parent, Qt::WindowFlags flags, const QString& title,
                               const QString& text, const QString& hint, const QString& refusal,
                               Check check)
    : EntryDialog(parent, flags, title, QString()),
      m_shift(switchKey(new TouchKey("keyShift", TouchKey::Symbol::Shift, tr("Shift")))),
      m_caps(switchKey(new TouchKey("keyCaps", TouchKey::Symbol::Caps, tr("Capital letters")))),
      m_symbols(switchKey(new TouchKey("keySymbols", "#+="))),
      m_language(new TouchKey("keyLanguage", QString())),
      m_space(new TouchKey("keySpace", QString())),
      m_check(std::move(check)),
      m_refusal(refusal.isEmpty() ? tr("This text is not accepted") : refusal)
{
    constexpr int spacing = 4;
    setObjectName("ScreenKeyboardDialog");
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(2 * spacing, 2 * spacing, 2 * spacing, 2 * spacing);
    layout->setSpacing(spacing);
    layout->addWidget(m_label);
    layout->addWidget(m_display);
    layout->addWidget(m_reason);
    auto* const keys = new QGridLayout;
    layout->addLayout(keys, 1);
    createDigitRow(*keys);
    createCharacterRows(*keys);
    createBottomRow(*keys);
    for (int column = 0; column < kColumns; ++column) {
        keys->setColumnStretch(column, 1);
    }
    m_display->setText(text);
    m_display->setPlaceholderText(hint);
    m_display->setFocus();
    connect(m_display, &QLineEdit::textChanged, this, &ScreenKeyboard::judge);
    showLayout();
    judge();
    fitIntoScreen({960, 480});
}

void ScreenKeyboard::createDigitRow(QGridLayout& keys)
{
    for (int column = 0; column < 10; ++column) {
        const QString digit = QString::number((column + 1) % 10);
        auto* const key = new TouchKey("key" + digit, digit);
        connect(key, &QPushButton::clicked, this, [this, digit] { type(digit); });
        keys.addWidget(key, 0, column);
    }
    keys.addWidget(editingKey("keyBackspace", TouchKey::Symbol::Backspace, tr("Backspace"),
                              [this] { m_display->backspace(); }),
                   0, 10);
}

void ScreenKeyboard::createCharacterRows(QGridLayout& keys)
{
    for (int row = 0; row < 3; ++row) {
        const int firstColumn = (kColumns - KeyboardLayout::kRowLengths[row]) / 2;
        for (int column = 0; column < KeyboardLayout::kRowLengths[row]; ++column) {
            auto* const key = new TouchKey(QString("key%1-%2").arg(row + 1).arg(column), QString());
            connect(key, &QPushButton::clicked, this,
                    [this, row, column] { type(character(row, column)); });
            keys.addWidget(key, row + 1, firstColumn + column);
            m_characterKeys.append({key, row, column});
        }
    }
    keys.addWidget(m_shift, 3, 0);
    keys.addWidget(m_caps, 3, kColumns - 1);
}

void ScreenKeyboard::createBottomRow(QGridLayout& keys)
{
    connect(m_language, &QPushButton::clicked, this, [this] {
        s_language = (s_language + 1) % languageLayouts().size();
        m_symbols->setChecked(false);
        showLayout();
    });
    connect(m_space, &QPushButton::clicked, this, [this] { type(" "); });
    keys.addWidget(m_symbols, 4, 0);
    keys.addWidget(m_language, 4, 1);
    keys.addWidget(editingKey("keyLeft", TouchKey::Symbol::Left, tr("Cursor left"),
                              [this] { m_display->cursorBackward(false); }),
                   4, 2);
    keys.addWidget(m_space, 4, 3, 1, 3);
    keys.addWidget(editingKey("keyRight", TouchKey::Symbol::Right, tr("Cursor right"),
                              [this] { m_display->cursorForward(false); }),
                   4, 6);
    keys.addWidget(m_cancel, 4, 7, 1, 2);
    keys.addWidget(m_ok, 4, 9, 1, 2);
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
    return m_symbols->isChecked() ? symbolLayout() : languageLayouts()[s_language];
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

void ScreenKeyboard::type(const QString& text)
{
    m_display->insert(text);
    m_shift->setChecked(false);
}

void ScreenKeyboard::showLayout()
{
    for (const CharacterKey& shown : qAsConst(m_characterKeys)) {
        shown.key->setPlainText(character(shown.row, shown.column));
    }
    const QVector<KeyboardLayout>& languages = languageLayouts();
    const KeyboardLayout& next = languages[(s_language + 1) % languages.size()];
    m_language->setText(next.shortName);
    m_language->setAccessibleName(next.name);
    m_space->setText(languages[s_language].name);
    m_symbols->setText(m_symbols->isChecked() ? symbolLayout().shortName : "#+=");
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
