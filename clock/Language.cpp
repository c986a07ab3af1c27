// Two settings of one shape.
#include "clock/Language.h"

#include "frame/OperationShapes.h"

// Both go by one name in messages.
static const PROPERTY PROP_LANGUAGE = {0x2040002, 4, "pLanguage"};
static const PROPERTY PROP_LIMIT_LANGUAGE = {0x1000012, 4, "pLanguage"};

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

std::int32_t SetLanguage(void* argument) noexcept {
    return WriteProperty({s_LogStream, s_byLogBuffer, "SetLanguage"}, PROP_LANGUAGE, argument);
}

std::int32_t GetLanguage(void* argument) noexcept {
    return ReadProperty({s_LogStream, s_byLogBuffer, "GetLanguage"}, PROP_LANGUAGE, argument);
}

std::int32_t SaveLanguage(void* /*argument*/) noexcept {
    return SaveProperty({s_LogStream, s_byLogBuffer, "SaveLanguage"}, PROP_LANGUAGE.id);
}

std::int32_t SetLimitLanguage(void* argument) noexcept {
    return WriteProperty(
        {s_LogStream, s_byLogBuffer, "SetLimitLanguage"}, PROP_LIMIT_LANGUAGE, argument);
}

std::int32_t GetLimitLanguage(void* argument) noexcept {
    return ReadProperty(
        {s_LogStream, s_byLogBuffer, "GetLimitLanguage"}, PROP_LIMIT_LANGUAGE, argument);
}

std::int32_t SaveLimitLanguage(void* /*argument*/) noexcept {
    return SaveProperty({s_LogStream, s_byLogBuffer, "SaveLimitLanguage"}, PROP_LIMIT_LANGUAGE.id);
}

void RegisterLanguage(EVENT_PROC_REGISTER_FUNC callback) {
    static const REGISTRATION registrations[] = {
        {"SetLanguage", SetLanguage},           {"GetLanguage", GetLanguage},
        {"SaveLanguage", SaveLanguage},         {"SetLimitLanguage", SetLimitLanguage},
        {"GetLimitLanguage", GetLimitLanguage}, {"SaveLimitLanguage", SaveLimitLanguage},
    };
    RegisterEventProcs(callback, registrations);
}
