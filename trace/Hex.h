// Bytes as hexadecimal digits, as traces and people have them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Hexadecimal digits, two for each byte, blanks allowed; nothing if the text is something else.
std::optional<std::vector<std::uint8_t>> ParseHex(std::string_view text);

/// Bytes as "b5 0d 00".
std::string HexBytes(std::span<const std::uint8_t> bytes);
void AppendHex(std::string& text, std::span<const std::uint8_t> bytes);
