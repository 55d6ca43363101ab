// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/ExportHistory.h"

#include "host/panel/file/services/Duration.h"
#include "host/program/options/CommandLine.h"
#include "host/program/PanelInput.h"
#include "host/program/streams/Console.h"
#include "host/services/history/HistoryQuery.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QSaveFile>

#include <unistd.h>

namespace norvo {

namespace {

constexpr char kStandardOutput[] = "-";
constexpr int kPiece = 1 << 16; // Bytes that are handed to the system at once.

QByteArray quoted(QString text)
{
    return '"' + text.replace('"', "\"\"").toUtf8() + '"';
}

QByteArray fieldOf(const HistoryValue& value)
{
    switch (value.kind) {
    case HistoryValue::Kind::Number:
        return QByteArray::number(value.number, 'g', QLocale::FloatingPointShortest);
    case HistoryValue::Kind::YesNo:
        return value.number > 0 ? "true" : "false";
    case HistoryValue::Kind::Text:
        return quoted(value.text);
    default:
        return {};
    }
}

/// Writes rows of a table to a file or to standard output.
class Table
{
public:
    explicit Table(QIODevice& out) : m_out(out) { m_text = "time,signal,value\r\n"; }

    bool add(const QByteArray& signal, const HistoryPoint& point)
    {
        m_text += timeOf(point.time) + ',' + signal + ',' + fieldOf(point.value) + "\r\n";
        return m_text.size() < kPiece || flush();
    }
    bool flush()
    {
        const bool isDone = m_out.write(m_text) == m_text.size();
        m_text.clear();
        return isDone;
    }

private:
    /// UTC, as 2026-03-01T12:34:56.789Z; a second's text is made once.
    QByteArray timeOf(qint64 time)
    {
        const qint64 second = time / 1000;
        if (second != m_second) {
            m_second = second;
            m_secondText = QDateTime::fromSecsSinceEpoch(second, Qt::UTC)
                               .toString("yyyy-MM-ddTHH:mm:ss.")
                               .toLatin1();
        }
        return m_secondText + QByteArray::number(time % 1000).rightJustified(3, '0') + 'Z';
    }

    QIODevice& m_out;
    QByteArray m_text;
    QByteArray m_secondText;
    qint64 m_second = -1;
};

/// What went wrong; empty: nothing.
QString writeTable(HistoryQuery& history, const Options& options, QIODevice& out)
{
    Table table(out);
    bool isWritten = true;
    for (const QString& name : history.signalNames()) {
        const QByteArray field = name.contains(',') ? quoted(name) : name.toUtf8();
        const HistoryRange range{name.section('.', 0, 0), name.section('.', 1), options.exportFrom,
                                 options.exportTo};
        const bool isRead = history.forEach(
            range, [&](const HistoryPoint& point) { return isWritten = table.add(field, point); });
        if (!isRead) {
            return "the history cannot be read: " + history.error();
        }
        if (!isWritten) {
            break;
        }
    }
    return isWritten && table.flush()
               ? QString()
               : QString("%1 cannot be written: %2").arg(options.exportFile, out.errorString());
}

/// Absolute; empty where the panel has no history, which has been reported.
QString historyFileOf(const PanelInput& panel, const QString& beside)
{
    Diagnostics diagnostics(panel.name());
    const HistorySetting history = panel.read(diagnostics).history;
    if (history.isGiven && !(history.file.isEmpty() && panel.isStandardInput())) {
        return history.file.isEmpty() ? beside : QFileInfo(history.file).absoluteFilePath();
    }
    for (const Diagnostic& diagnostic : diagnostics.sorted()) {
        Console::report(diagnostic.toString());
    }
    if (!diagnostics.hasErrors()) {
        Console::reportError(history.isGiven
                                 ? "a panel from standard input must name the file of its history"
                                 : panel.name() + " has no history; its key \"history\" names "
                                                  "signals that are to be recorded");
    }
    return {};
}

} // namespace

std::optional<qint64> toMoment(const QString& text, const QDateTime& now)
{
    if (const auto ago = toDuration(text)) {
        return now.toMSecsSinceEpoch() - ago->count();
    }
    const QDateTime time = QDateTime::fromString(text.trimmed(), Qt::ISODateWithMs);
    return time.isValid() ? std::make_optional(time.toMSecsSinceEpoch()) : std::nullopt;
}

int exportHistory(const Options& options)
{
    const auto fail = [](const QString& error) {
        Console::reportError(error);
        return 1;
    };
    const PanelInput panel(options.panelFiles.constFirst());
    const QString target = QFileInfo(options.exportFile).absoluteFilePath();
    const QString beside = QFileInfo(HistorySetting::besidePanel(panel.name())).absoluteFilePath();
    const QString file = historyFileOf(panel, beside);
    if (file.isEmpty()) {
        return 1;
    }
    HistoryQuery history;
    if (!history.open(file)) {
        return fail(QString("the history %1 cannot be read: %2").arg(file, history.error()));
    }
    if (options.exportFile == kStandardOutput) {
        QFile out;
        out.open(STDOUT_FILENO, QIODevice::WriteOnly | QIODevice::Unbuffered);
        const QString error = writeTable(history, options, out);
        return error.isEmpty() ? 0 : fail(error);
    }
    QSaveFile out(target);
    if (!out.open(QIODevice::WriteOnly)) {
        return fail(QString("%1 cannot be written: %2").arg(options.exportFile, out.errorString()));
    }
    const QString error = writeTable(history, options, out);
    if (!error.isEmpty()) {
        return fail(error);
    }
    return out.commit() ? 0
                        : fail(QString("%1 cannot be written: %2")
                                   .arg(options.exportFile, out.errorString()));
}

} // namespace norvo
