// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/form/entry/LineEditor.h"

namespace norvo {

/// A colour by name or by numbers, with a swatch of it that opens a sheet of colours.
class ColourEditor : public LineEditor
{
    Q_OBJECT

public:
    explicit ColourEditor(const ParamWords& words);

    void showText(const QString& text, Shown how) override;

private:
    void showSwatch();
    void openSheet();

    QPushButton* m_swatch;
};

} // namespace norvo
