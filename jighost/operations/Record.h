// Records of operations for people: their layout, and their bytes built from and shown as fields.
#pragma once

#include <cstdint>
#include <cstring>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

enum class FIELD_KIND {
    UNSIGNED,  ///< 32 bits, decimal
    SIGNED,    ///< 32 bits, decimal
    HEX,       ///< unsigned 32 bits, shown in hexadecimal
    DOUBLE,    ///< 64-bit floating point
    TEXT,      ///< characters; what they leave of the width is zero
    BYTES,     ///< hexadecimal digits, two for each byte; what they leave of the width is zero
};

/// Numbers are in the host's byte order.
struct FIELD {
    const char* name;
    std::uint32_t offset;
    std::uint32_t width;  ///< bytes of one element
    FIELD_KIND kind;
    const char* meaning;      ///< unit, range or whatever a person must know
    std::uint32_t count = 1;  ///< elements; with more than one, `name[index]` is one of them
};

struct RECORD {
    const char* name;
    std::uint32_t size;  ///< bytes
    std::span<const FIELD> fields;
    bool bAnyLength = false;  ///< the caller may give fewer bytes than `size`
};

using RecordBytes = std::vector<std::uint8_t>;

/// Zero bytes for a record. There are more than it needs: a few operations read or write by a
/// length that the record does not tell, such as that of an INI file.
RecordBytes NewRecord(const RECORD& record);

// These throw EXIT_WRONG_USE with one line that names the operation, the field and what was
// expected.

/// Of a field that the record does not have.
void CheckField(std::string_view operation, const RECORD& record, std::string_view field);

/// Sets one field from text: decimal or 0x numbers, characters, or hexadecimal bytes.
void SetField(
    std::string_view operation, const RECORD& record, RecordBytes& bytes, std::string_view field,
    std::string_view value);

struct FIELD_VALUE {
    std::string field;
    std::string value;  ///< as SetField takes it
};

/// Sets one field after the other; a field twice is wrong.
void SetFields(
    std::string_view operation, const RECORD& record, RecordBytes& bytes,
    std::span<const FIELD_VALUE> fields);
/// Sets the whole record from hexadecimal digits, two for each byte, blanks allowed.
void SetHex(
    std::string_view operation, const RECORD& record, RecordBytes& bytes, std::string_view hex);

/// Writes one line for each field.
void ShowRecord(std::ostream& out, const RECORD& record, const RecordBytes& bytes);

// `field` is one that CheckField has accepted.

FIELD_KIND FieldKind(const RECORD& record, std::string_view field);
/// Nothing for texts and bytes.
std::optional<double> FieldNumber(
    const RECORD& record, const RecordBytes& bytes, std::string_view field);

/// Whether the field has the same bytes in two records of one form.
bool IsSameField(
    const RECORD& record, const RecordBytes& left, const RecordBytes& right,
    std::string_view field);
/// The field's value, as ShowRecord writes it.
std::string FieldText(const RECORD& record, const RecordBytes& bytes, std::string_view field);

/// A text of a record without the zeros behind it, in the form of PlainText; quotes and backslashes
/// are escaped too.
std::string RecordText(std::span<const std::uint8_t> bytes);

/// A field's name with the indices that it has, such as "Data[0..127]".
std::string IndexedName(const FIELD& field);

/// A number of a record, at whatever address.
template <class Number>
Number NumberAt(const std::uint8_t* pBytes) {
    Number number = 0;
    std::memcpy(&number, pBytes, sizeof(Number));
    return number;
}

/// The names of all fields, such as "Data[0..127], Address, Count".
std::string FieldNames(const RECORD& record);
