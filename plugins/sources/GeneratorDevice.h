// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/sources/Waveform.h"
#include "norvo/BaseDevice.h"
#include "norvo/DeviceTypeInfo.h"
#include "norvo/DoubleVec.h"

#include <QTimer>

/// Made-up values for trying panels out.
///
/// A value is a function of the parameters and of the number of its tick, so that equal parameters
/// give equal values in each run. The first tick is emitted in postInitialisation().
class GeneratorDevice : public BaseDevice
{
    Q_OBJECT

public:
    GeneratorDevice();

    static DeviceTypeInfo typeInfo();

    bool initialise() override;
    void postInitialisation() override;
    void preShutdown() override;

signals:
    void output(double value);
    /// After the number: the last `length` values of the waveform, the newest last. The window
    /// begins filled, as if the waveform had run before. Not emitted where `length` is 0.
    void output(DoubleVec window);

private:
    void declareParams();
    void tick();

    norvo::Waveform m_waveform;
    norvo::DropOuts m_dropOuts;
    DoubleVec m_window;
    qint64 m_tick = 0;
    QTimer m_timer;
};
