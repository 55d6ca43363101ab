// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/form/entry/ParamEditor.h"

class QHBoxLayout;
class QLineEdit;
class QPushButton;

namespace norvo {

/// A text in one line. A finger on it opens the keyboard on the screen.
class LineEditor : public ParamEditor
{
    Q_OBJECT

public:
    explicit LineEditor(const ParamWords& words);

    QString text() const override;
    void showText(const QString& text, Shown how) override;

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    /// A key beside the line; it never takes the focus by a tap.
    QPushButton* addKey(const QString& text, const QString& what);
    QLineEdit& line() const { return *m_line; }
    const QString& shownText() const { return m_shown; } ///< The default too, where it is greyed.
    void enter(const QString& text); ///< As if it had been typed and Enter pressed.

    /// Asks for a text on the screen; null where none is given.
    virtual QString askOnScreen();

private:
    void openKeyboard();

    QLineEdit* m_line;
    QHBoxLayout* m_row;
    QString m_shown;
};

} // namespace norvo
