// SPDX-License-Identifier: GPL-3.0-or-later

#include "QmlOwner.h"

#include "MessageLog.h"
#include "TestMain.h"

#include <QtTest>

class tst_QmlDeviceImplErrors : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(m_folder.isValid()); }

    void textThatDoesNotLoadIsReported_data();
    void textThatDoesNotLoadIsReported();
    void fileThatDoesNotLoadIsReported();
    void errorInAFileBeneathNamesThatFile();
    void nothingOfABadDocumentStays();
    void errorInAHandlerIsReportedAndTheRestRunsOn();
    void errorWhileLoadingIsReportedAndTheItemStands();

private:
    QString file(const QString& name, const QByteArray& text)
    {
        QFile out(m_folder.filePath(name));
        out.open(QIODevice::WriteOnly);
        out.write(text);
        return out.fileName();
    }

    QTemporaryDir m_folder;
};

void tst_QmlDeviceImplErrors::textThatDoesNotLoadIsReported_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("error");
    const auto row = [](const char* name, const char* code, const QString& error) {
        QTest::newRow(name) << QString(code) << "sourceCode:" + error;
    };
    row("empty text", "", " File is empty");
    row("syntax", "import QtQuick 2.0\nItem {\n  width: 3 +\n}\n",
        "4:1: Expected token `numeric literal'");
    row("unknown property", "import QtQuick 2.0\nItem {\n    wide: 3\n}\n",
        "3:5: Cannot assign to non-existent property \"wide\"");
    row("unknown type", "import QtQuick 2.0\nItem { Knob {} }\n", "2:8: Knob is not a type");
    row("missing import", "import QtQuick 2.0\nimport No.Such 1.0\nItem {}\n",
        "2:1: module \"No.Such\" is not installed");
    row("two errors", "import No.Such 1.0\nimport Nor.This 1.0\nItem {}\n",
        "2:1: module \"Nor.This\" is not installed; sourceCode:1:1: module \"No.Such\" is not "
        "installed");
    row("root is an object", "import QtQml 2.0\n\n  QtObject {}\n",
        "3:3: the root object must be an Item, and QtObject is none");
    row("root behind remarks",
        "/* Item\n */ import QtQml 2.0; import \".\" as Here // Item {\n// }\nQtObject {}\n",
        "4:1: the root object must be an Item, and QtObject is none");
    row("root on the line of its import", "import QtQml 2.0; /* a\nb */ QtObject {}",
        "2:6: the root object must be an Item, and QtObject is none");
    row("root with a property", "import QtQml 2.0 as Q; Q.Timer { property int a }\n",
        "1:24: the root object must be an Item, and Q.Timer is none");
}

void tst_QmlDeviceImplErrors::textThatDoesNotLoadIsReported()
{
    QFETCH(QString, code);
    QFETCH(QString, error);
    QmlOwner owner;
    QCOMPARE(owner.load(code), error);
    QVERIFY(!owner.impl.isInitialised());
}

void tst_QmlDeviceImplErrors::fileThatDoesNotLoadIsReported()
{
    QmlOwner owner;
    QCOMPARE(owner.loadFile("no/such.qml"), QString("no/such.qml: No such file or directory"));
    const QString path = file("bad.qml", "import QtQuick 2.0\nItem {\n    wide: 3\n}\n");
    const QString relative = QDir::current().relativeFilePath(path);
    QCOMPARE(owner.loadFile(relative),
             relative + ":3:5: Cannot assign to non-existent property \"wide\"");
    QVERIFY(owner.loadFile(m_folder.path()).startsWith(m_folder.path() + ": "));
    QCOMPARE(owner.loadFile(file("object.qml", "import QtQml 2.0\nQtObject {}\n")),
             m_folder.filePath("object.qml") +
                 ":2:1: the root object must be an Item, and QtObject is none");
}

void tst_QmlDeviceImplErrors::errorInAFileBeneathNamesThatFile()
{
    const QString beneath = file("Beneath.qml", "import QtQuick 2.0\nItem {\n  wide: 3 }\n");
    const QString face = file("Face.qml", "import QtQuick 2.0\nBeneath {}\n");
    QmlOwner owner;
    QCOMPARE(owner.loadFile(face), face + ":2:1: Type Beneath unavailable; " + beneath +
                                       ":3:3: Cannot assign to non-existent property \"wide\"");
}

void tst_QmlDeviceImplErrors::nothingOfABadDocumentStays()
{
    QmlOwner owner;
    QCOMPARE(owner.loadBody("signal output(real v)"), QString());
    const QPointer<QQuickItem> good = owner.impl.getItem();
    QVERIFY(!owner.load("import QtQml 2.0\nQtObject { signal output(real v) }\n").isEmpty());
    QVERIFY(owner.haveMethodsChanged);
    QVERIFY(!owner.impl.isInitialised());
    QVERIFY(!owner.impl.getItem());
    QVERIFY(!owner.provider("output"));
    QCOMPARE(owner.impl.grabMethods({}, QMetaMethod::Signal, true), QStringList());
    QTRY_VERIFY(!good);
    QVERIFY(!owner.load("Item {").isEmpty());
    QVERIFY(!owner.haveMethodsChanged);
    QCOMPARE(owner.loadBody("signal output(real v)"), QString());
    QVERIFY(owner.haveMethodsChanged);
    QVERIFY(owner.provider("output"));
}

void tst_QmlDeviceImplErrors::errorInAHandlerIsReportedAndTheRestRunsOn()
{
    QmlOwner owner;
    const QString path = file("throws.qml", "import QtQuick 2.0\n"
                                            "Item {\n"
                                            "    signal output(real v)\n"
                                            "    function input(v) {\n"
                                            "        if (v < 0)\n"
                                            "            missing.call()\n"
                                            "        output(v)\n"
                                            "    }\n"
                                            "    onOutput: if (v > 9) throw new Error('too much')\n"
                                            "}\n");
    QCOMPARE(owner.loadFile(path), QString());
    QSignalSpy heard(owner.provider("output"), SIGNAL(output(double)));
    QSignalSpy alerts(&owner, &BaseDevice::alertRaised);
    QObject* const receiver = owner.receiver("input(double)");
    MessageLog log;
    QVERIFY(QMetaObject::invokeMethod(receiver, "input", Q_ARG(double, -1)));
    QCOMPARE(log.take(),
             QStringList("warning: face: " + path + ":6: ReferenceError: missing is not defined"));
    QCOMPARE(alerts.count(), 1);
    QVERIFY(QMetaObject::invokeMethod(receiver, "input", Q_ARG(double, 10)));
    QCOMPARE(log.take(), QStringList("warning: face: " + path + ":9: Error: too much"));
    QCOMPARE(heard.count(), 1);
    QVERIFY(QMetaObject::invokeMethod(receiver, "input", Q_ARG(double, 5)));
    QCOMPARE(heard.count(), 2);
    QCOMPARE(log.take(), QStringList());
}

void tst_QmlDeviceImplErrors::errorWhileLoadingIsReportedAndTheItemStands()
{
    QmlOwner owner;
    MessageLog log;
    QCOMPARE(owner.loadBody("width: missing.width"), QString());
    QCOMPARE(log.take(),
             QStringList("warning: face: sourceCode:3: ReferenceError: missing is not defined"));
    QVERIFY(owner.impl.isInitialised());
}

NORVO_TEST(tst_QmlDeviceImplErrors)
#include "tst_QmlDeviceImplErrors.moc"
