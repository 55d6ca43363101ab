// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/Descriptions.h"
#include "host/panel/TestPanel.h"

#include "host/panel/run/Panel.h"
#include "norvo/BaseDevice.h"
#include "norvo/DeviceManager.h"
#include "norvo/DeviceTypeInfo.h"
#include "TestMain.h"

#include <QtTest>

namespace {

QStringList s_seen; ///< What the devices knew of the network when they were initialised.

/// One of which the check, too, wants to know what it can send.
class CuriousDevice : public BaseDevice
{
public:
    static DeviceTypeInfo typeInfo() { return {"", "", {"General"}, 0, 1, ""}; }

    bool initialise() override
    {
        s_seen.append(objectName() + (isNetworkAllowed() ? " open" : " closed"));
        return true;
    }
};

norvo::PanelDescription twoDevices()
{
    norvo::DeviceSetting open = describe::device("a", "curious");
    open.network = true;
    return describe::panel({open, describe::device("b", "curious")});
}

} // namespace

/// The key "network" reaches its device, and no other.
class tst_PanelNetwork : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_manager.registerDeviceType<CuriousDevice>("curious"); }
    void init() { s_seen.clear(); }

    void runningDevicesKnowTheirNetwork()
    {
        TestPanel panel(m_manager, twoDevices());
        QWidget page;
        panel.start(&page);
        QCOMPARE(s_seen, QStringList({"a open", "b closed"}));
    }

    void checkedDevicesKnowTheirNetwork()
    {
        norvo::Diagnostics diagnostics("panel.yaml");
        norvo::PanelPlan::make(twoDevices(), m_manager, {}, diagnostics);
        QCOMPARE(s_seen, QStringList({"a open", "b closed"}));
    }

private:
    DeviceManager m_manager;
};

NORVO_TEST(tst_PanelNetwork)
#include "tst_PanelNetwork.moc"
