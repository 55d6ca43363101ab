#pragma once

#include "norvo/BaseWidget.h"

class QLabel;

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
    QString m_color; ///< None of the three known: the plate keeps its plain look.
    int m_fontSize = 0;
    QLabel* m_lamp = nullptr;
};
