// SPDX-License-Identifier: LGPL-3.0-or-later

#include "norvo/ScreenKeyboardDialog.h"

#include "host/gui/dialogs/EntryDialog.h"
#include "host/gui/dialogs/KeyPages.h"
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
    void createDigitKeys();
    void watchLanguageKey();
    void createRows();
    void createPages();
    TouchKey* createCharacterKey(int row, int column);
    void fitRow(int row);
    void fillPages();
    QStringList variants(int row, int column) const;
    void chooseLanguage(int language);
    TouchKey* editingKey(const QString& name, TouchKey::Symbol symbol,
                         const QString& accessibleName, std::function<void(QLineEdit*)> edit);
    TouchKey* switchKey(TouchKey* key);
    const KeyboardLayout& layoutInUse() const;
    QChar character(int row, int column) const;
    void type(const QString& text);
    void showLayout();
    void judge();

    static constexpr QSize kKeys{13, 5}; ///< Columns and rows of the largest layout.

    /// The last language chosen stays for the dialogs to come; none is chosen at first.
    static inline int s_chosenLanguage = -1;

    int m_language = s_chosenLanguage < 0 ? KeyboardLayouts::preferred() : s_chosenLanguage;
    QHBoxLayout* m_rows[3] = {};
    KeyPages* m_pages = nullptr; ///< In place of the rows, where the screen is too small for them.
    QList<TouchKey*> m_digits;
    QVector<TouchKey*> m_characterKeys[3]; ///< Of the longest layout so far; the rest are hidden.
    VariantKeys* m_variants;
    TouchKey* m_shift;
    TouchKey* m_caps;
    TouchKey* m_symbols;
    TouchKey* m_nextLanguage;
    TouchKey* m_space;
    TouchKey* m_backspace;
    TouchKey* m_left;
    TouchKey* m_right;
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
      m_backspace(editingKey("keyBackspace", TouchKey::Symbol::Backspace, tr("Backspace"),
                             &QLineEdit::backspace)),
      m_left(editingKey("keyLeft", TouchKey::Symbol::Left, tr("Cursor left"),
                        [](QLineEdit* display) { display->cursorBackward(false); })),
      m_right(editingKey("keyRight", TouchKey::Symbol::Right, tr("Cursor right"),
                         [](QLineEdit* display) { display->cursorForward(false); })),
      m_check(std::move(check)),
      m_refusal(refusal.isEmpty() ? tr("This text is not accepted") : refusal)
{
    setObjectName("ScreenKeyboardDialog");
    placeHead(kKeys);
    createDigitKeys();
    watchLanguageKey();
    connect(m_space, &QPushButton::clicked, this, [this] { type(" "); });
    if (room().width() < kKeys.width() || room().height() < kKeys.height()) {
        createPages();
    } else {
        createRows();
    }
    m_display->setText(text);
    m_display->setPlaceholderText(hint);
    m_display->setFocus();
    connect(m_display, &QLineEdit::textChanged, this, &ScreenKeyboard::judge);
    showLayout();
    judge();
    fitIntoScreen({960, 480}, m_pages ? m_pages->rows() : kKeys.height());
}

void ScreenKeyboard::createDigitKeys()
{
    for (int column = 0; column < 10; ++column) {
        const QString digit = QString::number((column + 1) % 10);
        m_digits.append(new TouchKey("key" + digit, digit));
        connect(m_digits.last(), &QPushButton::clicked, this, [this, digit] { type(digit); });
    }
}

void ScreenKeyboard::watchLanguageKey()
{
    connect(m_nextLanguage, &QPushButton::clicked, this,
            [this] { chooseLanguage((m_language + 1) % KeyboardLayouts::languages().size()); });
    m_variants->watch(
        *m_nextLanguage, [] { return languageNames(); },
        [this](const QString& name) { chooseLanguage(languageNames().indexOf(name)); });
}

void ScreenKeyboard::createRows()
{
    const auto addRow = [this](const QList<TouchKey*>& keys) {
        auto* const row = new QHBoxLayout;
        static_cast<QVBoxLayout*>(layout())->addLayout(row, 1);
        for (TouchKey* const key : keys) {
            const bool isWide = key == m_ok || key == m_cancel;
            row->addWidget(key, key == m_space ? 3 : isWide ? 2 : 1);
            key->setMinimumWidth(leastKeyWidth(keys.size()));
        }
        return row;
    };
    addRow(m_digits + QList<TouchKey*>{m_backspace});
    m_rows[0] = addRow({});
    m_rows[1] = addRow({});
    m_rows[2] = addRow({m_shift, m_caps});
    addRow({m_symbols, m_nextLanguage, m_left, m_space, m_right, m_cancel, m_ok});
    const int step = leastKeyWidth(kKeys.width()) + layout()->spacing();
    layout()->addItem(new QSpacerItem(kKeys.width() * step, 0)); // for any language
}

void ScreenKeyboard::createPages()
{
    const QList<TouchKey*> steady{m_shift, m_backspace, m_space, m_cancel, m_ok};
    m_pages = new KeyPages(room().expandedTo({steady.size() + 1, 2}), steady);
    m_pages->layout()->setSpacing(layout()->spacing());
    static_cast<QVBoxLayout*>(layout())->addWidget(m_pages, 1);
}

TouchKey* ScreenKeyboard::createCharacterKey(int row, int column)
{
    auto* const key = new TouchKey(QString("key%1-%2").arg(row + 1).arg(column), QString());
    connect(key, &QPushButton::clicked, this,
            [this, row, column] { type(character(row, column)); });
    m_variants->watch(
        *key, [this, row, column] { return variants(row, column); },
        [this](const QString& variant) { type(variant); });
    if (!m_pages) {
        m_rows[row]->insertWidget(row == 2 ? column + 1 : column, key, 1);
    }
    return key;
}

/// As many keys as the layout has, not wider at the least than the screen lets them.
void ScreenKeyboard::fitRow(int row)
{
    const int length = layoutInUse().rows[row].size();
    const int inRow = length + (row == 2 ? 2 : 0);
    const int width = leastKeyWidth(inRow);
    for (int column = 0; column < m_characterKeys[row].size(); ++column) {
        m_characterKeys[row][column]->setVisible(column < length);
        m_characterKeys[row][column]->setMinimumWidth(width);
    }
    m_shift->setMinimumWidth(width); // the last row counts
    m_caps->setMinimumWidth(width);
}

/// Letters first.
void ScreenKeyboard::fillPages()
{
    QList<TouchKey*> letters;
    QList<TouchKey*> others;
    for (int row = 0; row < 3; ++row) {
        const QString& plain = layoutInUse().rows[row];
        for (int column = 0; column < plain.size(); ++column) {
            (plain[column].isLetter() ? letters : others) << m_characterKeys[row][column];
        }
    }
    m_pages->setKeys(letters + others + m_digits +
                     QList<TouchKey*>{m_symbols, m_nextLanguage, m_caps, m_left, m_right});
}

void ScreenKeyboard::chooseLanguage(int language)
{
    m_language = s_chosenLanguage = language;
    m_symbols->setChecked(false);
    showLayout();
}

TouchKey* ScreenKeyboard::editingKey(const QString& name, TouchKey::Symbol symbol,
                                     const QString& accessibleName,
                                     std::function<void(QLineEdit*)> edit)
{
    auto* const key = new TouchKey(name, symbol, accessibleName);
    connect(key, &QPushButton::clicked, this, [this, edit = std::move(edit)] { edit(m_display); });
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
        QVector<TouchKey*>& keys = m_characterKeys[row];
        const int length = layoutInUse().rows[row].size();
        while (keys.size() < length) {
            keys.append(createCharacterKey(row, keys.size()));
        }
        for (int column = 0; column < length; ++column) {
            keys[column]->setPlainText(character(row, column));
        }
        if (!m_pages) {
            fitRow(row);
        }
    }
    if (m_pages) {
        fillPages();
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
