// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/NewProblems.h"

#include <QHash>
#include <QRegularExpression>

namespace norvo {

namespace {

/// The same in another line is the same.
QString keyOf(const Diagnostic& one)
{
    static const QRegularExpression line("\\bline \\d+");
    return QString::number(int(one.severity)) + QString(one.text).remove(line);
}

} // namespace

DiagnosticList newProblems(const DiagnosticList& before, const DiagnosticList& now)
{
    QHash<QString, int> known;
    for (const Diagnostic& one : before) {
        ++known[keyOf(one)];
    }
    DiagnosticList added;
    for (const Diagnostic& one : now) {
        if (--known[keyOf(one)] < 0) {
            added.append(one);
        }
    }
    return added;
}

} // namespace norvo
