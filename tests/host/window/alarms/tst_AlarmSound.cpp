// SPDX-License-Identifier: GPL-3.0-or-later

#include "../../services/alarms/AlarmPanel.h"
#include "Effort.h"
#include "SoundProgram.h"
#include "TestMain.h"
#include "host/window/alarms/AlarmSound.h"
#include "host/window/alarms/AlarmStrip.h"

#include <QPushButton>

#include <csignal>

using norvo::AlarmPriority;
using norvo::AlarmSound;

namespace {

/// A sound with a bell that is counted.
struct Heard
{
    explicit Heard(const QString& program) : sound(program, [this] { ++strokes; }) {}

    int strokes = 0;
    AlarmSound sound;
};

} // namespace

/// What is heard of alarms: tones by a program of its own, or the bell.
class tst_AlarmSound : public QObject
{
    Q_OBJECT

private slots:
    void programIsAskedForEachTone();
    void programIsStartedByTheFirstToneAndEndsWithTheLast();
    void bellIsHeardWithoutTheProgram_data();
    void bellIsHeardWithoutTheProgram();
    void programThatDiesIsReplacedByTheBell();
    void programThatEndsInPeaceIsReplacedByTheBell();
    void whatFailedIsTriedAgainTheNextTime();
    void stripSoundsTheWorstThatIsToBeHeard();
    void alarmWithoutSoundIsNotHeard();
    void silencedAlarmIsNotHeardAndSaysSo();
};

void tst_AlarmSound::programIsAskedForEachTone()
{
    const SoundProgram program;
    Heard heard(program.program());
    heard.sound.play(AlarmPriority::High);
    heard.sound.play(AlarmPriority::Low);
    QTRY_COMPARE(program.heard(), QByteArray("high\nlow\n"));
    QTest::qWait(AlarmSound::kPatienceMs + 200);
    QCOMPARE(heard.strokes, 0);
}

void tst_AlarmSound::programIsStartedByTheFirstToneAndEndsWithTheLast()
{
    const SoundProgram program;
    Heard heard(program.program());
    QTest::qWait(50);
    QCOMPARE(program.starts(), 0);
    heard.sound.play(AlarmPriority::High);
    QTRY_COMPARE(program.heard(), QByteArray("high\n"));
    heard.sound.play(AlarmPriority::High);
    QTRY_COMPARE(program.heard(), QByteArray("high\nhigh\n"));
    QCOMPARE(program.starts(), 1);
    const pid_t process = program.lastProcess().toInt();
    QCOMPARE(::kill(process, 0), 0);
    heard.sound.end();
    QCOMPARE(::kill(process, 0), -1);
}

void tst_AlarmSound::bellIsHeardWithoutTheProgram_data()
{
    QTest::addColumn<QByteArray>("perLine");
    QTest::newRow("missing") << QByteArray();
    QTest::newRow("no device") << QByteArray("exit 1");
    QTest::newRow("hanging") << QByteArray("sleep 100");
}

void tst_AlarmSound::bellIsHeardWithoutTheProgram()
{
    QFETCH(QByteArray, perLine);
    const SoundProgram program(perLine);
    Heard heard(perLine.isEmpty() ? "/there/is/no/such/program" : program.program());
    const norvo::OwnTimer called;
    heard.sound.play(AlarmPriority::High);
    QVERIFY(called.elapsed().ownMs < AlarmSound::kPatienceMs); // Nobody waits for it.
    QTRY_COMPARE(heard.strokes, 1);
    heard.sound.play(AlarmPriority::High);
    QCOMPARE(heard.strokes, 2);
    QVERIFY(program.starts() <= 1);
}

void tst_AlarmSound::programThatDiesIsReplacedByTheBell()
{
    const SoundProgram program;
    Heard heard(program.program());
    heard.sound.play(AlarmPriority::High);
    QTRY_COMPARE(program.heard(), QByteArray("high\n"));
    QCOMPARE(::kill(program.lastProcess().toInt(), SIGKILL), 0);
    QTRY_VERIFY2(([&heard] {
                     heard.sound.play(AlarmPriority::High);
                     return heard.strokes > 0;
                 }()),
                 "no bell");
}

void tst_AlarmSound::programThatEndsInPeaceIsReplacedByTheBell()
{
    const SoundProgram program("echo $tone >>heard; echo; exit 0");
    Heard heard(program.program());
    heard.sound.play(AlarmPriority::High);
    QTRY_COMPARE(program.heard(), QByteArray("high\n"));
    const pid_t process = program.lastProcess().toInt();
    QTRY_COMPARE_WITH_TIMEOUT(::kill(process, 0), -1, 60000);
    QTest::qWait(100); // It is told behind its end.
    QCOMPARE(heard.strokes, 0);
    heard.sound.play(AlarmPriority::High);
    QCOMPARE(heard.strokes, 1); // Without waiting for an answer.
}

void tst_AlarmSound::whatFailedIsTriedAgainTheNextTime()
{
    const SoundProgram program("test -e device || exit 1; echo $tone >>heard; echo");
    Heard heard(program.program());
    heard.sound.play(AlarmPriority::High);
    QTRY_COMPARE(heard.strokes, 1);
    heard.sound.end();
    QFile device(program.filePath("device"));
    QVERIFY(device.open(QIODevice::WriteOnly));
    heard.sound.play(AlarmPriority::Medium);
    QTRY_COMPARE(program.heard(), QByteArray("medium\n"));
    QCOMPARE(heard.strokes, 1);
}

void tst_AlarmSound::stripSoundsTheWorstThatIsToBeHeard()
{
    const SoundProgram program;
    AlarmPanel panel;
    norvo::AlarmSetting low = AlarmPanel::above80();
    low.id = "low";
    low.priority = AlarmPriority::Low;
    norvo::AlarmSetting quiet = AlarmPanel::above80();
    quiet.id = "quiet";
    quiet.hasSound = false;
    panel.start({low, quiet});
    norvo::AlarmStrip strip(panel.service, program.program());
    emit panel.talker().output(90);
    QTRY_VERIFY(panel.service.isSounding());
    QTRY_VERIFY(program.heard().startsWith("low\nlow\n")); // As long as it waits.
    panel.service.acknowledge({panel.service.model().find("low")});
    QTRY_VERIFY(!panel.service.isSounding());
    QVERIFY(!strip.findChild<QPushButton*>("alarmSilence")->isVisibleTo(&strip));
}

void tst_AlarmSound::alarmWithoutSoundIsNotHeard()
{
    const SoundProgram program;
    AlarmPanel panel;
    norvo::AlarmSetting quiet = AlarmPanel::above80();
    quiet.hasSound = false;
    panel.start({quiet});
    const norvo::AlarmStrip strip(panel.service, program.program());
    emit panel.talker().output(90);
    QTRY_VERIFY(!strip.isHidden());
    QTest::qWait(100);
    QCOMPARE(program.starts(), 0);
    QVERIFY(!strip.findChild<QPushButton*>("alarmSilence")->isVisibleTo(&strip));
}

void tst_AlarmSound::silencedAlarmIsNotHeardAndSaysSo()
{
    const SoundProgram program;
    AlarmPanel panel;
    panel.start();
    const norvo::AlarmStrip strip(panel.service, program.program());
    emit panel.talker().output(90);
    QTRY_VERIFY(!program.heard().isEmpty());
    auto* const key = strip.findChild<QPushButton*>("alarmSilence");
    QCOMPARE(key->text(), QString("Silence"));
    QTest::mouseClick(key, Qt::LeftButton);
    QTRY_COMPARE(key->text(), QString("Silenced"));
    QVERIFY(key->isVisibleTo(&strip) && !key->isEnabled());
    const QByteArray heard = program.heard();
    QTest::qWait(norvo::AlarmStrip::kSoundMs + 300);
    QCOMPARE(program.heard(), heard);
    emit panel.talker().output(10);
    emit panel.talker().output(90); // Another one is heard again.
    QTRY_VERIFY(program.heard().size() > heard.size());
    QCOMPARE(key->text(), QString("Silence"));
}

NORVO_TEST(tst_AlarmSound)
#include "tst_AlarmSound.moc"
