// SPDX-License-Identifier: GPL-3.0-or-later

#include "AlarmPanel.h"
#include "Seed.h"
#include "TestMain.h"

#include <cstdio>
#include <random>

namespace {

constexpr int kKills = 200;
constexpr int kLanes = 8; // Panels at once.
constexpr int kAlarms = 6;
constexpr int kTickMs = 5;
constexpr int kSafeTicks = 200; // A second, counted by what the panel itself has lived through.
constexpr int kMaxTicks = 160;  // Of most lives.
constexpr int kMaxLong = 320;   // Of every fourth.
constexpr int kPatienceMs = 60000;

QVector<norvo::AlarmSetting> settings()
{
    QVector<norvo::AlarmSetting> alarms;
    for (int i = 0; i < kAlarms; ++i) {
        norvo::AlarmSetting alarm = AlarmPanel::above80();
        alarm.id = QString::number(i);
        alarm.limit.number = 10 * i;
        alarms.append(alarm);
    }
    return alarms;
}

/// A digit for the state of each alarm.
QByteArray statesOf(const AlarmPanel& panel)
{
    QByteArray states;
    for (int i = 0; i < kAlarms; ++i) {
        states += char('0' + int(panel.alarm(QString::number(i)).state));
    }
    return states;
}

void say(const QByteArray& line)
{
    std::puts(line.constData());
    std::fflush(stdout);
}

/// What is killed: a panel whose alarms come, go and are acknowledged at random. Its first line is
/// what it has found, and each further one what has become of it, one in each tick.
int live(int argc, char** argv)
{
    QApplication application(argc, argv);
    std::mt19937 random(QByteArray(argv[2]).toUInt());
    AlarmPanel panel(argv[1]);
    panel.start(settings());
    say(statesOf(panel));
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, [&] {
        if (random() % 6 == 0) {
            emit panel.talker().output(double(random() % (10 * kAlarms)));
        } else if (random() % 6 == 0) {
            panel.service.acknowledge({int(random() % kAlarms)});
        }
        say(statesOf(panel));
    });
    tick.start(kTickMs);
    return QApplication::exec();
}

const norvo::TestEntry life("AlarmLife", live);

/// One panel, started and killed again and again.
class Lane
{
public:
    Lane(const QString& file, unsigned seed) : m_file(file), m_random(seed) {}

    void start()
    {
        m_lines.clear();
        m_ticks = int(m_random() % unsigned(m_lives % 4 == 0 ? kMaxLong : kMaxTicks));
        m_process.start(QCoreApplication::applicationFilePath(),
                        {"AlarmLife", m_file, QString::number(m_random())});
        ++m_lives;
    }

    /// Kills it once it has lived long enough; returns whether it has.
    bool look()
    {
        m_process.waitForReadyRead(1);
        m_lines += m_process.readAllStandardOutput();
        if (m_lines.count('\n') <= m_ticks && m_process.state() != QProcess::NotRunning) {
            return false;
        }
        m_process.kill();
        m_process.waitForFinished(kPatienceMs);
        m_lines += m_process.readAllStandardOutput();
        return true;
    }

    /// Each alarm begins this life in a state that it has had in the last second of the life
    /// before; returns what is wrong.
    QString judge()
    {
        QList<QByteArray> lines = m_lines.split('\n');
        lines.removeLast(); // Half a line.
        if (lines.isEmpty()) {
            return "no line; " + QString::fromUtf8(m_process.readAllStandardError());
        }
        const QByteArray found = lines.constFirst();
        for (int i = 0; i < kAlarms && !m_before.isEmpty(); ++i) {
            bool isKnown = false;
            for (const QByteArray& states : m_before.mid(m_before.size() - kSafeTicks)) {
                isKnown = isKnown || states[i] == found[i];
            }
            if (!isKnown) {
                return QString("alarm %1 is in state %2, after %3 ticks that ended with %4")
                    .arg(i)
                    .arg(found[i])
                    .arg(m_before.size())
                    .arg(QString(m_before.constLast()));
            }
        }
        if (lines.size() > kSafeTicks) {
            ++m_longLives;
        }
        m_before = lines;
        return {};
    }

    int longLives() const { return m_longLives; }

private:
    const QString m_file;
    std::mt19937 m_random;
    QProcess m_process;
    QByteArray m_lines;
    QList<QByteArray> m_before;
    int m_ticks = 0;
    int m_lives = 0;
    int m_longLives = 0;
};

} // namespace

/// Panels that are killed at random moments, and what they know of their alarms afterwards.
class tst_AlarmSurvival : public QObject
{
    Q_OBJECT

private slots:
    void noStateOlderThanASecondIsLost()
    {
        QTemporaryDir folder;
        std::vector<std::unique_ptr<Lane>> lanes;
        for (int i = 0; i < kLanes; ++i) {
            lanes.push_back(
                std::make_unique<Lane>(folder.filePath(QString("%1.alarms.jsonl").arg(i)),
                                       norvo::testSeed() + unsigned(i)));
            lanes.back()->start();
        }
        int kills = 0;
        while (kills < kKills) {
            for (const auto& lane : lanes) {
                if (lane->look()) {
                    const QString wrong = lane->judge();
                    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
                    ++kills;
                    lane->start();
                }
            }
        }
        int longLives = 0;
        for (const auto& lane : lanes) {
            longLives += lane->longLives();
        }
        QVERIFY(longLives > kKills / 20); // Otherwise next to nothing was older than a second.
    }
};

NORVO_TEST(tst_AlarmSurvival)

#include "tst_AlarmSurvival.moc"
