// Two recordings side by side: operation by operation, call by call, moments and times apart.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "jighost/recording/OperationDifference.h"
#include "trace/TracedOperation.h"

/// What became of the operations of one name.
struct COMPARED_COUNTS {
    std::uint64_t same = 0;
    std::uint64_t different = 0;
    std::uint64_t incomplete = 0;  ///< one of the two lacks entries: nobody knows
    std::uint64_t onlyGood = 0;    ///< in the first recording alone
    std::uint64_t onlyBad = 0;     ///< in the second one alone
};

struct TRACE_DIFFERENCE {
    std::map<std::string, COMPARED_COUNTS> counts;  ///< by name
    std::uint64_t lost = 0;  ///< gaps, and operations that lack their beginning, in both

    /// The first one, with the operation's number in the first recording and, in `badNumber`, in
    /// the second one; 0 for one that stands in the other recording alone.
    std::optional<DIFFERENCE> first;
    std::uint32_t badNumber = 0;
};

/// Holds two recordings against each other in one pass; an operation that one of them lacks is
/// passed over. Ends early when Ctrl-C comes. Throws EXIT_WRONG_USE for a file that is no trace.
TRACE_DIFFERENCE CompareTraces(const std::string& goodPath, const std::string& badPath);
