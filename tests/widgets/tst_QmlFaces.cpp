// SPDX-License-Identifier: GPL-3.0-or-later

#include "MessageLog.h"
#include "Stand.h"

#include "devices/QmlGuiDevice.h"
#include "TestMain.h"

#include <QQuickItem>
#include <QQuickWidget>
#include <QtTest>

namespace {

/// One of the example's faces, on view in 200 x 200.
class Face : public Stand<QmlGuiDevice>
{
public:
    explicit Face(const QString& name) : Stand({{"sourceData", "examples/qml/" + name + ".qml"}})
    {
        widget->resize(200, 200);
        widget->show();
        (void)QTest::qWaitForWindowExposed(widget.get());
    }

    QQuickWidget* view() const { return only<QQuickWidget>(); }
    QQuickItem* item() const { return view()->rootObject()->childItems().value(0); }

    QObject* provider(const QString& name)
    {
        QString signature;
        return device.getProvider(name, signature);
    }

    void send(const char* slot, double value)
    {
        QString signature;
        QObject* const receiver = device.getReceiver(QString("%1(double)").arg(slot), signature);
        QVERIFY(QMetaObject::invokeMethod(receiver, slot, Q_ARG(double, value)));
    }
};

} // namespace

/// The faces that come as examples, under the hand.
class tst_QmlFaces : public QObject
{
    Q_OBJECT

private slots:
    void knobTurnsWithTheFinger();
    void knobFollowsTheWiringAndTellsOnlyNewValues();
    void padTellsBothNumbers();
    void padReturnsToTheMiddle();
    void gaugePointsAtTheNumber();
};

void tst_QmlFaces::knobTurnsWithTheFinger()
{
    Face face("Knob");
    QSignalSpy turned(face.provider("output"), SIGNAL(output(double)));
    QTest::mousePress(face.view(), Qt::LeftButton, {}, {100, 20}); // straight up
    QCOMPARE(turned.count(), 1);
    QCOMPARE(turned[0][0].toDouble(), 50.0);
    QMouseEvent move(QEvent::MouseMove, QPointF(180, 100), Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(face.view(), &move); // to the right
    QCOMPARE(turned.count(), 2);
    QCOMPARE(turned[1][0].toDouble(), 83.0);
    QTest::mouseRelease(face.view(), Qt::LeftButton, {}, {180, 100});
    QTest::mouseClick(face.view(), Qt::LeftButton, {}, {100, 195}); // in the gap below
    QCOMPARE(turned.count(), 2);
}

void tst_QmlFaces::knobFollowsTheWiringAndTellsOnlyNewValues()
{
    Face face("Knob");
    QSignalSpy turned(face.provider("output"), SIGNAL(output(double)));
    face.send("input", 30);
    face.send("input", 30);
    face.send("input", qQNaN());
    face.send("input", 1000);
    QCOMPARE(turned.count(), 2);
    QCOMPARE(turned[0][0].toDouble(), 30.0);
    QCOMPARE(turned[1][0].toDouble(), 100.0);
}

void tst_QmlFaces::padTellsBothNumbers()
{
    Face face("Pad");
    QSignalSpy x(face.provider("outputX"), SIGNAL(outputX(double)));
    QSignalSpy y(face.provider("outputY"), SIGNAL(outputY(double)));
    QTest::mouseClick(face.view(), Qt::LeftButton, {}, {149, 51}); // the field spans 2 to 198
    QCOMPARE(x.count(), 1);
    QCOMPARE(x[0][0].toDouble(), 0.5);
    QCOMPARE(y.count(), 1);
    QCOMPARE(y[0][0].toDouble(), 0.5);
    QTRY_COMPARE(face.widget->grab().toImage().pixelColor(149, 51), QColor("#2a9d8f"));
}

void tst_QmlFaces::padReturnsToTheMiddle()
{
    Face face("Pad");
    QTest::mouseClick(face.view(), Qt::LeftButton, {}, {10, 190});
    QSignalSpy x(face.provider("outputX"), SIGNAL(outputX(double)));
    QString signature;
    QVERIFY(QMetaObject::invokeMethod(face.device.getReceiver("center", signature), "center"));
    QCOMPARE(x.count(), 1);
    QCOMPARE(x[0][0].toDouble(), 0.0);
    QTRY_COMPARE(face.widget->grab().toImage().pixelColor(100, 100), QColor("#2a9d8f"));
}

void tst_QmlFaces::gaugePointsAtTheNumber()
{
    MessageLog log;
    Face face("Gauge");
    face.send("input", 50); // straight up
    QTRY_COMPARE(face.widget->grab().toImage().pixelColor(100, 60), QColor("#e76f51"));
    face.send("input", 87.5); // to the right
    QTRY_COMPARE(face.widget->grab().toImage().pixelColor(140, 100), QColor("#e76f51"));
    QVERIFY(face.widget->grab().toImage().pixelColor(100, 60) != QColor("#e76f51"));
    QCOMPARE(log.take().filter("device: "), QStringList());
}

NORVO_TEST(tst_QmlFaces)
#include "tst_QmlFaces.moc"
