// Records of runs read back from files: those of today, those that a killed run left, and those of
// format 1.
#pragma once

#include <string>

#include "jighost/records/RunRecord.h"

/// Reads one file of at most RECORD_SIZE_LIMIT bytes. A last line that was cut off is left out.
/// Throws EXIT_WRONG_USE, "FILE: steps[3].time_ms: expected a number".
RUN_RECORD ReadRunRecord(const std::string& path);
/// The same of a file's text, by parts of it.
std::string ReadRecordText(const std::string& path);
RUN_RECORD ParseRunRecord(const std::string& path, const std::string& text);
constexpr std::size_t RECORD_SIZE_LIMIT = std::size_t{256} * 1024 * 1024;
