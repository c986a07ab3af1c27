// The camera's memory behind a monitor session: banks of 64 KiB, and the functions that work in
// them.
#pragma once

#include <cstdint>

namespace SimulatedBody {

void RequireBank(std::uint32_t bank);
/// Both refuse what lies outside the bank.
void WriteBank(
    std::uint32_t bank, std::uint32_t address, std::uint32_t size, const std::uint8_t* data);
void ReadBank(std::uint32_t bank, std::uint32_t address, std::uint32_t size, std::uint8_t* data);
/// Runs the bank's function with this number; refuses one that there is not.
void RunBankFunction(std::uint32_t bank, std::uint32_t number);

void ResetMonitor();

}  // namespace SimulatedBody
