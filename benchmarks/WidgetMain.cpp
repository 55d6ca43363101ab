// SPDX-License-Identifier: GPL-3.0-or-later

// Runs the benchmarks of a program that shows widgets, bare or in the look of a panel.

#include "tests/WornLook.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLoggingCategory>

#include <cstdio>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) {
        if (!text.contains("propagateSizeHints")) { // by the platform for each window
            std::fprintf(stderr, "%s\n", qPrintable(text));
        }
    });
    QLoggingCategory::setFilterRules("*.debug=false");
    QApplication application(argc, argv);
    norvo::wearLook(application);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
