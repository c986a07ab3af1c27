// The record of a sequence's run, for programs: it grows step by step, so that whatever ends the
// run loses none that has ended.
#pragma once

#include <string>

#include "jighost/output/Json.h"
#include "jighost/sequence/SequenceRun.h"

class SequenceRecord {
  public:
    /// The record goes to the file, or, with an empty path, is kept here alone. Throws
    /// EXIT_WRONG_USE if the file can't be written, as far as that can be known before.
    SequenceRecord(const std::string& path, const SEQUENCE& sequence);

    /// Replaces what the file had: a run without a step that has ended. Throws EXIT_HOST_ERROR.
    void Begin();
    /// Adds a step that has ended. A file that can't be written now may be so in the end.
    void Add(const STEP_OUTCOME& outcome, std::chrono::duration<double, std::milli> time);
    /// Throws EXIT_HOST_ERROR if the file can't be written.
    void Finish(const SEQUENCE_RUN& run);

    /// The document as it is now; of a run that has not ended the outcome is "unfinished".
    const std::string& Text() const { return m_Text; }

  private:
    void Compose(const char* pszOutcome, std::chrono::duration<double, std::milli> time);
    /// While the run goes on a device or a pipe gets nothing: it would keep each state of it.
    void WriteInterim() const;

    std::string m_Path;
    Json m_Head;          // the sequence's name and its parameters' values
    std::string m_Steps;  // as they stand in the document
    std::string m_Text;
};
