// What jighost tells of all operations, its document and its names of the log, held against what
// must hold of them.
#include <filesystem>
#include <map>
#include <sstream>

#include "jighost/operations/LogName.h"
#include "tests/support/SupportJighost.h"
#include "tests/support/SupportOperations.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace {

std::string Document() {
    return ReadFile(std::filesystem::path(SEQUENCE_FOLDER).parent_path() / "docs/operations.md");
}

std::string RecordSize(const OPERATION_FACTS& facts) {
    const std::string& bytes = facts.left.size() > facts.given.size() ? facts.left : facts.given;
    const std::size_t size =
        facts.size != 0 ? static_cast<std::size_t>(facts.size) : FromHex(bytes).size();
    return facts.name == "SetBoardInfDLResonantFrequency" ? "up to 256" : std::to_string(size);
}

/// What stands of an operation's record and who fills it, and with what it is registered.
std::string RecordCells(const OPERATION_FACTS& facts) {
    static const std::map<std::int32_t, std::string> directions = {
        {0, "IN"}, {1, "OUT"}, {3, "NONE"}};
    const std::string use = facts.given.empty() ? "out" : facts.left.empty() ? "in" : "in and out";
    const bool bNone = facts.given.empty() && facts.left.empty();
    return (bNone ? "` | - | -" : ", " + RecordSize(facts) + " bytes | " + use) + " | " +
           std::to_string(facts.size) + ", " + directions.at(facts.direction) + " | ";
}

TEST(DocumentTest, TellsOfEachOperationWhatHolds) {
    std::istringstream document(Document());
    const auto nextRow = [&document] {
        std::string line;
        while (std::getline(document, line) && !line.starts_with("| `")) {
        }
        return line;
    };
    for (const OPERATION_FACTS& facts : AllFacts()) {
        const std::string row = nextRow();
        EXPECT_THAT(row, StartsWith("| `" + facts.name + "` | "));
        EXPECT_THAT(row, HasSubstr(RecordCells(facts)));
        EXPECT_THAT(row, HasSubstr(facts.pointer.empty() ? "" : " | 3 for a null record"));
        EXPECT_THAT(row, HasSubstr(facts.wordError.empty() ? "" : "if it is odd"));
    }
    EXPECT_EQ(nextRow(), "");
}

TEST(LogNameTest, OperationsAndWhatRunsInThemHaveTheirNamesInTheLog) {
    const std::string opening = "> [FUNC] ";
    for (const OPERATION_FACTS& facts : AllFacts()) {
        EXPECT_EQ(LogName(facts.name), facts.logName);
        const Steps& steps = facts.steps;
        for (auto step = steps.begin(); step != steps.end(); ++step) {
            if (*step == "> [----]") {
                const std::string inner = std::next(step)->substr(opening.size());
                EXPECT_TRUE(IsLogName(inner)) << inner;
                EXPECT_TRUE(RunsWithin(inner, facts.logName)) << inner;
            }
        }
    }
}

TEST(DocumentTest, IsWhatTheHostPrints) {
    const FreshFolder folder;
    EXPECT_EQ(RunJighost({"docs"}).output, Document()) << "./dev docs writes it anew";
}

}  // namespace
