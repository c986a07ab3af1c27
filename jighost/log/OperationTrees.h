// Operations put together from their opening and closing lines: what ran within what, and whose
// lines stand between those of another host that writes to the same file.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "jighost/log/LogLine.h"

/// One operation as its log tells it. Texts are cut to a fixed length.
struct LOGGED_OPERATION {
    std::string name;     ///< as the log has it; for some not the registered name
    std::size_t depth{};  ///< 0 for one that ran within no other
    std::string begin;    ///< what stands ahead of the opening line's tag, mostly the time
    std::string end;      ///< the same of the closing line
    std::string error;    ///< of its error lines, with further lines of a text behind '\n'
    /// Nothing if the closing line is missing. A result of decimal digits alone counts as decimal:
    /// behind a failure while the EEPROM is printed the module writes it in hexadecimal.
    std::optional<std::int32_t> result;
    bool bOpened = true;  ///< false if the opening line is missing
    /// Several hosts wrote at once, and which of their lines are this operation's can't be told: of
    /// two of one name, or for want of a closing line.
    bool bInterleaved = false;

    bool HasFailed() const;
};

/// What it keeps does not grow with the log.
class OperationTrees {
  public:
    /// Gets an operation and all that ran within it, in the order of their opening lines, when the
    /// outermost one has ended.
    using Sink = std::function<void(std::span<const LOGGED_OPERATION>)>;

    explicit OperationTrees(Sink sink) : m_Sink(std::move(sink)) {}

    void Open(const LOG_LINE& line);

    /// Gives whether the line closes an operation: another one is a value with the tag of a
    /// function. One of an operation's name that closes nothing has lost its opening line.
    bool Close(const LOG_LINE& line, std::string_view error);

    /// Adds an error text to the innermost operation.
    void AddError(std::string_view error);
    /// The same for one of this name that has no error text yet.
    void AddEarlyError(std::string_view error, std::string_view name);

    bool IsOpen(std::string_view name) const;
    /// Whether nothing is open that could go on.
    bool IsIdle() const;

    /// A module has been loaded: the host of what is open is gone, unless more of its lines come.
    void PassStart();

    /// Hands over all that has ended. Otherwise that waits, within a limit, for what began before.
    void HandOverEnded();

    /// Hands over all, also what is open, which has no result then.
    void End();

  private:
    /// An operation that ran within no other, with all that ran within it.
    struct TREE {
        std::vector<LOGGED_OPERATION> operations;  // elements behind `count` stay for their memory
        std::size_t count = 0;
        std::vector<std::size_t> open;  // places in `operations`, the innermost last
        bool bBeside = false;           // others went on while this one was open
        bool bLeft = false;             // a module was loaded since, and no other had gone on
    };
    struct PLACE {
        TREE* pTree;           // null: none
        std::size_t position;  // in its `open`
    };

    TREE* FindOuter(std::string_view name) const;
    TREE& AddTree();
    LOGGED_OPERATION& AddOperation(TREE& tree, const LOG_LINE& line);
    void MarkOthersBeside(const TREE& tree);

    PLACE Find(std::string_view name) const;
    static LOGGED_OPERATION& OperationAt(const PLACE& place);
    void MarkOfOneName(std::string_view name);
    void CloseAt(TREE& tree, std::size_t position);
    bool AddWithoutOpening(const LOG_LINE& line, std::string_view error);

    void Leave(const TREE& tree);
    void GiveUp(TREE& tree);
    void MakeRoom();
    void HandOver(TREE& tree);
    void HandOverFirst();

    Sink m_Sink;
    std::deque<TREE> m_Memory;
    std::vector<TREE*> m_Spare;
    std::vector<TREE*> m_Trees;  // in the order of their opening lines
    std::vector<TREE*> m_Open;   // those of m_Trees with something open, in the same order
    std::size_t m_Count = 0;     // operations in m_Trees
    bool m_bSeveral = false;     // several hosts have written at once
};
