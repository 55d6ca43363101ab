// SPDX-License-Identifier: GPL-3.0-or-later

#include "../EditedPanel.h"
#include "TestMain.h"

#include "host/editor/palette/PicturedPanel.h"
#include "host/editor/palette/TypePictures.h"
#include "host/editor/palette/TypeSymbol.h"
#include "host/editor/templates/TemplateSet.h"

#include "norvo/BaseDevice.h"
#include "norvo/DeviceManager.h"

#include <QProcess>
#include <QtTest>

#include <unistd.h>

using norvo::TypePictures;
using norvo::TypeWords;

namespace {

/// Stands for each type without a widget, and counts those that are started.
class Tripwire : public BaseDevice
{
public:
    static DeviceTypeInfo typeInfo() { return {"Tripwire", "", {"Test"}, 0, 0}; }
    static int started;

    bool initialise() override
    {
        ++started;
        return true;
    }
};

int Tripwire::started = 0;

QStringList childProcesses()
{
    QStringList children;
    const QDir tasks("/proc/self/task");
    for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile file(tasks.filePath(task + "/children"));
        if (file.open(QIODevice::ReadOnly)) {
            children += QString::fromLatin1(file.readAll()).split(' ', Qt::SkipEmptyParts);
        }
    }
    return children;
}

int openSockets()
{
    int sockets = 0;
    for (int handle = 0; handle < 1024; ++handle) {
        char target[32] = {};
        const QByteArray link = "/proc/self/fd/" + QByteArray::number(handle);
        const auto size = readlink(link.constData(), target, sizeof(target) - 1);
        sockets += size > 0 && QByteArray(target).startsWith("socket:") ? 1 : 0;
    }
    return sockets;
}

} // namespace

class tst_TypePictures : public QObject
{
    Q_OBJECT

private slots:
    void everyTypeWithAWidgetAndEveryTemplateIsPicturedAsItRuns();
    void theTripwiresWork();
    void onlyTheDeviceItselfIsRun_data();
    void onlyTheDeviceItselfIsRun();
    void aCommandAndAFileAreLeftOut();
    void ofAGroupOnlyWhatIsSeenIsRun();
};

/// The first one in the process: pictures are kept.
void tst_TypePictures::everyTypeWithAWidgetAndEveryTemplateIsPicturedAsItRuns()
{
    DeviceManager manager = builtTypes();
    for (const QString& key : EditedPanel::types().keys()) {
        if (!EditedPanel::types().words(key)->hasWidget) {
            manager.registerDeviceType<Tripwire>(key);
        }
    }
    const int sockets = openSockets();
    QStringList children;
    const norvo::Catalogue catalogue(manager);
    norvo::TemplateSet templates(catalogue, "panel.yaml");
    templates.read();
    QStringList all = catalogue.keys();
    for (const norvo::PanelTemplate& one : templates.all()) {
        all += one.file;
    }
    TypePictures pictures(catalogue, templates);
    connect(&pictures, &TypePictures::made, this, [&children] { children += childProcesses(); });
    pictures.make(all);
    QVERIFY(!pictures.isDone());
    QTRY_VERIFY_WITH_TIMEOUT(pictures.isDone(), 120000);
    QCOMPARE(Tripwire::started, 0);
    QCOMPARE(children, QStringList());
    QCOMPARE(openSockets(), sockets);
    for (const QString& key : EditedPanel::types().keys()) {
        const TypeWords& words = *catalogue.words(key);
        const QImage symbol =
            norvo::TypeSymbol::draw(words, TypePictures::kSize, QGuiApplication::palette());
        const QImage picture = pictures.picture(key);
        QCOMPARE(picture.size(), TypePictures::kSize);
        QVERIFY2((picture == symbol) != words.hasWidget, qPrintable(key));
    }
    for (const norvo::PanelTemplate& one : templates.all()) {
        QCOMPARE(pictures.picture(one.file).size(), TypePictures::kSize);
    }
}

void tst_TypePictures::theTripwiresWork()
{
    DeviceManager manager = builtTypes();
    manager.registerDeviceType<Tripwire>("process");
    const std::unique_ptr<BaseDevice> device(manager.createDevice("process"));
    device->initialise();
    QCOMPARE(Tripwire::started, 1);
    QProcess child;
    child.start("sleep", {"30"});
    QVERIFY(child.waitForStarted());
    QCOMPARE(childProcesses().size(), 1);
    child.kill();
    child.waitForFinished();
}

void tst_TypePictures::onlyTheDeviceItselfIsRun_data()
{
    QTest::addColumn<QString>("key");
    for (const QString& key : EditedPanel::types().keys()) {
        if (EditedPanel::types().words(key)->hasWidget) {
            QTest::newRow(qPrintable(key)) << key;
        }
    }
}

void tst_TypePictures::onlyTheDeviceItselfIsRun()
{
    QFETCH(QString, key);
    const auto shown = norvo::PicturedPanel::ofType(*EditedPanel::types().words(key)).description;
    QCOMPARE(shown.devices.size(), 1);
    QCOMPARE(shown.devices.first().type.text, key);
    QVERIFY(shown.connections.isEmpty());
    QVERIFY(!shown.devices.first().network);
}

void tst_TypePictures::aCommandAndAFileAreLeftOut()
{
    TypeWords words = *EditedPanel::types().words("picture");
    words.example = "devices:\n  one: {device: picture, params: {widget/filename: /etc/passwd, "
                    "widget/width: 10}}\n";
    auto params = norvo::PicturedPanel::ofType(words).description.devices.first().params;
    QCOMPARE(params.size(), 1);
    QCOMPARE(params.first().name.text, QString("widget/width"));
    words = *EditedPanel::types().words("process");
    words.example = "devices:\n  one: {device: process, params: {command: cat}}\n";
    QVERIFY(norvo::PicturedPanel::ofType(words).description.devices.first().params.isEmpty());
}

/// And what is not fed by a device that is seen has made-up values.
void tst_TypePictures::ofAGroupOnlyWhatIsSeenIsRun()
{
    norvo::Diagnostics unread({});
    const auto group = norvo::PanelFile::parse(
        "devices:\n"
        "  child: {device: process, params: {command: reboot}, outputs: {x: (.*)}}\n"
        "  shown: {device: output_digital}\n"
        "  graph: {device: output_graph}\n"
        "  photo: {device: picture, params: {widget/filename: /dev/zero}}\n"
        "  lone: {device: label}\n"
        "connections:\n"
        "  - child.x -> shown.input(double)\n"
        "  - shown.output(double) -> graph.input(double)\n",
        {}, unread);
    const auto shown = norvo::PicturedPanel::ofGroup(group, EditedPanel::types());
    QStringList ids;
    for (const auto& device : shown.description.devices) {
        ids += device.id.text;
        QVERIFY(device.params.isEmpty());
    }
    QCOMPARE(ids, QStringList({"shown", "graph", "photo", "lone"}));
    QCOMPARE(shown.description.connections.size(), 1);
    QStringList fed;
    for (const auto& feed : shown.feeds) {
        fed += feed.device + '.' + feed.input;
    }
    QVERIFY2(fed.contains("shown.input(double)"), qPrintable(fed.join(' ')));
    QVERIFY2(!fed.join(' ').contains("graph."), qPrintable(fed.join(' ')));
    QVERIFY2(fed.join(' ').contains("lone."), qPrintable(fed.join(' ')));
}

NORVO_TEST(tst_TypePictures)
#include "tst_TypePictures.moc"
