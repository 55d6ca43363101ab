// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"
#include "host/sound/Tones.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtEndian>
#include <QtTest>

#include <cmath>
#include <complex>
#include <cstdlib>

using norvo::toneOf;

namespace {

constexpr int kRate = 44100;

/// The samples of one channel.
QVector<qint16> samplesOf(const QByteArray& tone, int channels, int channel = 0)
{
    QVector<qint16> samples;
    for (int at = channel * 2; at < tone.size(); at += channels * 2) {
        samples.append(qFromLittleEndian<qint16>(tone.constData() + at));
    }
    return samples;
}

/// How often it goes through zero upwards, divided by the time that it sounds.
double pitchOf(const QVector<qint16>& samples)
{
    int ups = 0;
    int sounding = 0;
    for (int i = 1; i < samples.size(); ++i) {
        ups += int(samples[i - 1] < 0 && samples[i] >= 0);
        sounding += int(samples[i] != 0);
    }
    return double(ups) * kRate / sounding;
}

/// Of that frequency in it.
double loudnessAt(const QVector<qint16>& samples, double hertz)
{
    std::complex<double> sum = 0;
    for (int i = 0; i < samples.size(); ++i) {
        sum += std::polar(double(samples[i]), 2 * M_PI * hertz * i / kRate);
    }
    return std::abs(sum);
}

int strokesOf(const QVector<qint16>& samples)
{
    int strokes = 0;
    int silence = kRate;
    for (const qint16 sample : samples) {
        strokes += int(sample != 0 && silence > kRate / 100);
        silence = sample == 0 ? silence + 1 : 0;
    }
    return strokes;
}

/// The program on a machine whose audio is what `devices` says.
struct Sound
{
    explicit Sound(const QByteArray& devices)
    {
        QFile setting(folder.filePath("asound.conf"));
        if (!setting.open(QIODevice::WriteOnly) || setting.write(devices) != devices.size()) {
            qFatal("cannot write %s", qPrintable(setting.fileName()));
        }
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("ALSA_CONFIG_PATH", setting.fileName());
        environment.insert("PULSE_SERVER", "unix:/there/is/none");
        environment.insert("XDG_RUNTIME_DIR", folder.path());
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(folder.path());
        process.start(kProgram, QStringList());
    }

    static constexpr char kProgram[] = NORVO_BUILD_DIR "/bin/norvo-sound";

    const QTemporaryDir folder;
    QProcess process;
};

} // namespace

class tst_Tones : public QObject
{
    Q_OBJECT

private slots:
    void urgentToneIsHigherAndHasMoreStrokes_data();
    void urgentToneIsHigherAndHasMoreStrokes();
    void toneHasAnOvertone();
    void toneNeitherCracksNorClips();
    void channelsAreTheSame();
    void whatIsNoPriorityIsSilent();
    void programPlaysTheToneOnTheDevice();
    void programEndsWhereThereIsNoDevice();
};

void tst_Tones::urgentToneIsHigherAndHasMoreStrokes_data()
{
    QTest::addColumn<int>("strokes");
    QTest::addColumn<int>("hertz");
    QTest::newRow("high") << 3 << 880;
    QTest::newRow("medium") << 2 << 660;
    QTest::newRow("low") << 1 << 440;
}

void tst_Tones::urgentToneIsHigherAndHasMoreStrokes()
{
    QFETCH(int, strokes);
    QFETCH(int, hertz);
    const auto samples = samplesOf(toneOf(QTest::currentDataTag(), kRate, 1), 1);
    QCOMPARE(strokesOf(samples), strokes);
    QVERIFY2(std::abs(pitchOf(samples) - hertz) < 15,
             qPrintable(QString::number(pitchOf(samples))));
    QVERIFY(samples.size() < kRate);
}

/// An octave above it, softer: where it comes from is heard more easily.
void tst_Tones::toneHasAnOvertone()
{
    const auto samples = samplesOf(toneOf("low", kRate, 1), 1);
    const double tone = loudnessAt(samples, 440);
    const double octave = loudnessAt(samples, 880);
    QVERIFY2(std::abs(octave / tone - 0.25) < 0.05, qPrintable(QString::number(octave / tone)));
    QVERIFY(loudnessAt(samples, 3 * 440) < tone / 20);
}

void tst_Tones::toneNeitherCracksNorClips()
{
    const auto samples = samplesOf(toneOf("high", kRate, 1), 1);
    int highest = 0;
    int before = 0;
    for (const qint16 sample : samples) {
        QVERIFY(std::abs(sample - before) < 4000); // Of 65536, from one to the next.
        before = sample;
        highest = std::max(highest, std::abs(int(sample)));
    }
    QVERIFY(highest > 10000);
    QVERIFY(highest < 32767);
}

void tst_Tones::channelsAreTheSame()
{
    const QByteArray tone = toneOf("low", kRate, 2);
    QCOMPARE(samplesOf(tone, 2, 0), samplesOf(tone, 2, 1));
    QCOMPARE(samplesOf(tone, 2), samplesOf(toneOf("low", kRate, 1), 1));
}

void tst_Tones::whatIsNoPriorityIsSilent()
{
    QCOMPARE(toneOf("urgent", kRate, 2), QByteArray());
    QCOMPARE(toneOf("", kRate, 2), QByteArray());
}

void tst_Tones::programPlaysTheToneOnTheDevice()
{
    if (!QFile::exists(Sound::kProgram)) {
        QSKIP("built without Qt Multimedia");
    }
    Sound sound("pcm.!default { type plug slave.pcm kept hint { show on description Kept } }\n"
                "pcm.kept { type file file played.raw format raw slave.pcm nothing }\n"
                "pcm.nothing { type null }\n");
    sound.process.write("medium\n");
    QVERIFY(sound.process.waitForReadyRead());
    QCOMPARE(sound.process.readAllStandardOutput(), QByteArray("\n"));
    QFile played(sound.folder.filePath("played.raw"));
    const QByteArray tone = toneOf("medium", kRate, 2);
    sound.process.closeWriteChannel();
    QVERIFY(sound.process.waitForFinished());
    QCOMPARE(sound.process.exitCode(), 0);
    QVERIFY(played.open(QIODevice::ReadOnly));
    QVERIFY(played.read(tone.size()) == tone);
}

void tst_Tones::programEndsWhereThereIsNoDevice()
{
    if (!QFile::exists(Sound::kProgram)) {
        QSKIP("built without Qt Multimedia");
    }
    Sound sound("");
    QVERIFY(sound.process.waitForFinished());
    QCOMPARE(sound.process.exitCode(), 1);
}

NORVO_GUILESS_TEST(tst_Tones)
#include "tst_Tones.moc"
