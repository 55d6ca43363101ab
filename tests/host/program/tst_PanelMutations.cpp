// SPDX-License-Identifier: GPL-3.0-or-later

#include "Seed.h"
#include "TestMain.h"
#include "host/panel/file/PanelFile.h"
#include "host/panel/plan/PanelPlan.h"
#include "host/program/PluginSet.h"

#include <QtTest>

#include <random>

using norvo::Diagnostic;
using norvo::DiagnosticList;
using norvo::Diagnostics;
using norvo::PanelFile;
using norvo::PanelPlan;

namespace {

void dropMessage(QtMsgType, const QMessageLogContext&, const QString&) {}

} // namespace

/// Sound panels with one change at a random place: where the check finds errors, the first stands
/// near the change.
class tst_PanelMutations : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void firstErrorStandsWithinThreeLines();

private:
    unsigned pick(unsigned count) { return m_random() % count; }
    DiagnosticList check(const QByteArray& text) const;
    int mutate(QByteArray& text);

    norvo::PluginSet m_plugins;
    QList<QByteArray> m_panels;
    std::mt19937 m_random;
};

void tst_PanelMutations::initTestCase()
{
    m_plugins.load(NORVO_BUILD_DIR "/plugins");
    for (const char* folder : {"tests/panels/good", "examples"}) {
        QDirIterator files(folder, {"*.yaml"}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QByteArray text = file.readAll();
            const DiagnosticList found = check(text);
            const bool isSound = std::none_of(found.cbegin(), found.cend(), [](const auto& one) {
                return one.severity == Diagnostic::Severity::Error;
            });
            if (isSound && !text.contains("qml_widget")) { // Loading QML takes its time.
                m_panels += text;
            }
        }
    }
    QVERIFY(m_panels.size() >= 4);
}

DiagnosticList tst_PanelMutations::check(const QByteArray& text) const
{
    Diagnostics diagnostics("panel.yaml");
    PanelPlan::make(PanelFile::parse(text, "panel.yaml", diagnostics), m_plugins.manager(), {},
                    diagnostics);
    return diagnostics.sorted();
}

/// Changes the text at one place and returns its line.
int tst_PanelMutations::mutate(QByteArray& text)
{
    const QByteArray letters("abcxyzABC019 \t\n:-#'\"{}[],&*!|>%@`?.\\/()_~");
    const int at = int(pick(unsigned(text.size())));
    const int begin = at == 0 ? 0 : text.lastIndexOf('\n', at - 1) + 1;
    const int lineFeed = text.indexOf('\n', at);
    const int end = lineFeed < 0 ? text.size() : lineFeed + 1;
    const int line = 1 + text.left(at).count('\n');
    const char letter = letters[int(pick(unsigned(letters.size())))];
    switch (pick(7)) {
    case 0: // A letter missing.
        text.remove(at, 1);
        break;
    case 1: // A wrong letter.
        text[at] = letter;
        break;
    case 2: // A letter too many.
        text.insert(at, letter);
        break;
    case 3: // Several missing.
        text.remove(at, 2 + int(pick(8)));
        break;
    case 4: // The line missing.
        text.remove(begin, end - begin);
        break;
    case 5: // The line twice.
        text.insert(end, text.mid(begin, end - begin));
        break;
    default: // The line one step further in.
        text.insert(begin, "  ");
    }
    return line;
}

void tst_PanelMutations::firstErrorStandsWithinThreeLines()
{
    constexpr int kRounds = 5000;
    constexpr int kNear = 3;
    const unsigned seed = norvo::testSeed();
    m_random.seed(seed);
    const QtMessageHandler before =
        qInstallMessageHandler(dropMessage); // Devices of broken panels.
    int broken = 0;
    int near = 0;
    QStringList far;
    for (int round = 0; round < kRounds; ++round) {
        QByteArray text = m_panels[int(pick(unsigned(m_panels.size())))];
        const int line = mutate(text);
        const DiagnosticList found = check(text);
        const auto first = std::find_if(found.cbegin(), found.cend(), [](const auto& one) {
            return one.severity == Diagnostic::Severity::Error;
        });
        if (first == found.cend()) {
            continue;
        }
        ++broken;
        if (std::abs(first->place.line - line) <= kNear) {
            ++near;
        } else {
            far += QString("line %1: %2\n%3")
                       .arg(line)
                       .arg(first->toString())
                       .arg(QString::fromUtf8(text.split('\n').value(line - 1)));
        }
    }
    qInstallMessageHandler(before);
    const double share = 100.0 * near / std::max(broken, 1);
    qInfo("NORVO_TEST_SEED=%u: %d of %d texts broken, the first error of %.1f %% within %d lines",
          seed, broken, kRounds, share, kNear);
    QVERIFY(broken > kRounds / 4);
    // 94 to 95 % as measured: a name that is wrong where it is defined shows where it is used.
    QVERIFY2(share >= 93, qPrintable(far.mid(0, 40).join('\n')));
}

NORVO_TEST(tst_PanelMutations)
#include "tst_PanelMutations.moc"
