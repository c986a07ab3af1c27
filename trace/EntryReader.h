// Reads a trace line by line, each one an entry, in one pass: the memory taken depends on the
// longest line alone. Values are looked at when somebody asks for them.
//
// All functions but the constructor throw TraceError, "FILE:LINE: ...", which says where the file
// is no trace and what was expected.
#pragma once

#include <array>
#include <concepts>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "trace/Trace.h"

/// What an entry may tell, in the order in which writers do; the last ones are those of a first
/// line.
enum class FIELD_ID : std::uint8_t {
    ENTRY,
    OPERATION,
    CALL,
    FUNCTION,
    NAME,
    ID,
    VALUE,
    FROM_LIST,
    SENT,
    RECEIVED,
    SIZE_LEFT,
    RESULT,
    RECORD,
    FAILURE,
    KIND,
    CODE,
    MESSAGE,
    TIME,
    THREAD,
    AT,
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

    /// The value as it stands in the file; empty if there is none.
    std::string_view Token(FIELD_ID field) const {
        return m_Tokens[static_cast<std::size_t>(field)];
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
    void Parse(std::string_view line);

    struct PARSER;  // known to one file alone: its library takes a compiler long

    std::string m_Path;
    std::unique_ptr<PARSER> m_pParser;
    std::size_t m_Line = 0;
    std::array<std::string_view, static_cast<std::size_t>(FIELD_ID::COUNT)> m_Tokens;
};
