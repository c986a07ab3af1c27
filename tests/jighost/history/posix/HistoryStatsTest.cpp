// What many runs come to, by values that were worked out by hand.
#include <cfloat>

#include "tests/jighost/history/posix/HistoryDatabase.h"

using testing::HasSubstr;

namespace {

constexpr std::int64_t ONE_HOUR = 3'600'000;

class HistoryStatsTest : public HistoryDatabaseTest {
  protected:
    /// Each run by its own number, from 1 on.
    void Import(const std::vector<RUN_RECORD>& runs) const {
        for (const RUN_RECORD& run : runs) {
            WriteRecord(run.number + ".json", run);
        }
        EXPECT_EQ(Run("import c0ffee*.json").exitCode, 0);
    }
    /// Runs of serial 1, each with one value of "tilt".
    void ImportValues(
        const std::vector<double>& values, std::optional<double> min, std::optional<double> max) {
        std::vector<RUN_RECORD> runs;
        for (const double value : values) {
            runs.push_back(SampleRun(++m_unRuns, 1, VERDICT::PASSED, value));
            RECORDED_MEASUREMENT& measurement = runs.back().steps[0].measurements[0];
            measurement.min = min;
            measurement.max = max;
            measurement.bWithin = true;
        }
        Import(runs);
    }
    void ExpectNear(const Json& measured, const std::map<std::string, double>& expected) const {
        for (const auto& [name, value] : expected) {
            ASSERT_TRUE(measured[name].is_number()) << name << ' ' << measured;
            EXPECT_NEAR(measured[name].get<double>(), value, 1e-7) << name;
        }
    }

  private:
    unsigned m_unRuns = 0;
};

INSTANTIATE_TEST_SUITE_P(, HistoryStatsTest, testing::Values("SQLite", "PostgreSQL"));

TEST_P(HistoryStatsTest, YieldsAreOfBodiesThatWereJudged) {
    using enum VERDICT;
    const std::tuple<std::uint32_t, VERDICT, int> ran[] = {
        {1, PASSED, 5},     {1, FAILED, 0},   // the first one was imported behind the last one
        {2, PASSED, 1},     {3, ABORTED, 0},  // stopped, then passed
        {3, PASSED, 1},     {4, OPERATION_FAILED, 0},  // never passed
        {5, UNFINISHED, 0},                            // never judged
        {6, PASSED, 0},     {6, FAILED, 2},           {6, UNFINISHED, 3}};
    std::vector<RUN_RECORD> runs;
    for (const auto& [serial, verdict, hour] : ran) {
        const auto number = static_cast<unsigned>(runs.size() + 1);
        runs.push_back(SampleRun(number, serial, verdict, 0, FIRST_DAY + hour * ONE_HOUR));
    }
    runs.push_back(SampleRun(11, 0, PASSED, 0));
    runs.back().serial.reset();
    Import(runs);
    const Json all = Output("stats");
    ASSERT_EQ(all["sequences"].size(), 1U);
    const Json expected = {{"sequence", "adjust"}, {"runs", 11},  {"passed", 5},
                           {"failed", 2},          {"error", 1},  {"aborted", 1},
                           {"unfinished", 2},      {"bodies", 5}, {"first_passed", 3},
                           {"final_passed", 3}};
    EXPECT_EQ(all["sequences"][0], expected);
    const Json failures = {
        {"sequence", "adjust"},
        {"step", 1},
        {"operation", "GetTilt"},
        {"name", "Tilt"},
        {"failures", 3}};
    EXPECT_EQ(all["failed_steps"], Json::array({failures}));
    EXPECT_EQ(Output("stats --serial 6")["sequences"][0]["final_passed"], 0);
    EXPECT_THAT(Run("stats").output, HasSubstr("in the first run: 3 of 5 (60 %)\n"));
    EXPECT_EQ(Run("stats --serial 77").output, "0 runs\n");
}

// Mean 1.5, squares 0.25 + 0 + 0.5625 + 0.0625 = 0.875; daily means 1.25, 2.25, 1.25 on the days 0,
// 1 and 3, of which the least squares have the slope (-1/3) / (42/9).
TEST_P(HistoryStatsTest, SpreadCapabilityAndDrift) {
    Import(
        {SampleRun(1, 1, VERDICT::PASSED, 1, FIRST_DAY),
         SampleRun(2, 2, VERDICT::PASSED, 1.5, FIRST_DAY + ONE_DAY - 1),
         SampleRun(3, 3, VERDICT::FAILED, 2.25, FIRST_DAY + ONE_DAY),
         SampleRun(4, 4, VERDICT::PASSED, 1.25, FIRST_DAY + 3 * ONE_DAY)});
    const Json measured = Output("stats")["measurements"];
    ASSERT_EQ(measured.size(), 1U);
    const double deviation = std::sqrt(0.875 / 3);
    ExpectNear(
        measured[0], {{"count", 4},
                      {"outside", 1},
                      {"min", -2},
                      {"max", 2},
                      {"mean", 1.5},
                      {"deviation", deviation},
                      {"least", 1},
                      {"greatest", 2.25},
                      {"cp", 4 / (6 * deviation)},
                      {"cpk", 0.5 / (3 * deviation)},
                      {"drift", -1.0 / 14}});
    EXPECT_EQ(measured[0]["name"], "tilt");
    EXPECT_EQ(measured[0]["unit"], "pixels");
    EXPECT_EQ(
        measured[0]["days"], Json::array(
                                 {{{"day", "2026-11-23"}, {"count", 2}, {"mean", 1.25}},
                                  {{"day", "2026-11-24"}, {"count", 1}, {"mean", 2.25}},
                                  {{"day", "2026-11-26"}, {"count", 1}, {"mean", 1.25}}}));
    EXPECT_EQ(Output("stats --until 2026-11-23")["measurements"][0]["count"], 2);
}

TEST_P(HistoryStatsTest, LargeAndLikeAndOneSidedValues) {
    const double large = 1e9;
    ImportValues({large, large + 1, large + 2}, std::nullopt, std::nullopt);
    ImportValues({large, large + 1, large + 2}, 0, std::nullopt);  // limits that changed
    ImportValues({1, 2, 3}, std::nullopt, 5);
    ImportValues({4, 4}, -7, 7);
    ImportValues({6}, -8, 8);
    ImportValues({large + 0.25, large + 0.5, large + 0.75}, -6, std::nullopt);
    ImportValues({7, DBL_MAX, -DBL_MAX, 9}, -9, 9);
    std::map<std::string, Json> found;
    const Json all = Output("stats");
    for (const Json& each : all["measurements"]) {
        found[each["min"].dump() + each["max"].dump()] = each;
    }
    ASSERT_EQ(found.size(), 7U);
    ExpectNear(found["nullnull"], {{"mean", large + 1}, {"deviation", 1}});
    EXPECT_TRUE(found["nullnull"]["cpk"].is_null());
    EXPECT_TRUE(found["nullnull"]["drift"].is_null());
    ExpectNear(found["0.0null"], {{"deviation", 1}, {"cpk", (large + 1) / 3}});
    ExpectNear(found["null5.0"], {{"mean", 2}, {"deviation", 1}, {"cpk", 1}});
    EXPECT_TRUE(found["null5.0"]["cp"].is_null());
    ExpectNear(found["-7.07.0"], {{"mean", 4}, {"deviation", 0}});
    EXPECT_TRUE(found["-7.07.0"]["cpk"].is_null());
    ExpectNear(found["-8.08.0"], {{"count", 1}, {"mean", 6}, {"greatest", 6}});
    EXPECT_TRUE(found["-8.08.0"]["deviation"].is_null());
    ExpectNear(found["-9.09.0"], {{"count", 2}, {"left_out", 2}, {"mean", 8}});
    const std::string text = Run("stats").output;
    EXPECT_THAT(text, HasSubstr("\n  2 numbers of 1e150 or more left out\n"));
    EXPECT_THAT(text, HasSubstr("  1000000001           1  1000000000  1000000002  "));
    EXPECT_THAT(text, HasSubstr("  1000000000.5        0.25  1000000000.25  1000000000.75  "));
    EXPECT_THAT(text, HasSubstr("         -           -           -  adjust, step 1: tilt"));
}

TEST_P(HistoryStatsTest, BodiesAreComparedByTheirLastJudgedRuns) {
    RUN_RECORD left = SampleRun(1, 1, VERDICT::PASSED, 1.5, FIRST_DAY + 2);
    RUN_RECORD right = SampleRun(2, 2, VERDICT::FAILED, 3, FIRST_DAY);
    RECORDED_MEASUREMENT text;
    text.name = "owner";
    text.text = "Desk, \"a\"";
    right.steps[0].measurements.push_back(text);
    Import(
        {left, right, SampleRun(3, 1, VERDICT::FAILED, 9, FIRST_DAY),
         SampleRun(4, 2, VERDICT::ABORTED, 9, FIRST_DAY + 1),
         SampleRun(5, 3, VERDICT::UNFINISHED, 9)});
    const Json compared = Output("compare 1 2")["sequences"];
    ASSERT_EQ(compared.size(), 1U);
    EXPECT_EQ(compared[0]["left"]["record"], left.number);
    EXPECT_EQ(compared[0]["right"]["record"], right.number);
    const Json& measured = compared[0]["measurements"];
    ASSERT_EQ(measured.size(), 2U);
    EXPECT_EQ(measured[0]["left"]["value"], 1.5);
    EXPECT_EQ(measured[0]["right"]["within"], false);
    EXPECT_EQ(measured[0]["difference"], 1.5);
    EXPECT_TRUE(measured[1]["left"].is_null());
    EXPECT_EQ(measured[1]["right"]["text"], text.text);
    EXPECT_THAT(Run("compare 1 2").output, HasSubstr("1.5          3 failed"));
    for (const char* pszOther : {"3", "4"}) {
        const JIGHOST_RUN none = Run(std::string("compare 1 ") + pszOther);
        EXPECT_EQ(none.exitCode, 5);
        EXPECT_THAT(none.errors, HasSubstr("there is no sequence in "));
    }

    const std::string csv = Run("export --csv --serial 2 --outcome failed").output;
    const std::string head = right.number + ",,line 4,,2,adjust,failed,,1,Tilt,GetTilt,failed,,";
    EXPECT_THAT(csv, testing::StartsWith("record,started,"));
    EXPECT_THAT(csv, HasSubstr("\n" + head + "tilt,pixels,3,,-2,2,1,0\n"));
    EXPECT_THAT(csv, HasSubstr("\n" + head + "owner,,,\"Desk, \"\"a\"\"\",,,0,1\n"));
    EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), 3);
    EXPECT_EQ(Run("export").exitCode, 2);
}

TEST_P(HistoryStatsTest, RunsWithoutMeasurementsAreExportedToo) {
    RUN_RECORD bare = SampleRun(1, 1, VERDICT::ABORTED, 0);
    bare.steps.clear();
    RUN_RECORD unmeasured = SampleRun(2, 2, VERDICT::PASSED, 0);
    unmeasured.steps[0].measurements.clear();
    Import({bare, unmeasured});
    const std::string csv = Run("export --csv").output;
    const auto commas = [](const std::string& line) {
        return std::count(line.begin(), line.end(), ',');
    };
    std::istringstream lines(csv);
    std::string line;
    int nLines = 0;
    for (; std::getline(lines, line); ++nLines) {
        EXPECT_EQ(commas(line), 20) << line;
    }
    EXPECT_EQ(nLines, 3);
}

}  // namespace
