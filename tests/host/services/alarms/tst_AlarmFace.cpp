// SPDX-License-Identifier: GPL-3.0-or-later

#include "AlarmPanel.h"
#include "TestMain.h"
#include "host/window/PanelWindow.h"
#include "host/window/alarms/AlarmBar.h"
#include "host/window/alarms/AlarmFace.h"
#include "host/window/alarms/AlarmList.h"
#include "host/window/strip/PanelStrip.h"

#include <QAccessible>

// Nothing else tells Qt that a screen reader is there; see cmake/debian-packages-test.txt.
#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

using norvo::AlarmBar;
using norvo::AlarmList;
using State = norvo::AlarmState;

namespace {

/// A panel with its window, as the operator has it before him.
struct Seen
{
    explicit Seen(const QVector<norvo::AlarmSetting>& alarms = {AlarmPanel::above80()},
                  const QString& table = {}, const QMap<QString, QString>& others = {})
        : face(panel.service, window, panel.listened.pages, table)
    {
        auto* const layout = new QVBoxLayout(window.page());
        layout->addWidget(&panel.listened.pages);
        panel.start(alarms, others);
        face.complete(panel.listened.panel);
        window.resize(900, 500);
        window.show();
        window.activateWindow();
    }
    ~Seen() { panel.listened.pages.setParent(nullptr); }

    void send(double value) const { emit panel.talker().output(value); }
    AlarmBar& bar() const { return *window.findChild<AlarmBar*>(); }
    QPushButton& key(const char* name) const
    {
        for (QWidget* const top : QApplication::topLevelWidgets()) {
            if (auto* const found = top->findChild<QPushButton*>(name)) {
                return *found;
            }
        }
        qFatal("no key %s", name);
    }
    AlarmList* list() const { return window.findChild<AlarmList*>(); }
    void choose(const char* box, int index) const
    {
        auto* const combo = window.findChild<QComboBox*>(box);
        combo->setFocus();
        QTest::keyClick(combo, Qt::Key_Home);
        for (int i = 0; i < index; ++i) {
            QTest::keyClick(combo, Qt::Key_Down);
        }
    }

    AlarmPanel panel;
    norvo::PanelWindow window{"Panel"};
    norvo::AlarmFace face;
};

norvo::AlarmSetting low()
{
    norvo::AlarmSetting setting = AlarmPanel::above80();
    setting.id = "low";
    setting.priority = norvo::AlarmPriority::Low;
    return setting;
}

/// Notes of what a screen reader is alerted.
class Reader
{
public:
    Reader() : m_before(QAccessible::installUpdateHandler(note))
    {
        s_alerts.clear();
        turn(true);
    }
    ~Reader()
    {
        turn(false);
        QAccessible::installUpdateHandler(m_before);
    }

    const QStringList& alerts() const { return s_alerts; }

private:
    static void turn(bool on)
    {
        QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(on);
    }
    static void note(QAccessibleEvent* event)
    {
        if (event->type() == QAccessible::Alert) {
            s_alerts.append(event->accessibleInterface()->text(QAccessible::Name));
        }
    }

    static inline QStringList s_alerts;
    const QAccessible::UpdateHandler m_before;
};

} // namespace

/// What the operator sees and does about alarms.
class tst_AlarmFace : public QObject
{
    Q_OBJECT

private slots:
    void stripIsHiddenWhileAllIsQuiet()
    {
        Seen seen;
        QTest::qWait(80);
        QVERIFY(seen.window.strip().isHidden());
        seen.send(81.5);
        QTRY_VERIFY(seen.window.strip().isVisible());
        QVERIFY2(seen.bar().line().startsWith("High  "), qPrintable(seen.bar().line()));
        QVERIFY(seen.bar().line().endsWith("Too hot (81.5)  –  active"));
        QCOMPARE(seen.key("alarmList").text(), QString("Alarms 1"));
    }

    void tapAcknowledgesTheWorst()
    {
        Seen seen({low(), AlarmPanel::above80()});
        seen.send(90);
        QTRY_VERIFY(seen.bar().isVisible());
        QTest::mouseClick(&seen.bar(), Qt::LeftButton);
        QCOMPARE(seen.panel.alarm().state, State::ActiveAcknowledged);
        QCOMPARE(seen.panel.alarm("low").state, State::ActiveUnacknowledged);
    }

    void holdAcknowledgesAll()
    {
        Seen seen({low(), AlarmPanel::above80()});
        seen.send(90);
        QTRY_VERIFY(seen.bar().isVisible());
        QTest::mousePress(&seen.bar(), Qt::LeftButton);
        QTRY_COMPARE(seen.panel.alarm("low").state, State::ActiveAcknowledged);
        QTest::mouseRelease(&seen.bar(), Qt::LeftButton);
        QCOMPARE(seen.panel.alarm().state, State::ActiveAcknowledged);
    }

    void everyStateIsSeenAndLeft()
    {
        Seen seen;
        const auto says = [&seen](const QString& state) {
            return seen.bar().isVisible() && seen.bar().line().endsWith("–  " + state);
        };
        seen.send(90); // normal -> active
        QTRY_VERIFY(says("active"));
        seen.send(10); // -> over, not acknowledged
        QTRY_VERIFY(says("over, not acknowledged"));
        seen.send(90); // -> active again
        QTRY_VERIFY(says("active"));
        QTest::mouseClick(&seen.bar(), Qt::LeftButton); // -> active, acknowledged
        QTRY_VERIFY(says("active, acknowledged"));
        seen.send(10); // -> normal
        QTRY_VERIFY(seen.bar().isHidden() || !seen.bar().isVisible());
        seen.send(90);
        seen.send(10);
        QTRY_VERIFY(says("over, not acknowledged"));
        QTest::mouseClick(&seen.bar(), Qt::LeftButton); // -> normal
        QTRY_VERIFY(!seen.bar().isVisible());
        QVERIFY(seen.window.strip().isHidden());
    }

    void delaysAndDeadBandAreSeen()
    {
        norvo::AlarmSetting setting = AlarmPanel::above80();
        setting.delay = norvo::Duration(300);
        setting.offDelay = norvo::Duration(300);
        setting.limit.deadband = 5;
        Seen seen({setting});
        seen.send(90);
        seen.send(10); // Shorter than the delay.
        QTest::qWait(400);
        QVERIFY(seen.window.strip().isHidden());
        seen.send(90);
        QVERIFY(seen.window.strip().isHidden());
        QTRY_VERIFY(seen.bar().isVisible());
        seen.send(76); // Within the dead band.
        QTest::qWait(400);
        QVERIFY(seen.bar().line().endsWith("–  active"));
        seen.send(75);
        QVERIFY(seen.bar().line().endsWith("–  active"));
        QTRY_VERIFY(seen.bar().line().endsWith("–  over, not acknowledged"));
    }

    void firstIsMarkedUntilItIsNormal()
    {
        norvo::AlarmSetting first = low();
        first.limit.number = 50;
        Seen seen({first, AlarmPanel::above80()});
        seen.send(60);
        seen.send(90);
        QTRY_COMPARE(seen.key("alarmList").text(), QString("Alarms 2"));
        QTest::mouseClick(&seen.key("alarmList"), Qt::LeftButton);
        const auto isMarked = [&seen](int row) {
            return seen.list()->item(row, 2)->text().contains("[first]");
        };
        QVERIFY(!isMarked(0)); // The worst.
        QVERIFY(isMarked(1));
        seen.panel.service.acknowledge({seen.panel.service.model().find("low")});
        seen.send(10);
        QTRY_COMPARE(seen.list()->rowCount(), 1);
        QVERIFY(!isMarked(0));
    }

    void shelfEndsByItselfAndTheStripComesBack()
    {
        Seen seen;
        seen.send(90);
        QTRY_VERIFY(seen.bar().isVisible());
        seen.panel.service.shelve({seen.panel.service.model().find("talker.output above 80")},
                                  norvo::Duration(300));
        QTRY_VERIFY(seen.window.strip().isHidden());
        QTRY_VERIFY(seen.bar().isVisible());
        QVERIFY(seen.bar().line().endsWith("–  active"));
    }

    void keyboardAloneAcknowledges()
    {
        Seen seen;
        seen.send(90);
        QTRY_VERIFY(seen.bar().isVisible());
        QVERIFY(QTest::qWaitForWindowActive(&seen.window));
        QTest::keyClick(&seen.window, Qt::Key_F8);
        QVERIFY(seen.bar().hasFocus());
        QTest::keyClick(&seen.bar(), Qt::Key_Space);
        QCOMPARE(seen.panel.alarm().state, State::ActiveAcknowledged);
    }

    void listOpensWithStateAndKeys()
    {
        norvo::AlarmSetting setting = AlarmPanel::above80();
        setting.help = "Close the valve";
        Seen seen({setting});
        seen.send(90);
        QTRY_VERIFY(seen.bar().isVisible());
        QTest::mouseClick(&seen.key("alarmList"), Qt::LeftButton);
        AlarmList* const list = seen.list();
        QVERIFY(list && list->isVisible());
        QCOMPARE(list->rowCount(), 1);
        QCOMPARE(list->item(0, 0)->text(), QString("High"));
        QCOMPARE(list->item(0, 2)->text(), QString("Too hot (90)  [first]  –  Close the valve"));
        QCOMPARE(list->item(0, 3)->text(), QString("talker"));
        QCOMPARE(list->item(0, 4)->text(), QString("active"));
        QVERIFY(seen.key("alarmAcknowledge").isEnabled()); // The worst is selected.
        list->clearSelection();
        QVERIFY(!seen.key("alarmAcknowledge").isEnabled());
        list->setCurrentCell(0, 0);
        QTest::mouseClick(&seen.key("alarmAcknowledge"), Qt::LeftButton);
        QCOMPARE(seen.panel.alarm().state, State::ActiveAcknowledged);
        QTRY_COMPARE(list->item(0, 4)->text(), QString("active, acknowledged"));
        QVERIFY(!seen.key("alarmAcknowledge").isEnabled());
    }

    void listIsFiltered()
    {
        Seen seen({low(), AlarmPanel::above80()});
        seen.send(90);
        QTRY_VERIFY(seen.bar().isVisible());
        QTest::mouseClick(&seen.key("alarmList"), Qt::LeftButton);
        AlarmList* const list = seen.list();
        QCOMPARE(list->rowCount(), 2);
        seen.choose("alarmPriority", 1);
        QCOMPARE(list->rowCount(), 1);
        QCOMPARE(list->item(0, 0)->text(), QString("High"));
        seen.choose("alarmPriority", 2);
        QCOMPARE(list->rowCount(), 0);
        seen.choose("alarmPriority", 0);
        seen.choose("alarmView", 2);
        QCOMPARE(list->rowCount(), 2);
        QCOMPARE(list->item(0, 4)->text(), QString("began"));
    }

    void shelvedAlarmIsInTheListOfThese()
    {
        Seen seen;
        seen.send(90);
        QTRY_VERIFY(seen.bar().isVisible());
        QTest::mouseClick(&seen.key("alarmList"), Qt::LeftButton);
        seen.list()->setCurrentCell(0, 0);
        QTRY_VERIFY(seen.key("alarmShelve").isEnabled());
        QTest::mouseClick(&seen.key("alarmShelve"), Qt::LeftButton);
        auto* const times = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QVERIFY(times);
        times->setActiveAction(times->actions().constFirst());
        QTest::keyClick(times, Qt::Key_Return);
        QVERIFY(seen.panel.alarm().isShelved());
        QTRY_VERIFY(seen.window.strip().isHidden());
        QTRY_COMPARE(seen.list()->rowCount(), 0);
        seen.choose("alarmView", 1);
        QCOMPARE(seen.list()->rowCount(), 1);
        QVERIFY(seen.list()->item(0, 4)->text().startsWith("shelved until "));
        seen.list()->setCurrentCell(0, 0);
        QTRY_COMPARE(seen.key("alarmShelve").text(), QString("Take from the shelf"));
        QTest::mouseClick(&seen.key("alarmShelve"), Qt::LeftButton);
        QTRY_VERIFY(seen.window.strip().isVisible());
    }

    void pageOfTheDeviceIsMarkedAndFound()
    {
        norvo::AlarmSetting setting = AlarmPanel::above80();
        setting.device = "tank";
        Seen seen({setting}, {}, {{"tank", "shown Two"}, {"pump", "shown One"}});
        auto* const tabs = seen.window.findChild<QTabWidget*>();
        QVERIFY(tabs);
        const int two = tabs->tabText(0) == "Two" ? 0 : 1;
        tabs->setCurrentIndex(1 - two);
        emit seen.panel.listened.device<Shown>("tank").output(90);
        QTRY_VERIFY(seen.bar().isVisible());
        const QList<QWidget*> dots = seen.window.findChildren<QWidget*>("alarmDot");
        QCOMPARE(dots.size(), 1);
        QVERIFY(dots[0]->isVisible());
        QCOMPARE(qobject_cast<QPushButton*>(dots[0]->parentWidget())->text(), QString("Two"));

        QTest::mouseClick(&seen.key("alarmList"), Qt::LeftButton);
        seen.choose("alarmPageFilter", 2 - two); // The other page.
        QCOMPARE(seen.list()->rowCount(), 0);
        seen.choose("alarmPageFilter", 1 + two);
        QCOMPARE(seen.list()->rowCount(), 1);
        seen.list()->setCurrentCell(0, 0);
        QTRY_VERIFY(seen.key("alarmGoTo").isEnabled());
        QTest::mouseClick(&seen.key("alarmGoTo"), Qt::LeftButton);
        QCOMPARE(tabs->currentIndex(), two);
        QTRY_VERIFY(seen.window.findChild<QWidget*>("deviceFrame"));

        QTest::mouseClick(&seen.bar(), Qt::LeftButton);
        emit seen.panel.listened.device<Shown>("tank").output(10);
        QTRY_VERIFY(!dots[0]->isVisible());
    }

    void historyIsSavedAsATable()
    {
        QTemporaryDir folder;
        const QString file = folder.filePath("x.alarms.csv");
        Seen seen({AlarmPanel::above80()}, file);
        seen.send(90);
        QTRY_VERIFY(seen.bar().isVisible());
        QTest::mouseClick(&seen.key("alarmList"), Qt::LeftButton);
        QTest::mouseClick(&seen.key("alarmTable"), Qt::LeftButton);
        QFile table(file);
        QVERIFY(table.open(QIODevice::ReadOnly));
        QCOMPARE(table.readAll().count('\n'), 2);
    }

    void screenReaderIsAlertedWhenOneBegins()
    {
        const Reader reader;
        Seen seen;
        seen.send(90);
        QTRY_COMPARE(reader.alerts().size(), 1);
        const QString told = reader.alerts().constFirst();
        QVERIFY2(told.contains("Too hot (90)"), qPrintable(told));
        QTRY_VERIFY(seen.bar().isVisible());
        QTest::mouseClick(&seen.bar(), Qt::LeftButton);
        seen.send(10);
        QTRY_VERIFY(seen.window.strip().isHidden());
        QCOMPARE(reader.alerts().size(), 1);
        seen.send(90);
        QTRY_COMPARE(reader.alerts().size(), 2);
    }

    void soundIsSilencedByItsKey()
    {
        Seen seen;
        QVERIFY(seen.key("alarmSilence").isHidden());
        seen.send(90);
        QTRY_VERIFY(seen.key("alarmSilence").isVisible());
        QTest::mouseClick(&seen.key("alarmSilence"), Qt::LeftButton);
        QTRY_COMPARE(seen.key("alarmSilence").text(), QString("Silenced"));
        QVERIFY(!seen.key("alarmSilence").isEnabled());
        QCOMPARE(seen.panel.alarm().state, State::ActiveUnacknowledged);
    }

    void signBlinksOnceASecondUntilItIsAcknowledged()
    {
        QVERIFY(1000 / (2 * AlarmBar::kBlinkMs) <= 2); // Hz, at most
        Seen seen;
        seen.send(90);
        QTRY_VERIFY(seen.bar().isVisible());
        const QImage lit = seen.bar().grab().toImage();
        QTRY_VERIFY(seen.bar().grab().toImage() != lit);
        QTRY_COMPARE(seen.bar().grab().toImage(), lit);
    }
};

NORVO_TEST(tst_AlarmFace)

#include "tst_AlarmFace.moc"
