// Text is taken word by word, each with the blanks ahead of it.
#include "jighost/output/Wrapping.h"

#include <algorithm>

static const std::size_t INDENT = 2;

/// The column behind a word without blanks that begins at `column`. An escape sequence, UTF-8's
/// further bytes and a carriage return take no room.
static std::size_t ColumnBehind(std::size_t column, std::string_view word) {
    bool bEscape = false;
    for (const char character : word) {
        if (bEscape) {
            bEscape = character < '@' || character > '~' || character == '[';
        } else if (character == '\033') {
            bEscape = true;
        } else if (character == '\r') {
            column = 0;
        } else if ((static_cast<unsigned char>(character) & 0xC0) != 0x80) {
            ++column;
        }
    }
    return column;
}

/// Where the further lines of a line that is too long begin: at its last column in the left half,
/// which is what follows two blanks or more.
static std::size_t HangingColumn(std::string_view line, std::size_t width) {
    const std::size_t first = std::min(line.find_first_not_of(' '), line.size());
    std::size_t hanging = std::min(first + INDENT, width / 2);
    for (std::size_t i = line.find("  ", first); i < width / 2; i = line.find("  ", i)) {
        i = std::min(line.find_first_not_of(' ', i), line.size());
        hanging = i <= width / 2 ? i : hanging;
    }
    return hanging;
}

static void WrapLine(
    std::string& wrapped, std::string_view line, std::size_t width, std::size_t& column) {
    const std::size_t hanging = column == 0 ? HangingColumn(line, width) : INDENT;
    while (!line.empty()) {
        const std::size_t blanks = std::min(line.find_first_not_of(' '), line.size());
        const std::size_t end = std::min(line.find(' ', blanks), line.size());
        const std::string_view word = line.substr(blanks, end - blanks);
        if (column > hanging && ColumnBehind(column + blanks, word) > width) {
            wrapped += '\n';
            wrapped.append(hanging, ' ');
            column = hanging;
        } else {
            wrapped.append(blanks, ' ');
            column += blanks;
        }
        wrapped += word;
        column = ColumnBehind(column, word);
        line.remove_prefix(end);
    }
}

std::string Wrapped(std::string_view text, std::size_t width, std::size_t& column) {
    std::string wrapped;
    for (;;) {
        const std::size_t end = text.find('\n');
        WrapLine(wrapped, text.substr(0, end), width, column);
        if (end == std::string_view::npos) {
            return wrapped;
        }
        wrapped += '\n';
        column = 0;
        text.remove_prefix(end + 1);
    }
}
