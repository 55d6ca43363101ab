// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/view/ViewSettings.h"

#include <QCommandLineOption>
#include <QList>

#include <optional>

class QCommandLineParser;

namespace norvo::ServeOptions {

/// "--serve" and what goes with it.
QList<QCommandLineOption> all();
/// None where a view is not asked for. What is wrong goes into `error`.
std::optional<ViewSettings> read(const QCommandLineParser& parser, QString& error);

} // namespace norvo::ServeOptions
