// What the module asks of the camera, call by call, beside what it logs meanwhile.
//
// A trace of one session goes to people, on standard error, or to a file for replay
// (trace/Trace.h). Log lines stand where they were flushed: a line that the module flushes
// behind a call stands behind it. Those that may be another process's stand at the operation's end,
// with what came behind them; also those that were not in doubt at first, for the second time.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "jighost/session/OwnLines.h"
#include "jighost/session/Session.h"

class Trace {
  public:
    Trace() = default;
    Trace(const Trace&) = delete;
    Trace& operator=(const Trace&) = delete;
    virtual ~Trace() = default;

    // Told by the session, in the order in which things happen. None of them fails because the
    // trace can't be written.
    void BeginOperation(const OPERATION_INFO& info, const RecordBytes& record);
    void OnLog(const OwnLines& log);
    void OnCall(const Link::CALL& call, bool complete);
    void EndOperation(const OPERATION_RUN& run, const OwnLines& log);

    /// Throws EXIT_HOST_ERROR if not all of the trace could be written.
    virtual void Finish() const {}

  protected:
    using Milliseconds = std::chrono::duration<double, std::milli>;

    virtual void WriteOperation(const OPERATION_INFO& info, const RecordBytes& record) = 0;
    /// A line is interleaved if it may be another process's.
    virtual void WriteLogLine(const std::string& line, bool bInterleaved) = 0;
    /// Of a call that has not been made yet; `number` counts those of the operation, from 1.
    virtual void WriteCall(const Link::CALL& call, std::uint32_t number) = 0;
    virtual void WriteAnswer(const Link::CALL& call, std::uint32_t number, Milliseconds time) = 0;
    virtual void WriteResult(const OPERATION_RUN& run) = 0;

  private:
    void WriteOneOf(const OwnLines& log, std::size_t place);

    std::size_t m_LogLines = 0;  // of the operation that runs, those written
    std::uint32_t m_Calls = 0;   // of the operation that runs
    std::chrono::steady_clock::time_point m_Start;
};

/// Gives a trace into a new file of that path, or to standard error if the path is empty. Throws
/// EXIT_WRONG_USE if there can be no such file.
std::unique_ptr<Trace> NewTrace(const std::string& path);
