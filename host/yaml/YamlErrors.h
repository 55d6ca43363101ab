// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/SourceText.h"

#include <yaml-cpp/exceptions.h>

namespace norvo {

class YamlBuilder;

constexpr char kTabInIndentation[] = "tab in indentation; use spaces";

/// The parser's error in words that say what to do; `builder` is as far as it came.
TextError toError(const YAML::Exception& exception, const SourceText& source,
                  const YamlBuilder& builder);

} // namespace norvo
