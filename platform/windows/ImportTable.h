// What a Windows library imports from, told without loading it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/windows/Image.h"

struct IMPORTED_LIBRARY {
    std::string name;
    std::size_t place;  ///< of its entry in the table
};

/// In the order of the file.
std::vector<IMPORTED_LIBRARY> ImportsOf(const Image& image);

/// Their names alone. `bytes` are a whole file that can be
/// anything: what does not fit together ends the list.
std::vector<std::string> ImportedLibraries(std::string_view bytes);
