// Reads a trace line by line, each one an entry, in one pass: the memory taken depends on the
// longest line alone. A line is looked at as far as somebody asks for its values, and at little
// cost where they are asked for in the order in which its writers have put them.
//
// All functions but the constructor throw TraceError, "FILE:LINE: ...", which says where the file
// is no trace and what was expected.
#pragma once

#include <array>
#include <bitset>
#include <concepts>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "trace/EntryFields.h"
#include "trace/LineReader.h"
#include "trace/Trace.h"

class EntryReader {
  public:
    /// Throws TraceError for what can't be opened or is no regular file.
    explicit EntryReader(const std::string& path);
    ~EntryReader();
    EntryReader(const EntryReader&) = delete;
    EntryReader& operator=(const EntryReader&) = delete;

    /// Goes on to the next line. Gives false at the file's end; a last line without its end was cut
    /// off and is left out.
    bool Next();
    std::size_t Line() const { return m_Line; }                 ///< of the entry, from 1
    std::size_t Size() const { return m_Lines.Text().size(); }  ///< of the entry, in bytes

    /// The value as it stands in the file, of several the first one; empty if there is none.
    std::string_view Token(FIELD_ID field) const {
        const auto place = static_cast<std::size_t>(field);
        const bool bTaken = m_Taken[place] || (IsNext(place) && TakeValue(place, ValueOf(place)));
        return bTaken ? m_Tokens[place] : Search(place);
    }
    /// Goes on behind a field that nobody asks for, or not yet, if it comes next.
    template <FIELD_ID Field>
    void Pass() const {
        const auto place = static_cast<std::size_t>(Field);
        const bool bText = !m_Taken[place] && IsNext(place) && *ValueOf(place) == '"';
        if (bText || (TakeDigits(place) < 0 && !Is(Field, "null"))) {
            Token(Field);
        }
    }
    /// Whether this is the value as it stands in the file; compared at once where it comes next.
    template <std::size_t Size>
    bool Is(FIELD_ID field, const char (&value)[Size]) const {
        const auto place = static_cast<std::size_t>(field);
        if (!m_Taken[place] && IsNext(place)) {
            const char* pValue = ValueOf(place);
            if (std::memcmp(pValue, value, Size - 1) != 0) {
                return false;
            }
            if (IsValueEnd(pValue + Size - 1)) {
                TakeNext(place, {pValue, Size - 1});
                return true;
            }
        }
        return Token(field) == value;
    }
    bool Has(FIELD_ID field) const { return !Token(field).empty(); }
    bool IsNull(FIELD_ID field) const { return Is(field, "null") || Required(field) == "null"; }

    template <std::integral Number>
    Number NumberAt(FIELD_ID field) const {
        using Limits = std::numeric_limits<Number>;
        const std::int64_t number = TakeDigits(static_cast<std::size_t>(field));
        return number >= 0 && number <= Limits::max()
                   ? static_cast<Number>(number)
                   : static_cast<Number>(WholeNumber(field, {Limits::min(), Limits::max()}));
    }
    /// Nothing if the entry has no such field.
    template <std::integral Number>
    std::optional<Number> NumberIfAny(FIELD_ID field) const {
        const bool bAny = IsNext(static_cast<std::size_t>(field)) || Has(field);
        return bAny ? std::optional(NumberAt<Number>(field)) : std::nullopt;
    }
    /// Nothing for null.
    template <std::integral Number>
    std::optional<Number> OptionalNumberAt(FIELD_ID field) const {
        return IsNull(field) ? std::nullopt : std::optional(NumberAt<Number>(field));
    }
    double FractionAt(FIELD_ID field) const;
    bool FlagAt(FIELD_ID field) const;
    std::string TextAt(FIELD_ID field) const;
    /// From hexadecimal digits or base64.
    Link::Bytes BytesAt(FIELD_ID field) const;

    /// "FILE:LINE: text"
    [[noreturn]] void Refuse(const std::string& text) const;
    /// "FILE:LINE: FIELD: expected EXPECTED, got VALUE"
    [[noreturn]] void RefuseValue(FIELD_ID field, const std::string& expected) const;

  private:
    struct BOUNDS {
        std::int64_t lowest;
        std::int64_t highest;
    };

    std::string_view Required(FIELD_ID field) const;
    std::int64_t WholeNumber(FIELD_ID field, const BOUNDS& bounds) const;
    std::string_view Search(std::size_t wanted) const;
    bool TakePlainField() const;
    bool TakeValue(std::size_t place, const char* pValue) const;
    void Parse() const;
    template <class Object>
    void TakeFields(Object& fields, bool bWithin) const;
    /// The place of a name, behind which its quote has to stand; the number of fields for one that
    /// nobody asks for.
    std::size_t FindName(const char* pName) const;

    // What follows is done with nearly each line, and stands here for compilers, which know the
    // field then. What is looked at may lie behind the line's end, where there is room: no key and
    // no value has a line's end in it.

    bool IsNext(std::size_t place) const {
        const std::string_view key = FIELD_KEYS[place];
        return std::memcmp(m_pNext, key.data(), key.size()) == 0;
    }
    const char* ValueOf(std::size_t place) const { return m_pNext + FIELD_KEYS[place].size(); }

    /// A number that comes next, in digits alone and not too many of them; else -1.
    std::int64_t TakeDigits(std::size_t place) const {
        static const std::ptrdiff_t MOST = std::numeric_limits<std::int64_t>::digits10;
        if (m_Taken[place] || !IsNext(place)) {
            return -1;
        }
        const char* pStart = ValueOf(place);
        const char* pEnd = pStart;
        std::uint64_t number = 0;
        for (; *pEnd >= '0' && *pEnd <= '9'; ++pEnd) {
            number = 10 * number + static_cast<std::uint64_t>(*pEnd - '0');
        }
        if (pEnd == pStart || pEnd - pStart > MOST || !IsValueEnd(pEnd)) {
            return -1;
        }
        TakeNext(place, {pStart, pEnd});
        return static_cast<std::int64_t>(number);
    }

    /// The line has a brace at its end.
    bool IsValueEnd(const char* pEnd) const { return *pEnd == ',' || pEnd + 1 == m_pEnd; }

    void TakeNext(std::size_t place, std::string_view token) const {
        Take(place, token);
        m_pNext = token.data() + token.size() + 1;
    }
    void Take(std::size_t place, std::string_view token) const {
        m_Last = place;
        if (place < FIELD_COUNT && !m_Taken[place]) {
            m_Taken.set(place);
            m_Tokens[place] = token;
        }
    }

    struct PARSER;  // known to one file alone: its library takes a compiler long

    std::string m_Path;
    LineReader m_Lines;
    std::unique_ptr<PARSER> m_pParser;
    std::size_t m_Line = 0;
    // What was seen of the line so far.
    const char* m_pEnd = nullptr;           // of the line
    mutable const char* m_pNext = nullptr;  // the field behind that; m_pEnd behind the last one
    mutable std::bitset<FIELD_COUNT> m_Taken;
    mutable std::array<std::string_view, FIELD_COUNT> m_Tokens;  // of those taken
    // The field that stood behind each one last, and most likely will again.
    mutable std::array<std::size_t, FIELD_COUNT + 1> m_Followers{};
    mutable std::size_t m_Last = FIELD_COUNT;  // of the line; FIELD_COUNT ahead of the first one
};
