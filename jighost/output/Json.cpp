// Records as JSON, and the form of all documents.
#include "jighost/output/Json.h"

#include <algorithm>

#include "jighost/operations/ResultName.h"
#include "jighost/text/Numbers.h"
#include "jighost/text/PlainText.h"
#include "trace/Hex.h"
#include "trace/Utf8.h"

static Json ElementJson(const FIELD& field, const std::uint8_t* pBytes) {
    switch (field.kind) {
        case FIELD_KIND::UNSIGNED:
        case FIELD_KIND::HEX:
            return NumberAt<std::uint32_t>(pBytes);
        case FIELD_KIND::SIGNED:
            return NumberAt<std::int32_t>(pBytes);
        case FIELD_KIND::DOUBLE:
            return NumberAt<double>(pBytes);
        case FIELD_KIND::TEXT:
            return RecordText({pBytes, field.width});
        case FIELD_KIND::BYTES:
            return HexBytes({pBytes, field.width});
    }
    return nullptr;
}

Json RecordJson(const RECORD& record, const RecordBytes& bytes) {
    Json json = Json::object();
    for (const FIELD& field : record.fields) {
        const std::uint8_t* pField = bytes.data() + field.offset;
        if (field.count == 1) {
            json[field.name] = ElementJson(field, pField);
            continue;
        }
        for (std::size_t i = 0; i < field.count; ++i) {
            json[field.name].push_back(ElementJson(field, pField + i * field.width));
        }
    }
    return json;
}

Json ResultJson(std::optional<std::int32_t> result) {
    if (!result) {
        return {{"result", nullptr}, {"result_name", nullptr}};
    }
    return {{"result", *result}, {"result_name", ResultName(*result)}};
}

/// As JSON has it: in two halves if it does not fit into 16 bits.
static void AppendEscape(std::string& out, char32_t code) {
    if (code > 0xFFFF) {
        AppendEscape(out, 0xD800 + ((code - 0x10000) >> 10U));
        AppendEscape(out, 0xDC00 + (code & 0x3FFU));
        return;
    }
    out.append("\\u").append(HexText(code, 4));
}

static void AppendCharacter(std::string& out, std::string_view bytes, char32_t code) {
    if (IsHarmful(code)) {
        AppendEscape(out, code);
    } else {
        out.append(bytes);
    }
}

/// The library has escaped all below 0x20; what is left of them are the ends of lines.
static bool MayBeHarmful(char character) {
    return static_cast<unsigned char>(character) >= 0x7F;
}

std::string JsonText(const Json& json, int indent) {
    const std::string text = json.dump(indent, ' ', false, Json::error_handler_t::replace);
    std::string harmless;
    for (std::string_view rest = text; !rest.empty();) {
        const auto found = std::find_if(rest.begin(), rest.end(), MayBeHarmful);
        harmless.append(rest.begin(), found);
        rest.remove_prefix(static_cast<std::size_t>(found - rest.begin()));
        if (!rest.empty()) {
            const UTF8_CHARACTER character = FirstCharacter(rest);
            const std::size_t length = std::max<std::size_t>(character.length, 1);
            AppendCharacter(harmless, rest.substr(0, length), character.code);
            rest.remove_prefix(length);
        }
    }
    return harmless;
}

void WriteJson(std::ostream& out, const Json& json) {
    out << JsonText(json) << '\n';
}
