// One recorded operation in full: its record before and after, its calls, its log lines.
#pragma once

#include <iostream>
#include <string>

#include "jighost/output/Json.h"
#include "trace/TracedOperation.h"

/// For people; large blocks are shortened. `moment` is when it began, empty if nobody knows.
void ShowOperation(std::ostream& out, const TRACED_OPERATION& operation, const std::string& moment);

/// For programs, with all bytes.
Json WholeOperationJson(const TRACED_OPERATION& operation);
