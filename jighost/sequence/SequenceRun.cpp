// A step's attempts, its outcome, and the run's document.
#include "jighost/sequence/SequenceRun.h"

#include <memory>

#include "frame/Result.h"
#include "jighost/operations/ResultName.h"
#include "jighost/sequence/CurrentCall.h"
#include "jighost/sequence/TimeLimit.h"
#include "jighost/session/Interrupt.h"
#include "jighost/session/Patience.h"

static std::string ResultProblem(const OPERATION_RUN& run, const std::string& expected) {
    const std::string cause = FailureCause(run);
    return "expected " + expected + ", got " + ResultText(run.result) +
           (cause.empty() ? "" : ": " + cause);
}

/// The fields that differ from the expected ones; empty if none does.
static std::string FieldProblem(const STEP& step, const RecordBytes& record) {
    const RecordBytes expected = BuildRecord(*step.info, step.resultFields);
    const RECORD& form = *step.info->record;
    std::string problem;
    for (const FIELD_VALUE& each : step.resultFields) {
        if (!IsSameField(form, expected, record, each.field)) {
            problem += (problem.empty() ? "expected " : "; ") + each.field + " " +
                       FieldText(form, expected, each.field) + ", got " +
                       FieldText(form, record, each.field);
        }
    }
    return problem;
}

/// All that is wrong with the record that came back.
static std::string RecordProblem(const STEP_OUTCOME& outcome) {
    std::string problem = FieldProblem(*outcome.step, outcome.run.record);
    for (const MEASUREMENT& each : outcome.measurements) {
        if (!each.bWithin) {
            problem += (problem.empty() ? "" : "; ") + MeasurementProblem(each);
        }
    }
    return problem;
}

static void Judge(STEP_OUTCOME& outcome) {
    const STEP& step = *outcome.step;
    outcome.problem = outcome.run.folderProblem;
    outcome.measurements.clear();
    if (!outcome.problem.empty()) {
        outcome.exitCode = EXIT_UNEXPECTED;
    } else if (step.result && *step.result != outcome.run.result) {
        outcome.problem = ResultProblem(outcome.run, ResultText(*step.result));
        outcome.exitCode = EXIT_UNEXPECTED;
    } else if (!step.result && IsFailure(outcome.run.result)) {
        outcome.problem = ResultProblem(outcome.run, "success");
        outcome.exitCode = EXIT_OPERATION_FAILED;
    } else {
        outcome.measurements = Measured(step.measures, *step.info->record, outcome.run.record);
        outcome.problem = RecordProblem(outcome);
        outcome.exitCode = outcome.problem.empty() ? EXIT_OK : EXIT_UNEXPECTED;
    }
}

namespace {

/// The steps of one run, as they come to their ends.
class StepRunner {
  public:
    StepRunner(Session& session, const RUN_PARTNERS& partners, SEQUENCE_RUN& run)
        : m_Session(session), m_Partners(partners), m_Run(run) {
        m_Session.Watch([pCall = m_pCall](const Link::CALL& call, bool bComplete) {
            pCall->OnCall(call, bComplete);
        });
    }

    /// Gives whether the next one is to run.
    bool RunStep(const STEP& step, std::size_t number) {
        STEP_OUTCOME outcome;
        outcome.step = &step;
        outcome.number = number;
        m_Partners.watcher(m_Run, outcome, false);
        if (step.asking) {
            TakeAnswer(outcome);
        } else {
            RunAttempts(outcome);
        }
        m_Run.time = std::chrono::steady_clock::now() - m_Start;
        m_Partners.watcher(m_Run, outcome, true);
        m_Run.exitCode = m_Run.exitCode == EXIT_OK ? outcome.exitCode : m_Run.exitCode;
        m_Run.outcomes.push_back(std::move(outcome));
        return m_Run.outcomes.back().exitCode == EXIT_OK || step.bContinue;
    }

  private:
    void TakeAnswer(STEP_OUTCOME& outcome) const {
        outcome.attempts = 1;
        if (const auto answer = m_Partners.ask(*outcome.step)) {
            outcome.measurements = {*answer};
            outcome.problem = answer->bWithin ? "" : MeasurementProblem(*answer);
        } else {
            outcome.problem = "expected an answer, got none";
        }
        outcome.exitCode = outcome.problem.empty() ? EXIT_OK : EXIT_UNEXPECTED;
    }

    /// Runs the step until it is as expected, its retries are used up, or Ctrl-C comes.
    void RunAttempts(STEP_OUTCOME& outcome) {
        const STEP& step = *outcome.step;
        do {
            ++outcome.attempts;
            RunInTime(outcome);
            Judge(outcome);
        } while (outcome.exitCode != EXIT_OK && outcome.attempts <= step.retries &&
                 PassesWithoutInterrupt(step.pause));
        // A long sequence is not to keep the spare bytes of all its records.
        outcome.run.record.resize(step.info->record->size);
        outcome.run.record.shrink_to_fit();
    }

    void RunInTime(STEP_OUTCOME& outcome) {
        const STEP& step = *outcome.step;
        const STEP_OUTCOME begun = outcome;
        const TimeLimit limit(step.timeLimit, [this, &begun] { EndByTime(begun); });
        outcome.run =
            m_Session.Run(*step.info, BuildRecord(*step.info, step.fields), outcome.attempts);
    }

    /// Meanwhile the thread of the run stands in the module, and changes nothing that is used here.
    void EndByTime(STEP_OUTCOME outcome) const {
        const STEP& step = *outcome.step;
        const std::string call = m_pCall->Text();
        outcome.bReturned = false;
        outcome.exitCode = EXIT_OPERATION_FAILED;
        outcome.problem = std::string(step.info->name) + " has not returned within " +
                          std::to_string(step.timeLimit.count()) + " ms, " +
                          (call.empty() ? "in no link call" : "in the link call " + call);
        m_Partners.timeOver(m_Run, outcome);
    }

    Session& m_Session;
    const RUN_PARTNERS& m_Partners;
    SEQUENCE_RUN& m_Run;
    // The session watches longer than this lasts.
    std::shared_ptr<CurrentCall> m_pCall = std::make_shared<CurrentCall>();
    std::chrono::steady_clock::time_point m_Start = std::chrono::steady_clock::now();
};

}  // namespace

static void RunSteps(StepRunner& runner, const STEP_RANGE& range, const SEQUENCE_RUN& run) {
    const std::vector<STEP>& steps = run.sequence->steps;
    for (std::size_t i = range.first; i <= range.last && !IsInterrupted(); ++i) {
        if (!PassesWithoutInterrupt(steps[i].wait) || !runner.RunStep(steps[i], i + 1)) {
            break;
        }
    }
    std::size_t number = steps.size();
    for (const STEP& step : run.sequence->always) {
        PassesWithoutInterrupt(step.wait);
        runner.RunStep(step, ++number);
    }
}

void RequireSteps(const Session& session, const SEQUENCE& sequence) {
    for (const std::vector<STEP>* pSteps : {&sequence.steps, &sequence.always}) {
        for (const STEP& step : *pSteps) {
            if (!step.asking) {
                session.Require(*step.info);
            }
        }
    }
}

SEQUENCE_RUN RunSequence(
    Session& session, const SEQUENCE& sequence, const STEP_RANGE& range,
    const RUN_PARTNERS& partners) {
    SEQUENCE_RUN run;
    run.sequence = &sequence;
    StepRunner runner(session, partners, run);
    RunSteps(runner, range, run);
    if (IsInterrupted()) {
        run.exitCode = EXIT_INTERRUPTED;
    }
    return run;
}
