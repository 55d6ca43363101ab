#pragma once

#include "norvo/BaseWidget.h"

#include <QTimer>

class QLabel;

/// The readout of an OutputDigitalDevice: caption, digits and, where there is one, the unit.
class DigitalWidget : public BaseWidget
{
    Q_OBJECT

public:
    using BaseWidget::BaseWidget;

    /// Places the labels; vertical: the digits alone.
    void setLayout(Qt::Orientation orientation);
    void setActive(bool active); ///< Inactive: grey digits and a caption switched off.

    void initialise() override;
    void deinitialise() override; ///< Does nothing: values are shown to the end.

public slots:
    void timeout();
    void input(double value);
    void blinkTimerExpired();

protected:
    void showEvent(QShowEvent* event) override; ///< Makes room for the longest number of the band.

private:
    void createLabels();
    bool isOutOfRange(double value) const;

    QLabel* m_value = nullptr;
    QLabel* m_caption = nullptr;
    QLabel* m_units = nullptr; ///< Null: no unit.
    QTimer m_blinkTimer;
    double m_minThreshold = 0;
    double m_maxThreshold = 0;
    int m_precision = 0;
    bool m_timedOut = false;
    bool m_outOfRange = false;
};
