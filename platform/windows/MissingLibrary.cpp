// Windows does not tell which library it did not find: what the libraries import from is read from
// their files, and looked for where the system would.
#include <optional>
#include <set>
#include <stdexcept>
#include <vector>

#include "platform/LibraryError.h"
#include "platform/TextFile.h"
#include "platform/Utf8Path.h"
#include "platform/windows/ImportTable.h"
#include "platform/windows/WideText.h"

static const std::uint64_t MOST_BYTES = 256U << 20;  // of a library's file
static const std::size_t MOST_LIBRARIES = 1000;

/// Whether it needs no file. The first two are the system's names for parts of its libraries.
static bool IsThereAnyway(const std::string& name) {
    return name.starts_with("api-ms-") || name.starts_with("ext-ms-") ||
           GetModuleHandleW(WideText(name).c_str()) != nullptr;
}

/// Where the system finds a library that this program's libraries import from.
static std::optional<std::filesystem::path> Found(const std::string& name) {
    wchar_t szFound[32768];
    const DWORD length =
        SearchPathW(nullptr, WideText(name).c_str(), nullptr, std::size(szFound), szFound, nullptr);
    return length > 0 && length < std::size(szFound)
               ? std::optional(std::filesystem::path(szFound, szFound + length))
               : std::nullopt;
}

/// What the system brings needs nothing that it does not bring.
static bool IsOfSystem(const std::filesystem::path& path) {
    wchar_t szFolder[MAX_PATH];
    const UINT length = GetSystemDirectoryW(szFolder, std::size(szFolder));
    std::error_code error;
    return std::filesystem::equivalent(
        path.parent_path(), std::filesystem::path(szFolder, szFolder + length), error);
}

static std::vector<std::string> ImportsOf(const std::filesystem::path& path) {
    try {
        return ImportedLibraries(ReadTextFile(path, MOST_BYTES));
    } catch (const std::runtime_error&) {
        return {};
    }
}

std::string MissingLibrary(const std::string& path, const std::string& /*text*/) {
    std::vector<std::filesystem::path> files = {PathOf(path)};
    std::set<std::string> seen;
    for (std::size_t i = 0; i < files.size() && i < MOST_LIBRARIES; ++i) {
        for (const std::string& name : ImportsOf(files[i])) {
            if (!seen.insert(name).second || IsThereAnyway(name)) {
                continue;
            }
            const auto file = Found(name);
            if (!file) {
                return name;
            }
            if (!IsOfSystem(*file)) {
                files.push_back(*file);
            }
        }
    }
    return "";
}
