// The log file: what is in it after each flush, and that nothing done to it fails an operation.
#include <fstream>
#include <locale>

#include "adjustment/PropertyTable.h"
#include "tests/support/Support.h"

namespace {

const std::size_t LOG_BUFFER = 2'048'000;

class LogTest : public ModuleTest {
  protected:
    std::int32_t RunSave() { return Operation("SaveBodyID")(nullptr); }
    const std::string m_SaveText = Frame("SaveBodyID", 0);

    static void PutFolderInPlaceOfLog() {
        std::filesystem::remove(LOG_FILE);
        std::filesystem::create_directory(LOG_FILE);
    }
};

TEST_F(LogTest, FlushOfNothingCreatesTheFileAndAddsNothing) {
    std::filesystem::remove(LOG_FILE);
    EXPECT_EQ(Module().pRegisterInitializeFuncList(nullptr), 0);
    EXPECT_EQ(std::filesystem::file_size(LOG_FILE), 0U);
}

TEST_F(LogTest, LinesEndAsTextFilesDo) {
    std::filesystem::remove(LOG_FILE);
    EXPECT_EQ(RunSave(), 0);
    std::ofstream("expected.txt") << m_SaveText;  // in text mode, unlike WriteFile
    EXPECT_EQ(ReadFile(LOG_FILE), ReadFile("expected.txt"));
}

TEST_F(LogTest, FileLiesInTheDirectoryOfEachFlush) {
    std::filesystem::create_directory("other");
    std::filesystem::current_path("other");
    EXPECT_EQ(RunSave(), 0);
    std::filesystem::current_path(Folder());
    EXPECT_THAT(ReadFile("other/JigDll.log"), testing::HasSubstr("> [FUNC] SaveBodyID - 0"));
    EXPECT_EQ(Log(), "");
}

TEST_F(LogTest, TextWaitsInItsStreamForItsOwnFlush) {
    std::vector<EVENT_PROC_T*> table(HASH_BUCKETS);
    // GetHash writes its first opening line and fails at the second, before its flush.
    SimulatedBody::FailLinePrefix(4);
    EXPECT_EQ(Module().pGetEventProcList(table.data()), LINK_FAILURE);
    EXPECT_EQ(Log(), FailedFrame("GetEventProcList", LINK_FAILURE, LINK_MESSAGE));

    ClearLog();
    EXPECT_EQ(Module().pGetEventProcList(table.data()), 0);
    EXPECT_EQ(
        Log(), "> [----]\n> [FUNC] GetEventProcList\n> [----]\n" + Frame("GetHash", 0) +
                   "> [FUNC] GetEventProcList - 0\n");
}

TEST_F(LogTest, DeletedFileIsMadeAnew) {
    EXPECT_EQ(RunSave(), 0);
    std::filesystem::remove(LOG_FILE);
    EXPECT_EQ(Run("SaveBodyID"), 0);
    EXPECT_EQ(Log(), m_SaveText);
}

// A text that could not be written is tried once more ahead of the one with which all that was lost
// comes to the size of the buffer: here ahead of the closing line of a second run.
TEST_F(LogTest, LostTextIsTriedAgainAtTheSizeOfTheBuffer) {
    const std::string opening = "> [----]\n> [FUNC] SaveBodyID\n";
    const std::string closing = "> [FUNC] SaveBodyID - 0\n";
    const auto lose = [&](std::size_t bytes) {
        const std::size_t others = FailedFrame("SaveBodyID", LINK_FAILURE, "").size();
        SimulatedBody::FailCall(1, {.message = std::string(bytes - others, 'x')});
        EXPECT_EQ(RunSave(), LINK_FAILURE);
    };
    for (const std::size_t lost : {LOG_BUFFER - 1, LOG_BUFFER}) {
        EXPECT_EQ(RunSave(), 0);  // counts afresh
        PutFolderInPlaceOfLog();
        ClearLog();
        lose(LOG_BUFFER / 2);
        lose(lost - LOG_BUFFER / 2 - m_SaveText.size());
        SimulatedBody::Observe(
            [](const SimulatedBody::CALL&, bool) { std::filesystem::remove_all(LOG_FILE); });
        EXPECT_EQ(RunSave(), 0);
        SimulatedBody::Observe({});
        EXPECT_EQ(Log(), (lost == LOG_BUFFER ? opening : "") + closing);
    }
}

class Grouping : public std::numpunct<char> {
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST_F(LogTest, NumbersAreFreeOfTheHostsDigitGrouping) {
    const std::locale former = std::locale::global({std::locale::classic(), new Grouping});
    LoadAgain();
    Module().Register();
    std::locale::global(former);

    SimulatedBody::SetProperty(0x1000000, {0x40, 0xE2, 0x01, 0});
    std::int32_t nState = 0;
    EXPECT_EQ(Run("GetFactoryModeState", &nState), 0);
    EXPECT_EQ(Log(), Frame("GetFactoryModeState", 0, "> [FUNC] State - 123456\n"));
}

TEST_F(LogTest, TextThatFillsAStreamIsCutAheadOfTheClosingLine) {
    SimulatedBody::FailCall(1, {.message = std::string(2 * LOG_BUFFER, 'x')});
    EXPECT_EQ(Run("SaveBodyID"), LINK_FAILURE);
    const std::string opening = "> [----]\n> [FUNC] SaveBodyID\n";
    EXPECT_TRUE(Log().starts_with(opening + "> [ERR!] - xxx"));
    EXPECT_TRUE(Log().ends_with("xxx\n> [FUNC] SaveBodyID - 8193\n"));
    // The flush of the closing line holds no more than a stream does.
    EXPECT_LT(Log().size(), opening.size() + LOG_BUFFER);

    EXPECT_EQ(Run("SaveBodyID"), 0);
    EXPECT_EQ(Log(), m_SaveText);
}

TEST_F(LogTest, StreamHoldsOneByteLessThanItsMemory) {
    SimulatedBody::SetLinePrefix(std::string(LOG_BUFFER, 'x'));
    EXPECT_EQ(Run("SaveBodyID"), 0);
    EXPECT_TRUE(Log() == std::string(2 * (LOG_BUFFER - 1), 'x')) << Log().size();
    SimulatedBody::SetLinePrefix("> ");
    EXPECT_EQ(Run("SaveBodyID"), 0);
    EXPECT_EQ(Log(), m_SaveText);
}

// What each search notes stays in a stream that is never flushed: it fills up.
TEST_F(LogTest, SearchesFailForEver) {
    PROPERTY_DATA_T row{};
    std::fill_n(row.PropertyName, sizeof(row.PropertyName) - 1, 'x');
    PutFolderInPlaceOfLog();
    for (int search = 0; search < 30'000; ++search) {
        ASSERT_EQ(Operation("SearchPropertyData")(&row), 25);
    }
    std::filesystem::remove(LOG_FILE);
    EXPECT_EQ(Run("SearchPropertyData", &row), 25);
    EXPECT_THAT(
        Log(), testing::EndsWith(FailedFrame("SearchPropertyData", 25, "[CMNT] Not Found")));
}

}  // namespace
