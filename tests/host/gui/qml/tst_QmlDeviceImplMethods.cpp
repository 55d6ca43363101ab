// SPDX-License-Identifier: GPL-3.0-or-later

#include "QmlKinds.h"
#include "QmlOwner.h"
#include "TestMain.h"

#include <QtTest>

class tst_QmlDeviceImplMethods : public QObject
{
    Q_OBJECT

private slots:
    void listHoldsTheItemsOwnMethods();
    void listHoldsThoseOfTheFileBeneath();
    void redeclaredFunctionCountsOnce();
    void nameKeepsItsOverloadsOnly();
    void bareNameGivesTheFirstDeclared();
    void signatureIsNormalised();
    void unknownNamesGiveNothing();
    void severalReceiversHearInTheOrderOfTheirWires();
    void receiversHearTheDevicesName();
    void queuedWiresCarryEveryKind();
    void wiresStandWhileTheMethodsStayTheSame();
    void wiresGoWithTheItem();
};

void tst_QmlDeviceImplMethods::listHoldsTheItemsOwnMethods()
{
    QmlOwner owner;
    QCOMPARE(owner.loadBody("property real level: 1\n"
                            "property alias wide: owner.width\n"
                            "Item { id: owner }\n"
                            "signal output(real v)\n"
                            "signal several(int a, bool b, string c)\n"
                            "signal pressed()\n"
                            "signal free(var v)\n"
                            "signal pair(var a, string b)\n"
                            "function input(v) {}\n"
                            "function reset() {}\n"
                            "function both(a, b) {}\n"
                            "function typed(a: real, b: string): int { return 1 }"),
             QString());
    QCOMPARE(owner.impl.grabMethods({}, QMetaMethod::Signal, true),
             QStringList({"output(double)", "several(int,bool,QString)", "pressed()",
                          "free(QVariant)", "free(DoubleVec)", "free(double)", "free(QString)",
                          "free(bool)", "free(int)", "pair(QVariant,QString)"}));
    QCOMPARE(
        owner.impl.grabMethods({}, QMetaMethod::Slot, true),
        QStringList({"input(double)", "input(QString)", "input(bool)", "input(int)",
                     "input(DoubleVec)", "input(QByteArray)", "input(QVariant)", "reset()",
                     "both(double,QString)", "both(QString,QString)", "both(bool,QString)",
                     "both(int,QString)", "both(DoubleVec,QString)", "both(QByteArray,QString)",
                     "both(QVariant,QVariant)", "typed(double,QString)"}));
    QCOMPARE(owner.impl.grabMethods({}, QMetaMethod::Constructor, true), QStringList());
}

void tst_QmlDeviceImplMethods::listHoldsThoseOfTheFileBeneath()
{
    QTemporaryDir folder;
    const auto write = [&folder](const QString& name, const QByteArray& code) {
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("import QtQuick 2.0\n" + code);
    };
    write("Base.qml", "Item { property int level; signal output(real v); function reset() {} }");
    write("Face.qml", "Base { signal pressed(); function reset() { pressed() } }");
    QmlOwner owner;
    QCOMPARE(owner.loadFile(folder.filePath("Face.qml")), QString());
    QCOMPARE(owner.impl.grabMethods({}, QMetaMethod::Signal, true),
             QStringList({"output(double)", "pressed()"}));
    QCOMPARE(owner.impl.grabMethods({}, QMetaMethod::Slot, true), QStringList("reset()"));
    QSignalSpy pressed(owner.provider("pressed"), SIGNAL(pressed()));
    QVERIFY(QMetaObject::invokeMethod(owner.receiver("reset"), "reset"));
    QCOMPARE(pressed.count(), 1);
}

void tst_QmlDeviceImplMethods::nameKeepsItsOverloadsOnly()
{
    QmlOwner owner;
    QCOMPARE(owner.loadBody("signal output(real v)\nsignal free(var v)\nfunction reset() {}\n"
                            "function free2(v) {}"),
             QString());
    QCOMPARE(owner.impl.grabMethods("output", QMetaMethod::Signal, false),
             QStringList("output(double)"));
    QCOMPARE(owner.impl.grabMethods("free", QMetaMethod::Signal, false).size(), 6);
    QCOMPARE(owner.impl.grabMethods("reset", QMetaMethod::Signal, false), QStringList());
    QCOMPARE(owner.impl.grabMethods("reset", QMetaMethod::Slot, false), QStringList("reset()"));
}

void tst_QmlDeviceImplMethods::redeclaredFunctionCountsOnce()
{
    QTemporaryDir folder;
    const auto write = [&folder](const QString& name, const QByteArray& body) {
        QFile file(folder.filePath(name));
        file.open(QIODevice::WriteOnly);
        file.write("import QtQuick 2.0\n" + body);
    };
    write("Base.qml", "Item { property int taken\nfunction input(v) { taken = 1 } }\n");
    write("Face.qml", "Base { function input(v) { taken = 2 } }\n");
    QmlOwner owner;
    QCOMPARE(owner.loadFile(folder.filePath("Face.qml")), QString());
    QCOMPARE(owner.impl.grabMethods("input", QMetaMethod::Slot, true).size(), 7);
    QVERIFY(QMetaObject::invokeMethod(owner.receiver("input"), "input", Q_ARG(double, 1)));
    QCOMPARE(owner.property("taken").toInt(), 2);
}

void tst_QmlDeviceImplMethods::bareNameGivesTheFirstDeclared()
{
    QmlOwner owner;
    QCOMPARE(owner.loadBody("signal free(var v)\nfunction input(v) {}"), QString());
    QString signature;
    QVERIFY(owner.impl.getSignalWrapper("free", signature));
    QCOMPARE(signature, QString("free(QVariant)"));
    QVERIFY(owner.impl.getSlotWrapper("input", signature));
    QCOMPARE(signature, QString("input(double)"));
}

void tst_QmlDeviceImplMethods::signatureIsNormalised()
{
    QmlOwner owner;
    QCOMPARE(owner.loadBody("function input(v) {}"), QString());
    QString signature;
    QVERIFY(owner.impl.getSlotWrapper("input( const QString & )", signature));
    QCOMPARE(signature, QString("input(QString)"));
}

void tst_QmlDeviceImplMethods::unknownNamesGiveNothing()
{
    QmlOwner owner;
    QString signature = "left over";
    QVERIFY(!owner.impl.getSignalWrapper("output", signature)); // nothing is loaded
    QCOMPARE(signature, QString());
    QCOMPARE(owner.loadBody("property int level\nsignal output(real v)\nfunction input(v) {}"),
             QString());
    for (const QString name : {"missing", "output(int)", "input", "levelChanged", "destroyed",
                               "widthChanged", "objectNameChanged(QString)", ""}) {
        signature = "left over";
        QVERIFY2(!owner.impl.getSignalWrapper(name, signature), qPrintable(name));
        QCOMPARE(signature, QString());
    }
    for (const QString name : {"missing", "output", "deleteLater", "deleteLater()", "update()"}) {
        signature = "left over";
        QVERIFY2(!owner.impl.getSlotWrapper(name, signature), qPrintable(name));
        QCOMPARE(signature, QString());
    }
}

void tst_QmlDeviceImplMethods::severalReceiversHearInTheOrderOfTheirWires()
{
    QmlOwner owner;
    QCOMPARE(owner.loadBody("signal output(real v)\nfunction input(v) { output(v) }"), QString());
    Kinds kinds;
    QObject* const provider = owner.provider("output");
    QVERIFY(connect(provider, SIGNAL(output(double)), &kinds, SLOT(takeNumber(double))));
    QVERIFY(connect(provider, SIGNAL(output(double)), &kinds, SLOT(takeSender(double))));
    QVERIFY(connect(provider, SIGNAL(output(double)), &kinds, SLOT(takeNumber(double))));
    QVERIFY(connect(&kinds, SIGNAL(number(double)), owner.receiver("input"), SLOT(input(double))));
    emit kinds.number(3);
    QCOMPARE(kinds.taken, QStringList({"double 3", "face", "double 3"}));
}

void tst_QmlDeviceImplMethods::receiversHearTheDevicesName()
{
    QmlOwner owner;
    QCOMPARE(owner.loadBody("signal output(real v)\nfunction input(v) { output(v) }"), QString());
    owner.setObjectName("renamed");
    QCOMPARE(owner.provider("output")->objectName(), QString("renamed"));
    QCOMPARE(owner.receiver("input")->objectName(), QString("renamed"));
    Kinds kinds;
    QVERIFY(connect(owner.provider("output"), SIGNAL(output(double)), &kinds,
                    SLOT(takeSender(double))));
    QVERIFY(QMetaObject::invokeMethod(owner.receiver("input"), "input", Q_ARG(double, 1)));
    QCOMPARE(kinds.taken, QStringList("renamed"));
}

void tst_QmlDeviceImplMethods::queuedWiresCarryEveryKind()
{
    qRegisterMetaType<DoubleVec>();
    QmlOwner owner;
    QCOMPARE(owner.loadBody("signal output(var v)\nfunction input(v) { output(v) }"), QString());
    Kinds kinds;
    QObject* const wrapper = owner.receiver("input");
    QVERIFY(connect(&kinds, SIGNAL(array(DoubleVec)), wrapper, SLOT(input(DoubleVec)),
                    Qt::QueuedConnection));
    QVERIFY(connect(wrapper, SIGNAL(output(DoubleVec)), &kinds, SLOT(takeArray(DoubleVec)),
                    Qt::QueuedConnection));
    emit kinds.array({4, 5});
    QCOMPARE(kinds.taken, QStringList());
    QTRY_COMPARE(kinds.taken, QStringList("DoubleVec 4 5"));
}

void tst_QmlDeviceImplMethods::wiresStandWhileTheMethodsStayTheSame()
{
    const QString body = "signal output(real v)\nfunction input(v) { output(%1 * v) }";
    QmlOwner owner;
    QCOMPARE(owner.loadBody(body.arg(2)), QString());
    QVERIFY(owner.haveMethodsChanged);
    Kinds kinds;
    QVERIFY(connect(owner.provider("output"), SIGNAL(output(double)), &kinds,
                    SLOT(takeNumber(double))));
    QVERIFY(connect(&kinds, SIGNAL(number(double)), owner.receiver("input"), SLOT(input(double))));
    QCOMPARE(owner.loadBody(body.arg(3)), QString());
    QVERIFY(!owner.haveMethodsChanged);
    emit kinds.number(1);
    QCOMPARE(kinds.taken, QStringList("double 3"));
    // A property more, and Qt counts the methods from another number on.
    QCOMPARE(owner.loadBody("property int more\n" + body.arg(4)), QString());
    QVERIFY(!owner.haveMethodsChanged);
    emit kinds.number(1);
    QCOMPARE(kinds.taken, QStringList({"double 3", "double 4"}));
}

void tst_QmlDeviceImplMethods::wiresGoWithTheItem()
{
    QmlOwner owner;
    QCOMPARE(owner.loadBody("signal output(real v)\nfunction input(v) { output(v) }"), QString());
    Kinds kinds;
    const QPointer<QObject> wrapper = owner.provider("output");
    QVERIFY(connect(wrapper, SIGNAL(output(double)), &kinds, SLOT(takeNumber(double))));
    QVERIFY(connect(&kinds, SIGNAL(number(double)), wrapper, SLOT(input(double))));
    delete owner.impl.getItem();
    emit kinds.number(1); // no item takes it
    QCOMPARE(kinds.taken, QStringList());
    owner.impl.deinit();
    QVERIFY(!wrapper);
    emit kinds.number(1);
    QCOMPARE(kinds.taken, QStringList());
}

NORVO_TEST(tst_QmlDeviceImplMethods)
#include "tst_QmlDeviceImplMethods.moc"
