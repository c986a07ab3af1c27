// A step's attempts, its outcome, and the run's document.
#include "jighost/sequence/SequenceRun.h"

#include "frame/Result.h"
#include "jighost/operations/ResultName.h"
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

/// Runs the step until it is as expected, its retries are used up, or Ctrl-C comes.
static void RunAttempts(Session& session, STEP_OUTCOME& outcome) {
    const STEP& step = *outcome.step;
    do {
        ++outcome.attempts;
        outcome.run =
            session.Run(*step.info, BuildRecord(*step.info, step.fields), outcome.attempts);
        Judge(outcome);
    } while (outcome.exitCode != EXIT_OK && outcome.attempts <= step.retries &&
             PassesWithoutInterrupt(step.pause));
    // A long sequence is not to keep the spare bytes of all its records.
    outcome.run.record.resize(step.info->record->size);
    outcome.run.record.shrink_to_fit();
}

namespace {

/// The steps of one run, as they come to their ends.
class StepRunner {
  public:
    StepRunner(Session& session, const StepWatcher& watcher, SEQUENCE_RUN& run)
        : m_Session(session), m_Watcher(watcher), m_Run(run) {}

    /// Gives whether the next one is to run.
    bool RunStep(const STEP& step, std::size_t number) {
        STEP_OUTCOME outcome;
        outcome.step = &step;
        outcome.number = number;
        m_Watcher(m_Run, outcome, false);
        RunAttempts(m_Session, outcome);
        m_Run.time = std::chrono::steady_clock::now() - m_Start;
        m_Watcher(m_Run, outcome, true);
        m_Run.exitCode = m_Run.exitCode == EXIT_OK ? outcome.exitCode : m_Run.exitCode;
        m_Run.outcomes.push_back(std::move(outcome));
        return m_Run.outcomes.back().exitCode == EXIT_OK || step.bContinue;
    }

  private:
    Session& m_Session;
    const StepWatcher& m_Watcher;
    SEQUENCE_RUN& m_Run;
    std::chrono::steady_clock::time_point m_Start = std::chrono::steady_clock::now();
};

}  // namespace

static void RunSteps(
    Session& session, const STEP_RANGE& range, const StepWatcher& watcher, SEQUENCE_RUN& run) {
    StepRunner runner(session, watcher, run);
    const std::vector<STEP>& steps = run.sequence->steps;
    for (std::size_t i = range.first; i <= range.last && !IsInterrupted(); ++i) {
        if (!runner.RunStep(steps[i], i + 1)) {
            break;
        }
    }
    std::size_t number = steps.size();
    for (const STEP& step : run.sequence->always) {
        runner.RunStep(step, ++number);
    }
}

void RequireSteps(const Session& session, const SEQUENCE& sequence) {
    for (const std::vector<STEP>* pSteps : {&sequence.steps, &sequence.always}) {
        for (const STEP& step : *pSteps) {
            session.Require(*step.info);
        }
    }
}

SEQUENCE_RUN RunSequence(
    Session& session, const SEQUENCE& sequence, const STEP_RANGE& range,
    const StepWatcher& watcher) {
    SEQUENCE_RUN run;
    run.sequence = &sequence;
    RunSteps(session, range, watcher, run);
    if (IsInterrupted()) {
        run.exitCode = EXIT_INTERRUPTED;
    }
    return run;
}
