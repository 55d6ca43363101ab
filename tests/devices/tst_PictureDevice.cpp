// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"

#include "devices/PictureDevice.h"
#include "TestMain.h"

#include <QtTest>

class tst_PictureDevice : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsParameters();
    void declaresNoSignalsAndNoSlots();
    void initialiseSucceedsWhateverTheParameters();
};

void tst_PictureDevice::declaresItsParameters()
{
    PictureDevice device;
    QCOMPARE(parameterTable(device),
             QStringList({"widget/filename = ", "widget/width = 0", "widget/height = 0"}));
}

void tst_PictureDevice::declaresNoSignalsAndNoSlots()
{
    QCOMPARE(methodTable(PictureDevice::staticMetaObject), QStringList());
}

void tst_PictureDevice::initialiseSucceedsWhateverTheParameters()
{
    PictureDevice device;
    device.setParam("widget/filename", "no/such/file.png");
    device.setParam("widget/width", "wide");
    QVERIFY(device.initialise());
}

NORVO_TEST(tst_PictureDevice)
#include "tst_PictureDevice.moc"
