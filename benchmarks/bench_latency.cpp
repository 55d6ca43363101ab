// SPDX-License-Identifier: GPL-3.0-or-later

// How long a value takes to its pixels while a panel of every device type runs beside it: a press
// to its lamp, a line of a child program, a message of a broker. At most 16 ms for 99 of 100.

#include "benchmarks/RunningFile.h"
#include "host/window/look/Look.h"

#include "norvo/BaseDevice.h"
#include "norvo/BaseWidget.h"

#include <benchmark/benchmark.h>
#include <mosquitto.h>

#include <QAbstractButton>
#include <QApplication>
#include <QEventLoop>
#include <QLabel>
#include <QLoggingCategory>
#include <QMouseEvent>
#include <QProcess>
#include <QSemaphore>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <random>
#include <thread>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace norvo;

namespace {

constexpr int kAnswerMs = 10000; ///< Longer than that, and something is lost.

qint64 nanoseconds()
{
    return std::chrono::steady_clock::now().time_since_epoch().count();
}

/// Says when what a widget shows has been painted and flushed, outside of any other event.
class PaintingApplication : public QApplication
{
public:
    using QApplication::QApplication;

    QWidget* watched = nullptr;
    std::function<void()> shown;

    bool notify(QObject* receiver, QEvent* event) override
    {
        m_painted |= receiver == watched && event->type() == QEvent::Paint;
        ++m_depth;
        const bool done = QApplication::notify(receiver, event);
        if (--m_depth == 0 && m_painted) {
            m_painted = false;
            shown();
        }
        return done;
    }

private:
    int m_depth = 0;
    bool m_painted = false;
};

PaintingApplication& application()
{
    return *static_cast<PaintingApplication*>(qApp);
}

/// A broker on loopback that ends with this.
class Broker
{
public:
    Broker()
    {
        QTcpServer probe;
        probe.listen(QHostAddress::LocalHost);
        m_port = probe.serverPort();
        probe.close();
        m_process.start("/usr/sbin/mosquitto", {"-p", QString::number(m_port)});
        for (int i = 0; i < 100 && !m_ready; ++i) {
            QTcpSocket socket;
            socket.connectToHost(QHostAddress(QHostAddress::LocalHost), m_port);
            m_ready = socket.waitForConnected(1000);
            QThread::msleep(m_ready ? 0 : 50);
        }
    }
    ~Broker()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    bool isReady() const { return m_ready; }
    quint16 port() const { return m_port; }

private:
    QProcess m_process;
    quint16 m_port = 0;
    bool m_ready = false;
};

/// What is measured, in a row of its own; "%1" is the broker's port.
constexpr char kMeasured[] = R"YAML(
  press:
    device: button
    params: {text: Press, mode: toggle, widget: {row: 7, column: 0, colspan: 4}}
  lamp: {device: indicator, params: {widget: {row: 7, column: 4, colspan: 2, caption: Lamp}}}
  child: {device: process, params: {command: cat lines}, outputs: {sent: "(.+)"}}
  line: {device: label, params: {Value: "-", widget: {row: 7, column: 6, colspan: 3}}}
  broker:
    device: mqtt
    params: {broker: "mqtt://127.0.0.1:%1"}
    outputs: {sent: bench/sent}
  message: {device: label, params: {Value: "-", widget: {row: 7, column: 9, colspan: 3}}}

connections:
  - press.toggled -> lamp.input
  - child.sent(QString) -> line.input(QString)
  - broker.sent(QString) -> message.input(QString)
)YAML";

QByteArray galleryAndMeasured(quint16 brokerPort)
{
    QFile file(NORVO_SOURCE_DIR "/examples/gallery/panel.yaml");
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QByteArray measured = kMeasured;
    measured.replace("%1", QByteArray::number(brokerPort));
    QByteArray text = file.readAll();
    text.replace("\nconnections:\n", measured);
    text.replace("rows: [0, 2, 0, 2, 2, 0, 0]", "rows: [0, 2, 0, 2, 2, 0, 0, 0]");
    return text;
}

/// The gallery at its usual rate, with what is measured in its last row.
class Gallery
{
public:
    explicit Gallery(const Broker& broker) : m_panel("title: Not yet\n", {1280, 1024})
    {
        QFile::copy(NORVO_SOURCE_DIR "/examples/gallery/pump.svg", lines("pump.svg"));
        ::mkfifo(qPrintable(lines("lines")), 0600);
        m_panel.change(galleryAndMeasured(broker.port()));
        m_writeEnd = ::open(qPrintable(lines("lines")), O_RDWR | O_CLOEXEC);
        QEventLoop loop; // Until all that starts and connects has done so.
        QTimer::singleShot(3000, &loop, &QEventLoop::quit);
        loop.exec();
    }
    ~Gallery() { ::close(m_writeEnd); }

    template <class Widget>
    Widget* widget(const QString& device)
    {
        return m_panel.running->panel().widget(device)->findChild<Widget*>();
    }
    bool writeLine(const QByteArray& text) const
    {
        return ::write(m_writeEnd, (text + '\n').constData(), std::size_t(text.size()) + 1) > 0;
    }

private:
    QString lines(const QString& file) const { return m_panel.folder.filePath(file); }

    RunningFile m_panel;
    int m_writeEnd = -1;
};

/// Sends one thing after the other from a thread of its own, at random times, each once the one
/// before is seen.
class Samples
{
public:
    /// What is sent tells when it was.
    using Send = std::function<void(const QByteArray& stamp)>;

    explicit Samples(int count) : m_count(count) {}

    /// Milliseconds from sending to showing; fewer than asked for when one is not shown.
    std::vector<double> take(const Send& send)
    {
        QEventLoop loop;
        application().shown = [this] { noteShown(); };
        std::thread sender([&] {
            work(send);
            QMetaObject::invokeMethod(&loop, "quit", Qt::QueuedConnection);
        });
        loop.exec();
        sender.join();
        application().watched = nullptr;
        return m_times;
    }

    /// Whether what is awaited can be seen in the painting that has just been done.
    std::function<bool(const QByteArray& stamp)> isSeen;

private:
    void work(const Send& send)
    {
        std::mt19937 random(1);
        std::uniform_int_distribution<int> pause(2000, 18000);
        for (int i = 0; i < m_count; ++i) {
            std::this_thread::sleep_for(std::chrono::microseconds(pause(random)));
            m_sent = nanoseconds();
            send(QByteArray::number(m_sent));
            if (!m_answered.tryAcquire(1, kAnswerMs)) {
                return;
            }
        }
    }

    void noteShown()
    {
        const qint64 sent = m_sent;
        if (sent != m_lastShown && isSeen(QByteArray::number(sent))) {
            m_lastShown = sent;
            m_times.push_back(double(nanoseconds() - sent) * 1e-6);
            m_answered.release();
        }
    }

    const int m_count;
    std::atomic<qint64> m_sent{0};
    qint64 m_lastShown = 0;
    QSemaphore m_answered;
    std::vector<double> m_times;
};

void report(benchmark::State& state, std::vector<double> times)
{
    const auto wanted = std::size_t(state.range(0));
    if (times.size() < wanted) {
        state.SkipWithError("something that was sent was not shown");
        return;
    }
    std::sort(times.begin(), times.end());
    const auto quantile = [&](double part) {
        return times[std::min(times.size() - 1, std::size_t(part * double(times.size())))];
    };
    state.SetIterationTime(quantile(0.5) / 1000);
    state.counters["p50_ms"] = quantile(0.5);
    state.counters["p99_ms"] = quantile(0.99);
    state.counters["p99.9_ms"] = quantile(0.999);
    state.counters["largest_ms"] = times.back();
    state.counters["samples"] = double(times.size());
}

void pressToLamp(benchmark::State& state)
{
    const Broker broker;
    Gallery gallery(broker);
    auto* const button = gallery.widget<QAbstractButton>("press");
    auto* const lamp = gallery.widget<QLabel>("lamp");
    bool isClicked = false; // The lamp has its new state then, too.
    QObject::connect(button, &QAbstractButton::clicked, lamp, [&] { isClicked = true; });
    const auto post = [button](QEvent::Type type, Qt::MouseButtons held) {
        const QPointF middle = QRectF(button->rect()).center();
        QCoreApplication::postEvent(
            button, new QMouseEvent(type, middle, Qt::LeftButton, held, Qt::NoModifier));
    };
    for (auto _ : state) {
        Samples samples(int(state.range(0)));
        samples.isSeen = [&](const QByteArray&) { return std::exchange(isClicked, false); };
        application().watched = lamp;
        report(state, samples.take([&](const QByteArray&) {
            post(QEvent::MouseButtonPress, Qt::LeftButton);
            post(QEvent::MouseButtonRelease, Qt::NoButton);
        }));
    }
}

std::vector<double> takeTexts(int count, QLabel* label, const Samples::Send& send)
{
    Samples samples(count);
    samples.isSeen = [label](const QByteArray& stamp) { return label->text() == stamp; };
    application().watched = label;
    return samples.take(send);
}

void lineToLabel(benchmark::State& state)
{
    const Broker broker;
    Gallery gallery(broker);
    for (auto _ : state) {
        report(state, takeTexts(int(state.range(0)), gallery.widget<QLabel>("line"),
                                [&](const QByteArray& stamp) { gallery.writeLine(stamp); }));
    }
}

void messageToLabel(benchmark::State& state)
{
    const Broker broker;
    if (!broker.isReady()) {
        state.SkipWithError("there is no broker");
        return;
    }
    Gallery gallery(broker);
    mosquitto_lib_init();
    const std::unique_ptr<mosquitto, decltype(&mosquitto_destroy)> client(
        mosquitto_new(nullptr, true, nullptr), mosquitto_destroy);
    mosquitto_int_option(client.get(), MOSQ_OPT_TCP_NODELAY, 1);
    mosquitto_connect(client.get(), "127.0.0.1", broker.port(), 60);
    mosquitto_loop_start(client.get());
    for (auto _ : state) {
        report(state, takeTexts(int(state.range(0)), gallery.widget<QLabel>("message"),
                                [&](const QByteArray& stamp) {
                                    mosquitto_publish(client.get(), nullptr, "bench/sent",
                                                      stamp.size(), stamp.constData(), 0, false);
                                }));
    }
    mosquitto_disconnect(client.get());
    mosquitto_loop_stop(client.get(), false);
}

void twoThousand(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(2000)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK(pressToLamp)->Apply(twoThousand);
BENCHMARK(lineToLabel)->Apply(twoThousand);
BENCHMARK(messageToLabel)->Apply(twoThousand);

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QLoggingCategory::setFilterRules("*.debug=false");
    PaintingApplication application(argc, argv);
    PanelLook look;
    look.theme = PanelLook::Theme::Light;
    Look::apply(application, look);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
