// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/form/entry/ParamEditor.h"

#include <QStringList>

class QComboBox;

namespace norvo {

/// One of the options of a parameter. A text that is none of them is shown, too.
class ChoiceEditor : public ParamEditor
{
    Q_OBJECT

public:
    explicit ChoiceEditor(const ParamWords& words);

    QString text() const override;
    void showText(const QString& text, Shown how) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override; ///< Sees the end of an entry.

private:
    QStringList m_options;
    QComboBox* m_box;
};

} // namespace norvo
