// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/form/entry/ParamEditor.h"

class QHBoxLayout;
class QLineEdit;
class QPushButton;

namespace norvo {

/// A text in one line.
class LineEditor : public ParamEditor
{
    Q_OBJECT

public:
    explicit LineEditor(const ParamWords& words);
    ~LineEditor() override;

    QString text() const override;
    void showText(const QString& text, Shown how) override;

protected:
    /// A key beside the line; it never takes the focus by a tap.
    QPushButton* addKey(const QString& text, const QString& what);
    QLineEdit& line() const { return *m_line; }
    const QString& shownText() const { return m_shown; } ///< The default too, where it is greyed.
    void enter(const QString& text); ///< As if it had been typed and Enter pressed.

    /// Asks for what goes here by keys on the screen; null where nothing is given.
    virtual QString askOnScreen();

private:
    QLineEdit* m_line;
    QHBoxLayout* m_row;
    QString m_shown;
};

} // namespace norvo
