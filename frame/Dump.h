// Shows bytes that came from the camera: as a file, or as a table in the log.
#pragma once

#include <cstdint>
#include <string>

/// Writes `*pSize` bytes to the file `name`, whose earlier content is lost. Gives a result code: 3
/// for a null `pData`, 1 for a file that can't be opened; what comes of the writing is not tested.
std::int32_t DebugWriteDumpMemory(
    const std::string& name, const std::uint8_t* pData, const std::uint32_t* pSize) noexcept;

/// Prints `*pSize` bytes to the log, 16 to a row; none if the count is above 0x7FFFFFFF. The
/// pointers are the caller's to keep valid. What the camera link throws passes on.
void DebugPrintDumpMemory(const std::uint8_t* pData, const std::uint32_t* pSize);
