// The body's properties: a working value that Set changes, and a saved one that outlives the power.
#pragma once

#include <cstdint>

namespace SimulatedBody {

/// Refuses an unknown id and any size but the property's own.
void ReadProperty(std::uint32_t id, std::uint32_t size, void* data);
void WriteProperty(std::uint32_t id, std::uint32_t size, const void* data);
/// Copies the working value to the saved one; refuses an unknown id.
void SaveProperty(std::uint32_t id);

/// The body keeps one list at a time; to begin one drops the one before.
void BeginSaveList(std::uint32_t count);
/// Refuses an unknown id and more ids than announced.
void AddToSaveList(std::uint32_t id);
/// Refuses a list with fewer ids than announced, and saves nothing of it.
void SaveWholeList();

/// Gives the user's settings their factory values, saved ones too; adjustment data stays.
void RestoreSettings();

void ResetProperties();

}  // namespace SimulatedBody
