// Libraries: what they give, and what is found out about them.
#include <dlfcn.h>

#include <filesystem>

#include "platform/LibraryError.h"
#include "platform/Surroundings.h"
#include "tests/support/Support.h"

using testing::HasSubstr;

namespace {

TEST(LibraryTest, LibrariesGiveTheirOwnExportsAlone) {
    const std::string overlong(5000, 'x');
    const std::string path = (BuildFolder() / MODULE_FILE).string();
    for (const auto& [pszPath, code] :
         {std::pair<const char*, DWORD>(nullptr, ERROR_INVALID_PARAMETER),
          {overlong.c_str(), ERROR_INVALID_PARAMETER},
          {"none.so", ERROR_MOD_NOT_FOUND}}) {
        EXPECT_EQ(LoadLibraryA(pszPath), nullptr);
        EXPECT_EQ(GetLastError(), code);
    }
    EXPECT_THAT(LastLibraryError(), HasSubstr("none.so: cannot open"));
    EXPECT_EQ(LastLibraryError(), "") << "it is told once";
    HMODULE module = LoadLibraryA(path.c_str());
    ASSERT_NE(module, nullptr);
    EXPECT_NE(GetProcAddress(module, "_RegisterInitializeFuncList@4"), nullptr);
    EXPECT_NE(GetProcAddress(module, "GetEventProcList"), nullptr);
    EXPECT_EQ(dlsym(RTLD_DEFAULT, "GetEventProcList"), nullptr) << "others see what it has";
    EXPECT_EQ(GetProcAddress(nullptr, "GetEventProcList"), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(GetProcAddress(module, nullptr), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
    // What a library that it depends on has is no export of its own.
    for (const std::string& name :
         {std::string("malloc"), std::string("GetEventProcLists"),
          std::string("_RegisterInitializeFuncList@8"), overlong + "@4",
          std::string(256, 'x') + "@4"}) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(GetProcAddress(module, name.c_str()), nullptr) << name;
        EXPECT_EQ(GetLastError(), DWORD{ERROR_PROC_NOT_FOUND});
    }
    EXPECT_NE(FreeLibrary(module), FALSE);
    EXPECT_EQ(FreeLibrary(nullptr), FALSE);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_HANDLE});
}

TEST(LibraryTest, LibrariesAreFoundByTheirFilesAndNotHeld) {
    const FreshFolder folder;
    const std::filesystem::path path = BuildFolder() / MODULE_FILE;
    EXPECT_EQ(LoadedLibrary(path), nullptr);
    std::filesystem::create_symlink(BuildFolder(), "build");
    HMODULE module = LoadLibraryA(("build/" + std::string(MODULE_FILE)).c_str());
    EXPECT_EQ(LoadedLibrary(path), module);
    const auto pExport = GetProcAddress(module, "GetEventProcList");
    EXPECT_EQ(
        LibraryFileOf(reinterpret_cast<const void*>(pExport)),
        std::filesystem::absolute("build") / MODULE_FILE);
    EXPECT_EQ(LibraryFileOf(nullptr), "");
    EXPECT_NE(FreeLibrary(module), FALSE);
    EXPECT_EQ(LoadedLibrary(path), nullptr) << "it is still held";
    EXPECT_EQ(LoadedLibrary("none/none.so"), nullptr);
    EXPECT_EQ(LastLibraryError(), "") << "no failure of the caller's";
    module = LoadBesideNamesake(path, "no program has this");
    EXPECT_NE(module, nullptr);
    EXPECT_EQ(LastLibraryError(), "");
    EXPECT_NE(FreeLibrary(module), FALSE);
}

}  // namespace
