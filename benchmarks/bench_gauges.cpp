// SPDX-License-Identifier: GPL-3.0-or-later

// What the two painted gauges cost: a repaint, a value on its way in, and a panel full of them.

#include "devices/LumenoBarDevice.h"
#include "devices/OutputBarDevice.h"
#include "widgets/OutputBarLumeno.h"
#include "widgets/ValueBarWidget.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QGridLayout>
#include <QPainter>

#ifdef NORVO_WITH_QWT
#include <qwt_scale_draw.h>
#include <qwt_thermo.h>
#endif

#include <chrono>
#include <cmath>
#include <ctime>
#include <functional>
#include <memory>
#include <vector>

namespace {

template <class Device, class Widget>
class Gauge
{
public:
    explicit Gauge(const QSize& size, const QMap<QString, QString>& params = {})
    {
        for (auto param = params.cbegin(); param != params.cend(); ++param) {
            m_device.setParam(param.key(), param.value());
        }
        m_device.setRunning(m_device.initialise());
        m_widget = std::make_unique<Widget>(&m_device, nullptr);
        m_widget->initialise();
        m_widget->resize(size);
    }

    Device& device() { return m_device; }
    Widget& widget() { return *m_widget; }

private:
    Device m_device;
    std::unique_ptr<Widget> m_widget;
};

using ValueBar = Gauge<OutputBarDevice, ValueBarWidget>;
using Lumeno = Gauge<LumenoBarDevice, OutputBarLumeno>;

constexpr QSize kValueBarSize(400, 120);
constexpr QSize kLumenoSize(120, 300);

double wave(int i)
{
    return 0.5 + 0.45 * std::sin(i * 0.1);
}

/// Microseconds for one repaint of the widget alone, with a new value before each.
double microsecondsPerRepaint(QWidget& widget, const std::function<void(double)>& setValue)
{
    constexpr int count = 300;
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    std::chrono::duration<double, std::micro> time{};
    for (int i = 0; i < count; ++i) {
        setValue(wave(i));
        const auto start = std::chrono::steady_clock::now();
        widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
        time += std::chrono::steady_clock::now() - start;
    }
    return time.count() / count;
}

/// Microseconds for drawing the panel and its scale directly, without the pointer.
double microsecondsPerPanel(ValueBarWidget& bar)
{
    constexpr int count = 300;
    QImage image(bar.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    std::chrono::duration<double, std::micro> time{};
    for (int i = 0; i < count; ++i) {
        QPainter painter(&image);
        const auto start = std::chrono::steady_clock::now();
        bar.updateScale(painter);
        time += std::chrono::steady_clock::now() - start;
    }
    return time.count() / count;
}

/// At most half the time that the same picture takes drawn directly, even without its pointer.
void valueBarAgainstDirectDrawing(benchmark::State& state)
{
    ValueBar bar(kValueBarSize);
    double keptTime = 0;
    double directTime = 0;
    for (auto _ : state) {
        const double time =
            microsecondsPerRepaint(bar.widget(), [&](double value) { bar.device().input(value); });
        state.SetIterationTime(time * 1e-6);
        keptTime += time;
        directTime += microsecondsPerPanel(bar.widget());
    }
    state.counters["kept_us"] = keptTime / double(state.iterations());
    state.counters["direct_us"] = directTime / double(state.iterations());
    state.counters["ratio"] = keptTime / directTime;
}

#ifdef NORVO_WITH_QWT
/// At most one and a half times a thermometer of as many ticks.
void valueBarAgainstQwtThermo(benchmark::State& state)
{
    ValueBar ours(kValueBarSize);
    QwtThermo thermo;
    thermo.setOrientation(Qt::Horizontal);
    QList<double> minor;
    for (int i = -2; i <= 12; ++i) {
        minor.append(i * 0.1);
    }
    thermo.setScale(QwtScaleDiv(-0.2, 1.2, minor, {}, {0.0, 0.5, 1.0}));
    thermo.setFont(QFont("Arial", 14, QFont::Bold));
    thermo.resize(kValueBarSize);
    double oursTime = 0;
    double otherTime = 0;
    for (auto _ : state) {
        const double time = microsecondsPerRepaint(
            ours.widget(), [&](double value) { ours.device().input(value); });
        state.SetIterationTime(time * 1e-6);
        oursTime += time;
        otherTime += microsecondsPerRepaint(thermo, [&](double value) { thermo.setValue(value); });
    }
    state.counters["ours_us"] = oursTime / double(state.iterations());
    state.counters["qwt_us"] = otherTime / double(state.iterations());
    state.counters["ratio"] = oursTime / otherTime;
}
#endif

/// Values from their signal into a widget that is not on view: at most 0.5 us.
void valueIntoValueBar(benchmark::State& state)
{
    ValueBar gauge(kValueBarSize);
    int i = 0;
    for (auto _ : state) {
        gauge.device().input((i++ % 100) * 0.01);
    }
}

/// The same at 10 kHz, with the ten seconds before in the history: at most 1 us.
void valueIntoLumenoAt10kHz(benchmark::State& state)
{
    using Clock = std::chrono::steady_clock;
    Lumeno gauge(kLumenoSize);
    Clock::time_point next = Clock::now();
    const auto feedFor = [&](int count) {
        Clock::duration spent{};
        for (int i = 0; i < count; ++i) {
            next += std::chrono::microseconds(100);
            while (Clock::now() < next) {
            }
            const auto start = Clock::now();
            gauge.device().input((i % 100) * 0.01);
            spent += Clock::now() - start;
        }
        return std::chrono::duration<double>(spent).count() / count;
    };
    feedFor(110000);
    for (auto _ : state) {
        state.SetIterationTime(feedFor(10000));
    }
}

/// A repaint with so many points in the history: at 100,000 at most twice the time at 300. Values
/// come at most one a millisecond, so the trace is drawn here over a gauge that has none of its
/// own, with a value more before each.
void repaintWithHistoryOf(benchmark::State& state)
{
    const int count = int(state.range(0));
    Lumeno gauge(kLumenoSize, {{"widget/name", "Oil"}});
    gauge.device().input(0.5);
    GaugeHistory history;
    double now = 0;
    const auto feed = [&](int i) {
        now += GaugeHistory::kSpanSeconds / count;
        history.insert(now, 0.5 + 0.4 * std::sin(now * 3.0) + (i % 13) * 0.01);
        history.prune(now);
    };
    for (int i = 0; i < 2 * count; ++i) {
        feed(i);
    }
    QImage image(kLumenoSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    int i = 0;
    for (auto _ : state) {
        feed(i++);
        gauge.widget().render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setClipRect(image.rect()); // as the gauge does: Qt draws thin lines directly then
        painter.drawPolyline(history.trace(now, {250.0, 0.0, 1.0, 200.0}));
    }
    state.counters["points"] = history.size();
}

/// The whole gauge, with ten seconds of values at 30 Hz or at 1 kHz in it: a value of its own for
/// every millisecond, which is as many as there can be.
void lumenoRepaint(benchmark::State& state)
{
    Lumeno gauge(kLumenoSize, {{"widget/name", "Oil"}});
    const qint64 period = 1000 / state.range(0);
    QElapsedTimer clock;
    clock.start();
    for (qint64 next = 0, i = 0; next < 11000; next += period, ++i) {
        while (clock.elapsed() < next) {
        }
        gauge.device().input(0.5 + 0.4 * std::sin(double(next) * 0.003) + double(i % 13) * 0.01);
    }
    const auto nothing = [](double) {};
    for (auto _ : state) {
        state.SetIterationTime(microsecondsPerRepaint(gauge.widget(), nothing) * 1e-6);
    }
}

/// Fifty of each in a window of 1920 x 1080 that is fed at 30 Hz: under 40 % of one core.
void hundredGaugesAt30Hz(benchmark::State& state)
{
    QWidget window;
    auto* const grid = new QGridLayout(&window);
    std::vector<std::unique_ptr<OutputBarDevice>> devices;
    for (int i = 0; i < 100; ++i) {
        if (i % 2 == 0) {
            devices.push_back(std::make_unique<OutputBarDevice>());
        } else {
            devices.push_back(std::make_unique<LumenoBarDevice>());
            devices.back()->setParam("widget/name", "Gauge");
        }
        OutputBarDevice& device = *devices.back();
        device.setRunning(device.initialise());
        BaseWidget* const widget = device.createWidget();
        grid->addWidget(widget, i / 20, i % 20);
        widget->initialise();
    }
    window.resize(1920, 1080);
    window.show();
    QApplication::processEvents();

    constexpr int frames = 150;
    for (auto _ : state) {
        QElapsedTimer clock;
        clock.start();
        const std::clock_t start = std::clock();
        for (int frame = 0; frame < frames; ++frame) {
            for (auto& device : devices) {
                device->input(wave(frame));
            }
            while (clock.elapsed() < (frame + 1) * 1000 / 30) {
                QApplication::processEvents();
                struct timespec pause = {0, 1000000};
                nanosleep(&pause, nullptr);
            }
        }
        const double seconds = double(std::clock() - start) / CLOCKS_PER_SEC;
        state.SetIterationTime(seconds / frames);
        state.counters["percent_of_a_core"] = 100.0 * seconds / (clock.elapsed() * 0.001);
    }
}

void comparison(benchmark::internal::Benchmark* benchmark)
{
    benchmark->UseManualTime()->Iterations(1)->Repetitions(9)->ReportAggregatesOnly();
    benchmark->Unit(benchmark::kMicrosecond);
}

} // namespace

BENCHMARK(valueBarAgainstDirectDrawing)->Apply(comparison);
#ifdef NORVO_WITH_QWT
BENCHMARK(valueBarAgainstQwtThermo)->Apply(comparison);
#endif
BENCHMARK(valueIntoValueBar)->Repetitions(9)->ReportAggregatesOnly();
BENCHMARK(valueIntoLumenoAt10kHz)
    ->UseManualTime()
    ->Iterations(5)
    ->Repetitions(3)
    ->ReportAggregatesOnly();
BENCHMARK(repaintWithHistoryOf)
    ->Arg(300)
    ->Arg(10000)
    ->Arg(100000)
    ->Repetitions(9)
    ->ReportAggregatesOnly()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(lumenoRepaint)
    ->Arg(30)
    ->Arg(1000)
    ->UseManualTime()
    ->Iterations(5)
    ->Repetitions(1)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(hundredGaugesAt30Hz)
    ->UseManualTime()
    ->Iterations(1)
    ->Repetitions(3)
    ->ReportAggregatesOnly()
    ->Unit(benchmark::kMillisecond);
