// The parameters of a sequence's file.
#pragma once

#include <vector>

#include "jighost/sequence/Mistakes.h"
#include "jighost/sequence/Parameter.h"
#include "jighost/text/YamlFile.h"

/// Of the map parameters:, in its order; a wrong one is among the mistakes,
/// with this suffix.
std::vector<PARAMETER> ReadParameters(
    const YamlFile& file, const YAML::Node& node, Mistakes& mistakes,
    const std::string& suffix = "");

/// A number of the file, for limits.
double ReadQuantity(const YamlFile& file, const YAML::Node& node, const std::string& text);
