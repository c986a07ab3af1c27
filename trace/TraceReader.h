// Reads a trace.
#pragma once

#include <string>
#include <vector>

#include "trace/Trace.h"

/// Reads and checks a whole trace; whether there are such operations is the caller's to know. A
/// last line without its end was cut off and is left out. Throws TraceError, "FILE:LINE: ...",
/// which says where the file is no trace and what was expected.
std::vector<TRACED_OPERATION> ReadTrace(const std::string& path);
