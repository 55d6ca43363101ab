// SPDX-License-Identifier: GPL-3.0-or-later

#include "GuardedPanel.h"
#include "HandWays.h"
#include "host/window/access/GuardedControl.h"
#include "host/window/access/LockKey.h"
#include "host/window/access/LockMark.h"
#include "host/window/strip/PanelStrip.h"
#include "TestMain.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QQuickItem>
#include <QQuickWidget>

using namespace norvo;

namespace {

const QByteArray kDevices =
    "devices:\n"
    "  pump: {device: button, params: {text: \"&Pump\"}}\n"
    "  step: {device: button, params: {text: Step, mode: click}}\n"
    "  agree: {device: checkbox, params: {widget/label: Agree}}\n"
    "  speed: {device: slider, params: {widget/orientation: horizontal, widget/maxValue: 10}}\n"
    "  mode: {device: dropdownlist, params: {options: Slow|Fast|Full}}\n"
    "  target: {device: input, params: {type: spin, min: 0, max: 50}}\n"
    "  rate: {device: input, params: {type: double}}\n"
    "  name: {device: input, params: {type: string}}\n"
    "  face: {device: qml_widget, params: {sourceType: file, sourceData: \"" NORVO_SOURCE_DIR
    "/tests/host/window/access/Face.qml\"}}\n"
    "  jog: {device: hold, params: {text: Jog}}\n"
    "  halt: {device: stop, access: operate}\n"
    "  shown: {device: label, params: {Value: x}}\n";

} // namespace

/// What a locked control takes, by every way: nothing.
class tst_Lock : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        Accessibility::install(&GuardedControl::make);
    } // As the program does, before all widgets.
    void lockedControlTakesNothing_data();
    void lockedControlTakesNothing();
    void openControlTakesIt_data();
    void openControlTakesIt();
    void valuesByWireReachALockedControl();
    void panelWithoutPinsHasNoLock();
    void markStandsOverLockedControlsOnly();
    void padlockStaysWithinASmallControl();
    void tapOnALockedControlOpensItByPin();
    void keyboardAloneUnlocks();
    void wrongPinIsTold();
    void engineersControlStaysLockedToOperators();
    void lockKeyLocksAtOnce();
    void handThatIsOnAtTheLockLetsGo_data();
    void handThatIsOnAtTheLockLetsGo();
    void dialogThatIsOpenAtTheLockIsClosed();
    void listThatIsOpenAtTheLockIsClosed();
    void tabPassesALockedControl();
    void stopIsFreeUnlessThePanelLocksIt();
};

void tst_Lock::lockedControlTakesNothing_data()
{
    QTest::addColumn<QString>("id");
    for (const char* id : {"pump", "step", "agree", "speed", "mode", "target", "rate", "name",
                           "face", "jog", "halt"}) {
        QTest::newRow(id) << id;
    }
}

void tst_Lock::lockedControlTakesNothing()
{
    QFETCH(QString, id);
    GuardedPanel shown(GuardedPanel::pinsInFile() + kDevices);
    QWidget* const part = shown.part(id);
    QVERIFY(part);
    QApplication::clipboard()->setText("5");
    shown.sent.clear();
    for (auto way = ways::all().cbegin(); way != ways::all().cend(); ++way) {
        const ModalDialog pad([](QWidget&) {});
        (*way)(*part);
        QTest::qWait(30); // A PIN pad that this has opened is closed.
        QVERIFY2(shown.sent.isEmpty(), qPrintable(way.key() + ": " + shown.sent.join(", ")));
    }
}

void tst_Lock::openControlTakesIt_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QString>("way");
    const auto row = [](const char* id, const QStringList& ways) {
        for (const QString& way : ways) {
            QTest::addRow("%s, %s", id, qPrintable(way)) << id << way;
        }
    };
    row("pump", {"click", "touch", "Space", "mnemonic", "accessible toggle"});
    row("step", {"click", "touch", "Space", "accessible press"});
    row("agree", {"click", "touch", "Space", "accessible toggle"});
    row("speed",
        {"click", "touch", "touch drag", "wheel", "Up", "Page up", "End", "accessible value"});
    row("mode", {"Down", "wheel", "End", "letter"});
    row("target", {"Up", "wheel", "accessible value"});
    row("rate", {"digit", "paste", "drop", "input method", "accessible text"});
    row("name", {"digit", "letter", "paste", "drop", "input method", "accessible text"});
    row("face", {"click", "touch", "letter", "wheel"});
    row("jog", {"click", "touch", "Space"});
    row("halt", {"click", "touch", "Space"});
}

/// That the test above can fail.
void tst_Lock::openControlTakesIt()
{
    QFETCH(QString, id);
    QFETCH(QString, way);
    GuardedPanel shown(GuardedPanel::pinsInFile() + kDevices);
    shown.unlock();
    QWidget* const part = shown.part(id);
    QApplication::clipboard()->setText("5");
    shown.sent.clear();
    ways::all().value(way)(*part);
    QTRY_VERIFY(!shown.sent.isEmpty());
}

void tst_Lock::valuesByWireReachALockedControl()
{
    GuardedPanel shown(GuardedPanel::pinsInFile() + kDevices);
    QVERIFY(QMetaObject::invokeMethod(shown.panel.device("speed"), "input", Q_ARG(double, 7)));
    QCOMPARE(shown.only<QSlider>("speed")->value(), 7);
    QVERIFY(QMetaObject::invokeMethod(shown.panel.device("pump"), "click"));
    QVERIFY(shown.sent.contains("pump clicked()"));
}

void tst_Lock::panelWithoutPinsHasNoLock()
{
    GuardedPanel shown("devices: {pump: {device: button}}\n");
    QVERIFY(!shown.face.access());
    QVERIFY(!shown.window.findChild<LockKey*>());
    QVERIFY(!shown.window.findChild<LockMark*>());
    QVERIFY(!shown.window.strip().isVisible());
    QTest::mouseClick(shown.part("pump"), Qt::LeftButton);
    QVERIFY(!shown.sent.isEmpty());
}

void tst_Lock::markStandsOverLockedControlsOnly()
{
    GuardedPanel shown(GuardedPanel::pinsInFile() + kDevices);
    const auto marks = shown.window.findChildren<LockMark*>();
    QCOMPARE(marks.size(), 11);
    for (const LockMark* mark : marks) {
        QVERIFY(mark->isVisible());
    }
    const QRect label = shown.panel.widget("shown")->geometry();
    QVERIFY(std::none_of(marks.cbegin(), marks.cend(), [&label](const LockMark* mark) {
        return mark->geometry().intersects(label);
    }));
    shown.unlock();
    QVERIFY(std::none_of(marks.cbegin(), marks.cend(),
                         [](const LockMark* mark) { return mark->isVisible(); }));
    shown.face.access()->lock();
    QVERIFY(marks.first()->isVisible());
}

void tst_Lock::padlockStaysWithinASmallControl()
{
    QWidget page;
    QWidget control(&page);
    control.setGeometry(10, 10, 40, 16);
    LockMark mark(control);
    QImage image(40, 16, QImage::Format_RGB32);
    image.fill(Qt::red);
    mark.render(&image, {}, {}, {});
    const QColor disc = mark.palette().color(QPalette::Window);
    QVERIFY(image.pixelColor(26, 5) == disc || image.pixelColor(26, 8) == disc);
    for (int y = 0; y < image.height(); ++y) {
        QVERIFY(image.pixelColor(20, y) != disc); // Left of it there is the veil alone.
    }
}

void tst_Lock::tapOnALockedControlOpensItByPin()
{
    GuardedPanel shown(GuardedPanel::pinsInFile() + kDevices);
    const ModalDialog pad([](QWidget& dialog) {
        for (const QChar digit : pins::kOperate) {
            tap(dialog, QString("key") + digit);
        }
        tap(dialog, "ok");
    });
    ways::tapByTouch(*shown.part("pump"));
    QTRY_COMPARE(shown.face.access()->role(), Role::Operate);
    QCOMPARE(shown.sent, QStringList()); // The tap itself is lost.
    QTest::mouseClick(shown.part("pump"), Qt::LeftButton);
    QVERIFY(shown.sent.contains("pump toggled(bool)"));
}

void tst_Lock::keyboardAloneUnlocks()
{
    GuardedPanel shown(GuardedPanel::pinsInFile() + kDevices);
    const ModalDialog pad([](QWidget& dialog) {
        QTest::keyClicks(&dialog, pins::kOperate);
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    shown.part("pump")->setFocus();
    QTest::keyClick(shown.part("pump"), Qt::Key_Space);
    QTRY_COMPARE(shown.face.access()->role(), Role::Operate);
    QTest::keyClick(shown.window.windowHandle(), Qt::Key_L, Qt::ControlModifier);
    QTRY_VERIFY(shown.face.access()->isLocked());
}

void tst_Lock::wrongPinIsTold()
{
    GuardedPanel shown(GuardedPanel::pinsInFile() + kDevices);
    QStringList labels;
    QTimer hand; // Each pad opens within the wait for the one before.
    hand.callOnTimeout([&labels] {
        QWidget* const dialog = QApplication::activeModalWidget();
        if (dialog && dialog->objectName() == "PinDialog") {
            labels.append(dialog->findChild<QLabel*>("label")->text().section('\n', 0, 0));
            QTest::keyClicks(dialog, "0000");
            QTest::keyClick(dialog, Qt::Key_Return);
        } else if (dialog) {
            labels.append(dialog->objectName());
            dialog->close();
        }
    });
    hand.start(10);
    QTest::mouseClick(shown.window.findChild<LockKey*>(), Qt::LeftButton);
    QTRY_COMPARE(labels, (QStringList{"PIN: Operator", "This PIN is wrong.", "This PIN is wrong.",
                                      "waitForPin"}));
    QVERIFY(shown.face.access()->isLocked());
    QCOMPARE(shown.sent, QStringList());
}

void tst_Lock::engineersControlStaysLockedToOperators()
{
    GuardedPanel shown(GuardedPanel::pinsInFile() + "devices:\n"
                                                    "  pump: {device: button, access: engineer}\n"
                                                    "  free: {device: button, access: view}\n");
    QTest::mouseClick(shown.part("free"), Qt::LeftButton);
    QVERIFY(shown.sent.contains("free toggled(bool)"));
    shown.unlock();
    shown.sent.clear();
    {
        const ModalDialog pad([](QWidget&) {});
        QTest::mouseClick(shown.part("pump"), Qt::LeftButton);
        QTRY_COMPARE(pad.count(), 1);
    }
    QCOMPARE(shown.sent, QStringList());
    QVERIFY(shown.face.access()->tryPin(pins::kEngineer, Role::Engineer));
    QTRY_COMPARE(shown.face.access()->role(), Role::Engineer);
    QTest::mouseClick(shown.part("pump"), Qt::LeftButton);
    QVERIFY(shown.sent.contains("pump toggled(bool)"));
}

void tst_Lock::lockKeyLocksAtOnce()
{
    GuardedPanel shown(GuardedPanel::pinsInFile() + kDevices);
    shown.unlock();
    auto* const key = shown.window.findChild<LockKey*>();
    QVERIFY(key && key->isVisible());
    ways::tapByTouch(*key);
    QVERIFY(shown.face.access()->isLocked());
}

void tst_Lock::handThatIsOnAtTheLockLetsGo_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QStringList>("sent");
    QTest::newRow("button") << "step" << QStringList();
    QTest::newRow("latched button") << "pump" << QStringList();
    QTest::newRow("slider") << "speed" << QStringList();
    QTest::newRow("held key") << "jog" << QStringList{"jog held(bool)", "jog released()"};
}

void tst_Lock::handThatIsOnAtTheLockLetsGo()
{
    QFETCH(QString, id);
    GuardedPanel shown(GuardedPanel::pinsInFile() + kDevices);
    shown.unlock();
    QWidget* const part = shown.part(id);
    QTest::mousePress(part, Qt::LeftButton);
    shown.sent.clear();
    shown.face.access()->lock();
    QTEST(shown.sent, "sent");
    shown.sent.clear();
    QTest::mouseRelease(part, Qt::LeftButton);
    QTest::qWait(50);
    QCOMPARE(shown.sent, QStringList());
    const auto* const button = qobject_cast<QAbstractButton*>(part);
    QVERIFY(!button || !button->isDown());
}

void tst_Lock::dialogThatIsOpenAtTheLockIsClosed()
{
    GuardedPanel shown(
        GuardedPanel::pinsInFile() +
        "devices:\n"
        "  target: {device: input, params: {type: spin, use screen numpad: true}}\n");
    shown.unlock();
    auto* const spin = shown.only<QDoubleSpinBox>("target");
    shown.sent.clear();
    const ModalDialog pad([&shown](QWidget& dialog) {
        QTest::keyClick(&dialog, Qt::Key_4);
        shown.face.access()->lock();
        QVERIFY(!dialog.isVisible());
    });
    QTest::mouseClick(spin->findChild<QLineEdit*>(), Qt::LeftButton);
    QCOMPARE(pad.count(), 1);
    QCOMPARE(shown.sent, QStringList());
    QCOMPARE(spin->value(), 0.0);
}

void tst_Lock::listThatIsOpenAtTheLockIsClosed()
{
    GuardedPanel shown(GuardedPanel::pinsInFile() + kDevices);
    shown.unlock();
    auto* const list = shown.only<QComboBox>("mode");
    list->showPopup();
    QVERIFY(list->view()->isVisible());
    shown.sent.clear();
    shown.face.access()->lock();
    QVERIFY(!list->view()->isVisible());
    QCOMPARE(shown.sent, QStringList());
}

void tst_Lock::tabPassesALockedControl()
{
    GuardedPanel shown(GuardedPanel::pinsInFile() + kDevices);
    for (const char* id : {"pump", "speed", "mode", "name", "face"}) {
        QWidget* const part = shown.part(id);
        part->setFocus();
        QVERIFY2(part->hasFocus(), id);
        QTest::keyClick(part, Qt::Key_Tab);
        QVERIFY2(!part->hasFocus(), id);
    }
}

void tst_Lock::stopIsFreeUnlessThePanelLocksIt()
{
    GuardedPanel shown(GuardedPanel::pinsInFile() + "devices: {halt: {device: stop}}\n");
    QTest::mousePress(shown.part("halt"), Qt::LeftButton);
    QVERIFY(shown.sent.contains("halt stopped(bool)"));
}

NORVO_TEST(tst_Lock)
#include "tst_Lock.moc"
