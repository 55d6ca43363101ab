// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

namespace norvo {

/// The files that a QML document is made of beside itself, and those that these are made of: of the
/// types that it names, in its own folder and in folders that it imports, and whatever QML document
/// or script it has in quotes. Absolute paths; a type in the stead of which nothing is found may be
/// one that is about to be written, so its file is among them. Modules of the system are not.
QStringList qmlImports(const QString& document);

} // namespace norvo
