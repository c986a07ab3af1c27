// A sequence's run for people: a row for each step as soon as it has ended.
//
//      2  read back  0.0 ms  RESULT_SUCCESS (0), not as expected
//         FilePrefix = "6W1E"
//         expected FilePrefix "0AB0", got "6W1E"
#pragma once

#include "jighost/sequence/SequenceRun.h"

class SequenceOutput {
  public:
    /// `bLive`: standard error is a terminal, which tells the step that runs. `bRows`: standard
    /// output gets the rows.
    SequenceOutput(const SEQUENCE& sequence, const STEP_RANGE& range, bool bLive, bool bRows);

    /// For RunSequence.
    void OnStep(const STEP_OUTCOME& outcome, bool bDone) const;

  private:
    void MakeRoom(const STEP& step);
    void ShowRow(const STEP_OUTCOME& outcome) const;

    const SEQUENCE& m_Sequence;
    bool m_bLive;
    bool m_bRows;
    std::size_t m_NameWidth = 0;
};

/// Ahead of one run of many: the row that it is for, and the parameters' values.
void ShowValues(const std::string& place, const SEQUENCE& sequence);

/// How many steps ran, and how many of them were not as expected.
void ShowSummary(const SEQUENCE& sequence, const RUN_RECORD& record);

/// On standard error: each step that was not as expected, and where a signal ended the run.
void TellProblems(const RUN_RECORD& record);

/// Of a run that a signal ended, such as "interrupted behind step 3".
std::string InterruptText(const RUN_RECORD& record);
