// What a Windows library imports from, told without loading it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The names of the libraries, in the order of the file. `bytes` are a whole file that can be
/// anything: what does not fit together ends the list.
std::vector<std::string> ImportedLibraries(std::string_view bytes);
