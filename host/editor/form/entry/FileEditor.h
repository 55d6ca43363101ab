// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/catalogue/TypeWords.h"
#include "host/editor/form/entry/LineEditor.h"

namespace norvo {

/// The name of a file, and a key that opens the list of those in the panel's folder.
class FileEditor : public LineEditor
{
    Q_OBJECT

public:
    explicit FileEditor(const ParamWords& words);

private:
    const ParamKind m_kind;
};

} // namespace norvo
