// SPDX-License-Identifier: GPL-3.0-or-later

#include "PanelProcess.h"

#include "Effort.h"
#include "host/panel/state/StateFile.h"
#include "tests/fixtures/probes/CounterRecord.h"
#include "TestMain.h"

#include <QtTest>

#include <thread>

namespace {

constexpr int kKills = 120;
constexpr int kLanes = 2;
constexpr int kShortLife = 700;               // ms after the first change, at most
constexpr int kLongLife = 1800;               // every sixth time: longer than a change may wait
constexpr qint64 kOldestUnsaved = 1000000000; // ns
constexpr int kBallast = 500;                 // entries that make a writing take its time

using norvo::PanelState;

PanelState ballast()
{
    PanelState state;
    for (int i = 0; i < kBallast; ++i) {
        state.insert(QString("absent%1").arg(i),
                     {{"text", QString("line\n\"%1\" ").arg(i).repeated(9)}});
    }
    return state;
}

/// A panel whose button is toggled with each change of a counter, started and killed again and
/// again. With an even count the button is off, with an odd one it is on.
class Lane
{
public:
    Lane()
        : m_folder("devices:\n"
                   "  counter: {device: counter, params: {log: LOG}}\n"
                   "  button: {device: button, params: {text: Run}}\n"
                   "connections: [counter.tick -> button.toggle]\n")
    {
        m_folder.fill("panel.yaml", m_folder.content("panel.yaml").replace("LOG", log().toUtf8()));
        norvo::StateFile state(stateFile());
        const PanelState entries = ballast();
        for (auto device = entries.cbegin(); device != entries.cend(); ++device) {
            state.set(device.key(), "text", device->value("text"));
        }
        state.save();
    }

    /// One life of the panel, ended by SIGKILL some time after its first change.
    void round(int lifeMs)
    {
        QFile::remove(log());
        PanelProcess panel({"--plugins", fixture("probes"), m_folder.panel()});
        panel.start();
        const norvo::OwnTimer timer;
        while (readLastRecord(log()).nanoseconds == 0) {
            if (panel.waitForFinished(1) || timer.elapsed().clockMs > PanelProcess::kPatience) {
                error(QString("no start, exit status %1: %2")
                          .arg(panel.waitForEnd())
                          .arg(panel.errorLines().join("; ")));
                return;
            }
        }
        if (panel.waitForFinished(qMax(1, lifeMs))) {
            error("the panel ended by itself: " + panel.errorLines().join("; "));
            return;
        }
        panel.sendSignal(SIGKILL);
        panel.waitForFinished(PanelProcess::kPatience);
        const qint64 killed = monotonicNanoseconds();
        const auto [clockMs, ownMs] = timer.elapsed();
        judge(killed, (clockMs - ownMs) * 1000000);
    }

    QStringList errors;
    int kills = 0;
    int killsWithUnsavedChanges = 0;
    qint64 oldestUnsaved = 0; ///< ns
    int leftovers() const
    {
        return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden).size() - 3;
    }

private:
    QString log() const { return m_folder.filePath("log"); }
    QString stateFile() const { return m_folder.filePath("panel.state.yaml"); }
    void error(const QString& text) { errors.append(QString("kill %1: %2").arg(kills).arg(text)); }

    /// `lost`: nanoseconds that the machine gave to others while the panel ran.
    void judge(qint64 killed, qint64 lost)
    {
        ++kills;
        norvo::StateFile file(stateFile(), norvo::StateFile::Mode::ReadOnly);
        QObject::connect(&file, &norvo::StateFile::problem,
                         [this](const QString& line) { error(line); });
        file.read();
        PanelState state = file.state();
        const qint64 count = state.take("counter").value("count").toLongLong();
        const QString toggled = state.take("button").value("toggled", "false");
        if (toggled != (count % 2 ? "true" : "false")) {
            error(QString("toggled is \"%1\" at %2").arg(toggled).arg(count));
        }
        if (state != ballast()) {
            error("entries of other devices are gone");
        }
        const CounterRecord last = readLastRecord(log());
        if (count < m_countAtStart || count > last.count) {
            error(QString("saved %1 between %2 and %3")
                      .arg(count)
                      .arg(m_countAtStart)
                      .arg(last.count));
        }
        const CounterRecord unsaved = readRecord(log(), count - m_countAtStart);
        if (unsaved.nanoseconds != 0) {
            ++killsWithUnsavedChanges;
            if (unsaved.count != count + 1) {
                error(QString("%1 follows %2").arg(unsaved.count).arg(count));
            }
            const qint64 age = killed - unsaved.nanoseconds;
            oldestUnsaved = qMax(oldestUnsaved, age);
            if (age > kOldestUnsaved + lost) {
                error(QString("a change was unsaved for %1 ms").arg(age / 1000000));
            }
        }
        m_countAtStart = count;
    }

    PanelFolder m_folder;
    qint64 m_countAtStart = 0;
};

} // namespace

/// The state of a panel whose process is killed, at random moments, while its state changes.
class tst_StateSurvival : public QObject
{
    Q_OBJECT

private slots:
    void stateIsWholeAndFreshAfterEveryKill();
};

void tst_StateSurvival::stateIsWholeAndFreshAfterEveryKill()
{
    const quint32 seed = QRandomGenerator::system()->generate();
    std::vector<std::unique_ptr<Lane>> lanes;
    std::vector<std::thread> threads;
    for (int i = 0; i < kLanes; ++i) {
        lanes.push_back(std::make_unique<Lane>());
        threads.emplace_back(
            [&lane = *lanes.back(), random = QRandomGenerator(seed + i)]() mutable {
                while (lane.kills < kKills / kLanes && lane.errors.isEmpty()) {
                    lane.round(lane.kills % 6 == 5 ? random.bounded(kShortLife, kLongLife)
                                                   : random.bounded(kShortLife));
                }
            });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    int kills = 0;
    for (const auto& lane : lanes) {
        kills += lane->kills;
        qInfo(
            "%d kills, %d with unsaved changes, the oldest of them %.0f ms old, %d temporary files "
            "left (seed %u)",
            lane->kills, lane->killsWithUnsavedChanges, double(lane->oldestUnsaved) / 1e6,
            lane->leftovers(), seed);
        QVERIFY2(lane->errors.isEmpty(), qPrintable(lane->errors.join('\n')));
        QVERIFY(lane->killsWithUnsavedChanges > 0);
    }
    QVERIFY(kills >= 100);
}

NORVO_GUILESS_TEST(tst_StateSurvival)
#include "tst_StateSurvival.moc"
