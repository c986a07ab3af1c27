// Where a file has an answer, nobody is asked.
#include "jighost/sequence/StepAnswers.h"

#include <algorithm>

#include "jighost/output/Complaint.h"
#include "jighost/sequence/Mistakes.h"
#include "jighost/session/Question.h"
#include "jighost/text/CsvFile.h"
#include "jighost/text/HostError.h"
#include "jighost/text/NearestName.h"

StepAnswers::StepAnswers(const std::string& path) : m_Path(path) {
    if (path.empty()) {
        return;
    }
    const CSV_TABLE table = ReadCsvFile(path);
    if (table.names != std::vector<std::string>{"step", "answer"}) {
        throw HostError(EXIT_WRONG_USE, path + ": expected the columns step and answer");
    }
    for (const CSV_ROW& row : table.rows) {
        if (!m_Answers.emplace(row.values[0], row.values[1]).second) {
            throw HostError(
                EXIT_WRONG_USE, path + ':' + std::to_string(row.line) +
                                    ": expected one answer to a step, got another one to '" +
                                    row.values[0] + "'");
        }
    }
}

void StepAnswers::CheckStep(const STEP& step) const {
    const auto found = m_Answers.find(step.name);
    if (found == m_Answers.end()) {
        if (!CanAsk()) {
            throw HostError(
                EXIT_WRONG_USE,
                "the step " + step.name + " asks: expected an answer in --answers, or a terminal");
        }
        return;
    }
    try {
        MeasuredAnswer(*step.asking, found->second);
    } catch (const HostError& e) {
        throw HostError(EXIT_WRONG_USE, m_Path + ": " + step.name + ": " + e.what());
    }
}

void StepAnswers::Check(const SEQUENCE& sequence, const STEP_RANGE& range) const {
    Mistakes mistakes;
    std::vector<std::string> names;
    const auto check = [&](const STEP& step) {
        if (step.asking) {
            mistakes.Gather([&] { CheckStep(step); });
        }
    };
    const auto first = sequence.steps.begin();
    std::for_each(
        first + static_cast<std::ptrdiff_t>(range.first),
        first + static_cast<std::ptrdiff_t>(range.last) + 1, check);
    std::for_each(sequence.always.begin(), sequence.always.end(), check);
    for (const std::vector<STEP>* pSteps : {&sequence.steps, &sequence.always}) {
        for (const STEP& step : *pSteps) {
            names.push_back(step.asking ? step.name : "");
        }
    }
    for (const auto& answer : m_Answers) {
        mistakes.Gather([&] {
            if (std::find(names.begin(), names.end(), answer.first) == names.end()) {
                throw HostError(
                    EXIT_WRONG_USE, m_Path + ": there is no step '" + answer.first + "' that asks" +
                                        NearestNames(answer.first, names));
            }
        });
    }
    mistakes.ThrowIfAny();
}

std::optional<MEASUREMENT> StepAnswers::AnswerTo(const STEP& step) const {
    const auto found = m_Answers.find(step.name);
    if (found != m_Answers.end()) {
        return MeasuredAnswer(*step.asking, found->second);
    }
    std::optional<MEASUREMENT> measurement;
    while (!measurement) {
        const auto answer = Ask(step.asking->text);
        if (!answer) {
            return std::nullopt;
        }
        DoOrComplain([&] { measurement = MeasuredAnswer(*step.asking, *answer); });
    }
    return measurement;
}
