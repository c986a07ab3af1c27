// The record in memory, and its file behind it.
#include "jighost/sequence/SequenceRecord.h"

#include "jighost/sequence/RecordedStep.h"
#include "jighost/sequence/SequenceOutput.h"

void SequenceRecord::Begin(RUN_RECORD head) {
    m_Record = std::move(head);
    m_File.Begin(m_Record);
}

void SequenceRecord::Add(const STEP_OUTCOME& outcome) {
    const RECORDED_STEP& step = m_Record.steps.emplace_back(RecordedStep(outcome));
    m_Record.timeMs = step.startMs + step.timeMs;
    m_Record.problem = m_Record.problem.empty() ? step.problem : m_Record.problem;
    m_File.AddStep(m_Record);
}

/// What went wrong where all steps that ran are as expected.
static std::string RunProblem(const RUN_RECORD& record) {
    switch (record.verdict) {
        case VERDICT::ABORTED:
            return InterruptText(record);
        case VERDICT::FAILED:
            return "no call has met a fault that was asked for";
        case VERDICT::OPERATION_FAILED:
            return "the body's file or the trace could not be written";
        default:
            return "";
    }
}

void SequenceRecord::Finish(EXIT_CODE exitCode) {
    m_Record.verdict = VerdictOf(exitCode);
    m_Record.problem = m_Record.problem.empty() ? RunProblem(m_Record) : m_Record.problem;
    m_File.Finish(m_Record);
}
