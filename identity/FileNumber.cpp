// The number's first value written, or the number saved.
#include "identity/FileNumber.h"

#include "frame/OperationShapes.h"

static const std::uint32_t PROP_FILE_NUMBER = 0x2040008;
static const std::uint32_t FIRST_FILE_NUMBER = 0;

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

std::int32_t ResetFileNumber(void* /*argument*/) noexcept {
    return WriteFixedValue(
        {s_LogStream, s_byLogBuffer, "ResetFileNumber"}, PROP_FILE_NUMBER,
        sizeof(FIRST_FILE_NUMBER), &FIRST_FILE_NUMBER);
}

std::int32_t SaveFileNumber(void* /*argument*/) noexcept {
    return SaveProperty({s_LogStream, s_byLogBuffer, "SaveFileNumber"}, PROP_FILE_NUMBER);
}
