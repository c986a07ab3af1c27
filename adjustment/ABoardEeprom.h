// The EEPROM on the camera's A board: 128 words of 16 bits, read and written one by one.
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/Registration.h"

class CEventProcedure;

constexpr std::uint32_t ABOARD_EEPROM_WORDS = 128;

/// A range of EEPROM words, host byte order. `Count` is 1 to 128, `Address` 0 to 127, and the range
/// ends within the EEPROM.
struct ABOARD_EEPROM_DATA_T {
    std::uint32_t Data[ABOARD_EEPROM_WORDS];  ///< slot n is word n, whatever the range
    std::uint32_t Address;                    ///< first word of the range
    std::uint32_t Count;                      ///< words in the range
};
static_assert(sizeof(ABOARD_EEPROM_DATA_T) == 520);
static_assert(offsetof(ABOARD_EEPROM_DATA_T, Data) == 0);
static_assert(offsetof(ABOARD_EEPROM_DATA_T, Address) == 512);
static_assert(offsetof(ABOARD_EEPROM_DATA_T, Count) == 516);

/// Prints all words to the log; no argument.
std::int32_t DebugPrintABoardEepromData(void* argument) noexcept;
/// Reads a range into the slots of an ABOARD_EEPROM_DATA_T, the camera's 32-bit answers in full;
/// other slots stay. Code 3 for a bad range. On a failure midway the slots read so far are filled.
std::int32_t GetABoardEepromData(void* argument) noexcept;
/// Writes a range from the slots of an ABOARD_EEPROM_DATA_T. Code 3 for a bad range; a refusal by
/// the camera is not noticed. On a failure midway the words written so far stay written.
std::int32_t SetABoardEepromData(void* argument) noexcept;

void RegisterABoardEeprom(EVENT_PROC_REGISTER_FUNC callback);

/// Reads the word at `address`, which is the camera's to test.
std::uint32_t ReadEepromWord(CEventProcedure& procedure, std::uint32_t address);
/// Writes the word at `address`, which is the camera's to test, and gives the event's result word.
std::int32_t WriteEepromWord(
    CEventProcedure& procedure, std::uint32_t address, std::uint32_t value);
