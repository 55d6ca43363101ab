// SPDX-License-Identifier: GPL-3.0-or-later

// What one value costs on its way through a display, against the bare Qt path to the same sight.

#include "devices/Label.h"
#include "devices/OutputDigitalDevice.h"
#include "devices/OutputWithProgress.h"
#include "norvo/BaseWidget.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>

#include <chrono>
#include <functional>
#include <memory>

namespace {

class Source : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

signals:
    void output(double value);
};

/// Hears all that a readout passes on.
class Sink : public QObject
{
    Q_OBJECT

public slots:
    void number(double value) { m_sum += value; }
    void text(const QString& text) { m_sum += text.size(); }
    void namedNumber(double value, const QString& sender) { m_sum += value + sender.size(); }
    void namedText(const QString& text, const QString& sender)
    {
        m_sum += text.size() + sender.size();
    }

private:
    double m_sum = 0;
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

/// The plain way to a readout: every value sets every look again.
class NaiveReadout : public QWidget
{
    Q_OBJECT

public:
    explicit NaiveReadout(bool withBar)
        : m_caption(new QLabel("caption")),
          m_value(new QLabel),
          m_bar(withBar ? new QProgressBar : nullptr)
    {
        auto* const grid = new QGridLayout(this);
        grid->addWidget(m_caption, 0, 0);
        grid->addWidget(m_value, 1, 0);
        if (m_bar) {
            m_bar->setRange(0, 1000);
            m_bar->setTextVisible(false);
            grid->addWidget(m_bar, 2, 0);
        }
    }

public slots:
    void input(double value)
    {
        m_value->setText(QString::number(value, 'f', 0));
        m_value->setStyleSheet("QLabel { background-color : green; color : white; border: 1px "
                               "solid #222222; border-radius: 5px; }");
        if (m_bar) {
            m_bar->setStyleSheet("QProgressBar::chunk {background: green;}");
            m_bar->setValue(int(value * 10));
            m_bar->setEnabled(true);
        }
        m_caption->setEnabled(true);
        update();
    }

private:
    QLabel* m_caption;
    QLabel* m_value;
    QProgressBar* m_bar;
};

/// A running device that gets its values through a wire.
template <class Device>
class Fed
{
public:
    explicit Fed(const QMap<QString, QString>& params = {})
    {
        for (auto param = params.cbegin(); param != params.cend(); ++param) {
            m_device.setParam(param.key(), param.value());
        }
        m_source.setObjectName("source");
        m_device.setRunning(m_device.initialise());
        QObject::connect(&m_source, SIGNAL(output(double)), &m_device, SLOT(input(double)));
    }

    /// To be called once; with its own widget unless there is another to show.
    void show(QWidget* other = nullptr)
    {
        if (!other) {
            BaseWidget* const own = m_device.createWidget();
            own->initialise();
            other = own;
        }
        m_window = std::make_unique<Window>(other);
        m_device.postInitialisation();
    }

    void connectAllOutputs()
    {
        QObject::connect(&m_device, SIGNAL(output(double)), &m_sink, SLOT(number(double)));
        QObject::connect(&m_device, SIGNAL(output(QString)), &m_sink, SLOT(text(QString)));
        QObject::connect(&m_device, SIGNAL(output(double, QString)), &m_sink,
                         SLOT(namedNumber(double, QString)));
        QObject::connect(&m_device, SIGNAL(output(QString, QString)), &m_sink,
                         SLOT(namedText(QString, QString)));
    }

    Device& device() { return m_device; }
    void feed(double value) { emit m_source.output(value); }

private:
    Source m_source;
    Sink m_sink;
    Device m_device;
    std::unique_ptr<Window> m_window;
};

/// Seconds for so many values and for whatever they leave to the event loop.
double secondsFor(int count, const std::function<void(double)>& feed)
{
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < count; ++i) {
        feed((i % 1000) * 0.1);
    }
    QApplication::processEvents();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

struct Pair
{
    double ours;  ///< Nanoseconds for each value.
    double other; ///< The same.
};

/// Takes turns with both, so that neither has the quieter machine.
Pair timeBoth(benchmark::State& state, int count, const std::function<void(double)>& ours,
              const std::function<void(double)>& other)
{
    double oursSeconds = 0;
    double otherSeconds = 0;
    for (auto _ : state) {
        const double seconds = secondsFor(count, ours);
        state.SetIterationTime(seconds);
        oursSeconds += seconds;
        otherSeconds += secondsFor(count, other);
    }
    const double nanosecondsPerValue = 1e9 / count / double(state.iterations());
    return {oursSeconds * nanosecondsPerValue, otherSeconds * nanosecondsPerValue};
}

/// At most 3 times the bare label's time, be that as it comes or wrapped and in our font.
void labelAgainstBareLabel(benchmark::State& state, bool alike)
{
    Fed<Label> label({{"Value", "%1"}, {"widget/precision", "1"}});
    label.show();
    auto* const bare = new QLabel;
    if (alike) {
        bare->setWordWrap(true);
        bare->setFont(QFont("Arial", 15));
    }
    Window window(bare);
    const Pair times = timeBoth(
        state, 100000, [&](double value) { label.feed(value); },
        [&](double value) { bare->setText(QString::number(value, 'f', 1)); });
    state.counters["ours_ns"] = times.ours;
    state.counters["bare_ns"] = times.other;
    state.counters["ratio"] = times.ours / times.other;
}

/// Four outputs with receivers each, the state unchanged. At most 3 us with digits alone, at most
/// 5 us with progress; at least 10 times faster than a readout that sets its looks with each value.
template <class Device>
void readoutAgainstNaiveReadout(benchmark::State& state, bool withBar)
{
    Fed<Device> readout;
    readout.connectAllOutputs();
    readout.show();
    Fed<Device> naive;
    naive.connectAllOutputs();
    auto* const naiveReadout = new NaiveReadout(withBar);
    QObject::connect(&naive.device(), SIGNAL(output(double)), naiveReadout, SLOT(input(double)));
    naive.show(naiveReadout);
    readout.feed(1);
    const Pair times = timeBoth(
        state, 5000, [&](double value) { readout.feed(value); },
        [&](double value) { naive.feed(value); });
    state.counters["ours_ns"] = times.ours;
    state.counters["naive_ns"] = times.other;
    state.counters["times_faster"] = times.other / times.ours;
}

void digitsAgainstNaiveDigits(benchmark::State& state)
{
    readoutAgainstNaiveReadout<OutputDigitalDevice>(state, false);
}

void progressAgainstNaiveProgress(benchmark::State& state)
{
    readoutAgainstNaiveReadout<OutputWithProgress>(state, true);
}

void comparison(benchmark::internal::Benchmark* benchmark)
{
    benchmark->UseManualTime()->Iterations(1)->Repetitions(9)->ReportAggregatesOnly();
    benchmark->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK_CAPTURE(labelAgainstBareLabel, as_it_comes, false)->Apply(comparison);
BENCHMARK_CAPTURE(labelAgainstBareLabel, alike, true)->Apply(comparison);
BENCHMARK(digitsAgainstNaiveDigits)->Apply(comparison);
BENCHMARK(progressAgainstNaiveProgress)->Apply(comparison);

#include "bench_values.moc"
