// What the module's log, in the host's current directory, grows by.
//
// It is read behind operations, and nothing is asked ahead of them: the first line's prefix, which
// the camera link has given, tells where an operation's text begins. That also tells a log that was
// renamed, deleted or begun anew, or that lies in another directory by now.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "platform/FollowedFile.h"
#include "recorder/OperationWatch.h"

namespace Recorder {

struct GROWN_TEXT {
    std::string_view text;      ///< until the log is looked at again
    std::uint64_t leftOut = 0;  ///< bytes behind that
};

class LogGrowth {
  public:
    /// Of a longer text the rest is left out. A dump's has 52 KB.
    static constexpr std::size_t LONGEST = 0x40000;

    LogGrowth();

    /// The module begins a line with this prefix. Gives its place.
    LOG_LINE_PLACE NoteLine(std::string_view prefix) noexcept;

    /// From a line on. Empty if there is none: the log could not be written, or can't be read.
    GROWN_TEXT TextFrom(LOG_LINE_PLACE line) noexcept;

  private:
    std::string_view Read(std::uint64_t place) noexcept;
    std::string_view ReadAgain(LOG_LINE_PLACE& line) noexcept;

    FollowedFile m_Log;
    LOG_LINE_PLACE m_NextLine{};  // if it has the prefix of the last one
    std::array<char, LONGEST> m_Block;
};

}  // namespace Recorder
