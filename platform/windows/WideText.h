// Texts as the system's calls take them, in UTF-16.
#pragma once

#include <string>
#include <string_view>

#include "platform/Platform.h"

/// What is no UTF-8 becomes the replacement character.
inline std::wstring WideText(std::string_view text) {
    const int size = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');  // no text takes more units than it had bytes
    const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), size);
    wide.resize(static_cast<std::size_t>(length));
    return wide;
}
