// SPDX-License-Identifier: GPL-3.0-or-later

#include "AskedPanel.h"
#include "TestMain.h"
#include "host/window/access/GuardedControl.h"

using namespace norvo;
using namespace asked;

/// How the question is answered.
class tst_Question : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        Accessibility::install(&GuardedControl::make);
    } // As the program does, before all widgets.
    void enterAndEscapeSayNo_data();
    void enterAndEscapeSayNo();
    void keyboardAloneSaysYes();
    void questionTimesOutToNo();
    void yesWaitsForTheSecondTapOfAHurriedHand();
    void questionsDoNotStack();
};

void tst_Question::enterAndEscapeSayNo_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Enter") << int(Qt::Key_Return);
    QTest::newRow("Enter of the number pad") << int(Qt::Key_Enter);
    QTest::newRow("Escape") << int(Qt::Key_Escape);
    QTest::newRow("Space") << int(Qt::Key_Space);
}

void tst_Question::enterAndEscapeSayNo()
{
    QFETCH(int, key);
    GuardedPanel shown(kDevices);
    shown.sent.clear();
    ways::click(*shown.part("pump"));
    QTRY_VERIFY(openQuestion());
    const QSignalSpy declined(&shown.face, &AccessFace::declined);
    QTest::qWait(QuestionSheet::kPauseMs + 50);
    QWidget* const focus = QApplication::focusWidget();
    QTest::keyClick(focus ? focus : openQuestion(), Qt::Key(key));
    QTRY_COMPARE(declined.size(), 1);
    QVERIFY(!openQuestion());
    QCOMPARE(shown.sent, QStringList());
}

void tst_Question::keyboardAloneSaysYes()
{
    GuardedPanel shown(kDevices);
    ways::all().value("Space")(*shown.part("pump"));
    QTRY_VERIFY(openQuestion());
    auto* const yes = openQuestion()->findChild<QPushButton*>("yes");
    QTRY_VERIFY(yes->isEnabled());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(yes->hasFocus());
    QTest::keyClick(yes, Qt::Key_Return);
    QTRY_COMPARE(stateOf(shown.part("pump")), QString("on"));
}

void tst_Question::questionTimesOutToNo()
{
    GuardedPanel shown(kDevices);
    shown.sent.clear();
    ways::click(*shown.part("pump"));
    QTRY_VERIFY(openQuestion());
    QVERIFY(openQuestion()->findChild<QPushButton*>("no")->text().contains("30"));
    openQuestion()->setSecondsLeft(1);
    QTRY_VERIFY(!openQuestion());
    QCOMPARE(shown.sent, QStringList());
}

void tst_Question::yesWaitsForTheSecondTapOfAHurriedHand()
{
    GuardedPanel shown(kDevices);
    shown.sent.clear();
    ways::click(*shown.part("pump"));
    QVERIFY(openQuestion());
    QTest::mouseClick(openQuestion()->findChild<QPushButton*>("yes"), Qt::LeftButton);
    QVERIFY(openQuestion());
    QCOMPARE(shown.sent, QStringList());
}

void tst_Question::questionsDoNotStack()
{
    GuardedPanel shown(kDevices);
    ways::click(*shown.part("pump"));
    const QPointer<QuestionSheet> first(openQuestion());
    QVERIFY(first);
    ways::all().value("Space")(*shown.part("agree"));
    ways::accessibleValue(*shown.part("speed"));
    QCOMPARE(shown.window.findChildren<QuestionSheet*>().size(), 1);
    first->reject();
    QTRY_VERIFY(!openQuestion());
}

NORVO_TEST(tst_Question)
#include "tst_Question.moc"
