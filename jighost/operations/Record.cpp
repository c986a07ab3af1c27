// Fields found by name, parsed and shown.
#include "jighost/operations/Record.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <iomanip>
#include <optional>
#include <set>

#include "jighost/text/HostError.h"
#include "jighost/text/NearestName.h"
#include "jighost/text/Numbers.h"
#include "jighost/text/PlainText.h"
#include "trace/Hex.h"

// More than the longest block that an operation can sensibly be told to read or write.
static const std::size_t SPARE_BYTES = 65536;

static const std::size_t NUMBERS_IN_LINE = 8;
static const std::size_t BYTES_IN_LINE = 16;

RecordBytes NewRecord(const RECORD& record) {
    return RecordBytes(record.size + SPARE_BYTES);
}

// --- Parsing ---

template <class Number>
static std::optional<RecordBytes> BytesOf(const std::optional<Number>& number) {
    if (!number) {
        return std::nullopt;
    }
    RecordBytes bytes(sizeof(Number));
    std::memcpy(bytes.data(), &*number, sizeof(Number));
    return bytes;
}

static std::optional<RecordBytes> ParseValue(FIELD_KIND kind, std::string_view value) {
    switch (kind) {
        case FIELD_KIND::UNSIGNED:
        case FIELD_KIND::HEX:
            return BytesOf(ParseNumber<std::uint32_t>(value));
        case FIELD_KIND::SIGNED:
            return BytesOf(ParseNumber<std::int32_t>(value));
        case FIELD_KIND::DOUBLE:
            return BytesOf(ParseDouble(value));
        case FIELD_KIND::TEXT:
            return RecordBytes(value.begin(), value.end());
        case FIELD_KIND::BYTES:
            return ParseHex(value);
    }
    return std::nullopt;
}

static std::string Expected(const FIELD& field) {
    const std::string width = std::to_string(field.width);
    switch (field.kind) {
        case FIELD_KIND::UNSIGNED:
        case FIELD_KIND::HEX:
            return "a number from 0 to 4294967295";
        case FIELD_KIND::SIGNED:
            return "a number from -2147483648 to 2147483647";
        case FIELD_KIND::DOUBLE:
            return "a floating-point number";
        case FIELD_KIND::TEXT:
            return "a text of at most " + width + " characters";
        case FIELD_KIND::BYTES:
            return "at most " + width + " bytes as hexadecimal digits, two for each";
    }
    return "";
}

/// A field, or one element of it.
struct PLACE {
    const FIELD* field;
    std::uint32_t offset;
};

static std::optional<PLACE> FindPlace(const RECORD& record, std::string_view name) {
    const std::size_t bracket = name.find('[');
    const auto found = std::find_if(
        record.fields.begin(), record.fields.end(),
        [&](const FIELD& field) { return field.name == name.substr(0, bracket); });
    if (found == record.fields.end() || (found->count > 1) != (bracket != std::string_view::npos)) {
        return std::nullopt;
    }
    if (found->count == 1) {
        return PLACE{&*found, found->offset};
    }
    const auto index =
        ParseNumber<std::uint32_t>(name.substr(bracket + 1, name.size() - bracket - 2));
    if (!name.ends_with(']') || !index || *index >= found->count) {
        return std::nullopt;
    }
    return PLACE{&*found, found->offset + *index * found->width};
}

static std::string NearestFields(const RECORD& record, std::string_view name) {
    std::vector<std::string> names;
    for (const FIELD& field : record.fields) {
        names.emplace_back(field.name);
    }
    return NearestNames(name.substr(0, name.find('[')), names);
}

void CheckField(std::string_view operation, const RECORD& record, std::string_view field) {
    if (!FindPlace(record, field)) {
        throw HostError(
            EXIT_WRONG_USE, std::string(operation) + " has no field '" + std::string(field) +
                                "'; its record has " + FieldNames(record) +
                                NearestFields(record, field));
    }
}

void SetField(
    std::string_view operation, const RECORD& record, RecordBytes& bytes, std::string_view field,
    std::string_view value) {
    CheckField(operation, record, field);
    const std::optional<PLACE> place = FindPlace(record, field);
    const std::optional<RecordBytes> parsed = ParseValue(place->field->kind, value);
    if (!parsed || parsed->size() > place->field->width) {
        throw HostError(
            EXIT_WRONG_USE, std::string(operation) + ": " + std::string(field) + ": expected " +
                                Expected(*place->field) + ", got '" + std::string(value) + "'");
    }
    const auto target = bytes.begin() + place->offset;
    std::fill(target, target + place->field->width, std::uint8_t{0});
    std::copy(parsed->begin(), parsed->end(), target);
}

void SetFields(
    std::string_view operation, const RECORD& record, RecordBytes& bytes,
    std::span<const FIELD_VALUE> fields) {
    std::set<std::uint32_t> offsets;
    for (const FIELD_VALUE& each : fields) {
        SetField(operation, record, bytes, each.field, each.value);
        if (!offsets.insert(FindPlace(record, each.field)->offset).second) {
            throw HostError(
                EXIT_WRONG_USE, std::string(operation) + ": expected each field once, got '" +
                                    each.field + "' again");
        }
    }
}

void SetHex(
    std::string_view operation, const RECORD& record, RecordBytes& bytes, std::string_view hex) {
    const std::optional<RecordBytes> parsed = ParseHex(hex);
    if (!parsed || parsed->size() > record.size ||
        (parsed->size() < record.size && !record.bAnyLength)) {
        throw HostError(
            EXIT_WRONG_USE,
            std::string(operation) + ": --hex: expected " + (record.bAnyLength ? "at most " : "") +
                std::to_string(record.size) + " bytes as hexadecimal digits, two for each, got '" +
                std::string(hex) + "'");
    }
    std::copy(parsed->begin(), parsed->end(), bytes.begin());
}

// --- Showing ---

std::string RecordText(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty() && bytes.back() == 0) {
        bytes = bytes.first(bytes.size() - 1);
    }
    return PlainText({reinterpret_cast<const char*>(bytes.data()), bytes.size()}, "\"\\");
}
static std::string DoubleText(double number) {
    std::array<char, 32> text{};
    const auto [end, error] = std::to_chars(text.begin(), text.end(), number);
    return {text.data(), end};
}

/// One element, but for bytes, which may need several lines.
static std::string ValueText(const FIELD& field, const std::uint8_t* pBytes) {
    switch (field.kind) {
        case FIELD_KIND::UNSIGNED:
            return std::to_string(NumberAt<std::uint32_t>(pBytes));
        case FIELD_KIND::SIGNED:
            return std::to_string(NumberAt<std::int32_t>(pBytes));
        case FIELD_KIND::HEX:
            return "0x" + HexText(NumberAt<std::uint32_t>(pBytes), 4);
        case FIELD_KIND::DOUBLE:
            return DoubleText(NumberAt<double>(pBytes));
        case FIELD_KIND::TEXT:
            return '"' + RecordText({pBytes, field.width}) + '"';
        case FIELD_KIND::BYTES:
            return HexText(*pBytes, 2);
    }
    return "";
}

static std::size_t NameWidth(const RECORD& record) {
    std::size_t width = 0;
    for (const FIELD& field : record.fields) {
        const std::size_t brackets = field.count > 1 ? std::strlen("[000]") : 0;
        width = std::max(width, std::strlen(field.name) + brackets);
    }
    return width;
}

void ShowRecord(std::ostream& out, const RECORD& record, const RecordBytes& bytes) {
    const auto nameWidth = static_cast<int>(NameWidth(record));
    for (const FIELD& field : record.fields) {
        const bool bBytes = field.kind == FIELD_KIND::BYTES;
        const std::size_t values = bBytes ? field.width : field.count;
        const std::size_t step = bBytes ? 1 : field.width;
        const std::size_t valuesInLine = bBytes ? BYTES_IN_LINE : NUMBERS_IN_LINE;
        for (std::size_t i = 0; i < values; ++i) {
            if (i % valuesInLine == 0) {
                const std::string index = field.count > 1 ? '[' + std::to_string(i) + ']' : "";
                const std::string name = bBytes && i > 0 ? "" : field.name + index;
                out << (i > 0 ? "\n" : "") << std::left << std::setw(nameWidth) << name << " =";
            }
            out << ' ' << ValueText(field, bytes.data() + field.offset + i * step);
        }
        out << '\n';
    }
}

static std::span<const std::uint8_t> BytesAt(
    const RECORD& record, const RecordBytes& bytes, std::string_view field) {
    const std::optional<PLACE> place = FindPlace(record, field);
    return {bytes.data() + place.value().offset, place.value().field->width};
}

bool IsSameField(
    const RECORD& record, const RecordBytes& left, const RecordBytes& right,
    std::string_view field) {
    const auto bytes = BytesAt(record, left, field);
    return std::equal(bytes.begin(), bytes.end(), BytesAt(record, right, field).begin());
}

std::string FieldText(const RECORD& record, const RecordBytes& bytes, std::string_view field) {
    const FIELD& known = *FindPlace(record, field).value().field;
    const std::span<const std::uint8_t> value = BytesAt(record, bytes, field);
    return known.kind == FIELD_KIND::BYTES ? HexBytes(value) : ValueText(known, value.data());
}

FIELD_KIND FieldKind(const RECORD& record, std::string_view field) {
    return FindPlace(record, field).value().field->kind;
}

std::optional<double> FieldNumber(
    const RECORD& record, const RecordBytes& bytes, std::string_view field) {
    const std::uint8_t* pBytes = BytesAt(record, bytes, field).data();
    switch (FieldKind(record, field)) {
        case FIELD_KIND::UNSIGNED:
        case FIELD_KIND::HEX:
            return NumberAt<std::uint32_t>(pBytes);
        case FIELD_KIND::SIGNED:
            return NumberAt<std::int32_t>(pBytes);
        case FIELD_KIND::DOUBLE:
            return NumberAt<double>(pBytes);
        default:
            return std::nullopt;
    }
}

std::string IndexedName(const FIELD& field) {
    return field.name + (field.count > 1 ? "[0.." + std::to_string(field.count - 1) + "]" : "");
}

std::string FieldNames(const RECORD& record) {
    std::string names;
    for (const FIELD& field : record.fields) {
        names += (names.empty() ? "" : ", ") + IndexedName(field);
    }
    return names;
}
