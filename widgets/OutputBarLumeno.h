// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/LumenoBarDevice.h"
#include "widgets/DeviceView.h"
#include "widgets/GaugeHistory.h"
#include "widgets/LumenoScale.h"

#include <QColor>
#include <QFont>

class QTimer;

/// A vertical gauge: scale, filled bar, the value in large digits, caption, and to the left of the
/// bar a trace of the last ten seconds.
///
/// Time is counted from that of the system's clock at the program's start, and goes on evenly where
/// that clock is set. A scale whose steps are no positive numbers, or whose ends are equal, is not
/// drawn; nor is a bar or trace at no number. A font size below 1 draws nothing.
class OutputBarLumeno : public DeviceView<LumenoBarDevice>
{
    Q_OBJECT

public:
    OutputBarLumeno(BaseGuiDevice* device, QWidget* parent);

    void deinitialise() override; ///< Stops the refreshing; the initialised flag stays set.

public slots:
    void input(double value);
    void update(); ///< Drops what is older than ten seconds and asks for a repaint.

protected:
    void build(LumenoBarDevice& bar) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void readParameters();
    void drawBar(QPainter& painter) const;
    void drawValue(QPainter& painter) const;
    void drawTrace(QPainter& painter);

    int m_precision = 0;
    int m_fontSize = 0; ///< Pixels.
    int m_barWidth = 0; ///< Pixels.
    QFont m_textFont;
    QFont m_valueFont;
    LumenoScale m_scale;
    QStaticText m_units;
    QTimer* m_refreshTimer = nullptr;
    QColor m_accentColor;
    QColor m_textColor;
    GaugeHistory m_history;
};
