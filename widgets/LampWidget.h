#pragma once

#include "norvo/BaseWidget.h"

class QLabel;
namespace norvo::Looks {
struct Lamp;
}

/// The lamp of an IndicatorDevice: a rounded plate with a caption, bright when lit.
class LampWidget : public BaseWidget
{
    Q_OBJECT

public:
    using BaseWidget::BaseWidget;

    void setState(bool on);
    void setFontSize(int size); ///< In points.

    void initialise() override; ///< Again: a new lamp takes the place of the old one.

public slots:
    void input(bool value);

private:
    const norvo::Looks::Lamp* m_look = nullptr; ///< Null: the plate keeps its plain look.
    QLabel* m_lamp = nullptr;
};
