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

static std::string TimeText(std::chrono::duration<double, std::milli> time) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(1) << time.count() << " ms";
    return text.str();
}

static std::string OutcomeText(const STEP_OUTCOME& outcome) {
    std::string text = outcome.step->asking ? "answered" : ResultText(outcome.run.result);
    if (outcome.attempts > 1) {
        text += ", attempt " + std::to_string(outcome.attempts);
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
              << std::right << std::setw(TIME_WIDTH) << TimeText(outcome.run.time) << "  "
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

void ShowSummary(const SEQUENCE_RUN& run) {
    const auto problems = std::count_if(
        run.outcomes.begin(), run.outcomes.end(),
        [](const STEP_OUTCOME& outcome) { return !outcome.problem.empty(); });
    std::cout << PlainText(run.sequence->name) << (run.sequence->name.empty() ? "" : ": ")
              << run.outcomes.size() << " of " << StepCount(*run.sequence) << " steps run, "
              << problems << " not as expected, " << TimeText(run.time) << '\n';
}

void TellProblems(const SEQUENCE_RUN& run) {
    for (const STEP_OUTCOME& outcome : run.outcomes) {
        if (!outcome.problem.empty()) {
            Complain(
                "step " + std::to_string(outcome.number) + ", " + outcome.step->name + ": " +
                outcome.problem);
        }
    }
    if (run.exitCode == EXIT_INTERRUPTED) {
        const std::size_t always = run.sequence->always.size();
        const std::size_t last = run.outcomes.size() == always
                                     ? 0
                                     : run.outcomes[run.outcomes.size() - always - 1].number;
        Complain("interrupted behind step " + std::to_string(last));
    }
}
