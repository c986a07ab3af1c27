// The words of the table for each of its values.
#include "jighost/operations/OperationText.h"

const char* UseText(RECORD_USE use) {
    switch (use) {
        case RECORD_USE::IN:
            return "in";
        case RECORD_USE::OUT:
            return "out";
        case RECORD_USE::IN_OUT:
            return "in and out";
        case RECORD_USE::NONE:
            break;
    }
    return "-";
}

std::string SizeText(const RECORD& record) {
    return (record.bAnyLength ? "up to " : "") + std::to_string(record.size) + " bytes";
}

std::string WidthText(const FIELD& field) {
    return (field.count > 1 ? std::to_string(field.count) + " x " : "") +
           std::to_string(field.width);
}

const char* TypeText(FIELD_KIND kind) {
    switch (kind) {
        case FIELD_KIND::UNSIGNED:
        case FIELD_KIND::HEX:
            return "unsigned 32 bits";
        case FIELD_KIND::SIGNED:
            return "signed 32 bits";
        case FIELD_KIND::DOUBLE:
            return "64-bit floating point";
        case FIELD_KIND::TEXT:
            return "characters";
        case FIELD_KIND::BYTES:
            return "bytes";
    }
    return "";
}
