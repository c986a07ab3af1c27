// Calls of the camera link for people, large blocks shortened.
#pragma once

#include <span>
#include <string>

#include "bodylnk/SimulatedBody.h"

/// Such as "Set 0x1000007 4: 30 41 42 30", "Execute EnablePowerSave 0" or, with the parameter list,
/// "Execute FA_WriteEepromData (list)".
std::string RequestText(const Link::CALL& call);

/// What came back, such as "b5 0d 00 00", "result 0" or "failed: [EVNT] Link failure (0x2001)";
/// "done" if the call has nothing to give.
std::string AnswerText(const Link::CALL& call);

/// What a constructor or `_gt` threw, such as "construction 2, CFilePath -> failed: integer 7" or
/// "_gt 3 -> failed: [EVNT] Link failure (0x2001)".
std::string ThrowText(const Link::THROW& thrown);

/// Whether it threw, or the event in the camera answered with a failure.
bool IsFailedCall(const Link::CALL& call);

/// Bytes as "b5 0d 00", of many only the first ones and their number.
std::string ShortBytes(std::span<const std::uint8_t> bytes);
