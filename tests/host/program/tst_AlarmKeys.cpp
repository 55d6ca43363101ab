// SPDX-License-Identifier: GPL-3.0-or-later

#include "StartedPanel.h"
#include "TestMain.h"
#include "host/window/PanelPages.h"
#include "host/window/alarms/AlarmList.h"
#include "host/window/sheet/Sheet.h"

#include <QComboBox>
#include <QMenu>
#include <QTabWidget>

using norvo::AlarmList;
using State = norvo::AlarmState;

namespace {

const QByteArray kPanel(
    "devices:\n"
    "  level: {device: slider, params: {widget/area: One}}\n"
    "  speed: {device: slider, params: {widget/area: Two}}\n"
    "alarms:\n"
    "  - {signal: level.output(double), above: 50, text: Too high, priority: high, help: Pump.}\n"
    "  - {signal: speed.output(double), above: 50, text: Too fast, priority: low}\n");
const char kHigh[] = "level.output(double) above 50";
const char kFast[] = "speed.output(double) above 50";

/// Until a sheet that has just opened has the keyboard.
void awaitKeyboard()
{
    QWidget* const sheet = QApplication::activeModalWidget();
    if (sheet && !QApplication::activePopupWidget() &&
        !QTest::qWaitFor([sheet] { return QApplication::activeWindow() == sheet; })) {
        qFatal("the sheet has no keyboard");
    }
}

/// A key as the keyboard sends it: to what has the focus, whatever that is.
void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
{
    awaitKeyboard();
    QWidget* const popup = QApplication::activePopupWidget();
    QWidget* const focus = QApplication::focusWidget();
    QTest::keyClick(popup ? popup : focus ? focus : QApplication::activeWindow(), key, modifiers);
}

QString focusName()
{
    awaitKeyboard();
    const QWidget* const focus = QApplication::focusWidget();
    return focus ? focus->objectName() : QString();
}

/// Tab, until the part of that name has the focus.
bool tabTo(const QString& name)
{
    for (int i = 0; i < 20; ++i) {
        if (focusName() == name) {
            return true;
        }
        press(Qt::Key_Tab);
    }
    return false;
}

/// With both alarms, the high one first.
class Keyed : public StartedPanel
{
public:
    Keyed() : StartedPanel(kPanel)
    {
        send("level", 60);
        send("speed", 60);
        if (!QTest::qWaitFor(
                [this] { return panel.window().findChild<QWidget*>("alarmBar")->isVisible(); })) {
            qFatal("no strip");
        }
    }

    AlarmList* openList()
    {
        press(Qt::Key_F8);
        press(Qt::Key_F8);
        awaitKeyboard();
        return list();
    }
    AlarmList* list() { return panel.window().findChild<AlarmList*>(); }
};

} // namespace

/// The list of alarms by somebody who has a keyboard and nothing else.
class tst_AlarmKeys : public QObject
{
    Q_OBJECT

private slots:
    void listOpensAndClosesByKey();
    void rowsAreReachedByArrows();
    void alarmsAreAcknowledgedByKey();
    void alarmIsShelvedAndTakenBackByKey();
    void listIsFilteredByKeys();
    void enterGoesToTheDevice();
    void helpOfTheStripOpensByKey();
};

void tst_AlarmKeys::listOpensAndClosesByKey()
{
    Keyed keyed;
    press(Qt::Key_F8);
    QCOMPARE(focusName(), QString("alarmBar"));
    press(Qt::Key_F8);
    awaitKeyboard();
    QVERIFY(keyed.list() && keyed.list()->hasFocus());
    QCOMPARE(keyed.list()->currentRow(), 0);
    press(Qt::Key_Escape);
    QTRY_VERIFY(!keyed.list());
    QTRY_VERIFY(keyed.panel.window().isActiveWindow());

    StartedPanel quiet(kPanel); // F8 opens it at once where there is nothing to acknowledge.
    press(Qt::Key_F8);
    QVERIFY(quiet.panel.window().findChild<AlarmList*>());
}

void tst_AlarmKeys::rowsAreReachedByArrows()
{
    Keyed keyed;
    const AlarmList& list = *keyed.openList();
    QCOMPARE(list.rowCount(), 2);
    QCOMPARE(list.item(0, 2)->text().left(8), QString("Too high"));
    const auto selected = [&list] { return list.selectedAlarms(); };
    const norvo::AlarmModel& model = keyed.panel.alarms().model();
    QCOMPARE(selected(), QVector<int>{model.find(kHigh)});
    press(Qt::Key_Down);
    QCOMPARE(selected(), QVector<int>{model.find(kFast)});
    press(Qt::Key_Up, Qt::ShiftModifier);
    QCOMPARE(selected().size(), 2);
    QTest::qWait(2 * AlarmList::kIntervalMs);
    keyed.send("level", 61); // What changes meanwhile takes nothing from the selection.
    keyed.send("level", 10);
    QTRY_COMPARE(list.item(0, 4)->text(), QString("over, not acknowledged"));
    QCOMPARE(selected().size(), 2);
    QVERIFY(list.hasFocus());
    press(Qt::Key_Down);
    QCOMPARE(selected().size(), 1);
}

void tst_AlarmKeys::alarmsAreAcknowledgedByKey()
{
    Keyed keyed;
    keyed.openList();
    QVERIFY(tabTo("alarmAcknowledge"));
    press(Qt::Key_Space);
    QCOMPARE(keyed.alarm(kHigh).state, State::ActiveAcknowledged);
    QCOMPARE(keyed.alarm(kFast).state, State::ActiveUnacknowledged);
    QCOMPARE(focusName(), QString("alarms")); // On with the next.
    QVERIFY(tabTo("alarmAcknowledgeAll"));
    press(Qt::Key_Space);
    QCOMPARE(keyed.alarm(kFast).state, State::ActiveAcknowledged);
}

void tst_AlarmKeys::alarmIsShelvedAndTakenBackByKey()
{
    Keyed keyed;
    const AlarmList& list = *keyed.openList();
    QVERIFY(tabTo("alarmShelve"));
    press(Qt::Key_Space);
    QVERIFY(qobject_cast<QMenu*>(QApplication::activePopupWidget()));
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    QApplication::activeModalWidget()->activateWindow(); // As a window manager has it.
    QVERIFY(keyed.alarm(kHigh).isShelved());
    QTRY_COMPARE(list.rowCount(), 1);
    QVERIFY(tabTo("alarmView"));
    press(Qt::Key_Down);
    QCOMPARE(list.rowCount(), 1);
    QVERIFY(list.item(0, 4)->text().startsWith("shelved until "));
    QVERIFY(tabTo("alarms"));
    press(Qt::Key_Space);
    QVERIFY(tabTo("alarmShelve"));
    press(Qt::Key_Space);
    QVERIFY(!keyed.alarm(kHigh).isShelved());
}

void tst_AlarmKeys::listIsFilteredByKeys()
{
    Keyed keyed;
    const AlarmList& list = *keyed.openList();
    QVERIFY(tabTo("alarmPriority"));
    press(Qt::Key_End);
    QCOMPARE(list.rowCount(), 1);
    QVERIFY(list.item(0, 2)->text().startsWith("Too fast"));
    press(Qt::Key_Home);
    QVERIFY(tabTo("alarmPageFilter"));
    press(Qt::Key_Down);
    QCOMPARE(list.rowCount(), 1);
    QVERIFY(list.item(0, 2)->text().startsWith("Too high"));
}

void tst_AlarmKeys::enterGoesToTheDevice()
{
    Keyed keyed;
    auto* const tabs = keyed.panel.window().findChild<QTabWidget*>();
    tabs->setCurrentIndex(0);
    keyed.openList();
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    QTRY_VERIFY(!keyed.list());
    QCOMPARE(tabs->currentIndex(), 1);
    QTRY_VERIFY(keyed.panel.window().findChild<QWidget*>("deviceFrame"));
}

void tst_AlarmKeys::helpOfTheStripOpensByKey()
{
    Keyed keyed;
    press(Qt::Key_F8);
    QVERIFY(tabTo("alarmHelp"));
    press(Qt::Key_Space);
    auto* const sheet = qobject_cast<norvo::Sheet*>(QApplication::activeModalWidget());
    QVERIFY(sheet);
    QCOMPARE(sheet->windowTitle(), QString("Too high"));
    QCOMPARE(sheet->findChild<QLabel*>("alarmHelpText")->text(), QString("Pump."));
    press(Qt::Key_Escape);
    QTRY_VERIFY(!QApplication::activeModalWidget());
    QTRY_COMPARE(focusName(), QString("alarmHelp"));
    keyed.openList();
    auto* const help = keyed.key<QLabel>("alarmHelpText");
    QCOMPARE(help->text(), QString("Pump."));
    QVERIFY(help->isVisible());
    press(Qt::Key_Down); // That one has none.
    QVERIFY(!help->isVisible());
}

NORVO_TEST(tst_AlarmKeys)
#include "tst_AlarmKeys.moc"
