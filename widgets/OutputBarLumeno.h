// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/LumenoBarDevice.h"
#include "widgets/DeviceView.h"
#include "widgets/GaugeHistory.h"
#include "widgets/LumenoGeometry.h"

#include <QColor>
#include <QFont>
#include <QStaticText>

#include <vector>

class QTimer;

/// A vertical gauge: scale, filled bar, the value in large digits, caption, and to the left of the
/// bar a trace of the last ten seconds.
///
/// Time is counted from that of the system's clock at the program's start, and goes on evenly where
/// that clock is set. A scale whose steps are no positive numbers, or whose ends are equal, is not
/// drawn; nor is a bar or trace at no number. A font size below 1 draws nothing.
///
/// What no value changes is laid out once for each height, as laying out a text costs ten times as
/// much as drawing it. A pixmap would cost as much to show, and letters lose their sub-pixel
/// rendering in it.
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
    struct Text
    {
        QRectF box;
        QStaticText text;
        bool isClipped; ///< To its box.
    };

    void readParameters();
    Text number(double value, double y) const;
    void layOut();
    void drawScale(QPainter& painter) const;
    void drawBar(QPainter& painter) const;
    void drawValue(QPainter& painter) const;
    void drawTrace(QPainter& painter);

    norvo::lumeno::Scale m_scale;
    int m_precision = 0;
    int m_fontSize = 0; ///< Pixels.
    int m_barWidth = 0; ///< Pixels.
    QString m_name;
    QFont m_textFont;
    QFont m_valueFont;
    int m_textHeight = 0; ///< Pixels, of a line.
    int m_valueHeight = 0;
    QStaticText m_units;
    QTimer* m_refreshTimer = nullptr;
    QColor m_accentColor;
    QColor m_textColor;
    GaugeHistory m_history;

    int m_laidOutHeight = -1; ///< Of the widget, for which what follows was laid out.
    norvo::ValueAxis m_axis;
    QVector<QLine> m_dashes; ///< Short ones first.
    std::vector<Text> m_texts;
};
