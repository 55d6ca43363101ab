// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "norvo/BaseGuiDevice.h"
#include "norvo/Export.h"
#include "norvo/NamedObject.h"
#include "norvo/ParametersEntity.h"

#include <QPointer>
#include <QWidget>

class QGridLayout;

/// What a device shows on the panel. Its parameters are its device's: what either writes, the
/// other reads. Made for no device, it has none.
class NORVOGUI_EXPORT BaseWidget : public QWidget, public ParametersEntity, public NamedObject
{
    Q_OBJECT

public:
    BaseWidget(BaseGuiDevice* device, QWidget* parent);
    ~BaseWidget() override;

    /// Reads the parameters, builds the inner controls and connects them to the device. An
    /// implementation ends with setInitialised(true).
    virtual void initialise();
    virtual void deinitialise();            ///< Clears the initialised flag.
    QString getObjectName() const override; ///< Its own name; without one, its device's.
    void sendParamChanged() override;

    QGridLayout* getLayout() const; ///< Never null.
    bool isInitialised() const { return m_initialised; }

protected:
    void setInitialised(bool initialised) { m_initialised = initialised; }
    BaseGuiDevice* device() const { return m_device; } ///< Null once the device is gone.

private:
    QPointer<BaseGuiDevice> m_device;
    QGridLayout* m_layout;
    bool m_initialised = false;
};
