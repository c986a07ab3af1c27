// Writes a trace, entry by entry.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "trace/Trace.h"
#include "trace/TraceEntries.h"

/// No entry fails because it can't be written: Finish tells it.
class TraceWriter {
  public:
    using Milliseconds = std::chrono::duration<double, std::milli>;

    /// Makes the file anew. Throws TraceError if there can be no such file, or if it takes nothing.
    explicit TraceWriter(const std::string& path);
    TraceWriter(const TraceWriter&) = delete;
    TraceWriter& operator=(const TraceWriter&) = delete;
    ~TraceWriter();

    void WriteOperation(std::string_view name, std::span<const std::uint8_t> record);
    /// An interleaved line may be another process's.
    void WriteLogLine(std::string_view line, bool bInterleaved);
    /// Of a call that has not been made yet; `number` counts those of the operation, from 1.
    void WriteCall(const Link::CALL& call, std::uint32_t number);
    void WriteAnswer(const Link::CALL& call, std::uint32_t number, Milliseconds time);
    void WriteResult(std::int32_t result, std::span<const std::uint8_t> record, Milliseconds time);

    /// Throws TraceError if not all of the trace could be written.
    void Finish() const;

  private:
    template <class AddFields>
    void WriteEntry(const AddFields& addFields);
    void WriteText(std::string_view text);

    std::string m_Path;
    int m_nFile = -1;
    int m_nError = 0;  // of the first write that failed; none is tried behind it
    std::uint32_t m_Operations = 0;
};
