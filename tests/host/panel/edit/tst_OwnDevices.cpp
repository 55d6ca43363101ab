// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/edit/OwnDevices.h"
#include "host/panel/edit/PanelTree.h"
#include "TestMain.h"

#include <QtTest>

using norvo::OwnDevices;
using norvo::YamlEdit;

/// What is found in texts that are no panel yet, too.
class tst_OwnDevices : public QObject
{
    Q_OBJECT

private slots:
    void firstOfTwoOfOneIdIsMeant();
    void listOfDevicesHasNone();
    void ownerIsTheDeviceOrTheUseThatMadeIt();
};

void tst_OwnDevices::firstOfTwoOfOneIdIsMeant()
{
    const YamlEdit edit("devices:\n  a: {device: first}\n  a: {device: second}\n");
    const OwnDevices devices(edit);
    QVERIFY(devices.find("a"));
    QCOMPARE(norvo::PanelTree::valueOf(devices.find("a"), "device")->text, QString("first"));
}

void tst_OwnDevices::listOfDevicesHasNone()
{
    const YamlEdit edit("devices: [a, b]\n");
    const OwnDevices devices(edit);
    QVERIFY(!devices.find("a"));
    QCOMPARE(devices.ownerOf("a"), QString());
}

void tst_OwnDevices::ownerIsTheDeviceOrTheUseThatMadeIt()
{
    const YamlEdit edit("devices:\n  a: {device: x}\n  left-pump: {use: pump}\n");
    const OwnDevices devices(edit);
    QCOMPARE(devices.ownerOf("a"), QString("a"));
    QCOMPARE(devices.ownerOf("left-pump-lamp"), QString("left-pump"));
    QCOMPARE(devices.ownerOf("a-lamp"), QString());
}

NORVO_TEST(tst_OwnDevices)
#include "tst_OwnDevices.moc"
