// DL resonant frequency: one value that lives in a range of EEPROM words, in a camera property and
// in a word of the camera's memory. "BoardInf.ini" says where the range lies.
#pragma once

#include <cstdint>

#include "frame/Registration.h"

/// Moves the value from the EEPROM into property and memory, unsaved; no argument. A failure of
/// one of the two steps is passed on.
std::int32_t CopyDLResonantFrequency(void* argument) noexcept;
/// Takes an unsigned 32-bit integer: all of it for the property, its low 16 bits, high byte first,
/// for the memory. A failure of the memory leaves the property set.
std::int32_t SetDLResonantFrequency(void* argument) noexcept;
/// Takes two unsigned 32-bit integers and fills the second with the property; the first stays.
std::int32_t GetDLResonantFrequency(void* argument) noexcept;
/// Saves the property in the camera; no argument.
std::int32_t SaveDLResonantFrequency(void* argument) noexcept;
/// Fills an unsigned 32-bit integer: the first word of the range is its low half, the second its
/// high half. Code 1 for a key that the file does not have, 35 for a size below 4 or
/// above 65536.
std::int32_t GetBoardInfDLResonantFrequency(void* argument) noexcept;
/// Takes as many bytes as the file's "Size" says and writes them to the range, two to a word, high
/// byte first; an odd last byte goes nowhere. Code 1 for a key that the file does not have, 35 for
/// a size below 0 or above 65536; a word that the camera refuses ends it with the camera's answer,
/// and the words before it stay written.
std::int32_t SetBoardInfDLResonantFrequency(void* argument) noexcept;

void RegisterDLResonantFrequency(EVENT_PROC_REGISTER_FUNC callback);
