// A call that a library makes of another one, answered by a function of the tests.
#pragma once

#include "platform/Platform.h"

/// Replaces one function that a loaded library imports, for as long as this object lives and for
/// this library alone.
class ReplacedImport {
  public:
    /// `Function` is the replacement's type. Throws std::runtime_error if the library is not loaded
    /// or does not import `pszFunction`.
    template <class Function>
    ReplacedImport(const char* pszLibrary, const char* pszFunction, Function* pReplacement)
        : ReplacedImport(pszLibrary, pszFunction, reinterpret_cast<ULONG_PTR>(pReplacement)) {}
    ReplacedImport(const char* pszLibrary, const char* pszFunction, ULONG_PTR replacement);
    ReplacedImport(const ReplacedImport&) = delete;
    ReplacedImport& operator=(const ReplacedImport&) = delete;
    ~ReplacedImport();

  private:
    ULONG_PTR* m_pEntry;
    ULONG_PTR m_Former;
};
