// Texts are UTF-8 in the whole project; on Windows the standard library takes those for a path in
// another encoding.
#pragma once

#include <filesystem>
#include <string>

/// The path that people write so.
inline std::filesystem::path PathOf(const std::string& text) {
#ifdef _WIN32
    return std::u8string(text.begin(), text.end());
#else
    return text;
#endif
}

/// The text that people write for it.
inline std::string TextOf(const std::filesystem::path& path) {
#ifdef _WIN32
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
#else
    return path.string();
#endif
}
