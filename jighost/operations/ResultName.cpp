// The names of the result codes.
#include "jighost/operations/ResultName.h"

#include "frame/Result.h"
#include "jighost/text/Numbers.h"

struct NAMED_RESULT {
    RESULT result;
    const char* name;
};

static constexpr NAMED_RESULT RESULTS[] = {
    {RESULT_SUCCESS, "RESULT_SUCCESS"},
    {RESULT_SYSTEM_ERROR, "RESULT_SYSTEM_ERROR"},
    {RESULT_INVALID_PARAMETER, "RESULT_INVALID_PARAMETER"},
    {RESULT_OUT_OF_MEMORY, "RESULT_OUT_OF_MEMORY"},
    {RESULT_RUNTIME_ERROR, "RESULT_RUNTIME_ERROR"},
    {RESULT_NOT_FOUND, "RESULT_NOT_FOUND"},
    {RESULT_UNEXPECTED_EXCEPTION, "RESULT_UNEXPECTED_EXCEPTION"},
    {RESULT_INVALID_CAMERA_VALUE, "RESULT_INVALID_CAMERA_VALUE"},
};

std::string ResultName(std::int32_t result) {
    for (const NAMED_RESULT& named : RESULTS) {
        if (named.result == result) {
            return named.name;
        }
    }
    return "event or link code";
}

std::string ResultText(std::int32_t result) {
    return ResultName(result) + " (" + std::to_string(result) + ")";
}

std::optional<std::int32_t> ParseResult(const std::string& text) {
    for (const NAMED_RESULT& named : RESULTS) {
        if (named.name == text) {
            return named.result;
        }
    }
    return ParseNumber<std::int32_t>(text);
}

std::vector<std::string> ResultNames() {
    std::vector<std::string> names;
    for (const NAMED_RESULT& named : RESULTS) {
        names.emplace_back(named.name);
    }
    return names;
}
