// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/form/entry/ParamEditor.h"

class QPlainTextEdit;
class QVBoxLayout;

namespace norvo {

/// A text of several lines. The tab key goes on to the next field; Ctrl+Enter ends the entry. Keys
/// beside it open the keyboard on the screen for the line that the cursor is in, and add a line.
class LinesEditor : public ParamEditor
{
    Q_OBJECT

public:
    explicit LinesEditor(const ParamWords& words);

    QString text() const override;
    void showText(const QString& text, Shown how) override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QVBoxLayout* makeKeys(const QString& name);
    void askForLine();
    void addLine();

    QPlainTextEdit* m_lines;
    bool m_isShowing = false; ///< What changes now nobody types.
};

} // namespace norvo
