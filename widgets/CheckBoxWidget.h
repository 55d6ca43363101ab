#pragma once

#include "norvo/BaseWidget.h"

class QCheckBox;

/// The check box of a CheckBoxDevice. Unchecked at the start.
class CheckBoxWidget : public BaseWidget
{
    Q_OBJECT

public:
    using BaseWidget::BaseWidget;

    void initialise() override;

signals:
    void output(bool check);

public slots:
    void onStateChanged(int state); ///< A Qt::CheckState; partly checked counts as checked.
    void input(bool check);

private:
    QCheckBox* m_checkBox = nullptr;
};
