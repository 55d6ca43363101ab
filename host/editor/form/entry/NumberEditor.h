// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/catalogue/TypeWords.h"
#include "host/editor/form/entry/LineEditor.h"

namespace norvo {

/// A number, with keys that make it less and more; so do the arrow keys, and the wheel while it has
/// the focus. What is typed is taken as it stands.
class NumberEditor : public LineEditor
{
    Q_OBJECT

public:
    explicit NumberEditor(const ParamWords& words);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    QString askOnScreen() override;

private:
    void step(int steps); ///< Within the range.
    double number() const;

    const ParamWords m_words;
};

} // namespace norvo
