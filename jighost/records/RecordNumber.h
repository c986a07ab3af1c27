// The number of a record: its own among all records of all stations, in the form of a UUID.
#pragma once

#include <string>
#include <string_view>

/// A new one, by chance (version 4).
std::string NewRecordNumber();

/// Always the same one for the same text (version 8), for what has no number of its own.
std::string RecordNumberOf(std::string_view text);
