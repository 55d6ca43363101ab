// What one value costs on its way through a display, against the bare Qt path to the same sight.

#include "devices/Label.h"
#include "norvo/BaseWidget.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QGridLayout>
#include <QLabel>

#include <chrono>
#include <functional>
#include <memory>

namespace {

constexpr int kValues = 100000;

class Source : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

signals:
    void output(double value);
};

/// A window with one widget in its grid, on view.
class Window : public QWidget
{
public:
    explicit Window(QWidget* content)
    {
        auto* const grid = new QGridLayout(this);
        grid->addWidget(content, 0, 0);
        resize(400, 200);
        show();
        QApplication::processEvents();
    }
};

template <class Device>
class Display
{
public:
    explicit Display(const QMap<QString, QString>& params)
    {
        for (auto param = params.cbegin(); param != params.cend(); ++param) {
            m_device.setParam(param.key(), param.value());
        }
        m_source.setObjectName("source");
        m_device.setRunning(m_device.initialise());
        QObject::connect(&m_source, SIGNAL(output(double)), &m_device, SLOT(input(double)));
        BaseWidget* const widget = m_device.createWidget();
        widget->initialise();
        m_window = std::make_unique<Window>(widget);
        m_device.postInitialisation();
    }

    Device& device() { return m_device; }
    void feed(double value) { emit m_source.output(value); }

private:
    Source m_source;
    Device m_device;
    std::unique_ptr<Window> m_window;
};

double numberOf(int index)
{
    return (index % 1000) * 0.1;
}

/// Seconds for all values and for whatever they leave to the event loop.
double secondsFor(const std::function<void(double)>& feed)
{
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < kValues; ++i) {
        feed(numberOf(i));
    }
    QApplication::processEvents();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Takes turns with both, so that neither has the quieter machine.
void compare(benchmark::State& state, const std::function<void(double)>& ours,
             const std::function<void(double)>& bare)
{
    double oursSeconds = 0;
    double bareSeconds = 0;
    for (auto _ : state) {
        const double seconds = secondsFor(ours);
        state.SetIterationTime(seconds);
        oursSeconds += seconds;
        bareSeconds += secondsFor(bare);
    }
    const double nanosecondsPerValue = 1e9 / kValues / double(state.iterations());
    state.counters["ours_ns"] = oursSeconds * nanosecondsPerValue;
    state.counters["bare_ns"] = bareSeconds * nanosecondsPerValue;
    state.counters["ratio"] = oursSeconds / bareSeconds;
}

/// At most 3 times the bare label.
void labelAgainstBareLabel(benchmark::State& state)
{
    Display<Label> display({{"Value", "%1"}, {"widget/precision", "1"}});
    auto* const label = new QLabel;
    Window window(label);
    compare(
        state, [&](double value) { display.feed(value); },
        [&](double value) { label->setText(QString::number(value, 'f', 1)); });
}

/// The same against a bare label that looks as ours does.
void labelAgainstWrappedLabel(benchmark::State& state)
{
    Display<Label> display({{"Value", "%1"}, {"widget/precision", "1"}});
    auto* const label = new QLabel;
    label->setWordWrap(true);
    label->setFont(QFont("Arial", 15));
    Window window(label);
    compare(
        state, [&](double value) { display.feed(value); },
        [&](double value) { label->setText(QString::number(value, 'f', 1)); });
}

} // namespace

#define COMPARISON(function)                                                                       \
    BENCHMARK(function)                                                                            \
        ->UseManualTime()                                                                          \
        ->Iterations(1)                                                                            \
        ->Repetitions(9)                                                                           \
        ->ReportAggregatesOnly()                                                                   \
        ->Unit(benchmark::kMillisecond)

COMPARISON(labelAgainstBareLabel);
COMPARISON(labelAgainstWrappedLabel);

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) {
        if (!text.contains("propagateSizeHints")) { // told by the platform for each window
            fprintf(stderr, "%s\n", qPrintable(text));
        }
    });
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}

#include "bench_values.moc"
