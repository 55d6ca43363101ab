// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "MessageLog.h"

#include "devices/Label.h"
#include "devices/OutputDigitalDevice.h"
#include "devices/QmlGuiDevice.h"
#include "norvo/BaseWidget.h"
#include "norvo/DeviceTypeInfo.h"
#include "TestMain.h"

#include <QLabel>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWidget>
#include <QtTest>

#include <memory>

namespace {

const QString kRelay = "import QtQuick 2.0\n"
                       "Item {\n"
                       "    signal output(real v)\n"
                       "    function input(v) { output(2 * v) }\n"
                       "}\n";
const QString kOther = "import QtQuick 2.0\nItem { signal pressed() }\n";

/// A current folder of its own while it lives.
class CurrentFolder
{
public:
    CurrentFolder() : m_before(QDir::currentPath()) { QDir::setCurrent(m_folder.path()); }
    ~CurrentFolder() { QDir::setCurrent(m_before); }
    Q_DISABLE_COPY(CurrentFolder)

    void write(const QString& name, const QByteArray& text)
    {
        const QFileInfo info(m_folder.filePath(name));
        QVERIFY(QDir().mkpath(info.path()));
        QFile file(info.filePath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

private:
    QString m_before;
    QTemporaryDir m_folder;
};

void setCode(QmlGuiDevice& device, const QString& code)
{
    device.setParam("sourceType", "parameter");
    device.setParam("sourceCode", code);
}

void wire(BaseDevice& from, const QString& output, BaseDevice& to, const QString& input)
{
    QString signal;
    QString slot;
    QObject* const provider = from.getProvider(output, signal);
    QObject* const receiver = to.getReceiver(input, slot);
    QVERIFY(provider && receiver);
    QVERIFY(QObject::connect(provider, ("2" + signal.toUtf8()).constData(), receiver,
                             ("1" + slot.toUtf8()).constData()));
}

} // namespace

class tst_QmlGuiDevice : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsParameters();
    void declaresNoSignalsAndNoSlots();
    void recordSaysThatMethodsAreKnownLate();
    void constructorLogsItsThread();
    void fileSourceWithoutPathIsRefused();
    void parameterSourceEnablesTheCode();
    void descriptionIsThePathOfTheFile();
    void errorOfTheDocumentIsReported();
    void laterInitialiseWithGoodSourceWorks();
    void methodsChangedFollowsTheList();
    void answersWithTheItemsMethods();
    void answersItselfBeforeADocumentIsLoaded();
    void deinitialiseGivesTheMethodsUp();
    void reinitialisingReusesEngineAndLoader();
    void moduleOfTheCurrentFolderIsFound();
    void moduleOfTheCurrentFolderShadowsNoneOfTheSystems_data();
    void moduleOfTheCurrentFolderShadowsNoneOfTheSystems();
    void valueIsDoubledInJavaScriptAndNamedAfterTheDevice();
};

void tst_QmlGuiDevice::declaresItsParameters()
{
    QmlGuiDevice device;
    QCOMPARE(parameterTable(device),
             QStringList({"sourceType = file [file, parameter] shown as Source type described as "
                          "Use file to load .qml from from file, use parameter to load .qml from "
                          "parameter.",
                          "sourceData =  shown as Source data described as Use this parameter to "
                          "store path to qml. when sourceType is file",
                          "sourceCode =  shown as Source code described as Use this parameter to "
                          "store the qml. in multiline when sourceType is parameter"}));
}

void tst_QmlGuiDevice::declaresNoSignalsAndNoSlots()
{
    QCOMPARE(methodTable(QmlGuiDevice::staticMetaObject), QStringList());
    QCOMPARE(QmlGuiDevice::staticMetaObject.propertyCount(),
             BaseGuiDevice::staticMetaObject.propertyCount());
}

void tst_QmlGuiDevice::recordSaysThatMethodsAreKnownLate()
{
    const DeviceTypeInfo info = QmlGuiDevice::typeInfo();
    QCOMPARE(info.title, QString());
    QCOMPARE(info.description, QString());
    QCOMPARE(info.categories, QStringList("GUI"));
    QCOMPARE(info.kind, 2);
    QCOMPARE(info.flag, 1);
    QCOMPARE(info.widgetGroup, QString("widget"));
}

void tst_QmlGuiDevice::constructorLogsItsThread()
{
    QString expected;
    QDebug(&expected) << QThread::currentThread() << QThread::currentThreadId();
    MessageLog log;
    QmlGuiDevice device;
    QCOMPARE(log.take(), QStringList("debug: " + expected.trimmed()));
}

void tst_QmlGuiDevice::fileSourceWithoutPathIsRefused()
{
    QmlGuiDevice device;
    device.setObjectName("face");
    device.setParam("sourceCode", kRelay);
    QSignalSpy errors(&device, &BaseDevice::errorOccurred);
    MessageLog log;
    QVERIFY(!device.initialise());
    QCOMPARE(log.take(), QStringList("warning: face: Source data/file not set"));
    QCOMPARE(errors.count(), 1);
    QCOMPARE(errors[0][0].toString(), QString("Source data/file not set"));
    QCOMPARE(device.grabMethods({}, QMetaMethod::Signal, true), QStringList());
    const std::unique_ptr<BaseWidget> widget(device.createWidget());
    widget->initialise();
    QVERIFY(widget->findChildren<QQuickWidget*>().isEmpty());
}

void tst_QmlGuiDevice::parameterSourceEnablesTheCode()
{
    QmlGuiDevice device;
    setCode(device, kRelay);
    const auto isEnabled = [&device](const QString& name) {
        const auto conditions = device.getParam(name).enabledConditions();
        return conditions.value("sourceType").contains(device.getParam("sourceType").value());
    };
    QVERIFY(!isEnabled("sourceData"));
    QVERIFY(isEnabled("sourceCode"));
    device.setParam("sourceData", "of no account.qml");
    QVERIFY(device.initialise());
    QCOMPARE(device.description(), QString("Script from parameter"));
}

void tst_QmlGuiDevice::descriptionIsThePathOfTheFile()
{
    QTemporaryDir folder;
    QFile file(folder.filePath("relay.qml"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(kRelay.toUtf8());
    file.close();
    const QString relative = QDir::current().relativeFilePath(file.fileName());

    QmlGuiDevice device;
    device.setParam("sourceData", relative);
    QVERIFY(device.initialise());
    QCOMPARE(device.description(), relative);
    QCOMPARE(device.grabMethods({}, QMetaMethod::Signal, false), QStringList("output(double)"));
}

void tst_QmlGuiDevice::errorOfTheDocumentIsReported()
{
    QmlGuiDevice device;
    setCode(device, "import QtQuick 2.0\nItem { width: }\n");
    device.setParam("sourceData", "of no account.qml");
    QSignalSpy errors(&device, &BaseDevice::errorOccurred);
    QSignalSpy changes(&device, &BaseDevice::methodsChanged);
    QVERIFY(!device.initialise());
    QCOMPARE(errors.count(), 1);
    QCOMPARE(errors[0][0].toString(), QString("sourceCode:2:15: Expected token `;'"));
    QCOMPARE(changes.count(), 0);
    QCOMPARE(device.description(), QString());
}

void tst_QmlGuiDevice::laterInitialiseWithGoodSourceWorks()
{
    QmlGuiDevice device;
    setCode(device, "Item {");
    QVERIFY(!device.initialise());
    QCOMPARE(device.grabMethods({}, QMetaMethod::Slot, true), QStringList());
    setCode(device, kRelay);
    QVERIFY(device.initialise());
    QCOMPARE(device.grabMethods({}, QMetaMethod::Signal, true), QStringList("output(double)"));
}

void tst_QmlGuiDevice::methodsChangedFollowsTheList()
{
    QmlGuiDevice device;
    QSignalSpy changes(&device, &BaseDevice::methodsChanged);
    setCode(device, kRelay);
    QVERIFY(device.initialise());
    QCOMPARE(changes.count(), 1);
    QVERIFY(device.initialise());
    setCode(device, kRelay + "// a remark\n");
    QVERIFY(device.initialise());
    QCOMPARE(changes.count(), 1);
    setCode(device, kOther);
    QVERIFY(device.initialise());
    QCOMPARE(changes.count(), 2);
}

void tst_QmlGuiDevice::answersWithTheItemsMethods()
{
    QmlGuiDevice device;
    device.setObjectName("face");
    setCode(device, kRelay);
    QVERIFY(device.initialise());
    QString signature;
    const QObject* const provider = device.getProvider("output", signature);
    QVERIFY(provider && provider != &device);
    QCOMPARE(provider->objectName(), QString("face"));
    QCOMPARE(signature, QString("output(double)"));
    const QObject* const receiver = device.getReceiver("input( QString )", signature);
    QVERIFY(receiver && receiver != &device);
    QCOMPARE(receiver->objectName(), QString("face"));
    QCOMPARE(signature, QString("input(QString)"));

    QVERIFY(!device.getProvider("input", signature));
    QCOMPARE(signature, QString());
    QVERIFY(!device.getReceiver("missing", signature));
    QCOMPARE(signature, QString());
}

/// A device made of a class of its own that has methods besides its document's.
class NamedFace : public QmlGuiDevice
{
    Q_OBJECT

public slots:
    void rename(const QString&) {}

signals:
    void renamed(QString name);
};

void tst_QmlGuiDevice::answersItselfBeforeADocumentIsLoaded()
{
    NamedFace device;
    QString signature;
    QCOMPARE(device.getProvider("renamed", signature), static_cast<QObject*>(&device));
    QCOMPARE(signature, QString("renamed(QString)"));
    QCOMPARE(device.getReceiver("rename", signature), static_cast<QObject*>(&device));
    QCOMPARE(signature, QString("rename(QString)"));

    setCode(device, kRelay); // which has no such methods
    QVERIFY(device.initialise());
    QCOMPARE(device.getProvider("renamed", signature), static_cast<QObject*>(&device));
    QCOMPARE(device.getReceiver("rename", signature), static_cast<QObject*>(&device));
    QCOMPARE(signature, QString("rename(QString)"));
}

void tst_QmlGuiDevice::deinitialiseGivesTheMethodsUp()
{
    QmlGuiDevice device;
    device.deinitialise(); // before there is anything
    setCode(device, kRelay);
    QVERIFY(device.initialise());
    device.deinitialise();
    QString signature;
    QVERIFY(!device.getProvider("output", signature));
    QCOMPARE(device.grabMethods({}, QMetaMethod::Slot, true), QStringList());
}

void tst_QmlGuiDevice::reinitialisingReusesEngineAndLoader()
{
    QmlGuiDevice device;
    setCode(device, kRelay);
    QVERIFY(device.initialise());
    const std::unique_ptr<BaseWidget> first(device.createWidget());
    const std::unique_ptr<BaseWidget> madeBefore(device.createWidget()); // with the first loader
    first->initialise();
    const auto* const engine = first->findChild<QQuickWidget*>()->engine();
    QVERIFY(engine->importPathList().contains(QDir::currentPath()));

    setCode(device, kOther);
    QVERIFY(device.initialise());
    madeBefore->initialise();
    const auto* const quickWidget = madeBefore->findChild<QQuickWidget*>();
    QVERIFY(quickWidget);
    QCOMPARE(quickWidget->engine(), engine);
    const QList<QQuickItem*> items = quickWidget->rootObject()->childItems();
    QCOMPARE(items.size(), 1);
    QVERIFY(items[0]->metaObject()->indexOfSignal("pressed()") >= 0);
}

void tst_QmlGuiDevice::moduleOfTheCurrentFolderIsFound()
{
    CurrentFolder folder;
    folder.write("Bench/qmldir", "module Bench\nLamp 1.0 Lamp.qml\n");
    folder.write("Bench/Lamp.qml", "import QtQuick 2.0\nItem { signal lit() }\n");
    QmlGuiDevice device;
    setCode(device, "import Bench 1.0\nLamp {}\n");
    QVERIFY(device.initialise());
    QCOMPARE(device.grabMethods({}, QMetaMethod::Signal, true), QStringList("lit()"));
}

void tst_QmlGuiDevice::moduleOfTheCurrentFolderShadowsNoneOfTheSystems_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("import");
    const auto row = [](const char* folder, const char* import) {
        QTest::newRow(folder) << folder << import;
    };
    row("QtQuick.2", "QtQuick 2.0");
    row("QtQuick.2.0", "QtQuick 2.0"); // a folder with the full version is looked for first
    row("QtQuick", "QtQuick 2.0");
    row("QtQuick/Window.2.2", "QtQuick.Window 2.2");
    row("QtQuick.2.2/Window", "QtQuick.Window 2.2");
    row(".", "QtQuick 2.0");
}

/// A qmldir can name native code, which would run as soon as the module is imported.
void tst_QmlGuiDevice::moduleOfTheCurrentFolderShadowsNoneOfTheSystems()
{
    QFETCH(QString, folder);
    QFETCH(QString, import);
    CurrentFolder current;
    current.write(folder + "/qmldir", "plugin neverToBeLoaded\n");
    QmlGuiDevice device;
    setCode(device, "import QtQuick 2.0\nimport " + import + "\nItem {}\n");
    QVERIFY(device.initialise()); // the plug-in that is not there would be missed
}

void tst_QmlGuiDevice::valueIsDoubledInJavaScriptAndNamedAfterTheDevice()
{
    OutputDigitalDevice feed;
    QmlGuiDevice face;
    OutputDigitalDevice readout;
    Label label;
    feed.setObjectName("feed");
    face.setObjectName("doubler");
    setCode(face, kRelay);
    label.setParam("Value", "%1");
    for (BaseDevice* device : QList<BaseDevice*>{&feed, &face, &readout, &label}) {
        QVERIFY(device->initialise());
        device->setRunning(true);
    }
    wire(feed, "output(double)", face, "input(double)");
    wire(face, "output", readout, "input(double)");
    wire(face, "output", label, "input(double)");
    const std::unique_ptr<BaseWidget> widget(label.createWidget());
    widget->initialise();
    QSignalSpy named(&readout, SIGNAL(output(double, QString)));

    feed.input(21.0);
    QCOMPARE(widget->findChild<QLabel*>()->text(), QString("42"));
    QCOMPARE(named.count(), 1);
    QCOMPARE(named[0][0].toDouble(), 42.0);
    QCOMPARE(named[0][1].toString(), QString("doubler"));
}

NORVO_TEST(tst_QmlGuiDevice)
#include "tst_QmlGuiDevice.moc"
