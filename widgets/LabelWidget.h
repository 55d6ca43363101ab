// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Label.h"
#include "widgets/DeviceView.h"

#include <QFont>

class QLabel;

/// The text of a Label.
class LabelWidget : public DeviceView<Label>
{
    Q_OBJECT

public:
    using DeviceView::DeviceView;

    void deinitialise() override; ///< The last text stays on view.

public slots:
    void inputWarning(bool warning); ///< Takes effect with the next text.
    void input(QString value);

protected:
    void build(Label& label) override;

private:
    QLabel* m_label = nullptr; ///< Null: not to be written to.
    QFont m_font;
    bool m_warning = false;
};
