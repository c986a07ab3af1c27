// The Windows and run-time calls that the project uses, under their own names: on Windows the
// system's headers, elsewhere the small layer in posix/.
#pragma once

#ifdef _WIN32
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#include <windows.h>

#include <cstdlib>
#include <cstring>
// Empty marks of old parameter lists, and names of drawing modes and of one form of a call; here
// they are names.
#undef IN
#undef OUT
#undef DIFFERENCE
#undef ReplaceFile
#else
#include "platform/posix/WindowsCalls.h"
#endif
