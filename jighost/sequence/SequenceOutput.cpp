// Rows are written while the sequence runs: their columns are those that are known before.
#include "jighost/sequence/SequenceOutput.h"

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <sstream>

#include "jighost/operations/ResultName.h"
#include "jighost/output/Colour.h"
#include "jighost/output/Complaint.h"
#include "jighost/text/PlainText.h"

/// Behind the number and two blanks.
static const std::string OUTCOME_INDENT(5, ' ');
static const int TIME_WIDTH = 9;

SequenceOutput::SequenceOutput(
    const SEQUENCE& sequence, const STEP_RANGE& range, bool bLive, bool bRows)
    : m_Sequence(sequence), m_bLive(bLive), m_bRows(bRows) {
    for (std::size_t i = range.first; i <= range.last; ++i) {
        MakeRoom(sequence.steps[i]);
    }
    std::for_each(sequence.always.begin(), sequence.always.end(), [this](const STEP& step) {
        MakeRoom(step);
    });
}

void SequenceOutput::MakeRoom(const STEP& step) {
    m_NameWidth = std::max(m_NameWidth, PlainText(step.name).size());
}

static std::size_t StepCount(const SEQUENCE& sequence) {
    return sequence.steps.size() + sequence.always.size();
}

void SequenceOutput::OnStep(const STEP_OUTCOME& outcome, bool bDone) const {
    if (m_bLive && bDone) {
        std::cerr << "\r\033[K" << std::flush;
    } else if (m_bLive && !outcome.step->asking) {
        std::cerr << '[' << outcome.number << '/' << StepCount(m_Sequence) << "] "
                  << PlainText(outcome.step->name) << std::flush;
    }
    if (m_bRows && bDone) {
        ShowRow(outcome);
    }
}

static std::string TimeText(double milliseconds) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(1) << milliseconds << " ms";
    return text.str();
}

static std::string OutcomeText(const STEP_OUTCOME& outcome) {
    std::string text = outcome.step->asking ? "answered" : ResultText(outcome.run.result);
    if (outcome.attempts.size() > 1) {
        text += ", attempt " + std::to_string(outcome.attempts.size());
    }
    return outcome.problem.empty() ? Coloured(text, COLOUR::GREEN)
                                   : Coloured(text + ", not as expected", COLOUR::RED);
}

/// The record's fields, if the step is one that reads them.
static void ShowFields(const STEP_OUTCOME& outcome) {
    const OPERATION_INFO& info = *outcome.step->info;
    if (!FillsRecord(info)) {
        return;
    }
    std::stringstream lines;
    ShowRecord(lines, *info.record, outcome.run.record);
    for (std::string line; std::getline(lines, line);) {
        std::cout << OUTCOME_INDENT << line << '\n';
    }
}

void SequenceOutput::ShowRow(const STEP_OUTCOME& outcome) const {
    std::cout << std::right << std::setw(3) << outcome.number << "  " << std::left
              << std::setw(static_cast<int>(m_NameWidth)) << PlainText(outcome.step->name) << "  "
              << std::right << std::setw(TIME_WIDTH) << TimeText(outcome.run.time.count()) << "  "
              << OutcomeText(outcome) << '\n';
    ShowFields(outcome);
    for (const MEASUREMENT& each : outcome.measurements) {
        const std::string text = PlainText(MeasurementText(each));
        std::cout << OUTCOME_INDENT << (each.bWithin ? text : Coloured(text, COLOUR::RED)) << '\n';
    }
    if (!outcome.problem.empty()) {
        std::cout << OUTCOME_INDENT << Coloured(PlainText(outcome.problem), COLOUR::RED) << '\n';
    }
}

void ShowValues(const std::string& place, const SEQUENCE& sequence) {
    std::string values;
    for (const auto& [name, value] : sequence.values) {
        values += (values.empty() ? ": " : ", ") + name + " = " + value.value_or("");
    }
    std::cout << PlainText(place + values) << '\n';
}

void ShowSummary(const SEQUENCE& sequence, const RUN_RECORD& record) {
    const auto problems = std::count_if(
        record.steps.begin(), record.steps.end(),
        [](const RECORDED_STEP& step) { return !step.problem.empty(); });
    std::cout << PlainText(sequence.name) << (sequence.name.empty() ? "" : ": ")
              << record.steps.size() << " of " << StepCount(sequence) << " steps run, " << problems
              << " not as expected, " << TimeText(record.timeMs) << '\n';
}

void TellProblems(const RUN_RECORD& record) {
    for (const RECORDED_STEP& step : record.steps) {
        if (!step.problem.empty()) {
            Complain(
                "step " + std::to_string(step.number) + ", " + step.name + ": " + step.problem);
        }
    }
    if (record.verdict == VERDICT::ABORTED) {
        Complain(InterruptText(record));
    }
}

std::string InterruptText(const RUN_RECORD& record) {
    std::uint64_t last = 0;
    for (const RECORDED_STEP& step : record.steps) {
        last = step.number <= record.range.of ? step.number : last;
    }
    return "interrupted behind step " + std::to_string(last);
}
