// Firmware versions of the camera's parts, and the ICU's checksum: bytes handed on as they stand.
#pragma once

#include <cstdint>

#include "frame/Registration.h"

/// Bytes of a version block.
constexpr std::uint32_t VERSION_BLOCK_SIZE = 36;
/// Bytes of a small version, whose first byte is the version; the others mean nothing.
constexpr std::uint32_t SMALL_VERSION_SIZE = 4;

/// Fills VERSION_BLOCK_SIZE bytes; a failure may leave them partly written.
std::int32_t GetIcuFirmwareVersion(void* argument) noexcept;
/// Fills SMALL_VERSION_SIZE bytes.
std::int32_t GetMpuFirmwareVersion(void* argument) noexcept;
/// Fills an unsigned 32-bit integer, host byte order.
std::int32_t GetIcuCheckSum(void* argument) noexcept;
/// Each fills VERSION_BLOCK_SIZE bytes; a failure may leave them partly written.
std::int32_t GetIcuMasterVersion(void* argument) noexcept;
std::int32_t GetIcuSlaveVersion(void* argument) noexcept;
/// Each fills SMALL_VERSION_SIZE bytes.
std::int32_t GetFpuVersion(void* argument) noexcept;
std::int32_t GetTpuVersion(void* argument) noexcept;
std::int32_t GetBpVersion(void* argument) noexcept;
std::int32_t GetEepromVersion(void* argument) noexcept;

void RegisterFirmwareVersion(EVENT_PROC_REGISTER_FUNC callback);
