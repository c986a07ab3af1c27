// A trace's operations run once more, with the recorded answers in place of the camera's.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "jighost/Session.h"
#include "jighost/TraceFile.h"

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

/// Ends behind the first difference, where the trace was cut off, or when Ctrl-C comes. Throws
/// EXIT_NO_MODULE if the module lacks one of the operations.
REPLAY ReplayTrace(Session& session, const std::vector<TRACED_OPERATION>& trace);
