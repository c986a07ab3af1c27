// One byte of the battery's record, held against the two values that are accepted.
#include "inspection/Battery.h"

#include <array>
#include <ios>

#include "frame/OperationFrame.h"
#include "link/BodyLink.h"

static const std::uint32_t PROP_BATTERY_INFO = 0x8003001d;
static const std::size_t BATTERY_INFO_SIZE = 96;
static const std::size_t BATTERY_STATUS_OFFSET = 22;  // one unsigned byte

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

// The two values that are accepted do not adjoin.
static bool IsAccepted(std::uint32_t unStatus) {
    return unStatus == 0 || unStatus == 2;
}

std::int32_t CheckBatteryStatus(void* /*argument*/) noexcept {
    return RunOperation<CPublicProperty>(
        {s_LogStream, s_byLogBuffer, "CheckBatteryStatus"}, [&](auto& property) {
            std::array<std::uint8_t, BATTERY_INFO_SIZE> byData{};
            property.Get(PROP_BATTERY_INFO, byData.size(), byData.data());
            const std::uint32_t unStatus = byData[BATTERY_STATUS_OFFSET];
            s_LogStream << std::hex;
            BeginLine(s_LogStream) << "[VALU] BatteryStatus - " << unStatus << '\n';
            s_LogStream << std::dec;
            if (!IsAccepted(unStatus)) {
                Fail("[VALU] BatteryType", RESULT_INVALID_CAMERA_VALUE);
            }
        });
}
