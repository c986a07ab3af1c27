// What an error line tells, which may have lines of its own that look like any other of the log.
//
// The module hands an error line over together with the closing line behind it, and no operation
// fails without an error line of its own. So whatever stands behind an error line is looked at up
// to the next one: the last failure there is what closes the operation, and all lines ahead of it
// are the error's.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "jighost/log/LogLine.h"

class ErrorText {
  public:
    /// What a line behind an error line may be.
    enum class ROLE {
        TEXT,
        FAILURE,       ///< closes an operation that failed
        BARE_FAILURE,  ///< the same without the prefix that other lines have
        SUCCESS,       ///< closes an operation that is open
        OPENING,       ///< of another operation
    };
    using Judge = std::function<ROLE(const LOG_PIECE& piece)>;

    /// Holds nothing until the next Begin.
    bool IsHolding() const { return m_bHolding; }

    /// An error line that tells this has come.
    void Begin(std::string_view text);

    /// Gives whether the line is enough to tell which one closes the operation.
    bool Hold(const LOG_PIECE& piece, const Judge& judge);

    /// Ends holding, until the next Begin.
    void End() { m_bHolding = false; }

    /// The number of lines held since Begin.
    std::size_t Count() const { return m_Lines.size(); }
    LOG_PIECE Line(std::size_t place) const;
    /// The place of the one that closes the operation; nothing if there is none.
    std::optional<std::size_t> FindClosing(const Judge& judge) const;
    /// What the error line tells, with the lines ahead of that place, each behind '\n'.
    std::string Text(std::size_t closing) const;

  private:
    struct HELD_LINE {
        std::size_t start;  // in m_Held
        std::size_t size;
        std::size_t tag;
        bool bCut;
    };

    bool HoldsAnotherOperation(const Judge& judge) const;
    std::optional<std::size_t> FindLast(ROLE role, const Judge& judge) const;

    bool m_bHolding = false;
    std::string m_Text;
    std::string m_Held;  // one line behind the other
    std::vector<HELD_LINE> m_Lines;
};
