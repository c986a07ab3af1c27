// Files replaced as a whole: what stays of the former one, and what is never replaced.
#include "platform/WholeFile.h"

#include "platform/Process.h"
#include "platform/Surroundings.h"
#include "tests/support/SupportWholeFile.h"

namespace fs = std::filesystem;

namespace {

TEST_F(WholeFileTest, WhatHasNoPlaceForAFileIsRefused) {
    fs::create_directory("folder");
    ExpectRefused(".", EISDIR);
    ExpectRefused("folder/", EISDIR);
    ExpectRefused("nowhere/file", ENOENT);
    EXPECT_EQ(EntryCount("."), 1U);
}

/// The number of a process that is gone.
std::string GoneProcess() {
    Process process((BuildFolder() / BLOCK_HOLDER_FILE).string(), {});
    process.CloseInput();
    process.Wait();
    return std::to_string(process.Id());
}

TEST_F(WholeFileTest, OnlyWhatKilledWritersOfTheFileHaveLeftIsRemoved) {
    Process living((BuildFolder() / BLOCK_HOLDER_FILE).string(), {});
    const std::string other = std::to_string(living.Id());
    const std::string gone = GoneProcess();
    const std::string own = std::to_string(ProcessNumber());
    const std::vector<std::string> left = {"file.unfinished-" + gone, "file.unfinished-" + own};
    const std::vector<std::string> others = {
        "file.unfinished-" + other,
        "other.unfinished-" + gone,
        "file." + gone,
        "file.unfinished-" + gone + "a",
        "file.unfinished-",
        "file.unfinished--5",
        "file.unfinished-0"};
    for (const auto& names : {left, others}) {
        for (const std::string& name : names) {
            WriteFile(name, "former");
        }
    }
    Replace("file");
    for (const std::string& name : left) {
        EXPECT_FALSE(fs::exists(name)) << name;
    }
    for (const std::string& name : others) {
        EXPECT_EQ(ReadFile(name), "former") << name;
    }
    EXPECT_TRUE(MakeFile("other", "new"));
    EXPECT_FALSE(fs::exists("other.unfinished-" + gone));
}

}  // namespace
