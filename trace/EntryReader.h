// Reads a trace line by line, each one an entry, in one pass: the memory taken depends on the
// longest line alone. A line is looked at as far as somebody asks for its values, which its writers
// have put in the order in which they are asked for.
//
// All functions but the constructor throw TraceError, "FILE:LINE: ...", which says where the file
// is no trace and what was expected.
#pragma once

#include <array>
#include <bitset>
#include <concepts>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "trace/Trace.h"

/// What an entry may tell, first what is looked at in most of them, as near as can be in the order
/// of their writers; the last ones are those of a first line.
enum class FIELD_ID : std::uint8_t {
    ENTRY,
    OPERATION,
    CALL,
    FUNCTION,
    NAME,
    ID,
    RESULT,
    RECORD,
    TIME,
    THREAD,
    AT,
    VALUE,
    FROM_LIST,
    SENT,
    RECEIVED,
    SIZE_LEFT,
    FAILURE,
    KIND,
    CODE,
    MESSAGE,
    LINE,
    INTERLEAVED,
    ENTRIES,
    WHY,
    FORMAT,
    CONTENT,
    STARTED,
    MACHINE,
    PROCESS,
    PROGRAM,
    CONTINUES,
    OPERATIONS_BEFORE,
    COUNT,
};

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
    std::size_t Line() const { return m_Line; }  ///< of the entry, from 1
    std::size_t Size() const;                    ///< of the entry, in bytes

    /// The value as it stands in the file, of several the first one; empty if there is none.
    std::string_view Token(FIELD_ID field) const {
        const auto place = static_cast<std::size_t>(field);
        return m_Taken[place] ? m_Tokens[place] : Search(place);
    }
    bool Has(FIELD_ID field) const { return !Token(field).empty(); }
    bool IsNull(FIELD_ID field) const { return Required(field) == "null"; }

    template <std::integral Number>
    Number NumberAt(FIELD_ID field) const {
        using Limits = std::numeric_limits<Number>;
        return static_cast<Number>(WholeNumber(field, {Limits::min(), Limits::max()}));
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
    void Parse() const;
    template <class Object>
    void TakeFields(Object& fields, bool bWithin) const;
    /// The place of a name, behind which its quote has to stand; the number of fields for one that
    /// nobody asks for.
    std::size_t FindName(const char* pName) const;
    void Take(std::size_t place, std::string_view token) const;

    static constexpr auto FIELDS = static_cast<std::size_t>(FIELD_ID::COUNT);
    struct PARSER;  // known to one file alone: its library takes a compiler long

    std::string m_Path;
    std::unique_ptr<PARSER> m_pParser;
    std::size_t m_Line = 0;
    // What was seen of the line so far.
    mutable const char* m_pNext = nullptr;  // the field behind that; null behind the last one
    mutable std::size_t m_NextName = 0;     // of the field that writers tell next
    mutable std::bitset<FIELDS> m_Taken;
    mutable std::array<std::string_view, FIELDS> m_Tokens;  // of those taken
};
