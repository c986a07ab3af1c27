// A step's attempts and its outcome.
#include "jighost/sequence/SequenceRun.h"

#include <memory>
#include <thread>

#include "frame/Result.h"
#include "jighost/operations/ResultName.h"
#include "jighost/sequence/AttemptCalls.h"
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

/// All but the link calls, which others watch.
static void TakeRun(RECORDED_ATTEMPT& attempt, const OPERATION_RUN& run) {
    attempt.result = run.result;
    attempt.resultName = ResultName(run.result);
    attempt.error = RunError(run);
    attempt.timeMs = run.time.count();
    attempt.after = RecordJson(*run.info->record, run.record);
    attempt.log = run.log;
    attempt.interleaved = run.interleaved;
}

namespace {

/// The steps of one run, as they come to their ends.
class StepRunner {
  public:
    StepRunner(Session& session, const RUN_PARTNERS& partners)
        : m_Session(session),
          m_Partners(partners),
          m_pCalls(std::make_shared<AttemptCalls>(partners.bRecorded)) {
        m_Session.Watch([pCalls = m_pCalls](const Link::CALL& call, bool bComplete) {
            pCalls->OnCall(call, bComplete);
        });
    }

    /// Gives whether the next one is to run.
    bool RunStep(const STEP& step, std::size_t number) {
        STEP_OUTCOME outcome;
        outcome.step = &step;
        outcome.number = number;
        m_Partners.watcher(outcome, false);
        outcome.startMs = Now();
        if (step.asking) {
            TakeAnswer(outcome);
        } else {
            RunAttempts(outcome);
        }
        outcome.timeMs = Now() - outcome.startMs;
        m_Partners.watcher(outcome, true);
        m_ExitCode = m_ExitCode == EXIT_OK ? outcome.exitCode : m_ExitCode;
        return outcome.exitCode == EXIT_OK || step.bContinue;
    }

    /// From now on a signal ends no step: a body is not to stay in factory mode for want of a
    /// retry.
    void BeginAlways() { m_bAlways = true; }

    /// Of the first problem so far.
    EXIT_CODE ExitCode() const { return m_ExitCode; }

  private:
    using Milliseconds = std::chrono::duration<double, std::milli>;

    bool PassesAheadOfRetry(const STEP& step) const {
        if (!m_bAlways) {
            return PassesWithoutInterrupt(step.pause);
        }
        std::this_thread::sleep_for(step.pause);
        return true;
    }

    double Now() const { return Milliseconds(std::chrono::steady_clock::now() - m_Start).count(); }

    void TakeAnswer(STEP_OUTCOME& outcome) const {
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
            RecordBytes record = BuildRecord(*step.info, step.fields);
            BeginAttempt(outcome, record);
            outcome.run = RunInTime(outcome, std::move(record));
            EndAttempt(outcome);
            Judge(outcome);
        } while (outcome.exitCode != EXIT_OK && outcome.attempts.size() <= step.retries &&
                 PassesAheadOfRetry(step));
    }

    void BeginAttempt(STEP_OUTCOME& outcome, const RecordBytes& record) {
        RECORDED_ATTEMPT& attempt = outcome.attempts.emplace_back();
        if (m_Partners.bRecorded) {
            attempt.before = RecordJson(*outcome.step->info->record, record);
        }
        attempt.startMs = Now();
        m_pCalls->Begin();
    }

    void EndAttempt(STEP_OUTCOME& outcome) const {
        if (m_Partners.bRecorded) {
            TakeRun(outcome.attempts.back(), outcome.run);
            outcome.attempts.back().calls = m_pCalls->Calls();
        }
    }

    /// The outcome stays as it is while its time runs.
    OPERATION_RUN RunInTime(const STEP_OUTCOME& outcome, RecordBytes record) {
        const STEP& step = *outcome.step;
        const auto attempt = static_cast<std::uint32_t>(outcome.attempts.size());
        const TimeLimit limit(step.timeLimit, [&] { EndByTime(outcome); });
        return m_Session.Run(*step.info, std::move(record), attempt);
    }

    /// Its operation has not returned.
    void EndOpenAttempt(RECORDED_ATTEMPT& attempt) const {
        attempt.timeMs = Now() - attempt.startMs;
        if (m_Partners.bRecorded) {
            OwnLines log;
            m_Session.AddLog(log);
            attempt.log = log.Texts(OWNER::THIS_PROCESS);
            attempt.interleaved = log.Texts(OWNER::UNKNOWN);
            attempt.calls = m_pCalls->Calls();
        }
    }

    /// Meanwhile the thread of the run stands in the module, and changes nothing that is used here.
    void EndByTime(STEP_OUTCOME outcome) const {
        const STEP& step = *outcome.step;
        const std::string call = m_pCalls->CurrentText();
        outcome.exitCode = EXIT_OPERATION_FAILED;
        outcome.problem = std::string(step.info->name) + " has not returned within " +
                          std::to_string(step.timeLimit.count()) + " ms, " +
                          (call.empty() ? "in no link call" : "in the link call " + call);
        outcome.measurements.clear();  // of the attempt before
        outcome.timeMs = Now() - outcome.startMs;
        EndOpenAttempt(outcome.attempts.back());
        m_Partners.timeOver(outcome);
    }

    Session& m_Session;
    const RUN_PARTNERS& m_Partners;
    // The session watches longer than this lasts.
    std::shared_ptr<AttemptCalls> m_pCalls;
    EXIT_CODE m_ExitCode = EXIT_OK;
    bool m_bAlways = false;  // the steps behind the others
    std::chrono::steady_clock::time_point m_Start = std::chrono::steady_clock::now();
};

}  // namespace

static void RunSteps(StepRunner& runner, const SEQUENCE& sequence, const STEP_RANGE& range) {
    const std::vector<STEP>& steps = sequence.steps;
    for (std::size_t i = range.first; i <= range.last && !IsInterrupted(); ++i) {
        if (!PassesWithoutInterrupt(steps[i].wait) || !runner.RunStep(steps[i], i + 1)) {
            break;
        }
    }
    runner.BeginAlways();
    std::size_t number = steps.size();
    for (const STEP& step : sequence.always) {
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

EXIT_CODE RunSequence(
    Session& session, const SEQUENCE& sequence, const STEP_RANGE& range,
    const RUN_PARTNERS& partners) {
    StepRunner runner(session, partners);
    RunSteps(runner, sequence, range);
    return IsInterrupted() ? EXIT_INTERRUPTED : runner.ExitCode();
}
