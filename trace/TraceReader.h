// Reads traces of any length operation by operation, in one pass. The memory taken depends on the
// operations that run at one moment.
#pragma once

#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "trace/EntryReader.h"
#include "trace/Trace.h"
#include "trace/TracedOperation.h"

enum class TRACE_ITEM { NEW_FILE, OPERATION, GAP, END };

class TraceReader {
  public:
    /// Whether an operation that begins, of which number, name and moment are known, is to be had
    /// whole.
    using Choice = std::function<bool(const TRACED_OPERATION&)>;

    /// Files are read in the order given, but those that go on from another one behind that. Throws
    /// TraceError as Next does.
    TraceReader(const std::vector<std::string>& paths, Choice isWhole);

    /// What comes next. An operation comes when it has ended; one that never did when its file, and
    /// what goes on from that, has. A last line of a file without its end was cut off and is left
    /// out. Throws TraceError, "FILE:LINE: ...", where a file is no trace.
    TRACE_ITEM Next();

    // Of the item that Next gave last; the operation only behind TRACE_ITEM::OPERATION.

    const std::string& Path() const { return m_Paths[m_Next - 1]; }
    const TRACE_HEAD& Head() const { return m_Head; }
    TRACED_OPERATION& Operation() { return m_Running[m_Ended].operation; }
    const TRACED_GAP& Gap() const { return m_Gap; }

    /// Calls outside all operations, so far.
    std::uint64_t OtherCalls() const { return m_OtherCalls; }
    /// Operations that ended in the files and began elsewhere, so far.
    std::uint64_t Beginningless() const { return m_Beginningless; }

  private:
    struct RUNNING {
        explicit RUNNING(std::uint32_t number) { operation.number = number; }

        TRACED_OPERATION operation;
        bool bWhole = false;
        bool bBodyID = false;  // the last call is one of the body's ID
        std::optional<std::uint32_t> serialSent;
    };
    using Runs = std::vector<RUNNING>;
    static constexpr auto NONE = std::numeric_limits<std::size_t>::max();

    void OpenNext();
    TRACE_ITEM BeginFile();
    bool DoesNextContinue() const;
    void HandOver(Runs::iterator running);

    void TakeEntry();
    void TakeOperation();
    void TakeLog();
    void TakeCall();
    void TakeAnswer();
    void TakeThrow();
    void TakeResult();
    void TakeGap();

    Runs::iterator FindRunning();
    RUNNING* RunningCall(bool bUnanswered);
    std::optional<std::uint32_t> SerialAt(FIELD_ID field);
    void CountBytes(RUNNING& running) const;

    std::vector<std::string> m_Paths;
    Choice m_IsWhole;
    std::size_t m_Next = 0;  // the place of the file that comes next
    std::unique_ptr<EntryReader> m_pEntries;
    TRACE_HEAD m_Head;
    std::unique_ptr<EntryReader> m_pNextEntries;
    TRACE_HEAD m_NextHead;
    // Comes when all that runs, which has no end then, has been handed over.
    std::optional<TRACE_ITEM> m_Behind = TRACE_ITEM::NEW_FILE;

    Runs m_Running;                  // in the order in which they began
    std::size_t m_Ended = NONE;      // the place of one that was handed over and goes next
    bool m_bGap = false;             // entries of operations that nobody knows may come
    std::uint32_t m_LastNumber = 0;  // of an operation that began
    std::optional<std::uint32_t> m_Serial;
    std::string m_BodyID;            // that was read last, as it stood in the file
    std::uint32_t m_BodySerial = 0;  // in that

    std::optional<TRACE_ITEM> m_Found;  // where the last entry made an item whole
    TRACED_GAP m_Gap;
    std::uint64_t m_OtherCalls = 0;
    std::uint64_t m_Beginningless = 0;
};
