// What passes, made into entries of the recording. Operations of several threads are told apart.
#pragma once

#include <atomic>
#include <filesystem>
#include <mutex>
#include <string>
#include <vector>

#include "passage/Passage.h"
#include "recorder/LibraryFacts.h"
#include "recorder/LogGrowth.h"
#include "recorder/OperationWatch.h"
#include "recorder/Recording.h"
#include "recorder/Settings.h"
#include "trace/JsonLine.h"

namespace Recorder {

/// A call on its way, on the stack of its thread.
struct RUNNING_CALL {
    std::uint32_t operation = 0;  ///< 0: outside all operations
    std::uint32_t number = 0;     ///< of the call, from 1 in each operation
    std::chrono::steady_clock::time_point start{};
};

/// No function of it fails, or leaves anything in the last errors: what can't be recorded is lost.
class Watch final : public OperationWatch {
  public:
    /// `folder` is the host's, with the libraries and the settings.
    explicit Watch(const std::filesystem::path& folder);
    ~Watch() = default;
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    std::uint32_t RecordSize(const char* pszOperation) const noexcept override;
    void Begin(RUNNING_OPERATION& operation, const char* pszName, const ARGUMENT& argument) noexcept
        override;
    void End(RUNNING_OPERATION& operation, std::int32_t result, const ARGUMENT& argument) noexcept
        override;

    void BeginCall(RUNNING_CALL& running, const Link::REQUEST& request) noexcept;
    /// What a failed call threw is being handled meanwhile.
    void EndCall(RUNNING_CALL& running, const Link::ANSWER& answer, bool bFailed) noexcept;

    // Of a construction, and a call of `_gt`, that begins: its number in the operation, from 1.

    std::uint32_t CountConstruction() noexcept;
    std::uint32_t CountLinePrefix() noexcept;
    /// Of one of these: what it threw is being handled meanwhile.
    void NoteThrow(const char* pszFunction, std::uint32_t number) noexcept;

    /// The module begins a line of its log with this.
    void NoteLogLine(std::string_view prefix) noexcept;

  private:
    std::string HeadLine(const BEGINNING& beginning) const;
    template <class AddFields>
    void Write(PLACE place, const AddFields& addFields) noexcept;
    void AddLogText(JsonLine& line, const RUNNING_OPERATION& operation, bool bFailed);

    SETTINGS m_Settings;
    std::vector<std::pair<JsonKey, LIBRARY_FACTS>> m_Libraries;

    std::mutex m_Mutex;
    std::string m_Line;  // keeps its memory from one to the next
    LogGrowth m_Log;
    std::chrono::steady_clock::time_point m_LogRead{};
    std::uint32_t m_Operations = 0;
    // Outside all operations.
    std::uint32_t m_OtherCalls = 0;
    std::atomic<std::uint32_t> m_OtherConstructions = 0;
    std::atomic<std::uint32_t> m_OtherLinePrefixes = 0;
    Recording m_Recording;  // the last one: its head tells of the others
};

}  // namespace Recorder
