// What libraries take and offer, told from their files, which can be anything.
#include "platform/LibraryNames.h"

#include "platform/Program.h"
#include "tests/support/Support.h"

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSubsetOf;
using testing::Not;

namespace {

std::set<std::string> OfferedBy(const std::filesystem::path& library) {
    return NamesOffered(ReadFile(BuildFolder() / library));
}

TEST(LibraryNamesTest, ModuleTakesOfTheLinkWhatTheRecorderOffersToo) {
    const std::string module = ReadFile(BuildFolder() / MODULE_FILE_NAME);
    const auto recorded = OfferedBy(std::filesystem::path("recorder") / LINK_FILE_NAME);
    const auto offered = OfferedBy(LINK_FILE_NAME);
    std::set<std::string> taken;
    for (const std::string& name : NamesTaken(module, LINK_FILE_NAME)) {
        if (offered.contains(name)) {
            taken.insert(name);
        }
    }
    EXPECT_THAT(taken, Contains(HasSubstr("GetPropertyFullPath")));
    EXPECT_THAT(taken, Contains(HasSubstr("CallFunction")));
    EXPECT_THAT(taken, IsSubsetOf(recorded));
    EXPECT_THAT(offered, Contains(HasSubstr("Observe")));
    EXPECT_THAT(recorded, Not(Contains(HasSubstr("Observe"))));
    EXPECT_THAT(NamesTaken(module, "libother.so"), IsEmpty());
    EXPECT_THAT(NamesOffered(module), Contains(std::string("RegisterEventProcList")));
}

TEST(LibraryNamesTest, HostileFilesHaveListsWithAnEnd) {
    const std::string whole = ReadFile(BuildFolder() / MODULE_FILE_NAME);
    const std::size_t most = NamesTaken(whole, LINK_FILE_NAME).size();
    EXPECT_TRUE(MayHaveNames(whole.substr(0, 4)));
    for (std::size_t size = 0; size < whole.size(); size += 1 + whole.size() / 100) {
        EXPECT_LE(NamesTaken(whole.substr(0, size), LINK_FILE_NAME).size(), most) << size;
    }
    for (std::size_t place = 4; place < 0x180; place += 3) {
        for (const char byte : {'\1', '\x7F', '\xFF'}) {
            std::string changed = whole;
            changed[place] = byte;
            EXPECT_LE(NamesTaken(changed, LINK_FILE_NAME).size(), whole.size()) << place;
            EXPECT_LE(NamesOffered(changed).size(), whole.size()) << place;
        }
    }
    for (const char* pszOther : {"", "MZ", "\177ELF", "#!/bin/sh\n"}) {
        EXPECT_THAT(NamesOffered(pszOther), IsEmpty()) << pszOther;
    }
}

}  // namespace
