// SPDX-License-Identifier: GPL-3.0-or-later

#include "HarnessMain.h"

#include <QApplication>
#include <QDir>
#include <QFile>

#include <algorithm>
#include <cstdio>

/// PROGRAM HARNESS FOLDER: gives each file of the folder to the harness.
int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    norvo::silenceMessages();
    const QString name = argc == 3 ? argv[1] : "";
    const auto& all = norvo::harnesses();
    const auto harness =
        std::find_if(all.cbegin(), all.cend(), [&](const auto& one) { return one.name == name; });
    const QDir folder(argc == 3 ? argv[2] : "");
    const QStringList files = folder.entryList(QDir::Files, QDir::Name);
    if (argc != 3 || harness == all.cend() || files.isEmpty()) {
        std::fprintf(stderr, "%s: there is no such harness, or no file for it\n", argv[0]);
        return 2;
    }
    for (const QString& one : files) {
        std::printf("%s\n", qPrintable(one)); // The last one named is the one that fails.
        std::fflush(stdout);
        QFile file(folder.filePath(one));
        norvo::require(file.open(QIODevice::ReadOnly), "files of the corpus can be read");
        norvo::runHarness(*harness, file.readAll());
    }
    std::printf("%d inputs passed\n", files.size());
    return 0;
}
