// Paths as the project writes them, made fit for the system's calls.
#pragma once

#include <climits>

/// Copies the path with each backslash as a slash; false if it does not fit.
bool ToNativePath(const char* pszPath, char (&szNative)[PATH_MAX]) noexcept;
