// Bytes in four characters for each three of them, as large blocks stand in traces.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Appends the bytes, padded with '=' to a multiple of four characters.
void AppendBase64(std::string& text, std::span<const std::uint8_t> bytes);

/// Nothing if the text is no such bytes.
std::optional<std::vector<std::uint8_t>> ParseBase64(std::string_view text);
