// The import table of a loaded library, by the system's description of its file format.
#include "tests/support/windows/ReplacedImport.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace {

class LoadedImage {
  public:
    explicit LoadedImage(HMODULE library) : m_pBase(reinterpret_cast<unsigned char*>(library)) {}

    /// The place of the function's address; null if the library does not import it by this name.
    ULONG_PTR* FindImport(std::string_view function) const {
        const auto* pHeaders =
            At<IMAGE_NT_HEADERS>(static_cast<DWORD>(At<IMAGE_DOS_HEADER>(0)->e_lfanew));
        const IMAGE_DATA_DIRECTORY& imports =
            pHeaders->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
        auto* pSource = At<IMAGE_IMPORT_DESCRIPTOR>(imports.VirtualAddress);
        ULONG_PTR* pFound = nullptr;
        for (; pSource->Name != 0 && pFound == nullptr; ++pSource) {
            pFound = FindImport(*pSource, function);
        }
        return pFound;
    }

  private:
    template <class Type>
    Type* At(ULONG_PTR offset) const {
        return reinterpret_cast<Type*>(m_pBase + offset);
    }

    ULONG_PTR* FindImport(const IMAGE_IMPORT_DESCRIPTOR& source, std::string_view function) const {
        const auto* pName = At<IMAGE_THUNK_DATA>(source.OriginalFirstThunk);
        auto* pAddress = At<IMAGE_THUNK_DATA>(source.FirstThunk);
        for (; pName->u1.AddressOfData != 0; ++pName, ++pAddress) {
            if (!IMAGE_SNAP_BY_ORDINAL(pName->u1.Ordinal) &&
                function == At<IMAGE_IMPORT_BY_NAME>(pName->u1.AddressOfData)->Name) {
                return &pAddress->u1.Function;
            }
        }
        return nullptr;
    }

    unsigned char* m_pBase;
};

/// The table may lie in memory that is for reading alone.
void Write(ULONG_PTR* pEntry, ULONG_PTR value) {
    DWORD protection = 0;
    VirtualProtect(pEntry, sizeof *pEntry, PAGE_READWRITE, &protection);
    *pEntry = value;
    VirtualProtect(pEntry, sizeof *pEntry, protection, &protection);
}

ULONG_PTR* FindEntry(const char* pszLibrary, const char* pszFunction) {
    const HMODULE library = GetModuleHandleA(pszLibrary);
    ULONG_PTR* pEntry = library != nullptr ? LoadedImage(library).FindImport(pszFunction) : nullptr;
    if (pEntry == nullptr) {
        throw std::runtime_error(std::string(pszLibrary) + " does not import " + pszFunction);
    }
    return pEntry;
}

}  // namespace

ReplacedImport::ReplacedImport(
    const char* pszLibrary, const char* pszFunction, ULONG_PTR replacement)
    : m_pEntry(FindEntry(pszLibrary, pszFunction)), m_Former(*m_pEntry) {
    Write(m_pEntry, replacement);
}

ReplacedImport::~ReplacedImport() {
    Write(m_pEntry, m_Former);
}
