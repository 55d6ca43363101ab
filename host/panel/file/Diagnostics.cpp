// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/Diagnostics.h"

#include <QStringList>

#include <algorithm>
#include <memory>
#include <tuple>
#include <utility>

namespace norvo {

namespace {

QString nameOf(Diagnostic::Severity severity)
{
    return severity == Diagnostic::Severity::Error ? "error" : "warning";
}

QString counted(int count, Diagnostic::Severity severity)
{
    return QString("%1 %2%3").arg(count).arg(nameOf(severity), count == 1 ? "" : "s");
}

/// The text as it is for every use of a template.
QString withoutUse(const QString& text, const std::shared_ptr<const PlaceOrigin>& origin)
{
    return origin && !origin->prefix.isEmpty() ? QString(text).remove(origin->prefix) : text;
}

} // namespace

QString Diagnostic::toString() const
{
    QString where = file;
    if (place.line > 0) {
        where += QString(":%1:%2").arg(place.line).arg(place.column);
    }
    const QString end = use.isEmpty() ? QString() : " [" + use + ']';
    return onOneLine(QString("%1: %2: %3").arg(where, nameOf(severity), text + end));
}

Diagnostics::Diagnostics(QString file) : m_file(std::move(file)) {}

void Diagnostics::error(const Place& place, const QString& text)
{
    error(place, [&text] { return text; });
}

void Diagnostics::warning(const Place& place, const QString& text)
{
    warning(place, [&text] { return text; });
}

void Diagnostics::errorOfDevice(const Place& place, const QString& text)
{
    add(Diagnostic::Severity::Error, m_file, place, [&text] { return text; });
}

void Diagnostics::error(const Place& place, const std::function<QString()>& makeText)
{
    m_preventsStart = true;
    add(Diagnostic::Severity::Error, m_file, place, makeText);
}

void Diagnostics::warning(const Place& place, const std::function<QString()>& makeText)
{
    add(Diagnostic::Severity::Warning, m_file, place, makeText);
}

void Diagnostics::warningIn(const QString& otherFile, const Place& place, const QString& text)
{
    add(Diagnostic::Severity::Warning, otherFile, place, [&text] { return text; });
}

void Diagnostics::add(Diagnostic::Severity severity, const QString& file, const Place& place,
                      const std::function<QString()>& makeText)
{
    int& count = severity == Diagnostic::Severity::Error ? m_errors : m_warnings;
    if (count >= kMaxOfAKind) {
        ++count;
        return;
    }
    const QString text = makeText();
    const QString kept = text.size() > kMaxTextLength ? text.left(kMaxTextLength) + "..." : text;
    const PlaceOrigin origin = place.origin ? *place.origin : PlaceOrigin{file, {}, {}};
    const auto isSame = [&](const Diagnostic& known) {
        return known.place.line == place.line && known.place.column == place.column &&
               known.severity == severity && known.file == origin.file &&
               withoutUse(known.text, known.place.origin) == withoutUse(kept, place.origin);
    };
    if (std::none_of(m_list.cbegin(), m_list.cend(), isSame)) {
        ++count;
        m_list.append({severity, origin.file, place, kept, origin.use});
    }
}

DiagnosticList Diagnostics::sorted() const
{
    DiagnosticList all = m_list;
    const auto key = [this](const Diagnostic& one) {
        return std::make_tuple(one.file != m_file, one.file, one.place.line, one.place.column);
    };
    std::stable_sort(all.begin(), all.end(),
                     [&key](const Diagnostic& a, const Diagnostic& b) { return key(a) < key(b); });
    const auto appendMore = [this, &all](int count, Diagnostic::Severity severity) {
        if (count > kMaxOfAKind) {
            const QString more = counted(count - kMaxOfAKind, severity);
            all.append({severity, m_file, {}, QString("... and %1 more").arg(more)});
        }
    };
    appendMore(m_errors, Diagnostic::Severity::Error);
    appendMore(m_warnings, Diagnostic::Severity::Warning);
    return all;
}

std::optional<Diagnostic> Diagnostics::firstError() const
{
    const DiagnosticList all = sorted();
    const auto error = std::find_if(all.cbegin(), all.cend(), [](const Diagnostic& one) {
        return one.severity == Diagnostic::Severity::Error;
    });
    return error == all.cend() ? std::nullopt : std::optional<Diagnostic>(*error);
}

QString Diagnostics::summary() const
{
    QStringList parts;
    if (m_errors > 0) {
        parts += counted(m_errors, Diagnostic::Severity::Error);
    }
    if (m_warnings > 0) {
        parts += counted(m_warnings, Diagnostic::Severity::Warning);
    }
    return parts.isEmpty() ? QString("no errors") : parts.join(", ");
}

} // namespace norvo
