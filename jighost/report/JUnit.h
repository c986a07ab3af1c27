// A run as test results, in the XML that build servers read.
#pragma once

#include <string>
#include <string_view>

#include "jighost/records/RunRecord.h"

/// Of each such text.
constexpr std::string_view RESULTS_BEGIN = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

/// One testsuite: a testcase for each step that ran or that the range asked for. The record is one
/// that this program made: the range is taken as it stands.
std::string JUnitText(const RUN_RECORD& record);
