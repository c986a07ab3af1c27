// The file of a run's record. While the run goes on it has a line for the head and one for each
// step that has ended, each of which lasts from then on; in the end it is the whole document. One
// run at a time writes it.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "jighost/records/RunRecord.h"
#include "platform/FileLock.h"

/// Where records go; all of it empty for nowhere.
struct RECORD_PLACE {
    std::string path;    ///< of a file, there or not
    std::string folder;  ///< for a file of a name of its own
};

class RecordFile {
  public:
    /// Throws EXIT_WRONG_USE if the file can't be written, as far as that can be known before.
    explicit RecordFile(const RECORD_PLACE& place);

    /// The record has no steps yet. Throws EXIT_HOST_ERROR if it can't be written, or if another
    /// run writes it.
    void Begin(const RUN_RECORD& record);
    /// The last of its steps has ended. A file that can't be written now may be so later.
    void AddStep(const RUN_RECORD& record);
    /// Throws EXIT_HOST_ERROR if it can't be written: what has lasted so far stays.
    void Finish(const RUN_RECORD& record);

  private:
    std::filesystem::path MakeInFolder(const RUN_RECORD& record, const std::string& text) const;
    void Replace(const std::string& lines);
    void HoldAnother();
    void Hold();
    bool IsAsLeft() const;
    std::string Lines(const RUN_RECORD& record) const;

    std::filesystem::path m_Path;    // empty: none
    std::filesystem::path m_Folder;  // empty: the path is given
    std::optional<FileLock> m_Lock;
    std::string m_Head;    // the file's first line
    bool m_bTorn = false;  // something has not been written
};
