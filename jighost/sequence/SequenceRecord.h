// The record of a sequence's run, for programs: it grows step by step, so that whatever ends the
// run loses none that has ended.
#pragma once

#include "jighost/sequence/RecordFile.h"
#include "jighost/sequence/SequenceRun.h"

class SequenceRecord {
  public:
    /// Throws EXIT_WRONG_USE if the file can't be written, as far as that can be known before.
    explicit SequenceRecord(const RECORD_PLACE& place) : m_File(place) {}

    /// A run without a step that has ended. Throws EXIT_HOST_ERROR if it can't be written.
    void Begin(RUN_RECORD head);
    /// Adds a step that has ended. A file that can't be written now may be so in the end.
    void Add(const STEP_OUTCOME& outcome);
    /// The exit code is the run's. Throws EXIT_HOST_ERROR if the file can't be written.
    void Finish(EXIT_CODE exitCode);

    /// As it is now; of a run that has not ended the verdict is UNFINISHED.
    RUN_RECORD& Record() { return m_Record; }
    const RUN_RECORD& Record() const { return m_Record; }

  private:
    RUN_RECORD m_Record;
    RecordFile m_File;
};
