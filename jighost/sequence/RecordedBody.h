// The body that a run has worked on, for its record.
#pragma once

#include "jighost/records/RunRecord.h"
#include "jighost/session/Session.h"

/// Reads the body's ID with GetBodyID, which no fault meets. What keeps it from being read is told
/// in the record and nowhere else.
void ReadBody(Session& session, RUN_RECORD& record);

/// Behind the last step: reads it again if it could not be read, or if a step may have set another
/// one.
void ReadBodyAgain(Session& session, RUN_RECORD& record);

/// In its place when no operation can run any more: an ID that may not be the body's is not told.
void ForgetBody(RUN_RECORD& record);
