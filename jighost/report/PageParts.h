// The files Report.css and Report.js, built in.
#pragma once

#include <string_view>

extern const std::string_view PAGE_STYLE;
extern const std::string_view PAGE_SCRIPT;
