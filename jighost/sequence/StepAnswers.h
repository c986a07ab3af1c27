// What people answer to the steps that ask, at a terminal or by a file given before.
#pragma once

#include <map>
#include <optional>
#include <string>

#include "jighost/sequence/StepRange.h"

class StepAnswers {
  public:
    /// Takes a table with the columns step and answer; an empty path stands for none. Throws
    /// EXIT_WRONG_USE for a file that is no such table.
    explicit StepAnswers(const std::string& path);

    /// Throws EXIT_WRONG_USE with a line for each step that would get no answer, or a wrong one,
    /// and for each answer that belongs to no step.
    void Check(const SEQUENCE& sequence, const STEP_RANGE& range) const;

    /// Nothing if the input has ended or a signal asks the program to end.
    std::optional<MEASUREMENT> AnswerTo(const STEP& step) const;

  private:
    void CheckStep(const STEP& step) const;

    std::string m_Path;
    std::map<std::string, std::string> m_Answers;  // by the names of steps
};
