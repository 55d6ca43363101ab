// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/sheet/Sheet.h"

#include <QByteArray>

class QLabel;
class QLineEdit;

namespace norvo {

class TemplateSet;

/// Asks for the name under which devices are kept as a template, and keeps them.
class TemplateSheet : public Sheet
{
    Q_OBJECT

public:
    /// `panel` is the text of a panel file.
    TemplateSheet(QWidget& opener, TemplateSet& templates, const QByteArray& panel);

private:
    void save();

    TemplateSet& m_templates;
    const QByteArray m_panel;
    QLineEdit* const m_name;
    QLabel* const m_fault;
};

} // namespace norvo
