// The operations of a trace that somebody wants run again.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "trace/TracedOperation.h"

struct OPERATION_CHOICE {
    std::optional<std::uint32_t> first;  ///< by its number in the trace
    std::optional<std::uint32_t> last;
    bool bFailed = false;  ///< of these, those that failed or never ended
};

struct CHOSEN_OPERATIONS {
    std::vector<TRACED_OPERATION> operations;  ///< whole, in the order in which they began
    std::vector<std::string> remarks;          ///< on what the trace lacks
    bool bAll = true;                          ///< the trace lacks nothing of the choice
};

/// Throws EXIT_WRONG_USE if the file is no trace or has none of the operations, or if one of them
/// is unknown or has more bytes than its record.
CHOSEN_OPERATIONS ReadOperations(const std::string& path, const OPERATION_CHOICE& choice);
