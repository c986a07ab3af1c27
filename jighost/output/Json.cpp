// Records as JSON, and the form of all documents.
#include "jighost/output/Json.h"

#include "trace/Hex.h"

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

std::string JsonText(const Json& json) {
    return json.dump(2, ' ', false, Json::error_handler_t::replace);
}

void WriteJson(std::ostream& out, const Json& json) {
    out << JsonText(json) << '\n';
}
