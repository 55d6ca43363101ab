// SPDX-License-Identifier: GPL-3.0-or-later

#include "QmlKinds.h"
#include "QmlOwner.h"

#include "Recorder.h"
#include "TestMain.h"

#include <QtTest>

class tst_QmlDeviceImplValues : public QObject
{
    Q_OBJECT

private slots:
    void valueArrivesInQml_data();
    void valueArrivesInQml();
    void twoArgumentsArrive();
    void typedArgumentsArriveAsTheyAre();
    void typedSignalsLeaveAsTheyAre();
    void untypedSignalReadsAs_data();
    void untypedSignalReadsAs();
};

void tst_QmlDeviceImplValues::valueArrivesInQml_data()
{
    QTest::addColumn<QString>("signal");
    QTest::addColumn<QString>("slot");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("seen");
    const QVariant array = QVariant::fromValue(DoubleVec{1, 2.5, -3});
    QTest::newRow("number") << "number(double)"
                            << "input(double)" << QVariant(1.5) << "number 1.5";
    QTest::newRow("text") << "text(QString)"
                          << "input(QString)" << QVariant("1.5") << "string 1.5";
    QTest::newRow("true") << "flag(bool)"
                          << "input(bool)" << QVariant(true) << "boolean true";
    QTest::newRow("whole") << "whole(int)"
                           << "input(int)" << QVariant(-7) << "number -7";
    QTest::newRow("array") << "array(DoubleVec)"
                           << "input(DoubleVec)" << array << "array of number 1,2.5,-3";
    QTest::newRow("empty array") << "array(DoubleVec)"
                                 << "input(DoubleVec)" << QVariant::fromValue(DoubleVec())
                                 << "array of undefined ";
    QTest::newRow("bytes") << "bytes(QByteArray)"
                           << "input(QByteArray)" << QVariant(QByteArray("A\xff\0", 3))
                           << "array of number 65,255,0";
    QTest::newRow("any number") << "any(QVariant)"
                                << "input(QVariant)" << QVariant(2.5) << "number 2.5";
    QTest::newRow("any array") << "any(QVariant)"
                               << "input(QVariant)" << array << "array of number 1,2.5,-3";
}

void tst_QmlDeviceImplValues::valueArrivesInQml()
{
    QFETCH(QString, signal);
    QFETCH(QString, slot);
    QFETCH(QVariant, value);
    QFETCH(QString, seen);
    QmlOwner owner;
    QCOMPARE(
        owner.loadBody("property string seen\n"
                       "function input(v) { seen = (Array.isArray(v) ? 'array of ' + typeof v[0] "
                       ": typeof v) + ' ' + v }"),
        QString());
    Kinds kinds;
    QVERIFY(connect(&kinds, ("2" + signal.toUtf8()).constData(), owner.receiver(slot),
                    ("1" + slot.toUtf8()).constData()));
    const int index = kinds.metaObject()->indexOfSignal(signal.toUtf8());
    void* arguments[] = {nullptr, signal.startsWith("any") ? &value : value.data()};
    kinds.qt_metacall(QMetaObject::InvokeMetaMethod, index, arguments);
    QCOMPARE(owner.property("seen").toString(), seen);
}

void tst_QmlDeviceImplValues::twoArgumentsArrive()
{
    QmlOwner owner;
    QCOMPARE(owner.loadBody("property string seen\n"
                            "function input(v, name) { seen = name + ' ' + typeof v + v }"),
             QString());
    Kinds kinds;
    QVERIFY(connect(&kinds, SIGNAL(named(double, QString)), owner.receiver("input(double,QString)"),
                    SLOT(input(double, QString))));
    emit kinds.named(2.5, "pump");
    QCOMPARE(owner.property("seen").toString(), QString("pump number2.5"));
}

void tst_QmlDeviceImplValues::typedArgumentsArriveAsTheyAre()
{
    QmlOwner owner;
    QCOMPARE(owner.loadBody("property string seen\n"
                            "function input(v: real, name: string): string {\n"
                            "    seen = typeof v + typeof name + v + name; return 'an answer' }"),
             QString());
    Kinds kinds;
    QVERIFY(connect(&kinds, SIGNAL(named(double, QString)), owner.receiver("input"),
                    SLOT(input(double, QString))));
    emit kinds.named(2.5, "pump");
    QCOMPARE(owner.property("seen").toString(), QString("numberstring2.5pump"));
}

void tst_QmlDeviceImplValues::typedSignalsLeaveAsTheyAre()
{
    QmlOwner owner;
    QCOMPARE(owner.loadBody("signal number(real v)\nsignal text(string v)\nsignal flag(bool v)\n"
                            "signal whole(int v)\nsignal several(int a, bool b, string c)\n"
                            "signal color(color c)\n"
                            "function go() { number(1.5); text('t'); flag(true); whole(-7);\n"
                            "    several(1, false, 'c'); color('#ff0000') }"),
             QString());
    Recorder heard(owner.provider("number"), QObject::staticMetaObject);
    QVERIFY(QMetaObject::invokeMethod(owner.receiver("go"), "go"));
    QCOMPARE(heard.take(), QStringList({"number(1.5)", "text(\"t\")", "flag(true)", "whole(-7)",
                                        "several(1, false, \"c\")", "color(#ff0000)"}));
}

void tst_QmlDeviceImplValues::untypedSignalReadsAs_data()
{
    QTest::addColumn<QString>("sent");
    QTest::addColumn<QStringList>("taken");
    const auto row = [](const char* sent, const QStringList& taken) {
        QTest::newRow(sent) << sent << taken;
    };
    row("1.5", {"QVariant double 1.5", "double 1.5", "QString 1.5", "bool true", "int 1"});
    row("0", {"QVariant int 0", "double 0", "QString 0", "bool false", "int 0"});
    row("1e300", {"QVariant double 1e+300", "double 1e+300", "QString 1e+300", "bool true",
                  "int 2147483647"});
    row("NaN", {"QVariant double nan", "double nan", "QString nan", "bool true"});
    row("true", {"QVariant bool true", "double 1", "QString true", "bool true", "int 1"});
    row("'-2.5'", {"QVariant QString -2.5", "double -2.5", "QString -2.5", "int -2"});
    row("' 7\\t'", {"QVariant QString  7\t", "double 7", "QString  7\t", "int 7"});
    row("'false'", {"QVariant QString false", "QString false", "bool false"});
    row("'on'", {"QVariant QString on", "QString on"});
    row("[1, 2.5, '3', 'x']", {"QVariant QVariantList ", "DoubleVec 1 2.5 3 nan"});
    row("[]", {"QVariant QVariantList ", "DoubleVec "});
    row("({a: 1})", {"QVariant QVariantMap "});
    row("undefined", {"QVariant  "});
}

void tst_QmlDeviceImplValues::untypedSignalReadsAs()
{
    QFETCH(QString, sent);
    QFETCH(QStringList, taken);
    QmlOwner owner;
    QCOMPARE(owner.loadBody("signal output(var v)\nfunction go() { output(" + sent + ") }"),
             QString());
    Kinds kinds;
    QObject* const provider = owner.provider("output");
    QVERIFY(connect(provider, SIGNAL(output(QVariant)), &kinds, SLOT(takeAny(QVariant))));
    QVERIFY(connect(provider, SIGNAL(output(DoubleVec)), &kinds, SLOT(takeArray(DoubleVec))));
    QVERIFY(connect(provider, SIGNAL(output(double)), &kinds, SLOT(takeNumber(double))));
    QVERIFY(connect(provider, SIGNAL(output(QString)), &kinds, SLOT(takeText(QString))));
    QVERIFY(connect(provider, SIGNAL(output(bool)), &kinds, SLOT(takeFlag(bool))));
    QVERIFY(connect(provider, SIGNAL(output(int)), &kinds, SLOT(takeWhole(int))));
    QVERIFY(QMetaObject::invokeMethod(owner.receiver("go"), "go"));
    QCOMPARE(kinds.taken, taken);
}

NORVO_TEST(tst_QmlDeviceImplValues)
#include "tst_QmlDeviceImplValues.moc"
