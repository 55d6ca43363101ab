// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/form/entry/ParamEditor.h"

class QCheckBox;

namespace norvo {

/// Yes or no.
class SwitchEditor : public ParamEditor
{
    Q_OBJECT

public:
    explicit SwitchEditor(const ParamWords& words);

    QString text() const override;
    void showText(const QString& text, Shown how) override;

private:
    void nameState();

    QCheckBox* m_box;
};

} // namespace norvo
