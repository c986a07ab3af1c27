// Hosts in one directory. Their writes land whole, each at the log's end at that moment; Windows
// looks for the end first and then writes there, so that one host's text may replace another's.
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "jighost/records/RunRecordReader.h"
#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"

using testing::HasSubstr;
using testing::Not;

namespace {

const std::string FAULT = "SetFilePrefix:2=0x2001";

/// What one of them has recorded; `lines` of each run whose log nobody else has written into.
void ExpectOwnErrorsAlone(const std::string& path, const std::string& error, std::size_t lines) {
    std::size_t whole = 0;
    const RUN_RECORD record = ReadRunRecord(path);
    for (const RECORDED_STEP& step : record.steps) {
        const RECORDED_ATTEMPT& run = step.attempts.at(0);
        EXPECT_LE(run.log.size(), lines);
        EXPECT_GE(run.log.size() + run.interleaved.size(), lines) << "no line is lost";
        if (error.empty()) {
            EXPECT_THAT(run.log, testing::Each(Not(HasSubstr("[ERR!]"))));
        }
        EXPECT_THAT(run.error, HasSubstr(error.empty() ? "" : FAULT));
        EXPECT_TRUE(
            run.error == error || (!error.empty() && !run.interleaved.empty() &&
                                   run.error.ends_with("; the log's lines are interleaved")));
        whole += run.log.size() == lines ? 1U : 0U;
    }
    EXPECT_GT(whole, 0U);
}

/// The lines of a trace's log that tell an error and are not said to be interleaved.
std::set<std::string> TracedErrors(const std::string& path) {
    std::set<std::string> own;
    std::set<std::string> interleaved;
    std::istringstream trace(ReadFile(path));
    for (std::string text; std::getline(trace, text);) {
        const auto entry = nlohmann::json::parse(text);
        if (text.find("[ERR!]") != std::string::npos && entry.value("entry", "") == "log") {
            (entry.at("interleaved") ? interleaved : own).insert(entry.at("line"));
        }
    }
    std::erase_if(own, [&](const std::string& line) { return interleaved.contains(line); });
    return own;
}

TEST_F(JighostTest, HostsInOneDirectoryTakeNoLinesOfEachOther) {
    std::string steps;
    for (int i = 0; i < 500; ++i) {
        steps += "  - {operation: SetFilePrefix, on_unexpected: continue}\n";
    }
    WriteFile("sequence.yaml", "format: 1\nsteps:\n" + steps);
    const std::vector<JIGHOST_RUN> runs = RunAtOnce(
        {"sequence sequence.yaml --record bad.json --trace bad.jsonl --fault " + FAULT,
         "sequence sequence.yaml --record good.json --trace good.jsonl"});
    EXPECT_EQ(runs[0].exitCode, 4);
    EXPECT_EQ(runs[1].exitCode, 0);
    ExpectOwnErrorsAlone("good.json", "", 10);
    ExpectOwnErrorsAlone("bad.json", "[EVNT] --fault " + FAULT, 11);
    EXPECT_EQ(TracedErrors("good.jsonl"), std::set<std::string>{});
    EXPECT_NE(TracedErrors("bad.jsonl"), std::set<std::string>{});
}

}  // namespace
