// What a library or program takes from others, and what it offers, told from its file without
// loading it. `bytes` are a whole file that can be anything: what is none of this system takes and
// offers nothing, and what does not fit together ends the list.
#pragma once

#include <set>
#include <string>
#include <string_view>

/// Whether a file that begins so, with four bytes or more, may be one.
bool MayHaveNames(std::string_view start);

/// What it takes from the library of that file name. POSIX systems don't tell from which one a name
/// comes: there it is all that it takes, if that library is among those that it needs.
std::set<std::string> NamesTaken(std::string_view bytes, std::string_view libraryName);

/// What it offers as its own. On POSIX systems not what several may have, since compilers leave the
/// same functions of headers in many libraries.
std::set<std::string> NamesOffered(std::string_view bytes);
