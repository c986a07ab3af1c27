// What is known of a run ahead of its first step, for its record.
#pragma once

#include "jighost/records/RunRecord.h"
#include "jighost/sequence/StepRange.h"
#include "jighost/session/Session.h"

/// Who runs it, and where.
struct RUN_PLACE {
    std::string station;       ///< empty for the machine's name
    std::string operatorName;  ///< empty for the user's
};

/// What the sequence tells.
RUN_RECORD RecordHead(const SEQUENCE& sequence, const STEP_RANGE& range);

/// All else: its number, who, where, on which body and with what, and the moment, which is now. The
/// session is set up by the options.
void CompleteHead(
    RUN_RECORD& record, Session& session, const SESSION_OPTIONS& options, const RUN_PLACE& place);

/// Of a run of which nobody knows yet whether it comes to its end; for reports alone.
RUN_RECORD RecordWithoutEnd(const std::string& sequence, const RUN_PLACE& place);
