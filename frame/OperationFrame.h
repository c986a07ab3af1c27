// The frame that every operation runs in: opening lines, local objects, guarded work, closing line.
//
//     std::int32_t GetFilePrefix(void* argument) noexcept {
//         return RunOperation<CPublicProperty>(
//             {s_LogStream, s_byLogBuffer, "GetFilePrefix"}, [&](auto& property) {
//                 CheckPointer(argument, "pFilePrefix");
//                 property.Get(PROP_FILE_PREFIX, PROP_FILE_PREFIX_SIZE, argument);
//             });
//     }
#pragma once

#include <cstdint>
#include <string_view>

#include "frame/Log.h"
#include "frame/Result.h"

/// What one operation's frame has of its own.
struct OPERATION {
    CLogStream& stream;             ///< the source file's stream ...
    LogBuffer& buffer;              ///< ... and its memory
    std::string_view logName;       ///< stands behind "[FUNC] " in the opening and the closing line
    std::string_view closing = {};  ///< tag and name of a closing line that differs
    bool bErrorLinesWithoutPrefix = false;  ///< true for a few; their other lines are as usual
};

class OperationFrame {
  public:
    explicit OperationFrame(const OPERATION& operation) : m_Operation(operation) {}

    /// Writes the opening lines and flushes.
    void Open();

    /// Runs `work`. What it throws is logged and, unless an earlier failure stands, becomes the
    /// operation's result.
    template <class Work>
    void Guard(const Work& work) noexcept;

    /// Writes the closing line once, flushes, and gives the operation's result.
    std::int32_t Close() noexcept;

  private:
    void ReportException(const CException* pException) noexcept;
    void ReportUnexpectedException() noexcept;
    void WriteClosingPrefix() noexcept;
    void Report(std::string_view line, std::string_view message, std::int32_t code) noexcept;

    const OPERATION& m_Operation;
    std::int32_t m_nResult = RESULT_SUCCESS;
    bool m_bClosed = false;
};

/// Runs `work` in an operation's frame and gives the operation's result. A local object of each
/// type in `Locals` is built in that order behind the opening lines, handed to `work` by reference,
/// and destroyed in the reverse order behind the closing line. Nothing is thrown: what a
/// constructor or a log line throws ends as what `work` throws does, in a result code with its
/// closing line.
template <class... Locals, class Work>
std::int32_t RunOperation(const OPERATION& operation, const Work& work) noexcept;

/// The opening lines alone.
void WriteOpeningLines(const OPERATION& operation);

/// Opening and closing lines, with their flushes, of a routine without a guard: what its work
/// throws passes on to its caller.
void OpenFramelessRoutine(const OPERATION& routine);
void CloseFramelessRoutine(const OPERATION& routine);

// --- Implementation of the templates ---

template <class Work>
void OperationFrame::Guard(const Work& work) noexcept {
    try {
        work();
    } catch (CException* e) {
        ReportException(e);
        delete e;
    } catch (...) {
        ReportUnexpectedException();
    }
}

template <class... Types>
struct LOCALS {};

template <class Work>
void WithLocals(LOCALS<>, const Work& work) {
    work();
}

template <class First, class... Rest, class Work>
void WithLocals(LOCALS<First, Rest...>, const Work& work) {
    First first;
    WithLocals(LOCALS<Rest...>(), [&](auto&... rest) { work(first, rest...); });
}

template <class... Locals, class Work>
std::int32_t RunOperation(const OPERATION& operation, const Work& work) noexcept {
    OperationFrame frame(operation);
    frame.Guard([&] {
        frame.Open();
        WithLocals(LOCALS<Locals...>(), [&](auto&... locals) {
            frame.Guard([&] { work(locals...); });
            frame.Close();
        });
    });
    return frame.Close();
}
