// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/Place.h"
#include "host/yaml/Quote.h"

#include <QString>
#include <QVector>

#include <functional>
#include <optional>

namespace norvo {

/// An error or a warning about a panel, in one line.
struct Diagnostic
{
    enum class Severity { Error, Warning };

    Severity severity = Severity::Error;
    QString file; ///< As the user named it.
    Place place;
    QString text;     ///< What is wrong, and what would be right.
    QString use = {}; ///< That has put it there, in words; empty outside of templates.

    /// "file:line:column: error: text [use]"; what is unknown is left out. It is one line whatever
    /// the text holds.
    QString toString() const;
};

using DiagnosticList = QVector<Diagnostic>;

/// The errors and warnings of a panel's file and of those that it includes, bounded however many
/// there are.
///
/// The same text about the same place is reported once, and in a template for its first use only.
class Diagnostics
{
public:
    static constexpr int kMaxOfAKind = 200;     ///< More errors, or warnings, are only counted.
    static constexpr int kMaxTextLength = 2000; ///< In characters; longer texts are cut.

    explicit Diagnostics(QString file);

    void error(const Place& place, const QString& text);
    void warning(const Place& place, const QString& text);
    /// What keeps one device from working, or from working as its settings say: an error of the
    /// check, and no reason not to start the rest of the panel.
    void errorOfDevice(const Place& place, const QString& text);
    /// error() and warning() for texts that take time to make: `makeText` is called only if its
    /// text is kept.
    void error(const Place& place, const std::function<QString()>& makeText);
    void warning(const Place& place, const std::function<QString()>& makeText);
    /// About another file.
    void warningIn(const QString& otherFile, const Place& place, const QString& text);

    bool isEmpty() const { return m_list.isEmpty(); }
    bool hasErrors() const { return m_errors > 0; }
    /// Whether there is an error that is not one of a single device.
    bool preventsStart() const { return m_preventsStart; }
    /// By place, other files last, one after the other; those of one place in the order in which
    /// they were reported. A last entry of each kind says how many more there are.
    DiagnosticList sorted() const;
    std::optional<Diagnostic> firstError() const; ///< Of sorted().
    /// How many there are of each kind: "2 errors, 1 warning"; "no errors" for none.
    QString summary() const;

private:
    void add(Diagnostic::Severity severity, const QString& file, const Place& place,
             const std::function<QString()>& makeText);

    QString m_file;
    DiagnosticList m_list; ///< At most kMaxOfAKind of each.
    int m_errors = 0;
    bool m_preventsStart = false;
    int m_warnings = 0;
};

} // namespace norvo
