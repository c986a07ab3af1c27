// Machine cell tests: special menu, dial, Acc and external strobe tests, sound. The tests run and
// their results live in the camera.
#pragma once

#include <cstdint>

#include "frame/Registration.h"

/// Bytes of the result tables, laid out by the camera.
constexpr std::int32_t DISP_DIAL_RESULT_TABLE_SIZE = 128;
constexpr std::int32_t ACC_TEST_RESULT_TABLE_SIZE = 96;

// Without an argument; what the event itself reports is not looked at.
std::int32_t ClearMachineCellResult(void* argument) noexcept;
std::int32_t EnterMachineCellSpecialMenu(void* argument) noexcept;
std::int32_t ExitMachineCellSpecialMenu(void* argument) noexcept;
std::int32_t IncreaseMachineCellDialClickGap(void* argument) noexcept;
/// Runs the same event as its twin: the camera shows no other.
std::int32_t DecreaseMachineCellDialClickGap(void* argument) noexcept;
/// Starts the Acc test; serves two names.
std::int32_t EnterMachineCellAccTest(void* argument) noexcept;
std::int32_t ExecuteMachineCellExternalStrobeTest(void* argument) noexcept;
std::int32_t SendMachineCellSetButton(void* argument) noexcept;

/// Writes a signed 32-bit integer as the DispDial result. The pointer is not tested, nor is what
/// the event itself reports.
std::int32_t OverwriteMachineCellDispDialResult(void* argument) noexcept;

// Fill the host's block with what the event gives. The block has the size of the name that the
// operation was called under: a 32-bit integer, or a table.
std::int32_t GetMachineCellDispDialResult(void* argument) noexcept;
std::int32_t GetMachineCellAccTestResult(void* argument) noexcept;
std::int32_t GetMachineCellSDialTestResult(void* argument) noexcept;

/// Sets the volume from a signed 32-bit integer. The pointer is not tested. Fails with the event's
/// result word.
std::int32_t SetSoundVolume(void* argument) noexcept;

void RegisterMachineCell(EVENT_PROC_REGISTER_FUNC callback);
