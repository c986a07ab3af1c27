// What stands ahead of a log line's tag, mostly the time. The camera link gives it and nobody else
// knows its form, so that the form is learnt from lines that are certain.
#pragma once

#include <string>
#include <string_view>
#include <vector>

class LinePrefixes {
  public:
    /// From now on texts of this one's form are prefixes too: words of any length, digits among
    /// them, with the same characters between. Without any form learnt, each text is one; nor is
    /// anything told apart any more behind an empty text, or behind texts of too many forms.
    void Learn(std::string_view prefix);

    /// Where the prefix begins that the text ends with; npos if it ends with none.
    std::size_t FindAtEnd(std::string_view text);

    /// The length of the last prefix found, if the line begins with it; else 0.
    std::size_t LengthOfLast(std::string_view line) const {
        return line.starts_with(m_Last) ? m_Last.size() : 0;
    }

    /// Where another line's prefix begins within the line, at `from` or behind it; npos if none
    /// does. A form that any words would have does not count.
    std::size_t FindNextLine(std::string_view line, std::size_t from) const;

  private:
    /// Longer texts have no form.
    static constexpr std::size_t MAX_PREFIX = 200;

    struct FORM {
        std::string text;         // a letter for each word
        std::size_t firstLength;  // of its first word, which another text may run into
        bool bPlain;              // nothing but words and blanks
    };

    static FORM FormOf(std::string_view prefix);
    static std::size_t Match(const FORM& form, std::string_view text);
    std::size_t FindWithin(std::string_view text) const;

    std::vector<FORM> m_Forms;
    std::size_t m_ShortestWithin = MAX_PREFIX;  // no shorter text has a prefix within
    bool m_bAny = false;                        // whatever stands there is a prefix
    std::string m_Last;  // the last one found: most lines come within one millisecond
};
