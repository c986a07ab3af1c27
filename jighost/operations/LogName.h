// The names that the module's log has for operations and for what runs within them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The log's name of a registered operation: for most the same. Two operations may share one.
std::string_view LogName(std::string_view operation);

/// All names that the log has, in their order.
std::vector<std::string> LogNames();

/// Whether the log has an operation or a routine of this name.
bool IsLogName(std::string_view name);

/// Whether the operation or routine `inner` runs within `outer`, by their names in the log.
bool RunsWithin(std::string_view inner, std::string_view outer);
