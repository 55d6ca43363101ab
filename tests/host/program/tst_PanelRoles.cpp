// SPDX-License-Identifier: GPL-3.0-or-later

#include "../window/access/HandWays.h"
#include "ModalDialog.h"
#include "StartedPanel.h"
#include "TestMain.h"
#include "host/services/access/Access.h"
#include "host/services/access/TestPins.h"
#include "host/window/alarms/AlarmList.h"
#include "host/window/status/ValuesPage.h"

#include <QMenu>
#include <QTemporaryDir>

using State = norvo::AlarmState;

namespace {

const char kAlarm[] = "level.output(double) above 50";
const QByteArray kDevices("devices:\n"
                          "  level: {device: slider}\n"
                          "alarms:\n"
                          "  - {signal: level.output(double), above: 50, text: Too high}\n");

QByteArray bothPins()
{
    return "access: {roles: {operate: \"" + pins::kOperateHash.toUtf8() + "\", engineer: \"" +
           pins::kEngineerHash.toUtf8() + "\"}}\n";
}

void enter(QWidget& pad, const QString& pin)
{
    QTest::keyClicks(&pad, pin);
    QTest::keyClick(&pad, Qt::Key_Return);
}

/// With an alarm that waits to be acknowledged.
class Alarmed : public StartedPanel
{
public:
    explicit Alarmed(const QByteArray& access = bothPins(), const QString& alarmFile = {})
        : StartedPanel(access + kDevices, alarmFile)
    {
        send("level", 60);
        if (!QTest::qWaitFor([this] { return panel.alarms().isSounding(); })) {
            qFatal("no alarm");
        }
    }

    const norvo::Alarm& it() { return alarm(kAlarm); }
    QWidget& bar() { return *panel.window().findChild<QWidget*>("alarmBar"); }
    norvo::AlarmList& openList()
    {
        QTest::mouseClick(key("alarmList"), Qt::LeftButton);
        auto* const list = key<norvo::AlarmList>("alarms");
        list->selectRow(0);
        return *list;
    }
};

norvo::ValuesPage* openedValues()
{
    QWidget* const sheet = QApplication::activeModalWidget();
    return sheet ? sheet->findChild<norvo::ValuesPage*>() : nullptr;
}

} // namespace

/// What the role allows of what is no control: alarms, and the page of all values.
class tst_PanelRoles : public QObject
{
    Q_OBJECT

private slots:
    void lockedStripAcknowledgesNothing();
    void heldLockedStripAcknowledgesNothing();
    void lockedKeyDoesNothing_data();
    void lockedKeyDoesNothing();
    void pinDoesWhatWasAsked_data();
    void pinDoesWhatWasAsked();
    void pinAfterAWrongOneDoesWhatWasAsked();
    void padThatIsClosedForgetsWhatWasAsked();
    void lockedPanelShowsListAndHistory();
    void operatorAcknowledgesAndShelves();
    void allValuesAskForTheEngineer();
    void allValuesAskForTheHighestRoleThatHasAPin();
    void panelWithoutPinsAsksForNothing();
};

void tst_PanelRoles::lockedStripAcknowledgesNothing()
{
    Alarmed alarmed;
    for (auto way = ways::all().cbegin(); way != ways::all().cend(); ++way) {
        const ModalDialog pad([](QWidget&) {}); // Closed.
        (*way)(alarmed.bar());
        QTest::qWait(30);
        QVERIFY2(alarmed.it().state == State::ActiveUnacknowledged, qPrintable(way.key()));
    }
}

void tst_PanelRoles::heldLockedStripAcknowledgesNothing()
{
    Alarmed alarmed;
    const ModalDialog pad([](QWidget&) {});
    QTest::mousePress(&alarmed.bar(), Qt::LeftButton);
    QTRY_COMPARE(pad.count(), 1);
    QTest::mouseRelease(&alarmed.bar(), Qt::LeftButton);
    QCOMPARE(alarmed.it().state, State::ActiveUnacknowledged);
}

void tst_PanelRoles::lockedKeyDoesNothing_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("isInList");
    QTest::newRow("silence") << "alarmSilence" << false;
    QTest::newRow("acknowledge") << "alarmAcknowledge" << true;
    QTest::newRow("acknowledge all") << "alarmAcknowledgeAll" << true;
    QTest::newRow("shelve") << "alarmShelve" << true;
    QTest::newRow("save the history") << "alarmTable" << true;
}

void tst_PanelRoles::lockedKeyDoesNothing()
{
    QFETCH(QString, key);
    QFETCH(bool, isInList);
    const QTemporaryDir folder;
    Alarmed alarmed(bothPins(), folder.filePath("p.alarms.jsonl"));
    if (isInList) {
        alarmed.openList();
    }
    for (const char* const way : {"click", "touch", "Space", "wheel", "accessible press"}) {
        auto* const found = alarmed.key(qPrintable(key));
        QVERIFY2(found && found->isEnabled(), way);
        QWidget* const sheet = QApplication::activeModalWidget();
        bool isAsked = false;
        QTimer
            hand; // It chooses the first of a menu, and closes the pad that opens over the sheet.
        hand.callOnTimeout([sheet, &isAsked] {
            if (auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
                menu->setActiveAction(menu->actions().constFirst());
                QTest::keyClick(menu, Qt::Key_Return);
            } else if (QApplication::activeModalWidget() != sheet) {
                isAsked = true;
                QApplication::activeModalWidget()->close();
            }
        });
        hand.start(0);
        ways::all().value(way)(*found);
        if (QString("wheel") == way) {
            QTest::qWait(30);
            QVERIFY(!isAsked);
        } else {
            QTRY_VERIFY2(isAsked, way);
        }
        QCOMPARE(alarmed.it().state, State::ActiveUnacknowledged);
        QVERIFY2(!alarmed.it().isShelved(), way);
        QVERIFY2(alarmed.panel.alarms().isSounding(), way);
        QVERIFY2(!QFile::exists(folder.filePath("p.alarms.csv")), way);
    }
}

void tst_PanelRoles::pinDoesWhatWasAsked_data()
{
    QTest::addColumn<QString>("way");
    for (const char* const way : {"click", "touch", "Space", "accessible press"}) {
        QTest::newRow(way) << way;
    }
}

void tst_PanelRoles::pinDoesWhatWasAsked()
{
    QFETCH(QString, way);
    Alarmed alarmed;
    const ModalDialog pad([](QWidget& dialog) { enter(dialog, pins::kOperate); });
    ways::all().value(way)(alarmed.bar());
    QTRY_COMPARE(alarmed.it().state, State::ActiveAcknowledged);
    QCOMPARE(alarmed.panel.access().access()->role(), norvo::Role::Operate);
}

void tst_PanelRoles::pinAfterAWrongOneDoesWhatWasAsked()
{
    Alarmed alarmed;
    QStringList pins{"0000", pins::kOperate};
    QTimer hand;
    hand.callOnTimeout([&pins] {
        QWidget* const dialog = QApplication::activeModalWidget();
        if (dialog && dialog->objectName() == "PinDialog" && !pins.isEmpty()) {
            enter(*dialog, pins.takeFirst());
        }
    });
    hand.start(10);
    QTest::mouseClick(&alarmed.bar(), Qt::LeftButton);
    QTRY_COMPARE(alarmed.it().state, State::ActiveAcknowledged);
    QVERIFY(pins.isEmpty());
}

void tst_PanelRoles::padThatIsClosedForgetsWhatWasAsked()
{
    Alarmed alarmed;
    {
        const ModalDialog pad([](QWidget&) {});
        QTest::mouseClick(&alarmed.bar(), Qt::LeftButton);
        QTRY_COMPARE(pad.count(), 1);
    }
    const ModalDialog pad([](QWidget& dialog) { enter(dialog, pins::kOperate); });
    QTest::mouseClick(alarmed.key("lockKey"), Qt::LeftButton);
    QTRY_COMPARE(alarmed.panel.access().access()->role(), norvo::Role::Operate);
    QTest::qWait(30);
    QCOMPARE(alarmed.it().state, State::ActiveUnacknowledged);
}

void tst_PanelRoles::lockedPanelShowsListAndHistory()
{
    Alarmed alarmed;
    norvo::AlarmList& list = alarmed.openList();
    QVERIFY(list.isVisible());
    QCOMPARE(list.rowCount(), 1);
    auto* const view = alarmed.key<QComboBox>("alarmView");
    view->setFocus();
    QTest::keyClick(view, Qt::Key_End);
    QCOMPARE(list.rowCount(), 1);
    QCOMPARE(list.item(0, 4)->text(), QString("began"));
    QVERIFY(alarmed.panel.access().access()->isLocked());
}

void tst_PanelRoles::operatorAcknowledgesAndShelves()
{
    Alarmed alarmed;
    QVERIFY(alarmed.panel.access().access()->tryPin(pins::kOperate, norvo::Role::Operate));
    QTRY_VERIFY(!alarmed.panel.access().access()->isLocked());
    alarmed.openList();
    QTest::mouseClick(alarmed.key("alarmAcknowledge"), Qt::LeftButton);
    QCOMPARE(alarmed.it().state, State::ActiveAcknowledged);
    QTest::mouseClick(alarmed.key("alarmShelve"), Qt::LeftButton);
    auto* const times = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QVERIFY(times);
    QTest::keyClick(times, Qt::Key_Down);
    QTest::keyClick(times, Qt::Key_Return);
    QVERIFY(alarmed.it().isShelved());
}

void tst_PanelRoles::allValuesAskForTheEngineer()
{
    StartedPanel started(bothPins() + kDevices);
    const auto press = [&started](const QString& pin) {
        QString asked;
        const ModalDialog pad([&](QWidget& dialog) {
            asked = dialog.windowTitle();
            enter(dialog, pin);
        });
        QTest::keyClick(&started.panel.window(), Qt::Key_F12);
        return QTest::qWaitFor([&pad] { return pad.count() == 1; }) ? asked : "no pad";
    };
    norvo::Access& access = *started.panel.access().access();
    QCOMPARE(press(pins::kOperate), QString("PIN: Engineer"));
    QTRY_COMPARE(access.role(), norvo::Role::Operate);
    QTest::qWait(30);
    QVERIFY(!openedValues());
    QCOMPARE(press(pins::kEngineer), QString("PIN: Engineer"));
    QTRY_VERIFY(openedValues());
    access.lock(); // What is open is closed, too.
    QTRY_VERIFY(!openedValues());
}

void tst_PanelRoles::allValuesAskForTheHighestRoleThatHasAPin()
{
    StartedPanel started("access: {roles: {operate: \"" + pins::kOperateHash.toUtf8() + "\"}}\n" +
                         kDevices);
    const ModalDialog pad([](QWidget& dialog) {
        QCOMPARE(dialog.windowTitle(), QString("PIN: Operator"));
        enter(dialog, pins::kOperate);
    });
    QTest::keyClick(&started.panel.window(), Qt::Key_F12);
    QTRY_VERIFY(openedValues());
}

void tst_PanelRoles::panelWithoutPinsAsksForNothing()
{
    Alarmed alarmed("");
    QTest::mouseClick(alarmed.key("alarmSilence"), Qt::LeftButton);
    QTRY_VERIFY(!alarmed.panel.alarms().isSounding());
    QTest::mouseClick(&alarmed.bar(), Qt::LeftButton);
    QCOMPARE(alarmed.it().state, State::ActiveAcknowledged);
    QTest::keyClick(&alarmed.panel.window(), Qt::Key_F12);
    QVERIFY(openedValues());
}

NORVO_TEST(tst_PanelRoles)
#include "tst_PanelRoles.moc"
