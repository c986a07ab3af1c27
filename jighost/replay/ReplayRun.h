// A trace's operations run once more, with the recorded answers in place of the camera's.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "jighost/recording/OperationDifference.h"
#include "jighost/session/Session.h"
#include "trace/TracedOperation.h"

struct REPLAY {
    std::size_t operations = 0;  ///< run whole and as recorded
    std::size_t calls = 0;       ///< made as recorded
    std::optional<DIFFERENCE> difference;
    std::string cut;  ///< where the trace lacks the ends of operations; empty if it does not
};

/// Runs the operations of ReadOperations. Ends behind the first difference or when Ctrl-C comes.
/// Throws EXIT_NO_MODULE if the module lacks one of the operations.
REPLAY ReplayTrace(Session& session, const std::vector<TRACED_OPERATION>& trace);
