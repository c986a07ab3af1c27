// The first line of a trace.
#pragma once

#include <string>
#include <vector>

#include "trace/EntryReader.h"
#include "trace/TracedOperation.h"

/// Reads on to the first line. Throws TraceError for what is no trace.
TRACE_HEAD ReadHead(EntryReader& entries);

/// The files in the order given, but those that go on from another one behind that. Throws the
/// same.
std::vector<std::string> InOrder(const std::vector<std::string>& paths);
