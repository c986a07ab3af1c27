// What the library in the module's place tells the one in the camera link's place, which writes the
// recording. Both come from one build; where the other one is missing, operations run all the same.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>

namespace Recorder {

/// What an operation got from the host. Of a record as many bytes are looked at as it is known to
/// have.
struct ARGUMENT {
    const void* pRecord;
    std::uint32_t knownSize;  ///< 0: nobody knows
};

/// Which line of the module's log it is, among those behind a place that was its end.
struct LOG_LINE_PLACE {
    std::uint64_t end = 0;
    std::array<char, 40> prefix;  ///< as far as it has room
    std::size_t size = 0;         ///< of the prefix
    std::uint32_t before = 0;     ///< lines of this process with the same prefix
};

/// An operation that runs. It lies on the stack of its thread.
struct RUNNING_OPERATION {
    std::uint32_t number = 0;  ///< from 1, in the order in which operations begin in the process
    std::uint32_t calls = 0;
    std::uint32_t constructions = 0;       ///< of link objects
    std::uint32_t linePrefixes = 0;        ///< calls of `_gt`
    RUNNING_OPERATION* pAround = nullptr;  ///< the one on this thread within which it runs
    std::chrono::steady_clock::time_point start{};
    bool bLogLine = false;       ///< one was begun, perhaps by an operation within it
    LOG_LINE_PLACE firstLine{};  ///< of these
};

class OperationWatch {
  public:
    OperationWatch() = default;
    OperationWatch(const OperationWatch&) = delete;
    OperationWatch& operator=(const OperationWatch&) = delete;

    /// The bytes of the record of an operation for which the module registers none; 0 if nobody
    /// knows.
    virtual std::uint32_t RecordSize(const char* pszOperation) const noexcept = 0;

    /// Each Begin has its End, on the same thread.
    virtual void Begin(
        RUNNING_OPERATION& operation, const char* pszName, const ARGUMENT& argument) noexcept = 0;
    virtual void End(
        RUNNING_OPERATION& operation, std::int32_t result, const ARGUMENT& argument) noexcept = 0;

  protected:
    ~OperationWatch() = default;
};

/// The library in the camera link's place exports it under this name, whose number counts up with
/// each change of what stands here.
constexpr char WATCH_EXPORT[] = "TuneBenchOperationWatch3";
using WATCH_PROC = OperationWatch* (*)();

}  // namespace Recorder
