// One line of the module's log, by its tag and what stands behind it.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

enum class LINE_KIND {
    SEPARATOR,   ///< "[----]", alone on its line
    OPENING,     ///< "[FUNC] " and a name
    CLOSING,     ///< the same with " - " and what may be a result
    ERROR_LINE,  ///< "[ERR!]"
    START,       ///< the banner of a module that has been loaded
    OTHER,
};

/// A line as it was read, or what of one has no other line in it.
struct LOG_PIECE {
    std::string_view text;
    std::size_t tag;    ///< where it stands in the text; npos if there is none
    bool bCut = false;  ///< the line's end is missing
};

/// Refers to the text that it was made of.
struct LOG_LINE {
    LINE_KIND kind = LINE_KIND::OTHER;
    std::string_view prefix;             ///< what stands ahead of the tag
    std::string_view name;               ///< of an opening or closing line, as its opening has it
    std::string_view text;               ///< what an error line tells
    std::optional<std::int32_t> result;  ///< of a closing line; nothing for other text

    /// A result that fails an operation stands on it.
    bool HasFailure() const;
};

constexpr std::size_t TAG_SIZE = 6;  ///< "[FUNC]"

/// Where the first tag stands at `from` or behind it; npos if there is none.
std::size_t FindTag(std::string_view line, std::size_t from);

/// The line without its end, and the place of its tag.
LOG_LINE ParseLogLine(std::string_view line, std::size_t tag);
