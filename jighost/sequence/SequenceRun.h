// The steps of a sequence run one by one and held against what is expected of them.
#pragma once

#include <functional>

#include "jighost/sequence/StepRange.h"
#include "jighost/session/Session.h"
#include "jighost/text/HostError.h"

/// What a step came to.
struct STEP_OUTCOME {
    const STEP* step = nullptr;
    std::size_t number = 0;                  ///< in the file, from 1; those of always: count on
    std::vector<RECORDED_ATTEMPT> attempts;  ///< all that ran; none of a step that asks
    OPERATION_RUN run;                       ///< of the last attempt that has returned
    std::vector<MEASUREMENT> measurements;   ///< none of a run with another result
    std::string problem;           ///< what was expected and what came; empty if all is as expected
    EXIT_CODE exitCode = EXIT_OK;  ///< or that of the problem's kind
    double startMs = 0;            ///< from the begin of the run
    double timeMs = 0;
};

/// Told of each step before it runs, with an outcome that has only step and number, and again
/// when it is done.
using StepWatcher = std::function<void(const STEP_OUTCOME& outcome, bool bDone)>;

/// Told, in another thread, of a step that has not returned in its time. The module can't be called
/// any more: this ends the program.
using TimeOver = std::function<void(const STEP_OUTCOME& outcome)>;

/// Gives the answer to a step that asks; nothing if there is none.
using Asker = std::function<std::optional<MEASUREMENT>(const STEP& step)>;

struct RUN_PARTNERS {
    StepWatcher watcher;
    TimeOver timeOver;
    Asker ask;
    bool bRecorded = false;  ///< the attempts are to have records, calls and log lines
};

/// Throws EXIT_NO_MODULE if the module lacks an operation of the sequence; to be asked ahead of the
/// run.
void RequireSteps(const Session& session, const SEQUENCE& sequence);

/// Ends behind the last step, the first one that must not go wrong and did, or the step during
/// which Ctrl-C came; behind that come all steps of always:, whatever these end in. Gives the exit
/// code of the first problem, but EXIT_INTERRUPTED for a signal.
EXIT_CODE RunSequence(
    Session& session, const SEQUENCE& sequence, const STEP_RANGE& range,
    const RUN_PARTNERS& partners);
