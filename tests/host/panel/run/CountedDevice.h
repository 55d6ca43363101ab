// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fixtures/relays/Lifecycle.h"

#include "norvo/BaseGuiDevice.h"
#include "norvo/BaseWidget.h"

#include <QApplication>

/// Counts the devices made and initialised, and notes who hears its values, in order.
class CountedDevice : public BaseGuiDevice
{
    Q_OBJECT

public:
    CountedDevice()
    {
        addParam("text", "");
        getParam("text").setPersistent();
        recordStep("device", "made");
    }
    ~CountedDevice() override { recordStep(objectName(), "deleted"); }

    bool initialise() override
    {
        recordStep(objectName(), "initialise");
        return true;
    }
    BaseWidget* createWidget() override;

signals:
    void output(double value);

public slots:
    void input(double value)
    {
        recordStep(objectName(), "hears");
        emit output(value);
    }
};

/// Hears its device as every widget does.
class CountedWidget : public BaseWidget
{
    Q_OBJECT

public:
    using BaseWidget::BaseWidget;

    void initialise() override
    {
        connect(static_cast<CountedDevice*>(device()), &CountedDevice::output, this,
                &CountedWidget::hear, Qt::UniqueConnection);
        setInitialised(true);
    }
    void deinitialise() override
    {
        device()->disconnect(this);
        BaseWidget::deinitialise();
    }

private:
    void hear() { recordStep(getObjectName(), "widget hears"); }
};

inline BaseWidget* CountedDevice::createWidget()
{
    return new CountedWidget(this, nullptr);
}
