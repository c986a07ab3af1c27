// What libc++ expects of the other compiler's run-time headers and those of MinGW-w64 do not have.
// Included ahead of everything where clang-cl stands in for that compiler.
#pragma once

#include <math.h>
#include <stdlib.h>

extern "C" float _strtof_l(const char*, char**, _locale_t);
extern "C" long double _strtold_l(const char*, char**, _locale_t);
using std::__math::isfinite;
using std::__math::isinf;
using std::__math::isnan;
