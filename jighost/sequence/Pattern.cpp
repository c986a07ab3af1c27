// Matched in a time that grows with the text, not in one that doubles with each character.
#include "jighost/sequence/Pattern.h"

#include <algorithm>
#include <regex>

#include "jighost/text/HostError.h"
#include "jighost/text/Numbers.h"

static const std::size_t LONGEST_PATTERN = 100;
// The library calls itself for each state of a pattern, of which {N} has N times as many.
static const std::uint64_t MOST_REPEATS = 32;

static std::regex Compiled(const std::string& pattern) {
    return std::regex(pattern, std::regex::ECMAScript | std::regex_constants::__polynomial);
}

/// The product of all counts: of {2} and {3,4} in one pattern it is 24.
static std::uint64_t Repeats(const std::string& pattern) {
    static const std::regex COUNT("[{,]([0-9]{1,9})(?=[,}])");
    std::uint64_t repeats = 1;
    const std::sregex_iterator end;
    for (std::sregex_iterator i(pattern.begin(), pattern.end(), COUNT); i != end; ++i) {
        const auto count = ParseNumber<std::uint64_t>((*i)[1].str());
        repeats = std::min(repeats * std::max<std::uint64_t>(*count, 1), MOST_REPEATS + 1);
    }
    return repeats;
}

void CheckPattern(const std::string& pattern) {
    if (pattern.empty() || pattern.size() > LONGEST_PATTERN || Repeats(pattern) > MOST_REPEATS) {
        throw HostError(
            EXIT_WRONG_USE, "expected a pattern of at most " + std::to_string(LONGEST_PATTERN) +
                                " characters, whose counts {N} give at most " +
                                std::to_string(MOST_REPEATS) + " as their product, got '" +
                                pattern + "'");
    }
    try {
        Compiled(pattern);
    } catch (const std::regex_error&) {
        throw HostError(EXIT_WRONG_USE, "expected a regular expression, got '" + pattern + "'");
    }
}

bool IsOfPattern(const std::string& text, const std::string& pattern) {
    return std::regex_match(text, Compiled(pattern));
}
