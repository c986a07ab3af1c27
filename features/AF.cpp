// One byte of the AF record changed, the others written back as they were read.
#include "features/AF.h"

#include <array>

#include "frame/OperationFrame.h"
#include "link/BodyLink.h"

static const std::uint32_t PROP_AF_SETTING = 0x80010007;
static const std::size_t AF_SETTING_SIZE = 84;
// The one byte of the record that is ours; 1 is off.
static const std::size_t AF_SWITCH_OFFSET = 10;
static const std::uint8_t AF_DISABLED = 1;
static const std::uint8_t AF_ENABLED = 0;

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

// The other bytes of the record go back as they were read.
static std::int32_t SwitchAF(std::string_view logName, std::uint8_t bySwitch) noexcept {
    return RunOperation<CPublicProperty>(
        {s_LogStream, s_byLogBuffer, logName}, [&](auto& property) {
            std::array<std::uint8_t, AF_SETTING_SIZE> byData{};
            property.Get(PROP_AF_SETTING, byData.size(), byData.data());
            byData[AF_SWITCH_OFFSET] = bySwitch;
            property.Set(PROP_AF_SETTING, byData.size(), byData.data());
        });
}

std::int32_t DisableAF(void* /*argument*/) noexcept {
    return SwitchAF("DisableAF", AF_DISABLED);
}

std::int32_t EnableAF(void* /*argument*/) noexcept {
    return SwitchAF("EnableAF", AF_ENABLED);
}

void RegisterAF(EVENT_PROC_REGISTER_FUNC callback) {
    // Hosts ask for either spelling.
    static const REGISTRATION registrations[] = {
        {"DisableAF", DisableAF},
        {"DisableAf", DisableAF},
        {"EnableAF", EnableAF},
        {"EnableAf", EnableAF},
    };
    RegisterEventProcs(callback, registrations);
}
