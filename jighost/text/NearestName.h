// What somebody who mistyped a name may have meant.
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Such as "; did you mean 'GetBodyID' or 'SetBodyID'?": the nearest names, at most three, none
/// that differs in more than a third of the characters. Empty if there is no such name.
std::string NearestNames(std::string_view name, const std::vector<std::string>& names);
