// SPDX-License-Identifier: GPL-3.0-or-later

// What a QML face costs: each value on its way through JavaScript, and the start of fifty faces.

#include "devices/QmlGuiDevice.h"
#include "norvo/BaseWidget.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QFile>
#include <QGridLayout>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

namespace {

const QByteArray kRelay = "import QtQuick 2.0\n"
                          "Item {\n"
                          "    signal output(real v)\n"
                          "    function input(v) { output(v) }\n"
                          "}\n";
constexpr int kFaces = 50;

class Source : public QObject
{
    Q_OBJECT

signals:
    void output(double value);
};

class Sink : public QObject
{
    Q_OBJECT

public slots:
    void input(double value) { m_sum += value; }

private:
    double m_sum = 0;
};

double secondsFor(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Of this process, in KiB.
double residentMemory()
{
    QFile file("/proc/self/statm");
    return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').value(1).toDouble() * 4 : 0;
}

/// At most 3 times the time of the bare item, called by name.
void relayAgainstBareItem(benchmark::State& state)
{
    QmlGuiDevice device;
    device.setParam("sourceType", "parameter");
    device.setParam("sourceCode", kRelay);
    device.setRunning(device.initialise());
    QString signature;
    Source source;
    Sink sink;
    QObject::connect(&source, SIGNAL(output(double)),
                     device.getReceiver("input(double)", signature), SLOT(input(double)));
    QObject::connect(device.getProvider("output", signature), SIGNAL(output(double)), &sink,
                     SLOT(input(double)));

    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(kRelay, QUrl());
    const std::unique_ptr<QObject> item(component.create());
    Sink bareSink;
    QObject::connect(item.get(), SIGNAL(output(double)), &bareSink, SLOT(input(double)));

    constexpr int kValues = 100000;
    double ours = 0;
    double bare = 0;
    for (auto _ : state) {
        const double seconds = secondsFor([&source] {
            for (int i = 0; i < kValues; ++i) {
                emit source.output(i);
            }
        });
        state.SetIterationTime(seconds);
        ours += seconds;
        bare += secondsFor([&item] {
            for (int i = 0; i < kValues; ++i) {
                QMetaObject::invokeMethod(item.get(), "input",
                                          Q_ARG(QVariant, QVariant(double(i))));
            }
        });
    }
    const double perValue = 1e9 / kValues / double(state.iterations());
    state.counters["ours_ns"] = ours * perValue;
    state.counters["bare_ns"] = bare * perValue;
    state.counters["ratio"] = ours / bare;
}

/// Fifty faces of one file, loaded and on view; under 1.5 s.
void fiftyFaces(benchmark::State& state, const char* file)
{
    for (auto _ : state) {
        const double before = residentMemory();
        std::vector<std::unique_ptr<QmlGuiDevice>> devices;
        std::vector<BaseWidget*> widgets;
        QWidget window;
        auto* const grid = new QGridLayout(&window);
        double loaded = 0;
        const double all = secondsFor([&] {
            loaded = secondsFor([&] {
                for (int i = 0; i < kFaces; ++i) {
                    devices.push_back(std::make_unique<QmlGuiDevice>());
                    devices.back()->setParam("sourceData", file);
                    if (!devices.back()->initialise()) {
                        state.SkipWithError("the face does not load");
                        return;
                    }
                }
            });
            for (int i = 0; i < int(devices.size()); ++i) {
                widgets.push_back(devices[i]->createWidget());
                grid->addWidget(widgets.back(), i / 10, i % 10);
                widgets.back()->initialise();
            }
            window.show();
            QApplication::processEvents();
            window.grab();
        });
        state.SetIterationTime(all);
        state.counters["load_ms"] = loaded * 1e3;
        state.counters["KiB_each"] = (residentMemory() - before) / kFaces;
        for (BaseWidget* widget : widgets) {
            delete widget;
        }
    }
}

/// What of this is the engine's, before it loads anything but Qt Quick itself.
void fiftyEngines(benchmark::State& state)
{
    for (auto _ : state) {
        const double before = residentMemory();
        std::vector<std::unique_ptr<QQmlEngine>> engines;
        state.SetIterationTime(secondsFor([&engines] {
            for (int i = 0; i < kFaces; ++i) {
                engines.push_back(std::make_unique<QQmlEngine>());
                QQmlComponent component(engines.back().get());
                component.setData("import QtQuick 2.0\nItem {}\n", QUrl());
                delete component.create();
            }
        }));
        state.counters["KiB_each"] = (residentMemory() - before) / kFaces;
    }
}

void comparison(benchmark::internal::Benchmark* benchmark)
{
    benchmark->UseManualTime()->Iterations(1)->Repetitions(9)->ReportAggregatesOnly();
    benchmark->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK(relayAgainstBareItem)->Apply(comparison);
BENCHMARK(fiftyEngines)->Apply(comparison);
BENCHMARK_CAPTURE(fiftyFaces, gauge, NORVO_SOURCE_DIR "/examples/qml/Gauge.qml")->Apply(comparison);
BENCHMARK_CAPTURE(fiftyFaces, knob, NORVO_SOURCE_DIR "/examples/qml/Knob.qml")->Apply(comparison);

#include "bench_qml.moc"
