// Versions read from the properties of the parts, and the checksum that an event works out.
#include "adjustment/FirmwareVersion.h"

#include <cstring>

#include "frame/Dump.h"
#include "frame/OperationFrame.h"
#include "link/BodyLink.h"

static const std::uint32_t PROP_ICU_VERSION = 0x2000001;
static const std::uint32_t PROP_ICU_SLAVE_VERSION = 0x2000005;
static const std::uint32_t PROP_ICU_MASTER_VERSION = 0x2000007;
static const std::uint32_t PROP_MPU_VERSION = 0x80030000;

// The block with the versions of the other parts, and the byte of each.
static const std::uint32_t PROP_PARTS_VERSION = 0x2000006;
static const std::size_t EEPROM_OFFSET = 4;
static const std::size_t FPU_OFFSET = 6;
static const std::size_t BP_OFFSET = 9;
static const std::size_t TPU_OFFSET = 10;
static_assert(TPU_OFFSET + SMALL_VERSION_SIZE <= VERSION_BLOCK_SIZE);

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

namespace {

/// How the log shows a small version: a heading line, then the version behind a label.
struct VERSION_LINES {
    const char* pszHeading;
    const char* pszLabel;
};

std::int32_t GetVersionBlock(std::string_view logName, std::uint32_t id, void* argument) noexcept {
    return RunOperation<CPublicProperty>(
        {s_LogStream, s_byLogBuffer, logName}, [&](auto& property) {
            auto* pFirmVersion = static_cast<std::uint8_t*>(argument);
            CheckPointer(pFirmVersion, "pFirmVersion");
            property.Get(id, VERSION_BLOCK_SIZE, pFirmVersion);
            DebugPrintDumpMemory(pFirmVersion, &VERSION_BLOCK_SIZE);
        });
}

void DeliverSmallVersion(
    const VERSION_LINES& lines, const std::uint8_t* pbyVersion, void* pFirmVersion) {
    s_LogStream << std::hex;
    BeginLine(s_LogStream) << lines.pszHeading << '\n';
    BeginLine(s_LogStream) << lines.pszLabel << unsigned{pbyVersion[0]} << '\n';
    s_LogStream << std::dec;
    std::memcpy(pFirmVersion, pbyVersion, SMALL_VERSION_SIZE);
}

// The value reaches over the versions behind its own: the host looks at its first byte only.
std::int32_t GetPartVersion(
    std::string_view logName, std::size_t offset, const VERSION_LINES& lines,
    void* argument) noexcept {
    return RunOperation<CPublicProperty>(
        {s_LogStream, s_byLogBuffer, logName}, [&](auto& property) {
            CheckPointer(argument, "pFirmVersion");
            std::uint8_t byBlock[VERSION_BLOCK_SIZE] = {};
            property.Get(PROP_PARTS_VERSION, VERSION_BLOCK_SIZE, byBlock);
            DeliverSmallVersion(lines, byBlock + offset, argument);
        });
}

}  // namespace

std::int32_t GetIcuFirmwareVersion(void* argument) noexcept {
    return GetVersionBlock("GetIcuFirmwareVersion", PROP_ICU_VERSION, argument);
}

std::int32_t GetMpuFirmwareVersion(void* argument) noexcept {
    return RunOperation<CPublicProperty>(
        {s_LogStream, s_byLogBuffer, "GetMpuFirmwareVersion"}, [&](auto& property) {
            CheckPointer(argument, "pFirmVersion");
            std::uint8_t byVersion[SMALL_VERSION_SIZE] = {};
            property.Get(PROP_MPU_VERSION, SMALL_VERSION_SIZE, byVersion);
            DeliverSmallVersion(
                {"[VALU] MPU FirmVersion", "[VALU]    .MPU - "}, byVersion, argument);
        });
}

std::int32_t GetIcuCheckSum(void* argument) noexcept {
    return RunOperation<CEventProcedure>(
        {s_LogStream, s_byLogBuffer, "GetIcuCheckSum"}, [&](auto& procedure) {
            auto* pIcuCheckSum = static_cast<std::uint32_t*>(argument);
            CheckPointer(pIcuCheckSum, "pIcuCheckSum");
            // The result word is the checksum: bit 0 is no failure.
            std::int32_t nCheckSum = 0;
            procedure.Execute("FA_GetIcuCheckSum", 0, &nCheckSum);
            *pIcuCheckSum = static_cast<std::uint32_t>(nCheckSum);
        });
}

std::int32_t GetIcuMasterVersion(void* argument) noexcept {
    return GetVersionBlock("GetIcuMasterFirmwareVersion", PROP_ICU_MASTER_VERSION, argument);
}

std::int32_t GetIcuSlaveVersion(void* argument) noexcept {
    return GetVersionBlock("GetIcuSlaveFirmwareVersion", PROP_ICU_SLAVE_VERSION, argument);
}

std::int32_t GetFpuVersion(void* argument) noexcept {
    return GetPartVersion(
        "GetFpuFirmwareVersion", FPU_OFFSET, {"[VALU] FPU FirmVersion", "[VALU]    .FPU - "},
        argument);
}

std::int32_t GetTpuVersion(void* argument) noexcept {
    return GetPartVersion(
        "GetTpuFirmwareVersion", TPU_OFFSET, {"[VALU] TPU FirmVersion", "[VALU]    .TPU - "},
        argument);
}

std::int32_t GetBpVersion(void* argument) noexcept {
    return GetPartVersion(
        "GetBpFirmwareVersion", BP_OFFSET, {"[VALU] BP(S-FROM) Version", "[VALU]    .BP - "},
        argument);
}

std::int32_t GetEepromVersion(void* argument) noexcept {
    return GetPartVersion(
        "GetEepromFirmwareVersion", EEPROM_OFFSET,
        {"[VALU] EEPROM Version", "[VALU]    .EEPROM - "}, argument);
}

void RegisterFirmwareVersion(EVENT_PROC_REGISTER_FUNC callback) {
    static const REGISTRATION registrations[] = {
        {"GetIcuFirmwareVersion", GetIcuFirmwareVersion},
        {"GetMpuFirmwareVersion", GetMpuFirmwareVersion},
        {"GetIcuCheckSum", GetIcuCheckSum},
        {"GetIcuMasterVersion", GetIcuMasterVersion},
        {"GetIcuSlaveVersion", GetIcuSlaveVersion},
        {"GetFpuVersion", GetFpuVersion},
        {"GetTpuVersion", GetTpuVersion},
        {"GetBpVersion", GetBpVersion},
        {"GetEepromVersion", GetEepromVersion},
    };
    RegisterEventProcs(callback, registrations);
}
