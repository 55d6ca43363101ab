// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/form/entry/ParamEditor.h"

class QPlainTextEdit;

namespace norvo {

/// A text of several lines. The tab key goes on to the next field; Ctrl+Enter ends the entry.
class LinesEditor : public ParamEditor
{
    Q_OBJECT

public:
    explicit LinesEditor(const ParamWords& words);

    QString text() const override;
    void showText(const QString& text, Shown how) override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPlainTextEdit* m_lines;
    bool m_isShowing = false; ///< What changes now nobody types.
};

} // namespace norvo
