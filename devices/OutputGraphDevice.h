// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseGuiDevice.h"

#include <QDateTime>
#include <QMap>

/// Numbers from several devices against wall-clock time, a curve for each sending device.
///
/// Emits every accepted value onward. The look of a curve is set by the device that feeds it: the
/// sender's object name is the curve's key, for values and settings alike. Values and settings are
/// ignored unless the device is running.
class OutputGraphDevice : public BaseGuiDevice
{
    Q_OBJECT

public:
    static constexpr char kName[] = "name";
    static constexpr char kMinThreshold[] = "widget/minThreshold";
    static constexpr char kMaxThreshold[] = "widget/maxThreshold";
    static constexpr char kTimePeriod[] = "widget/timePeriod"; ///< Seconds.
    static constexpr char kTimeFormat[] = "widget/timeFormat";
    static constexpr char kMinValue[] = "widget/minValue";
    static constexpr char kMaxValue[] = "widget/maxValue";
    static constexpr char kAutoscale[] = "widget/autoscale";
    static constexpr char kTimeout[] = "widget/timeout"; ///< Seconds.

    /// Now, to the millisecond.
    static double secondsSinceEpoch()
    {
        return double(QDateTime::currentMSecsSinceEpoch()) * 0.001;
    }

    OutputGraphDevice();

    bool initialise() override;
    BaseWidget* createWidget() override; ///< All settings are sent to it again once it is wired.

signals:
    void output(QString value);
    void output(double value, QString sender, double time); ///< Seconds since the epoch.
    void output(QString value, QString sender);
    void outputFill(QString sender, bool fill);
    void outputColor(QString sender, QString color);
    void outputName(QString sender, QString name);

public slots:
    void input(double value);  ///< Plotted only when it comes through a signal.
    void input(QString value); ///< Likewise; a text that is no number counts as 0.
    void setFilled(bool fill);
    void setColor(QString color); ///< A name such as "orange" or a form such as "#ff8800".
    void setName(QString name);   ///< The curve's name in the legend.

private slots:
    void resendData();

private:
    QMap<QString, bool> m_fills;
    QMap<QString, QString> m_colors;
    QMap<QString, QString> m_names;
};
