// Which library is missing, told from the files of others, which can be anything.
#include "platform/windows/ImportTable.h"
#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

namespace {

/// A library of the build whose imports from one other are from a third.
std::string Changed(const std::string& library, std::string_view from, std::string_view to) {
    std::string bytes = ReadFile(BuildFolder() / library);
    const std::size_t place = bytes.find(from);
    EXPECT_NE(place, std::string::npos) << from;
    return bytes.replace(place, to.size(), to);
}

TEST(MissingLibraryTest, LibraryOfALibraryIsNamed) {
    const FreshFolder folder;
    WriteFile("module.dll", Changed(MODULE_FILE, "BODYLNK.dll", "AtDepth.dll"));
    WriteFile("AtDepth.dll", Changed(BODYLNK_FILE, "libstdc++-6.dll", "nowhere"));
    const JIGHOST_RUN run = RunJighost({"doctor", "module.dll"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.output, HasSubstr("failed  loads          nowhere++-6.dll is missing: "));
}

TEST(MissingLibraryTest, HostileFilesHaveListsWithAnEnd) {
    const std::string whole = ReadFile(BuildFolder() / MODULE_FILE);
    const std::vector<std::string> names = ImportedLibraries(whole);
    EXPECT_THAT(names, testing::IsSupersetOf({"KERNEL32.dll", "BODYLNK.dll", "libstdc++-6.dll"}));
    for (std::size_t size = 0; size < whole.size(); size += 97) {
        EXPECT_LE(ImportedLibraries(whole.substr(0, size)).size(), names.size()) << size;
    }
    for (std::size_t place = 0x3C; place < 0x400; ++place) {
        for (const char byte : {'\0', '\1', '\x7F', '\xFF'}) {
            std::string changed = whole;
            changed[place] = byte;
            EXPECT_LE(ImportedLibraries(changed).size(), 1000U) << place;
        }
    }
    // A name that would begin a line of its own.
    const std::string forged = Changed(MODULE_FILE, "BODYLNK.dll", "BODY\nok\t.dll");
    EXPECT_THAT(ImportedLibraries(forged), Not(Contains(HasSubstr("BODY"))));
}

}  // namespace
