// SPDX-License-Identifier: GPL-3.0-or-later

#include "HarnessMain.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace norvo {

namespace {

void takeMessage(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    const bool isWrong = type == QtFatalMsg || text.startsWith("QObject::connect:");
    if (isWrong) {
        std::fprintf(stderr, "%s\n", qPrintable(text));
        std::abort();
    }
}

} // namespace

std::vector<NamedHarness>& harnesses()
{
    static std::vector<NamedHarness> all;
    return all;
}

Harness::Harness(const char* name, Run run)
{
    harnesses().push_back({name, run});
}

void silenceMessages()
{
    qInstallMessageHandler(takeMessage);
}

void runHarness(const NamedHarness& harness, const QByteArray& input)
{
    harness.run(input);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void require(bool holds, const char* rule)
{
    if (!holds) {
        std::fprintf(stderr, "The rule is broken: %s\n", rule);
        std::abort();
    }
}

void withFile(const QByteArray& content, const std::function<void(const QString& fileName)>& run)
{
    static const QTemporaryDir folder;
    const QString name = folder.filePath("input");
    QFile file(name);
    require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(),
            "there is room for a file");
    file.close();
    run(name);
    QFile::remove(name);
}

} // namespace norvo
