// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace norvo {

/// The words of a command, or why it has none.
struct CommandWords
{
    QStringList words;
    QString error; ///< Empty: none.
};

/// Splits a command at its spaces. Quotes keep spaces together and may stand within a word;
/// nothing is special in single quotes, a backslash takes the next character literally elsewhere
/// (in double quotes only before a double quote or a backslash). Variables, patterns, pipes and
/// redirections are not known: no shell is involved.
CommandWords splitCommand(const QString& command);

} // namespace norvo
