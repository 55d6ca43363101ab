// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/YamlEdit.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

/// What tests of edits of YAML texts share.
namespace edits {

/// The text after the edit; the error in words where there is one.
inline QByteArray outcome(const norvo::YamlEdit& edit, const norvo::YamlEdit::Error& error)
{
    return error ? "error: " + error->text.toUtf8() : edit.text();
}

/// "a>0>b" in steps.
inline QStringList pathOf(const QString& path)
{
    return path.isEmpty() ? QStringList() : path.split('>');
}

} // namespace edits
