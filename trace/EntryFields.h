// What an entry may tell.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

/// First what is looked at in most entries, as near as can be in the order of their writers; the
/// last ones are those of a first line.
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
    NUMBER,
    LOG,
    LOG_LEFT_OUT,
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

constexpr auto FIELD_COUNT = static_cast<std::size_t>(FIELD_ID::COUNT);

/// As they stand ahead of their values.
constexpr std::array<std::string_view, FIELD_COUNT> FIELD_KEYS = {
    R"("entry":)",
    R"("operation":)",
    R"("call":)",
    R"("function":)",
    R"("name":)",
    R"("id":)",
    R"("result":)",
    R"("record":)",
    R"("time_ms":)",
    R"("thread":)",
    R"("at":)",
    R"("value":)",
    R"("from_list":)",
    R"("sent":)",
    R"("received":)",
    R"("size_left":)",
    R"("failure":)",
    R"("kind":)",
    R"("code":)",
    R"("message":)",
    R"("line":)",
    R"("interleaved":)",
    R"("number":)",
    R"("log":)",
    R"("log_left_out":)",
    R"("entries":)",
    R"("why":)",
    R"("format":)",
    R"("content":)",
    R"("started":)",
    R"("machine":)",
    R"("process":)",
    R"("program":)",
    R"("continues":)",
    R"("operations_before":)",
};
static_assert(!FIELD_KEYS.back().empty());

/// Without quotes and colon.
constexpr std::string_view FieldName(std::size_t field) {
    return FIELD_KEYS[field].substr(1, FIELD_KEYS[field].size() - 3);
}
