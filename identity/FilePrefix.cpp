// The prefix computed from the body's serial number, and its property.
#include "identity/FilePrefix.h"

#include "frame/OperationFrame.h"
#include "frame/OperationShapes.h"
#include "identity/BodyID.h"
#include "link/BodyLink.h"

static const PROPERTY PROP_FILE_PREFIX = {0x1000007, FILE_PREFIX_SIZE, "pFilePrefix"};

static const char DEFAULT_FILE_PREFIX[FILE_PREFIX_SIZE] = "IMG_";

static const char ALPHANUMERIC[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
static const char DIGITS[] = "0123456789";
static const char LETTERS[] = "ABCDEFGH";

// Serial numbers after which each character steps on. The slowest one stands last: characters
// 0 to 3 step every 360, 10, 1 and 12960 serial numbers.
static const std::uint32_t CHARACTER_1_STEP = 10;
static const std::uint32_t CHARACTER_0_STEP = 360;
static const std::uint32_t CHARACTER_3_STEP = 12'960;
static const std::uint32_t SERIAL_NO_LIMIT = 103'680;
static_assert(CHARACTER_1_STEP == sizeof(DIGITS) - 1);
static_assert(CHARACTER_0_STEP == CHARACTER_1_STEP * (sizeof(ALPHANUMERIC) - 1));
static_assert(CHARACTER_3_STEP == CHARACTER_0_STEP * (sizeof(ALPHANUMERIC) - 1));
static_assert(SERIAL_NO_LIMIT == CHARACTER_3_STEP * (sizeof(LETTERS) - 1));

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

static void WriteBodyID(const BODY_ID_T& bodyID) {
    BeginLine(s_LogStream) << "[VALU] BodyID.ManufactureMonth - " << bodyID.ManufactureMonth
                           << '\n';
    BeginLine(s_LogStream) << "[VALU] BodyID.SerialNo         - " << bodyID.SerialNo << '\n';
    FlushLog(s_LogStream, s_byLogBuffer);
}

// The serial number is below SERIAL_NO_LIMIT.
static void ComputeFilePrefix(std::uint32_t serialNo, char (&szFilePrefix)[FILE_PREFIX_SIZE]) {
    szFilePrefix[0] = ALPHANUMERIC[serialNo % CHARACTER_3_STEP / CHARACTER_0_STEP];
    szFilePrefix[1] = ALPHANUMERIC[serialNo % CHARACTER_0_STEP / CHARACTER_1_STEP];
    szFilePrefix[2] = DIGITS[serialNo % CHARACTER_1_STEP];
    szFilePrefix[3] = LETTERS[serialNo / CHARACTER_3_STEP];
}

std::int32_t SetFilePrefix(void* /*argument*/) noexcept {
    return RunOperation<CPublicProperty>(
        {s_LogStream, s_byLogBuffer, "SetFilePrefix"}, [](auto& property) {
            BODY_ID_T bodyID{};
            CheckNested(GetBodyID(&bodyID), "GetBodyID");
            WriteBodyID(bodyID);
            if (bodyID.SerialNo >= SERIAL_NO_LIMIT) {
                Fail("[VALU] BodyID.SerialNo", RESULT_INVALID_CAMERA_VALUE);
            }
            char szFilePrefix[FILE_PREFIX_SIZE] = {};
            ComputeFilePrefix(bodyID.SerialNo, szFilePrefix);
            BeginLine(s_LogStream) << "[VALU] szFilePrefix - " << szFilePrefix << '\n';
            property.Set(PROP_FILE_PREFIX.id, PROP_FILE_PREFIX.size, szFilePrefix);
        });
}

std::int32_t GetFilePrefix(void* argument) noexcept {
    return ReadProperty({s_LogStream, s_byLogBuffer, "GetFilePrefix"}, PROP_FILE_PREFIX, argument);
}

std::int32_t SaveFilePrefix(void* /*argument*/) noexcept {
    return SaveProperty({s_LogStream, s_byLogBuffer, "SaveFilePrefix"}, PROP_FILE_PREFIX.id);
}

std::int32_t SetDefaultFilePrefix(void* /*argument*/) noexcept {
    return WriteFixedValue(
        {s_LogStream, s_byLogBuffer, "SetDefaultFilePrefix"}, PROP_FILE_PREFIX.id,
        PROP_FILE_PREFIX.size, DEFAULT_FILE_PREFIX);
}

void RegisterFilePrefix(EVENT_PROC_REGISTER_FUNC callback) {
    static const REGISTRATION registrations[] = {
        {"SetFilePrefix", SetFilePrefix},
        {"GetFilePrefix", GetFilePrefix},
        {"SaveFilePrefix", SaveFilePrefix},
        {"SetDefaultFilePrefix", SetDefaultFilePrefix},
    };
    RegisterEventProcs(callback, registrations);
}
