// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"

#include "devices/OutputVector.h"
#include "norvo/BaseWidget.h"
#include "ArrayColumn.h"
#include "TestMain.h"

#include <QtTest>

#include <memory>

class tst_OutputVector : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsParameters();
    void declaresItsSignalsAndSlots();
    void nameIsTheDescription();
    void emptyNameIsTheObjectNameAndWrittenBack();
    void badParameterFailsAfterTheNameIsSet();
    void arraysPassUnchangedAndUncopied_data();
    void arraysPassUnchangedAndUncopied();
    void whileNotRunningArraysAreDropped();
    void queuedWireCarriesArrays();
    void createsAWidgetWithoutParent();
};

void tst_OutputVector::declaresItsParameters()
{
    OutputVector device;
    QCOMPARE(parameterTable(device),
             QStringList({"name = ", "widget/minValue = 0", "widget/maxValue = 1",
                          "widget/fillArea = true"}));
}

void tst_OutputVector::declaresItsSignalsAndSlots()
{
    QCOMPARE(methodTable(OutputVector::staticMetaObject),
             QStringList({"signal output(DoubleVec)", "slot input(DoubleVec)"}));
}

void tst_OutputVector::nameIsTheDescription()
{
    OutputVector device;
    device.setObjectName("spectrum");
    device.setParam("name", "Spectrum of the noise");
    QVERIFY(device.initialise());
    QCOMPARE(device.description(), QString("Spectrum of the noise"));
}

void tst_OutputVector::emptyNameIsTheObjectNameAndWrittenBack()
{
    OutputVector device;
    device.setObjectName("spectrum");
    QSignalSpy changes(&device, &BaseDevice::paramChanged);
    QVERIFY(device.initialise());
    QCOMPARE(device.description(), QString("spectrum"));
    QCOMPARE(changes, QList<QVariantList>({{"name", "spectrum"}}));
}

void tst_OutputVector::badParameterFailsAfterTheNameIsSet()
{
    OutputVector device;
    device.setParam("name", "Spectrum");
    device.setParam("widget/fillArea", "perhaps");
    QVERIFY(!device.initialise());
    QCOMPARE(device.description(), QString("Spectrum"));
}

void tst_OutputVector::arraysPassUnchangedAndUncopied_data()
{
    QTest::addColumn<ArrayColumn>("array");
    QTest::newRow("some") << ArrayColumn{DoubleVec{1, -2.5, 1e308}};
    QTest::newRow("one") << ArrayColumn{DoubleVec{0.5}};
    QTest::newRow("none") << ArrayColumn{DoubleVec()};
    QTest::newRow("a million") << ArrayColumn{DoubleVec(1000000, 0.25)};
}

void tst_OutputVector::arraysPassUnchangedAndUncopied()
{
    QFETCH(ArrayColumn, array);
    OutputVector device;
    device.setRunning(device.initialise());
    QVector<DoubleVec> passed;
    connect(&device, &OutputVector::output, this, [&](DoubleVec data) { passed.append(data); });
    device.input(array.values);
    QCOMPARE(passed.size(), 1);
    QCOMPARE(passed.first(), array.values);
    QCOMPARE(passed.first().constData(), array.values.constData());
}

void tst_OutputVector::whileNotRunningArraysAreDropped()
{
    OutputVector device;
    QVERIFY(device.initialise());
    QSignalSpy output(&device, &OutputVector::output);
    device.input({1, 2});
    QCOMPARE(output.size(), 0);
    device.setRunning(true);
    device.input({1, 2});
    device.setRunning(false);
    device.input({1, 2});
    QCOMPARE(output.size(), 1);
}

void tst_OutputVector::queuedWireCarriesArrays()
{
    OutputVector first;
    OutputVector second;
    first.setRunning(true);
    second.setRunning(true);
    QVERIFY(connect(&first, SIGNAL(output(DoubleVec)), &second, SLOT(input(DoubleVec)),
                    Qt::QueuedConnection));
    QSignalSpy output(&second, &OutputVector::output);
    first.input({1, 2, 3});
    QCOMPARE(output.size(), 0);
    QTRY_COMPARE(output.size(), 1);
    QCOMPARE(output.first().first().value<DoubleVec>(), DoubleVec({1, 2, 3}));
}

void tst_OutputVector::createsAWidgetWithoutParent()
{
    OutputVector device;
    const std::unique_ptr<BaseWidget> widget(device.createWidget());
    QVERIFY(widget);
    QVERIFY(!widget->parent());
    QCOMPARE(widget->metaObject()->className(), "VectorGraphWidget");
}

NORVO_TEST(tst_OutputVector)
#include "tst_OutputVector.moc"
