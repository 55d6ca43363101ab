#pragma once

#include "host/yaml/SourceText.h"

#include <yaml-cpp/exceptions.h>

namespace norvo {

class YamlBuilder;

/// What the parser complains of, in words that say what to do; `builder` is as far as it came.
Problem describe(const YAML::Exception& exception, const SourceText& source,
                 const YamlBuilder& builder);

} // namespace norvo
