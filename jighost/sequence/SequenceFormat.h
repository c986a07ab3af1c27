// The formats of a sequence's file.
#pragma once

#include <cstdint>
#include <string>

#include "jighost/text/YamlFile.h"

constexpr std::int64_t SEQUENCE_FORMAT = 2;

/// Refuses in a file of format 1 what only newer ones have; `expected` says what it has instead.
void RequireNewFormat(const YamlFile& file, const YAML::Node& node, const std::string& expected);
