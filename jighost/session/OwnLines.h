// This process's lines of a log that other processes write to as well.
//
// The log does not say who wrote a line. But the camera link gave each line's prefix, mostly the
// time, in this process: a line with another prefix is another's. Where more lines have come with a
// prefix than were given it, others wrote in the same millisecond, and whose each one is can't be
// told.
#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "jighost/text/LinePrefix.h"

enum class OWNER { THIS_PROCESS, ANOTHER, UNKNOWN };

class OwnLines {
  public:
    OwnLines() = default;
    OwnLines(const OwnLines&) = delete;
    OwnLines& operator=(const OwnLines&) = delete;

    /// The camera link has given a prefix: a line with it will come.
    void Expect(const std::string& prefix);

    /// A line has come, which may hold another one that begins within it.
    void Add(std::string_view line);

    /// Forgets the lines. Those that are still to come stay expected.
    void Clear();

    std::size_t Count() const { return m_Lines.size(); }
    const std::string& Text(std::size_t place) const { return m_Lines[place].text; }
    /// Another line may make it unknown, up to the one that ends the operation.
    OWNER Owner(std::size_t place) const;
    /// The texts of one owner.
    std::vector<std::string> Texts(OWNER owner) const;

  private:
    /// A prefix, and how many of its lines are to come: less than none if others' have come too.
    using PREFIX = std::pair<const std::string, std::ptrdiff_t>;

    struct LINE {
        std::string text;
        const PREFIX*
            pPrefix;  // its own or that of the line it belongs to; null: another process's
    };

    void AddPiece(std::string_view text);
    void AddBare(std::string_view text);
    PREFIX* FindOwn(std::string_view text);
    std::size_t FindPrefix(std::string_view text);

    std::map<std::string, std::ptrdiff_t, std::less<>> m_Missing;
    std::set<std::size_t> m_Lengths;  // of all prefixes
    LinePrefixes m_Forms;             // of all prefixes
    std::vector<LINE> m_Lines;
    std::size_t m_Leading = 0;  // the last lines that belong to the next one with a prefix
};
