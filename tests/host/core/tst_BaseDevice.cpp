// SPDX-License-Identifier: GPL-3.0-or-later

#include "norvo/BaseDevice.h"

#include "MessageLog.h"
#include "TestMain.h"

#include <QtTest>

#include <cstring>
#include <type_traits>

namespace {

class Device : public BaseDevice
{
public:
    Device()
    {
        setObjectName("pump");
        addParam("Rate", "1");
        addParam("mode", "a", {"a", "b"});
    }
};

/// Which entry of the virtual table a pointer to a virtual function stands for.
template <class Function>
int virtualIndex(Function function)
{
    std::ptrdiff_t offset = 0;
    std::memcpy(&offset, &function, sizeof offset);
    return int(offset / std::ptrdiff_t(sizeof(void*)));
}

} // namespace

class tst_BaseDevice : public QObject
{
    Q_OBJECT

private slots:
    void derivesFromItsFourBases()
    {
        QVERIFY((std::is_base_of_v<QObject, BaseDevice>));
        QVERIFY((std::is_base_of_v<ParametersEntity, BaseDevice>));
        QVERIFY((std::is_base_of_v<NamedObject, BaseDevice>));
        QVERIFY((std::is_base_of_v<ConnectionPoint, BaseDevice>));
        QCOMPARE(BaseDevice::staticMetaObject.superClass(), &QObject::staticMetaObject);
    }

    void networkIsClosedUntilTheHostOpensIt()
    {
        Device device;
        QVERIFY(!device.isNetworkAllowed());
        device.setNetworkAllowed(true);
        QVERIFY(device.isNetworkAllowed());
        QVERIFY(!device.isRunning());
    }

    void virtualOperationsStandInTheAgreedOrder()
    {
        const QVector<int> order{
            virtualIndex(&BaseDevice::getProvider),
            virtualIndex(&BaseDevice::getReceiver),
            virtualIndex(&BaseDevice::getIncomingConnections),
            virtualIndex(&BaseDevice::addSignal),
            virtualIndex(&BaseDevice::getObjectName),
            virtualIndex(&BaseDevice::setParam),
            virtualIndex(&BaseDevice::postInitialisation),
            virtualIndex(&BaseDevice::preShutdown),
            virtualIndex(static_cast<bool (BaseDevice::*)()>(&BaseDevice::initialise)),
            virtualIndex(&BaseDevice::deinitialise),
            virtualIndex(&BaseDevice::error),
            virtualIndex(&BaseDevice::alert),
            virtualIndex(&BaseDevice::sendParamChanged),
            virtualIndex(&BaseDevice::grabMethods),
        };
        QVector<int> expected(order.size());
        std::iota(expected.begin(), expected.end(), order.first());
        QCOMPARE(order, expected);
        QVERIFY(order.first() > virtualIndex(&BaseDevice::eventFilter));
    }

    void setParamStoresAndTellsOnlyChanges()
    {
        Device device;
        QSignalSpy changed(&device, &BaseDevice::paramChanged);

        device.setParam("RATE", "2");
        QCOMPARE(device.getParam("rate").value(), QString("2"));
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed.takeFirst(), QVariantList({"Rate", "2"}));

        device.setParam("Rate", "2");
        QCOMPARE(changed.size(), 0);
        device.setParam("Rate", "2.0");
        QCOMPARE(changed.takeFirst(), QVariantList({"Rate", "2.0"}));
    }

    void newValueIsStoredBeforeItIsReported()
    {
        Device device;
        QString seen;
        connect(&device, &BaseDevice::paramChanged,
                [&] { seen = device.getParam("rate").value(); });
        device.setParam("rate", "2");
        QCOMPARE(seen, QString("2"));
    }

    void settingAnUndeclaredParameterAlertsAndStoresNothing()
    {
        Device device;
        QSignalSpy changed(&device, &BaseDevice::paramChanged);
        QSignalSpy alerts(&device, &BaseDevice::alertRaised);
        MessageLog log;

        device.setParam("speed", "2");
        QCOMPARE(log.take(), QStringList("warning: pump: There is no parameter \"speed\""));
        QCOMPARE(alerts.size(), 1);
        QCOMPARE(alerts.first(), QVariantList({"There is no parameter \"speed\""}));
        QCOMPARE(changed.size(), 0);
        QVERIFY(!device.params().contains("speed"));
        QCOMPARE(device.paramNames(), QStringList({"Rate", "mode"}));
    }

    void errorIsLoggedReportedAndFalse()
    {
        Device device;
        QSignalSpy errors(&device, &BaseDevice::errorOccurred);
        QSignalSpy alerts(&device, &BaseDevice::alertRaised);
        MessageLog log;

        QCOMPARE(device.error("the \"valve\" is stuck"), false);
        QCOMPARE(log.take(), QStringList("warning: pump: the \"valve\" is stuck"));
        QCOMPARE(errors.size(), 1);
        QCOMPARE(errors.first(), QVariantList({"the \"valve\" is stuck"}));
        QCOMPARE(alerts.size(), 0);
    }

    void alertIsLoggedReportedAndTrue()
    {
        Device device;
        QSignalSpy errors(&device, &BaseDevice::errorOccurred);
        QSignalSpy alerts(&device, &BaseDevice::alertRaised);
        MessageLog log;

        QCOMPARE(device.alert("running hot"), true);
        QCOMPARE(log.take(), QStringList("warning: pump: running hot"));
        QCOMPARE(alerts.size(), 1);
        QCOMPARE(alerts.first(), QVariantList({"running hot"}));
        QCOMPARE(errors.size(), 0);
    }

    void bareStepsOfLifeSucceedAndSayNothing()
    {
        BaseDevice device;
        QSignalSpy changed(&device, &BaseDevice::paramChanged);
        MessageLog log;
        QCOMPARE(device.initialise(), true);
        device.postInitialisation();
        device.preShutdown();
        device.deinitialise();
        QCOMPARE(log.take(), QStringList());
        QCOMPARE(changed.size(), 0);
        QVERIFY(device.params().isEmpty());
    }

    void onlyTheHostSetsTheRunningFlag()
    {
        Device device;
        QVERIFY(!device.isRunning());
        device.initialise();
        device.postInitialisation();
        QVERIFY(!device.isRunning());
        device.setRunning(true);
        device.preShutdown();
        device.deinitialise();
        QVERIFY(device.isRunning());
        device.setRunning(false);
        QVERIFY(!device.isRunning());
    }

    void sendParamChangedTellsAllInTheOrderOfDeclaration()
    {
        Device device;
        device.setParam("rate", "3");
        QSignalSpy changed(&device, &BaseDevice::paramChanged);
        device.sendParamChanged();
        QCOMPARE(changed.size(), 2);
        QCOMPARE(changed.at(0), QVariantList({"Rate", "3"}));
        QCOMPARE(changed.at(1), QVariantList({"mode", "a"}));
    }

    void changedDescriptionIsReported()
    {
        Device device;
        QSignalSpy changed(&device, &BaseDevice::descriptionChanged);
        QCOMPARE(device.description(), QString());
        device.setDescription("");
        QCOMPARE(changed.size(), 0);
        device.setDescription("water");
        device.setDescription("water");
        QCOMPARE(device.description(), QString("water"));
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed.first(), QVariantList({"water"}));
    }

    void objectNameIsTheQObjectsName()
    {
        Device device;
        QCOMPARE(device.getObjectName(), QString("pump"));
        device.setObjectName("valve");
        const NamedObject& named = device;
        QCOMPARE(named.getObjectName(), QString("valve"));
    }

    void incomingConnectionsAreListedOldestFirst()
    {
        Device device;
        QCOMPARE(device.getIncomingConnections(), QStringList());
        ConnectionPoint& point = device;
        point.addSignal("cpu.memory(double)");
        point.addSignal("cpu.memory(double)");
        point.addSignal("button.toggled(bool)");
        QCOMPARE(device.getIncomingConnections(),
                 QStringList({"cpu.memory(double)", "cpu.memory(double)", "button.toggled(bool)"}));
    }
};

NORVO_GUILESS_TEST(tst_BaseDevice)

#include "tst_BaseDevice.moc"
