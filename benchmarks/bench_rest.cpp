// SPDX-License-Identifier: LGPL-3.0-or-later

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QThread>

#include <benchmark/benchmark.h>

#include <unistd.h>

namespace {

constexpr int kSettlesSeconds = 10;
constexpr int kWatchedSeconds = 30;

/// Processor time that the process has used so far, in s.
double usedBy(qint64 process)
{
    QFile file(QString("/proc/%1/stat").arg(process));
    file.open(QIODevice::ReadOnly);
    const QByteArray text = file.readAll();
    const QList<QByteArray> fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
    return (fields.value(11).toDouble() + fields.value(12).toDouble()) /
           double(sysconf(_SC_CLK_TCK));
}

double residentMegabytes(qint64 process)
{
    QFile file(QString("/proc/%1/status").arg(process));
    file.open(QIODevice::ReadOnly);
    const QByteArray text = file.readAll();
    const QByteArray rest = text.mid(text.indexOf("VmRSS:") + 6);
    return rest.left(rest.indexOf("kB")).trimmed().toDouble() / 1024;
}

/// The X server's own screen, without a graphics card.
class Screen
{
public:
    Screen()
    {
        m_server.start("Xvfb", {"-displayfd", "1", "-screen", "0", "1280x800x24"});
        if (m_server.waitForStarted() && m_server.waitForReadyRead()) {
            m_name = ':' + m_server.readLine().trimmed();
        }
    }
    ~Screen()
    {
        m_server.kill();
        m_server.waitForFinished();
    }

    QString name() const { return m_name; } ///< Empty: there is none.

private:
    QProcess m_server;
    QString m_name;
};

/// What a running example uses of a core, and of memory.
void watch(benchmark::State& state, const QString& panel, const QString& display)
{
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", display.isEmpty() ? "offscreen" : "xcb");
    environment.insert("DISPLAY", display);
    program.setProcessEnvironment(environment);
    program.start(NORVO_BUILD_DIR "/bin/norvo-panel",
                  {"--no-state", NORVO_SOURCE_DIR "/examples/" + panel + "/panel.yaml"});
    program.waitForStarted();
    for (auto _ : state) {
        QThread::sleep(kSettlesSeconds);
        const double before = usedBy(program.processId());
        QThread::sleep(kWatchedSeconds);
        state.SetIterationTime(usedBy(program.processId()) - before);
        state.counters["percent_of_a_core"] =
            100 * (usedBy(program.processId()) - before) / kWatchedSeconds;
    }
    state.counters["resident_MB"] = residentMegabytes(program.processId());
    const bool isRunning = !program.waitForFinished(1);
    program.terminate();
    program.waitForFinished();
    if (!isRunning) {
        state.SkipWithError("the panel has ended");
    }
}

void offScreen(benchmark::State& state, const QString& panel)
{
    watch(state, panel, {});
}

void underX(benchmark::State& state, const QString& panel)
{
    const Screen screen;
    if (screen.name().isEmpty()) {
        state.SkipWithError("there is no Xvfb");
        return;
    }
    watch(state, panel, screen.name());
}

void once(benchmark::internal::Benchmark* benchmark)
{
    benchmark->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK_CAPTURE(offScreen, workstation, "workstation")->Apply(once);
BENCHMARK_CAPTURE(underX, workstation, "workstation")->Apply(once);
BENCHMARK_CAPTURE(underX, gallery, "gallery")->Apply(once);

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
