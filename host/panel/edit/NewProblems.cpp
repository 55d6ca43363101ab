// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/edit/NewProblems.h"

#include <QRegularExpression>
#include <QSet>

namespace norvo {

namespace {

QString withoutLines(const Diagnostic& one)
{
    static const QRegularExpression line("\\bline \\d+");
    return QString(one.text).remove(line);
}

} // namespace

DiagnosticList newProblems(const DiagnosticList& before, const DiagnosticList& now)
{
    QSet<QString> known;
    for (const Diagnostic& one : before) {
        known.insert(withoutLines(one));
    }
    DiagnosticList added;
    for (const Diagnostic& one : now) {
        if (!known.contains(withoutLines(one))) {
            added.append(one);
        }
    }
    return added;
}

} // namespace norvo
