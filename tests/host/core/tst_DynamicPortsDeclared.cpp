// SPDX-License-Identifier: GPL-3.0-or-later

#include "norvo/DynamicPorts.h"

#include "norvo/DoubleVec.h"
#include "TestMain.h"

#include <QtTest>

/// Which ports an object has, and how they are found.
class tst_DynamicPortsDeclared : public QObject
{
    Q_OBJECT

private slots:
    void hasNoPortsBeforeTheyAreBuilt();
    void portsAreListedInTheOrderOfDeclaration();
    void methodsKnowTheirArguments();
    void nameOrSignatureFindsAPort();
    void secondPortOfOneSignatureIsRefused();
    void typeUnknownToQtIsRefused();
    void nothingIsDeclaredOnceBuilt();
    void manyPortsInOneObject();
    void portsBeyondTheLimitAreRefused();
};

void tst_DynamicPortsDeclared::hasNoPortsBeforeTheyAreBuilt()
{
    DynamicPorts ports;
    QCOMPARE(ports.addSignal<double>("x"), 0);
    QCOMPARE(ports.metaObject(), &QObject::staticMetaObject);
    ports.build();
    QCOMPARE(ports.metaObject()->superClass(), &QObject::staticMetaObject);
    QCOMPARE(ports.metaObject()->className(), "DynamicPorts");
    QVERIFY(ports.inherits("QObject"));
}

void tst_DynamicPortsDeclared::portsAreListedInTheOrderOfDeclaration()
{
    DynamicPorts ports;
    QVERIFY(ports.addSlot("set", {QMetaType::Double}, [](void**) {}));
    QCOMPARE(ports.addSignal<double>("x"), 0);
    QCOMPARE(ports.addSignal<QString>("x"), 1);
    QVERIFY(ports.addSlot("set", [] {}));
    QCOMPARE((ports.addSignal<int, DoubleVec>("y")), 2);
    ports.build();
    QCOMPARE(ports.signatures({}, QMetaMethod::Signal),
             QStringList({"x(double)", "x(QString)", "y(int,DoubleVec)"}));
    QCOMPARE(ports.signatures({}, QMetaMethod::Slot), QStringList({"set(double)", "set()"}));
    QCOMPARE(ports.signatures("x", QMetaMethod::Signal), QStringList({"x(double)", "x(QString)"}));
    QCOMPARE(ports.signatures("x", QMetaMethod::Slot), QStringList());
}

void tst_DynamicPortsDeclared::methodsKnowTheirArguments()
{
    DynamicPorts ports;
    ports.addSignal("x", {QMetaType::QVariant, qMetaTypeId<DoubleVec>()});
    ports.build();
    const QMetaMethod method = ports.metaObject()->method(ports.metaObject()->methodOffset());
    QCOMPARE(method.methodType(), QMetaMethod::Signal);
    QCOMPARE(method.access(), QMetaMethod::Public);
    QCOMPARE(method.name(), QByteArray("x"));
    QCOMPARE(method.returnType(), int(QMetaType::Void));
    QCOMPARE(method.parameterTypes(), QList<QByteArray>({"QVariant", "DoubleVec"}));
    QCOMPARE(method.parameterType(0), int(QMetaType::QVariant));
    QCOMPARE(method.parameterType(1), qMetaTypeId<DoubleVec>());
    QCOMPARE(method.parameterNames(), QList<QByteArray>({"", ""}));
    QCOMPARE(method.tag(), "");
    QCOMPARE(ports.metaObject()->methodCount(), ports.metaObject()->methodOffset() + 1);
}

void tst_DynamicPortsDeclared::nameOrSignatureFindsAPort()
{
    DynamicPorts ports;
    ports.addSignal<double>("x");
    ports.addSignal<QString>("x");
    ports.addSlot<QString>("set", [](const QString&) {});
    ports.build();
    QCOMPARE(ports.signatureOf("x", QMetaMethod::Signal), QString("x(double)"));
    QCOMPARE(ports.signatureOf("x( const QString & )", QMetaMethod::Signal), QString("x(QString)"));
    for (const char* name : {"", "y", "x(int)", "set", "set(QString)", "deleteLater", "(double)"}) {
        QCOMPARE(ports.signatureOf(name, QMetaMethod::Signal), QString());
    }
    QCOMPARE(ports.signatureOf("set", QMetaMethod::Slot), QString("set(QString)"));
    QCOMPARE(ports.signatureOf("deleteLater()", QMetaMethod::Slot), QString());
}

void tst_DynamicPortsDeclared::secondPortOfOneSignatureIsRefused()
{
    DynamicPorts ports;
    QCOMPARE(ports.addSignal<double>("x"), 0);
    QCOMPARE(ports.addSignal<double>("x"), -1);
    QVERIFY(!ports.addSlot<double>("x", [](double) {}));
    QVERIFY(ports.addSlot<int>("x", [](int) {}));
    ports.build();
    QCOMPARE(ports.signatures({}, QMetaMethod::Signal), QStringList("x(double)"));
    QCOMPARE(ports.signatures({}, QMetaMethod::Slot), QStringList("x(int)"));
}

void tst_DynamicPortsDeclared::typeUnknownToQtIsRefused()
{
    DynamicPorts ports;
    QCOMPARE(ports.addSignal("x", {QMetaType::UnknownType}), -1);
    QVERIFY(!ports.addSlot("x", {QMetaType::Double, 1 << 20}, [](void**) {}));
    ports.build();
    QCOMPARE(ports.metaObject()->methodCount(), QObject::staticMetaObject.methodCount());
}

void tst_DynamicPortsDeclared::nothingIsDeclaredOnceBuilt()
{
    DynamicPorts ports;
    ports.build();
    QCOMPARE(ports.addSignal<double>("x"), -1);
    QVERIFY(!ports.addSlot("set", [] {}));
}

void tst_DynamicPortsDeclared::manyPortsInOneObject()
{
    DynamicPorts ports;
    double sum = 0;
    for (int i = 0; i < 1000; ++i) {
        const QByteArray number = QByteArray::number(i);
        QCOMPARE(ports.addSignal<double>("x" + number), i);
        ports.addSlot<double>("y" + number, [&sum, i](double v) { sum += i * v; });
    }
    ports.build();
    for (int i = 0; i < 1000; ++i) {
        const QByteArray number = QByteArray::number(i);
        QVERIFY(connect(&ports, ("2x" + number + "(double)").constData(), &ports,
                        ("1y" + number + "(double)").constData()));
    }
    for (int i = 0; i < 1000; ++i) {
        ports.send(i, 2.0);
    }
    QCOMPARE(sum, 999000.0);
}

void tst_DynamicPortsDeclared::portsBeyondTheLimitAreRefused()
{
    DynamicPorts ports;
    for (int i = 0; i < 30000; ++i) {
        const QByteArray number = QByteArray::number(i);
        QCOMPARE(ports.addSignal<>("x" + number), i);
        QVERIFY(ports.addSlot("y" + number, [] {}));
    }
    QCOMPARE(ports.addSignal<>("one"), -1);
    QVERIFY(!ports.addSlot("one", [] {}));
}

NORVO_GUILESS_TEST(tst_DynamicPortsDeclared)
#include "tst_DynamicPortsDeclared.moc"
