// SPDX-License-Identifier: GPL-3.0-or-later

#include "AskedPanel.h"
#include "TestMain.h"
#include "host/window/access/GuardedControl.h"

using namespace norvo;
using namespace asked;

/// What asks before a control changes: nothing passes it but a wire.
class tst_Confirm : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        Accessibility::install(&GuardedControl::make);
    } // As the program does, before all widgets.
    void nothingPassesTheQuestion_data();
    void nothingPassesTheQuestion();
    void yesDoesWhatWasMeant_data();
    void yesDoesWhatWasMeant();
    void stateThatCameMeanwhileIsNotTurnedRound();
    void wireIsNotAsked();
    void valuesByWireReachIt();
    void lockClosesTheQuestion();
    void lockedControlIsNotAsked();
};

void tst_Confirm::nothingPassesTheQuestion_data()
{
    QTest::addColumn<QString>("id");
    for (const char* id :
         {"pump", "step", "agree", "speed", "mode", "target", "rate", "name", "face"}) {
        QTest::newRow(id) << id;
    }
}

void tst_Confirm::nothingPassesTheQuestion()
{
    QFETCH(QString, id);
    GuardedPanel shown(kDevices);
    QWidget* const part = shown.part(id);
    QApplication::clipboard()->setText("5");
    const QString before = stateOf(part);
    shown.sent.clear();
    for (auto way = ways::all().cbegin(); way != ways::all().cend(); ++way) {
        const ModalDialog question([](QWidget&) {}); // Closed: No.
        (*way)(*part);
        if (QWidget* const popup = QApplication::activePopupWidget()) {
            popup->close();
        }
        QTest::qWait(30);
        QVERIFY2(shown.sent.isEmpty(), qPrintable(way.key() + ": " + shown.sent.join(", ")));
        QVERIFY2(stateOf(part) == before, qPrintable(way.key() + ": " + stateOf(part)));
    }
}

void tst_Confirm::yesDoesWhatWasMeant_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QString>("way");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("asked");
    QTest::addColumn<QString>("state");
    const QStringList pressing{"click", "touch", "Space"};
    for (const QString& way : pressing + QStringList{"mnemonic", "accessible toggle"}) {
        QTest::addRow("latched button, %s", qPrintable(way)) << "pump" << way << "Start pump 1?"
                                                             << "&Pump: on"
                                                             << "on";
    }
    for (const QString& way : pressing + QStringList{"accessible press"}) {
        QTest::addRow("button, %s", qPrintable(way)) << "step" << way << "Really operate Step?"
                                                     << "Step"
                                                     << "off";
    }
    for (const QString& way : pressing + QStringList{"accessible toggle"}) {
        QTest::addRow("check box, %s", qPrintable(way)) << "agree" << way << "Really operate Agree?"
                                                        << "Agree: on"
                                                        << "on";
    }
    const QString slider = "Really operate speed?";
    QTest::newRow("slider, Up") << "speed"
                                << "Up" << slider << "speed: 1"
                                << "1";
    QTest::newRow("slider, Page up") << "speed"
                                     << "Page up" << slider << "speed: 10"
                                     << "10";
    QTest::newRow("slider, End") << "speed"
                                 << "End" << slider << "speed: 10"
                                 << "10";
    QTest::newRow("slider, accessible") << "speed"
                                        << "accessible value" << slider << "speed: 7"
                                        << "7";
    const QString list = "Really operate mode?";
    QTest::newRow("list, Down") << "mode"
                                << "Down" << list << "mode: Fast"
                                << "Fast";
    QTest::newRow("list, End") << "mode"
                               << "End" << list << "mode: Full"
                               << "Full";
    QTest::newRow("list, letter") << "mode"
                                  << "letter" << list << "mode: Fast"
                                  << "Fast";
    QTest::newRow("spin box, Up") << "target"
                                  << "Up"
                                  << "Really operate Target?"
                                  << "Target: 0.10"
                                  << "0.10";
    QTest::newRow("scene, click") << "face"
                                  << "click"
                                  << "Really operate face?"
                                  << "face"
                                  << "";
    QTest::newRow("scene, letter") << "face"
                                   << "letter"
                                   << "Really operate face?"
                                   << "face"
                                   << "";
    QTest::newRow("scene, Space") << "face"
                                  << "Space"
                                  << "Really operate face?"
                                  << "face"
                                  << "";
    QTest::newRow("slider, touch") << "speed"
                                   << "touch" << slider << "speed: 10"
                                   << "10";
    QTest::newRow("slider, touch drag") << "speed"
                                        << "touch drag" << slider << "speed: 10"
                                        << "10";
    QTest::newRow("slider, wheel") << "speed"
                                   << "wheel" << slider << "speed: 6"
                                   << "6";
    QTest::newRow("scene, touch") << "face"
                                  << "touch"
                                  << "Really operate face?"
                                  << "face"
                                  << "";
}

void tst_Confirm::yesDoesWhatWasMeant()
{
    QFETCH(QString, id);
    QFETCH(QString, way);
    GuardedPanel shown(kDevices);
    QWidget* const part = shown.part(id);
    shown.sent.clear();
    ways::all().value(way)(*part);
    QTRY_VERIFY(openQuestion());
    QuestionSheet& question = *openQuestion();
    QTEST(question.windowTitle(), "title");
    QTEST(question.findChild<QLabel*>("value")->text(), "asked");
    QCOMPARE(shown.sent, QStringList());
    const QSignalSpy confirmed(&shown.face, &AccessFace::confirmed);
    sayYes(question);
    QTRY_VERIFY(!shown.sent.isEmpty());
    QTEST(stateOf(part), "state");
    QCOMPARE(confirmed.size(), 1);
    QCOMPARE(confirmed[0][0].toString(), id);
    QTRY_VERIFY(!openQuestion());
}

void tst_Confirm::stateThatCameMeanwhileIsNotTurnedRound()
{
    GuardedPanel shown(kDevices);
    ways::click(*shown.part("pump"));
    QTRY_VERIFY(openQuestion());
    QVERIFY(QMetaObject::invokeMethod(shown.panel.device("pump"), "setToggled", Q_ARG(bool, true)));
    QCOMPARE(stateOf(shown.part("pump")), QString("on"));
    shown.sent.clear();
    sayYes(*openQuestion());
    QTRY_VERIFY(!openQuestion());
    QCOMPARE(stateOf(shown.part("pump")), QString("on"));
    QCOMPARE(shown.sent, QStringList());
}

void tst_Confirm::wireIsNotAsked()
{
    GuardedPanel shown(kDevices);
    shown.sent.clear();
    ways::click(*shown.part("other"));
    QVERIFY(!openQuestion());
    QVERIFY(shown.sent.contains("step clicked()"));
}

void tst_Confirm::valuesByWireReachIt()
{
    GuardedPanel shown(kDevices);
    ways::click(*shown.part("pump"));
    QTRY_VERIFY(openQuestion());
    QVERIFY(QMetaObject::invokeMethod(shown.panel.device("speed"), "input", Q_ARG(double, 3)));
    QCOMPARE(shown.only<QSlider>("speed")->value(), 3);
    openQuestion()->reject();
}

void tst_Confirm::lockClosesTheQuestion()
{
    GuardedPanel shown(GuardedPanel::pinsInFile() + kDevices);
    shown.unlock();
    shown.sent.clear();
    ways::click(*shown.part("pump"));
    QTRY_VERIFY(openQuestion());
    shown.face.access()->lock();
    QVERIFY(!openQuestion());
    QCOMPARE(shown.sent, QStringList());
}

void tst_Confirm::lockedControlIsNotAsked()
{
    GuardedPanel shown(GuardedPanel::pinsInFile() + kDevices);
    QString opened;
    const ModalDialog dialog(
        [&opened](QWidget& shownDialog) { opened = shownDialog.objectName(); });
    ways::click(*shown.part("pump"));
    QTRY_COMPARE(opened, QString("PinDialog"));
    QVERIFY(!openQuestion());
}

NORVO_TEST(tst_Confirm)
#include "tst_Confirm.moc"
