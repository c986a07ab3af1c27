// A trace's operations run once more, with the recorded answers in place of the camera's.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "jighost/session/Session.h"
#include "trace/Trace.h"

/// The first thing that was not as recorded.
struct DIFFERENCE {
    std::size_t operation{};  ///< its number in the trace, from 1
    std::string name{};       ///< of the operation
    std::string where{};      ///< such as "call 3", "result"
    std::string expected{};   ///< as recorded
    std::string made{};       ///< as it came now
};

struct REPLAY {
    std::size_t operations = 0;  ///< run whole and as recorded
    std::size_t calls = 0;       ///< made as recorded
    std::optional<DIFFERENCE> difference;
    std::string cut;  ///< where the trace ends within an operation; empty if it does not
};

/// Reads a trace. Throws EXIT_WRONG_USE if the file is none, or if an operation of it is unknown or
/// has more bytes than its record.
std::vector<TRACED_OPERATION> ReadOperations(const std::string& path);

/// Runs the operations of ReadOperations. Ends behind the first difference, where the trace was cut
/// off, or when Ctrl-C comes. Throws EXIT_NO_MODULE if the module lacks one of the operations.
REPLAY ReplayTrace(Session& session, const std::vector<TRACED_OPERATION>& trace);
