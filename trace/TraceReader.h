// Reads traces of any length operation by operation, in one pass. The memory taken depends on the
// operations that run at one moment.
#pragma once

#include <functional>
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

    // Of the item that Next gave last.

    const std::string& Path() const { return m_Paths[m_Next - 1]; }
    const TRACE_HEAD& Head() const { return m_Head; }
    TRACED_OPERATION& Operation() { return m_Operation; }
    const TRACED_GAP& Gap() const { return m_Gap; }

    /// Calls outside all operations, so far.
    std::uint64_t OtherCalls() const { return m_OtherCalls; }
    /// Operations that ended in the files and began elsewhere, so far.
    std::uint64_t Beginningless() const { return m_Beginningless; }

  private:
    struct RUNNING {
        TRACED_OPERATION operation;
        bool bWhole = false;
        bool bBodyID = false;  // the last call is one of the body's ID
        std::optional<std::uint32_t> serialSent;
    };

    void OpenNext();
    TRACE_ITEM BeginFile();
    bool DoesNextContinue() const;
    TRACE_ITEM HandOver(std::vector<RUNNING>::iterator running);

    std::optional<TRACE_ITEM> TakeEntry();
    void TakeOperation();
    void TakeLog();
    void TakeCall();
    void TakeAnswer();
    std::optional<TRACE_ITEM> TakeResult();
    TRACE_ITEM TakeGap();

    std::vector<RUNNING>::iterator FindRunning();
    RUNNING* RunningCall(bool bUnanswered);
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

    std::vector<RUNNING> m_Running;  // in the order in which they began
    bool m_bGap = false;             // entries of operations that nobody knows may come
    std::uint32_t m_LastNumber = 0;  // of an operation that began
    std::optional<std::uint32_t> m_Serial;

    TRACED_OPERATION m_Operation;
    TRACED_GAP m_Gap;
    std::uint64_t m_OtherCalls = 0;
    std::uint64_t m_Beginningless = 0;
};
