// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseDevice.h"
#include "norvo/DeviceTypeInfo.h"

/// Stands between a source and a time graph: passes every value on unchanged and sends the graph,
/// once at the start, the name, colour and fill of the curve that it feeds.
class GraphSettingsDevice : public BaseDevice
{
    Q_OBJECT

public:
    static constexpr char kColor[] = "color";
    static constexpr char kFill[] = "fill";
    static constexpr char kName[] = "name";

    GraphSettingsDevice();

    bool initialise() override;
    void postInitialisation() override;

    static DeviceTypeInfo typeInfo();

signals:
    void setName(QString name);   ///< Only for a name that is not empty.
    void setColor(QString color); ///< Only for a colour that is not empty.
    void setFilled(bool fill);
    void output(double value);

public slots:
    void input(double value);

private:
    QString m_color;
    QString m_name;
    bool m_fill = false;
};
