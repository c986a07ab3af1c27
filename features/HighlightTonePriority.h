// Highlight tone priority: its switch. There is no operation that saves it.
#pragma once

#include <cstdint>

/// Switches the priority off; no argument.
std::int32_t DisableHighlightTonePriority(void* argument) noexcept;
/// Switches the priority on; no argument.
std::int32_t EnableHighlightTonePriority(void* argument) noexcept;
