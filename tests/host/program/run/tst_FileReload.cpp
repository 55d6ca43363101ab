// SPDX-License-Identifier: GPL-3.0-or-later

#include "../RunningFile.h"
#include "host/window/ErrorList.h"
#include "host/window/reload/FileFault.h"
#include "host/window/sheet/Sheet.h"
#include "norvo/BaseDevice.h"
#include "TestMain.h"

#include <QPointer>
#include <QPushButton>
#include <QtTest>

using norvo::FileFault;

namespace {

constexpr int kPatience = 60000;

QByteArray panelOf(const QByteArray& text, const QByteArray& more = {})
{
    return "devices:\n"
           "  shown: {device: label, params: {Value: " +
           text +
           "}}\n"
           "  face: {device: qml_widget, params: {sourceType: file, sourceData: face.qml}}\n"
           "  other: {device: qml_widget, params: {sourceType: file, sourceData: other.qml}}\n" +
           more;
}

/// A panel that follows its file, with documents beside it.
struct FollowedFile : RunningFile
{
    FollowedFile() : RunningFile(QByteArray("title: Begins\n"), {800, 480})
    {
        write("Dial.qml", "import QtQuick 2.0\nItem { implicitWidth: 40; implicitHeight: 30 }\n");
        write("face.qml", "import QtQuick 2.0\nItem { Dial {} }\n");
        write("other.qml", "import QtQuick 2.0\nItem {}\n");
        write("panel.yaml", panelOf("one"));
        running->window().activateWindow();
        if (!QTest::qWaitFor([this] { return device("face") && device("shown"); }, kPatience) ||
            !QTest::qWaitForWindowActive(&running->window(), kPatience)) {
            qFatal("the panel is not shown");
        }
    }

    BaseDevice* device(const QString& id) const { return running->panel().device(id); }
    QString shownText() const { return device("shown")->getParam("Value").value(); }
    FileFault& key() const { return *running->window().findChild<FileFault*>(); }
    norvo::Sheet* list() const { return running->window().findChild<norvo::Sheet*>("fileErrors"); }
};

} // namespace

/// A running panel whose files change.
class tst_FileReload : public QObject
{
    Q_OBJECT

private slots:
    void aBadFileIsSaidInTheStripUntilItIsGood();
    void theKeyOpensAllErrors();
    void theFileIsReadAgainByKey();
    void aTypeThatADocumentNamesIsFollowed();
    void aTypeIsFollowedBeforeItIsThere();
};

void tst_FileReload::aBadFileIsSaidInTheStripUntilItIsGood()
{
    const FollowedFile file;
    QVERIFY(file.key().isHidden());
    const BaseDevice* const face = file.device("face");
    file.write("panel.yaml", panelOf("two", "  bad: {device: lable}\n"));
    QTRY_VERIFY_WITH_TIMEOUT(file.key().isVisible(), kPatience);
    QVERIFY2(file.key().text().contains("line 5: unknown device type \"lable\""),
             qPrintable(file.key().text()));
    QCOMPARE(file.key().accessibleName(), file.key().text());
    QCOMPARE(file.shownText(), QString("one")); // It runs on.
    file.write("panel.yaml", "devices: [\n");
    QTRY_VERIFY_WITH_TIMEOUT(!file.key().text().contains("lable"), kPatience);
    QVERIFY(file.key().isVisible());
    file.write("panel.yaml", panelOf("three"));
    QTRY_VERIFY_WITH_TIMEOUT(file.key().isHidden(), kPatience);
    QCOMPARE(file.shownText(), QString("three"));
    QCOMPARE(file.device("face"), face);
}

void tst_FileReload::theKeyOpensAllErrors()
{
    const FollowedFile file;
    file.write("panel.yaml", panelOf("two", "  bad: {device: lable}\n  worse: {device: buton}\n"));
    QTRY_VERIFY_WITH_TIMEOUT(file.key().isVisible(), kPatience);
    QTest::mouseClick(&file.key(), Qt::LeftButton);
    QTRY_VERIFY_WITH_TIMEOUT(file.list() && file.list()->isVisible(), kPatience);
    const QString all = file.list()->findChild<norvo::ErrorList*>()->toPlainText();
    QVERIFY2(all.contains("\"lable\"") && all.contains("\"buton\""), qPrintable(all));
    QTest::keyClick(file.list(), Qt::Key_Escape);
    QTRY_VERIFY_WITH_TIMEOUT(!file.list(), kPatience);
    QVERIFY(file.key().isVisible());
}

/// By F5 in the window, and by the key of the list.
void tst_FileReload::theFileIsReadAgainByKey()
{
    const FollowedFile file;
    QSignalSpy asked(&file.key(), &FileFault::readAgainRequested);
    QTest::keyClick(&file.running->window(), Qt::Key_F5);
    QCOMPARE(asked.count(), 0); // There is nothing to put right.
    file.write("panel.yaml", panelOf("two", "  bad: {device: lable}\n"));
    QTRY_VERIFY_WITH_TIMEOUT(file.key().isVisible(), kPatience);
    QTest::keyClick(&file.running->window(), Qt::Key_F5);
    QCOMPARE(asked.count(), 1);
    QVERIFY(file.key().isVisible());
    QTest::mouseClick(&file.key(), Qt::LeftButton);
    QTRY_VERIFY_WITH_TIMEOUT(file.list() && file.list()->isVisible(), kPatience);
    for (auto* const one : file.list()->findChildren<QPushButton*>()) {
        if (one != file.list()->closeKey()) {
            QTest::mouseClick(one, Qt::LeftButton);
        }
    }
    QCOMPARE(asked.count(), 2);
    QTRY_VERIFY_WITH_TIMEOUT(!file.list(), kPatience);
}

void tst_FileReload::aTypeThatADocumentNamesIsFollowed()
{
    const FollowedFile file;
    const QPointer<BaseDevice> face = file.device("face");
    const QPointer<BaseDevice> other = file.device("other");
    const QPointer<BaseDevice> shown = file.device("shown");
    file.write("Dial.qml", "import QtQuick 2.0\nItem { implicitWidth: 50 }\n");
    QTRY_VERIFY_WITH_TIMEOUT(!face, kPatience);
    QVERIFY(file.device("face")->isRunning());
    QVERIFY(other && shown); // They do not show it.
}

void tst_FileReload::aTypeIsFollowedBeforeItIsThere()
{
    const FollowedFile file;
    file.write("other.qml", "import QtQuick 2.0\nItem { Later { } }\n");
    const auto runs = [&file] {
        const BaseDevice* const other = file.device("other");
        return other && other->isRunning();
    };
    QTRY_VERIFY_WITH_TIMEOUT(!runs(), kPatience);
    file.write("Later.qml", "import QtQuick 2.0\nItem {}\n");
    QTRY_VERIFY_WITH_TIMEOUT(runs(), kPatience);
}

NORVO_TEST(tst_FileReload)
#include "tst_FileReload.moc"
