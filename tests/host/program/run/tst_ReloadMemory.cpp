// SPDX-License-Identifier: GPL-3.0-or-later

#include "../RunningFile.h"
#include "host/panel/plan/Node.h"
#include "host/panel/run/Panel.h"
#include "norvo/BaseDevice.h"
#include "Footprint.h"
#include "TestMain.h"

#include <QtTest>

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr int kRounds = 12;
#else
constexpr int kRounds = 100;
#endif
constexpr int kReloadsOfARound = 10;
constexpr int kQuietMs = 3000; // After which no timer of one shot runs.
/// Memory is taken in pieces that fit ever better; a row or a wire that stayed would take more.
constexpr size_t kMostBytesAReload = 512;

/// Readouts of a source, of which some come and go, move, or get others to listen to; a document, a
/// graph, an alarm and a history.
QByteArray panelOf(int version)
{
    const int kind = version % kReloadsOfARound;
    QByteArray devices = "title: V" + QByteArray::number(kind) +
                         "\ndevices:\n"
                         "  wave: {device: generator, params: {interval: 3600000}}\n"
                         "  level: {device: slider}\n"
                         "  trend: {device: output_graph}\n"
                         "  face: {device: qml_widget, params: {sourceType: parameter, sourceCode: "
                         "\"import QtQuick 2.0; Item { function input(value) {} }\"}}\n"
                         "  changed: {device: button, params: {text: V" +
                         QByteArray::number(kind) + "}}\n";
    QByteArray arrows = "connections:\n"
                        "  - level.output(double) -> trend.input\n"
                        "  - level.output(double) -> face.input(double)\n";
    for (int i = 0; i < 20 - kind; ++i) {
        const QByteArray id = "r" + QByteArray::number(i);
        devices += "  " + id + ": {device: output_digital, params: {widget/row: " +
                   QByteArray::number(10 + (i + kind) % 20) + ", widget/column: 0}}\n";
        arrows += "  - wave.output(double) -> " + id + ".input(double)\n";
    }
    const QByteArray services = "alarms:\n"
                                "  - {signal: level.output(double), above: 5" +
                                QByteArray::number(kind) +
                                "}\n"
                                "history: {file: h.sqlite, signals: [level.output" +
                                (kind % 2 ? ", wave.output" : "") + "]}\n";
    return devices + arrows + services;
}

} // namespace

/// What a panel whose text changes again and again leaves behind.
class tst_ReloadMemory : public QObject
{
    Q_OBJECT

private slots:
    void reloadsLeaveNothing();
};

void tst_ReloadMemory::reloadsLeaveNothing()
{
    RunningFile file(panelOf(0));
    const auto reload = [&file](int rounds) {
        for (int i = 0; i < rounds * kReloadsOfARound; ++i) {
            file.change(panelOf(i));
        }
        file.change(panelOf(0));
        RunningFile::settle();
    };
    const auto footprint = [&file] {
        QObjectList roots{&file.running->window(), &file.running->panel(), &file.running->alarms(),
                          &file.watch, file.file.get()};
        for (const norvo::Node* const node : file.running->panel().nodes()) {
            roots += node->device();
        }
        return Footprint::of(roots);
    };
    reload(kRounds / 2);
    QTest::qWait(kQuietMs);
    const Footprint half = footprint();
    reload(kRounds / 2);
    // A timer of one shot may still run.
    QTRY_COMPARE_WITH_TIMEOUT(Footprint::difference(half, footprint()), QString(), 60000);
    const Footprint whole = footprint();
    QVERIFY(whole.total("objects") > 100 && whole.total("receivers") > 100);
    const size_t grown = whole.bytes() - std::min(whole.bytes(), half.bytes());
    qInfo("%d reloads: %d objects, %d receivers, %d timers, %d handles, %d threads; the second "
          "half took %zu bytes",
          kRounds * kReloadsOfARound, whole.total("objects"), whole.total("receivers"),
          whole.total("timers"), whole.count("handles"), whole.count("threads"), grown);
    const size_t reloads = size_t(kRounds / 2) * kReloadsOfARound;
    QVERIFY2(grown <= kMostBytesAReload * reloads, qPrintable(QString::number(grown)));
}

NORVO_TEST(tst_ReloadMemory)
#include "tst_ReloadMemory.moc"
