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

using Cells = std::vector<std::string>;

std::string Document() {
    return ReadFile(std::filesystem::path(SEQUENCE_FOLDER).parent_path() / "docs/operations.md");
}

/// The cells of each operation's row, behind its name.
std::vector<std::pair<std::string, Cells>> DocumentedOperations() {
    std::vector<std::pair<std::string, Cells>> rows;
    std::istringstream document(Document());
    for (std::string line; std::getline(document, line);) {
        if (!line.starts_with("| `")) {
            continue;
        }
        Cells cells;
        for (std::size_t start = 2, end = 0; start < line.size(); start = end + 3) {
            end = line.find(" |", start);
            cells.push_back(line.substr(start, end - start));
        }
        const std::string name = cells[0].substr(1, cells[0].size() - 2);
        rows.emplace_back(name, Cells(cells.begin() + 1, cells.end()));
    }
    return rows;
}

std::string RecordSize(const OPERATION_FACTS& facts) {
    const std::string& bytes = facts.left.size() > facts.given.size() ? facts.left : facts.given;
    const std::size_t size =
        facts.size != 0 ? static_cast<std::size_t>(facts.size) : FromHex(bytes).size();
    return facts.name == "SetBoardInfDLResonantFrequency" ? "up to 256" : std::to_string(size);
}

void ExpectRow(const OPERATION_FACTS& facts, const Cells& cells) {
    const std::map<std::int32_t, std::string> directions = {{0, "IN"}, {1, "OUT"}, {3, "NONE"}};
    ASSERT_EQ(cells.size(), 5U);
    if (facts.given.empty() && facts.left.empty()) {
        EXPECT_EQ(cells[0], "-");
        EXPECT_EQ(cells[1], "-");
    } else {
        EXPECT_THAT(cells[0], testing::EndsWith(", " + RecordSize(facts) + " bytes"));
        const bool bIn = !facts.given.empty();
        EXPECT_EQ(cells[1], !bIn ? "out" : facts.left.empty() ? "in" : "in and out");
    }
    EXPECT_EQ(cells[2], std::to_string(facts.size) + ", " + directions.at(facts.direction));
    if (!facts.pointer.empty()) {
        EXPECT_THAT(cells[4], StartsWith("3 for a null record"));
    }
    if (!facts.wordError.empty()) {
        EXPECT_THAT(cells[4], HasSubstr("if it is odd"));
    }
}

TEST(DocumentTest, TellsOfEachOperationWhatHolds) {
    const auto rows = DocumentedOperations();
    ASSERT_EQ(rows.size(), AllFacts().size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        SCOPED_TRACE(rows[i].first);
        EXPECT_EQ(rows[i].first, AllFacts()[i].name);
        ExpectRow(AllFacts()[i], rows[i].second);
    }
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
