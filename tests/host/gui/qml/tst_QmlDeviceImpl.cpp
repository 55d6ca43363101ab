// SPDX-License-Identifier: GPL-3.0-or-later

#include "QmlOwner.h"

#include "MessageLog.h"
#include "TestMain.h"

#include <QQuickWindow>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

class tst_QmlDeviceImpl : public QObject
{
    Q_OBJECT

private slots:
    void softwareRendererIsChosenWithoutOpenGl();
    void startsWithoutItem();
    void loadsFromAFileBelowTheWorkingDirectory();
    void loadsFromAResource();
    void loadsFromAText();
    void textFindsFilesBelowTheWorkingDirectory();
    void unknownSourceTypeMeansTheText();
    void urlOfAFileServesAsItsName();
    void fileIsReadEachTime();
    void methodsChangeOnlyWithTheList();
    void deinitGivesTheItemUp();
    void handlerMayReplaceItsOwnDocument();
    void replacedDocumentIsHeardNoMore();
    void itemLeavesTheSceneAtOnce();
    void earlierOwnerIsForgotten();
    void worksForAnOwnerThatIsNoDevice();
    void thousandTimesCreatedAndDestroyed();
    void thousandDocumentsInOneLoader();
};

void tst_QmlDeviceImpl::softwareRendererIsChosenWithoutOpenGl()
{
    QCOMPARE(QGuiApplication::platformName(), QString("offscreen"));
    const QmlOwner owner;
    QCOMPARE(QQuickWindow::sceneGraphBackend(), QString("software"));
}

void tst_QmlDeviceImpl::startsWithoutItem()
{
    QQmlEngine engine;
    QmlDeviceImpl impl(&engine);
    QCOMPARE(impl.getEngine(), &engine);
    QVERIFY(!impl.isInitialised());
    QVERIFY(!impl.getItem());
    QCOMPARE(impl.grabMethods({}, QMetaMethod::Signal, true), QStringList());
    impl.deinit();
}

void tst_QmlDeviceImpl::loadsFromAFileBelowTheWorkingDirectory()
{
    QTemporaryDir folder;
    QFile file(folder.filePath("face with %41 #1.qml"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("import QtQuick 2.0\nItem { width: 200; height: 100 }\n");
    file.close();
    QmlOwner owner;
    QCOMPARE(owner.loadFile(QDir::current().relativeFilePath(file.fileName())), QString());
    QVERIFY(owner.impl.isInitialised());
    QCOMPARE(owner.impl.getItem()->size(), QSizeF(200, 100));
    QCOMPARE(owner.loadFile(file.fileName()), QString());
}

void tst_QmlDeviceImpl::urlOfAFileServesAsItsName()
{
    QTemporaryDir folder;
    QFile file(folder.filePath("face.qml"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("import QtQuick 2.0\nItem { width: 200 }\n");
    file.close();
    QmlOwner owner;
    QCOMPARE(owner.loadFile(QUrl::fromLocalFile(file.fileName()).toString()), QString());
    QCOMPARE(owner.impl.getItem()->width(), 200.0);
}

void tst_QmlDeviceImpl::loadsFromAResource()
{
    QmlOwner owner;
    // Qt's own; what matters is that it is found.
    for (const QString path : {":/no/such.qml", "qrc:/no/such.qml"}) {
        QCOMPARE(owner.loadFile(path), path + ": No such file or directory");
    }
}

void tst_QmlDeviceImpl::loadsFromAText()
{
    QmlOwner owner;
    QCOMPARE(
        owner.load(QString::fromUtf8("import QtQuick 2.0\nItem { property string unit: '°C' }")),
        QString());
    QCOMPARE(owner.property("unit").toString(), QString::fromUtf8("°C"));
}

void tst_QmlDeviceImpl::textFindsFilesBelowTheWorkingDirectory()
{
    QmlOwner owner;
    QCOMPARE(owner.loadBody("property url here: Qt.resolvedUrl('README.md')"), QString());
    QCOMPARE(owner.property("here").toUrl(),
             QUrl::fromLocalFile(QDir::current().filePath("README.md")));
}

void tst_QmlDeviceImpl::unknownSourceTypeMeansTheText()
{
    QmlOwner owner;
    QCOMPARE(owner.impl.init(&owner, "File", "no/such.qml", "import QtQuick 2.0\nItem {}",
                             owner.haveMethodsChanged),
             QString());
}

void tst_QmlDeviceImpl::fileIsReadEachTime()
{
    QTemporaryDir folder;
    const auto write = [&folder](const QString& name, const QByteArray& body) {
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("import QtQuick 2.0\n" + body);
    };
    write("Face.qml", "Beneath { signal first() }");
    write("Beneath.qml", "Item { width: 1 }");
    QmlOwner owner;
    QCOMPARE(owner.loadFile(folder.filePath("Face.qml")), QString());
    QVERIFY(owner.provider("first"));
    write("Face.qml", "Beneath { signal second(); height: 10 }");
    write("Beneath.qml", "Item { width: 22; opacity: 1 }");
    QCOMPARE(owner.loadFile(folder.filePath("Face.qml")), QString());
    QVERIFY(owner.haveMethodsChanged);
    QVERIFY(owner.provider("second") && !owner.provider("first"));
    QCOMPARE(owner.impl.getItem()->width(), 22.0);
}

void tst_QmlDeviceImpl::methodsChangeOnlyWithTheList()
{
    QmlOwner owner;
    const auto changedBy = [&owner](const QString& body) {
        owner.loadBody(body);
        return owner.haveMethodsChanged;
    };
    QVERIFY(!changedBy("")); // none before, none now
    QVERIFY(changedBy("signal output(real v)"));
    QVERIFY(!changedBy("signal output(real v); property int level"));
    QVERIFY(changedBy("signal output(int v)"));
    QVERIFY(changedBy("signal output(int v); function input(v) {}"));
    QVERIFY(!changedBy("function input(value) {} signal output(int number)"));
    QVERIFY(changedBy("function output(value) {} signal input(int number)"));
    owner.impl.deinit();
    QVERIFY(changedBy("function output(value) {} signal input(int number)"));
}

void tst_QmlDeviceImpl::deinitGivesTheItemUp()
{
    QmlOwner owner;
    QCOMPARE(owner.loadBody("signal output(real v)"), QString());
    const QPointer<QQuickItem> item = owner.impl.getItem();
    const QPointer<QObject> wrapper = owner.provider("output");
    owner.impl.deinit();
    QVERIFY(!owner.impl.isInitialised());
    QVERIFY(!owner.impl.getItem());
    QVERIFY(!wrapper);
    QTRY_VERIFY(!item);
    owner.setObjectName("renamed"); // nothing is left to follow
    owner.impl.deinit();
}

void tst_QmlDeviceImpl::handlerMayReplaceItsOwnDocument()
{
    QmlOwner owner;
    QCOMPARE(owner.loadBody("signal output(var v)\nproperty int after: 0\n"
                            "function input(v) { output(v); after = 1 }"),
             QString());
    const QPointer<QQuickItem> item = owner.impl.getItem();
    bool isReplaced = false;
    connect(owner.provider("output"), SIGNAL(output(double)), &owner, SIGNAL(methodsChanged()));
    connect(&owner, &BaseDevice::methodsChanged, &owner,
            [&owner, &isReplaced] { isReplaced = owner.loadBody("signal other()").isEmpty(); });
    MessageLog log;
    QVERIFY(QMetaObject::invokeMethod(owner.receiver("input"), "input", Q_ARG(double, 1)));
    QVERIFY(isReplaced);
    QVERIFY(owner.provider("other"));
    QCOMPARE(log.take(), QStringList());
    QTRY_VERIFY(!item);
}

void tst_QmlDeviceImpl::replacedDocumentIsHeardNoMore()
{
    const QString body = "signal before()\nsignal output(int v)\nproperty bool isDone\n"
                         "function input(v) { before(); output(v); isDone = true }";
    QmlOwner owner;
    QCOMPARE(owner.loadBody(body), QString());
    const QPointer<QQuickItem> item = owner.impl.getItem();
    connect(owner.provider("before"), SIGNAL(before()), &owner, SIGNAL(methodsChanged()));
    const auto replacement = connect(&owner, &BaseDevice::methodsChanged, &owner,
                                     [&owner, &body] { owner.loadBody(body); });
    QSignalSpy sent(owner.provider("output"), SIGNAL(output(int)));
    QVERIFY(QMetaObject::invokeMethod(owner.receiver("input"), "input", Q_ARG(double, 1)));
    QVERIFY(item->property("isDone").toBool());
    QVERIFY(owner.impl.getItem() != item);
    QCOMPARE(sent.count(), 0);
    disconnect(replacement); // The wires stay, and the new document is heard.
    QVERIFY(QMetaObject::invokeMethod(owner.receiver("input"), "input", Q_ARG(double, 2)));
    QCOMPARE(sent.count(), 1);
    QCOMPARE(sent.at(0).at(0).toInt(), 2);
}

void tst_QmlDeviceImpl::itemLeavesTheSceneAtOnce()
{
    QQuickItem scene;
    QmlOwner owner;
    QCOMPARE(owner.loadBody(""), QString());
    owner.impl.getItem()->setParentItem(&scene);
    owner.impl.deinit();
    QVERIFY(scene.childItems().isEmpty());
}

void tst_QmlDeviceImpl::earlierOwnerIsForgotten()
{
    const QString text = "import QtQuick 2.0\nItem { signal output(real v) }\n";
    QmlOwner first;
    QmlOwner second;
    QCOMPARE(first.load(text), QString());
    bool changed = false;
    QCOMPARE(first.impl.init(&second, "parameter", {}, text, changed), QString());
    second.setObjectName("second");
    first.setObjectName("first");
    QCOMPARE(first.provider("output")->objectName(), QString("second"));
}

void tst_QmlDeviceImpl::worksForAnOwnerThatIsNoDevice()
{
    QQmlEngine engine;
    QmlDeviceImpl impl(&engine);
    QObject owner;
    owner.setObjectName("plain");
    bool changed = false;
    MessageLog log;
    QCOMPARE(impl.init(&owner, "parameter", {},
                       "import QtQuick 2.0\nItem { signal output(real v); width: missing }",
                       changed),
             QString());
    QCOMPARE(log.take(), QStringList("warning: sourceCode:2: ReferenceError: missing is not "
                                     "defined"));
    QString signature;
    QCOMPARE(impl.getSignalWrapper("output", signature)->objectName(), QString("plain"));
}

void tst_QmlDeviceImpl::thousandTimesCreatedAndDestroyed()
{
    QPointer<QQuickItem> item;
    for (int i = 0; i < 1000; ++i) {
        QmlOwner owner;
        QCOMPARE(owner.loadBody("signal output(var v)\nfunction input(v) { output([v]) }"),
                 QString());
        item = owner.impl.getItem();
        QVERIFY(QMetaObject::invokeMethod(owner.receiver("input"), "input", Q_ARG(double, i)));
        if (i % 2) {
            owner.impl.deinit();
        }
    }
    QVERIFY(!item);
}

void tst_QmlDeviceImpl::thousandDocumentsInOneLoader()
{
    QmlOwner owner;
    QVector<QPointer<QQuickItem>> items;
    for (int i = 0; i < 1000; ++i) {
        QCOMPARE(owner.loadBody(QString("signal output%1(real v)").arg(i % 3)), QString());
        items.append(owner.impl.getItem());
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    items.removeAll(nullptr);
    QCOMPARE(items.size(), 1);
    QCOMPARE(items[0].data(), owner.impl.getItem());
}

NORVO_TEST(tst_QmlDeviceImpl)
#include "tst_QmlDeviceImpl.moc"
