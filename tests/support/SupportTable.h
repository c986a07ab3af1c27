// Tables in YAML, whose texts can hold any character.
#pragma once

#include <yaml-cpp/yaml.h>

#include <string>

/// The rows of a table beside the tests, named from their folder. Throws if it can't be read or has
/// another number of rows.
YAML::Node TableRows(const std::string& name, std::size_t count);
