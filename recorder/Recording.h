// The recording of this process: lines that reach the system one by one, in one file or, where the
// space is bounded, in several ones behind each other.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "platform/GrowingFile.h"
#include "platform/Surroundings.h"
#include "recorder/RecordingName.h"

namespace Recorder {

/// What a file tells at its head, beside what all heads tell.
struct BEGINNING {
    std::time_t moment;
    std::string continues;  ///< the name of the file before; empty for the first one
};
/// Gives the whole first line of a file.
using HeadText = std::function<std::string(const BEGINNING&)>;

/// Where a line stands: between operations a recording that failed is tried again, and a file that
/// has grown long is ended.
enum class PLACE { BETWEEN_OPERATIONS, WITHIN_OPERATION };

class Recording {
  public:
    /// `keep` is the space in bytes that the recordings of this machine may have in the folder, 0
    /// for any; `failureFile` is where people are told of a failure. Begins the first file.
    Recording(
        std::filesystem::path folder, std::uint64_t keep, std::filesystem::path failureFile,
        HeadText headText);
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;
    /// A recording in which nothing stands but its head is removed.
    ~Recording();

    /// A line that can't be written is counted, and the gap is told as soon as the recording goes
    /// on. May throw std::bad_alloc; Lose counts what was to be written then.
    void Write(std::string_view line, PLACE place);
    void Lose(int nError);

  private:
    int TryWrite(std::string_view line, PLACE place);
    int CloseGap();
    int Continue();
    void LookAround();
    bool MustContinue(std::size_t size, PLACE place) const;
    void MakeRoom() const;
    void TellFailure(int nError) const;

    std::filesystem::path m_Folder;
    std::uint64_t m_Keep;
    std::filesystem::path m_FailureFile;
    HeadText m_HeadText;

    GrowingFile m_File;
    std::filesystem::path m_Path;
    RECORDING_NAME m_Name;
    std::uint32_t m_Process = ProcessNumber();
    std::uint32_t m_Forks = ForkCount();  // a process that was forked begins its own file
    std::uint64_t m_HeadSize = 0;
    std::chrono::steady_clock::time_point m_Looked{};  // whether the file is still there

    // What could not be written.
    std::uint64_t m_Lost = 0;
    int m_nError = 0;
    std::int64_t m_LostSince = 0;  // milliseconds since 1970
};

/// Milliseconds since 1970, by which recordings tell moments.
std::int64_t Now();

}  // namespace Recorder
