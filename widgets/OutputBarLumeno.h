#pragma once

#include "norvo/BaseWidget.h"
#include "widgets/LumenoGeometry.h"

#include <QColor>
#include <QFont>
#include <QPixmap>

class QTimer;

/// A vertical gauge: scale, filled bar, the value in large digits, caption, and to the left of the
/// bar a trace of the last ten seconds.
///
/// Scale and caption are drawn once into a pixmap and shown from there until size, parameters or
/// text colour change; where the picture is scaled by no whole number they are drawn each time. The
/// trace is reduced to what its 40 pixels can show. A scale whose steps are no positive numbers, or
/// whose marks would outnumber its pixels, is not drawn, nor is one whose ends are equal; a bar or
/// trace at no number is not drawn. A font size below 1 draws nothing.
class OutputBarLumeno : public BaseWidget
{
    Q_OBJECT

public:
    OutputBarLumeno(BaseGuiDevice* device, QWidget* parent);

    void initialise() override;
    void deinitialise() override; ///< Stops the refreshing; the initialised flag stays set.

    /// False: the pixmap and the whole trace are drawn anew at each paint. The picture is the same.
    void setCached(bool cached) { m_cached = cached; }

    /// Draws scale and caption as they stand in the widget. Through the pixmap, pixels that a line
    /// or letter covers in part come out at most one level of 255 different, from rounding twice.
    void drawScale(QPainter& painter) const;

public slots:
    void input(double value);
    void update(); ///< Drops what is older than ten seconds and asks for a repaint.

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void drawScalePixmap(QPainter& painter, int pixelScale);
    void drawBar(QPainter& painter, int valueTextHeight) const;
    void drawValue(QPainter& painter) const;
    void drawTrace(QPainter& painter);
    GaugeHistory::ValueAxis valueAxis() const;
    QString numberText(double value) const;

    norvo::lumeno::Scale m_scale;
    int m_precision = 0;
    int m_fontSize = 0; ///< Pixels.
    int m_barWidth = 0; ///< Pixels.
    QFont m_textFont;
    QFont m_valueFont;
    QTimer* m_refreshTimer = nullptr;
    QColor m_accentColor;
    QColor m_textColor;
    GaugeHistory m_history;
    QString m_name;
    QString m_units;
    QPixmap m_cache; ///< Null: to be drawn.
    bool m_cached = true;
};
