// Which operations of recordings somebody wants to see.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "trace/TracedOperation.h"

struct TRACE_SELECTION {
    bool bFailed = false;                 ///< failed operations alone are listed; all are counted
    std::string operation;                ///< by its name; empty for any
    std::optional<std::uint32_t> serial;  ///< of the body; none for any
    std::string since;                    ///< as MomentText has it, cut off anywhere; or empty
    std::string until;                    ///< the same

    bool HasMoments() const { return !since.empty() || !until.empty(); }
    /// Whether it is to be counted; `moment` is when it began, empty if nobody knows.
    bool Has(const TRACED_OPERATION& operation, std::string_view moment) const;
};

/// Whether the operation failed or never ended.
bool HasFailed(const TRACED_OPERATION& operation);

/// How it ended, such as "RESULT_SUCCESS (0)" or "call 2 never returned".
std::string OutcomeText(const TRACED_OPERATION& operation);
