// What many runs come to, by values that were worked out by hand.
#include <cfloat>
#include <iomanip>
#include <sstream>

#include "tests/jighost/history/posix/HistoryDatabase.h"
#include "tests/support/SupportJson.h"

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
    /// Of each measurement " min max count left_out outside mean deviation cp cpk drift".
    std::string Measurements(const std::string& options = "") const {
        std::ostringstream text;
        text << std::setprecision(11);
        const Json all = Output("stats " + options);
        for (const Json& each : all["measurements"]) {
            for (const char* pszField :
                 {"min", "max", "count", "left_out", "outside", "mean", "deviation", "cp", "cpk",
                  "drift"}) {
                const Json value = each.value(pszField, Json());
                text << ' ';
                value.is_number() ? text << value.get<double>() : text << '-';
            }
            text << '\n';
        }
        return text.str();
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
    EXPECT_THAT(Output("stats"), Holds(Json::parse(R"({
        "sequences": [{"sequence": "adjust", "runs": 11, "passed": 5, "failed": 2, "error": 1,
            "aborted": 1, "unfinished": 2, "bodies": 5, "first_passed": 3, "final_passed": 3}],
        "failed_steps": [{"sequence": "adjust", "step": 1, "operation": "GetTilt", "name": "Tilt",
            "failures": 3}]})")));
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
    EXPECT_EQ(
        Measurements(),
        " -2 2 4 0 1 1.5 0.54006172487 1.2344267997 0.30860669992 -0.071428571429\n");
    EXPECT_THAT(Output("stats"), Holds(Json::parse(R"({"measurements": [{
        "name": "tilt", "unit": "pixels", "least": 1, "greatest": 2.25, "days": [
            {"day": "2026-11-23", "count": 2, "mean": 1.25},
            {"day": "2026-11-24", "count": 1, "mean": 2.25},
            {"day": "2026-11-26", "count": 1, "mean": 1.25}]}]})")));
    EXPECT_EQ(Measurements("--until 2026-11-23").substr(0, 8), " -2 2 2 ");
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
    EXPECT_EQ(Measurements(), R"( - - 3 0 0 1000000001 1 - - -
 0 - 3 0 0 1000000001 1 - 333333333.67 -
 - 5 3 0 0 2 1 - 1 -
 -7 7 2 0 0 4 0 - - -
 -8 8 1 0 0 6 - - - -
 -6 - 3 0 0 1000000000.5 0.25 - 1333333342 -
 -9 9 2 2 0 8 1.4142135624 2.1213203436 0.2357022604 -
)");
    const std::string text = Run("stats").output;
    EXPECT_THAT(text, HasSubstr("\n  2 numbers of 1e150 or more left out\n"));
    EXPECT_THAT(text, HasSubstr("          mean   deviation          least       greatest  "));
    EXPECT_THAT(text, HasSubstr("    1000000001           1     1000000000     1000000002  "));
    EXPECT_THAT(text, HasSubstr("  1000000000.5        0.25  1000000000.25  1000000000.75  "));
    EXPECT_THAT(text, HasSubstr("           -            -           -  adjust, step 1: tilt"));
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
    EXPECT_THAT(Output("compare 1 2"), Holds(Json::parse(R"({"sequences": [{
        "left": {"record": "c0ffee00-0000-4000-8000-000000000001"},
        "right": {"record": "c0ffee00-0000-4000-8000-000000000002"}, "measurements": [
            {"left": {"value": 1.5}, "right": {"within": false}, "difference": 1.5},
            {"left": null, "right": {"text": "Desk, \"a\""}}]}]})")));
    EXPECT_THAT(Run("compare 1 2").output, HasSubstr("1.5          3 failed"));
    Fails(5, "compare 1 3", "there is no sequence in ");
    Fails(5, "compare 1 4", "there is no sequence in ");

    const std::string csv = Run("export --csv --serial 2 --outcome failed").output;
    const std::string head = right.number + ",,line 4,,2,adjust,failed,,1,Tilt,GetTilt,failed,,";
    EXPECT_THAT(csv, testing::StartsWith("record,started,"));
    EXPECT_THAT(csv, HasSubstr("\n" + head + "tilt,pixels,3,,-2,2,1,0\n"));
    EXPECT_THAT(csv, HasSubstr("\n" + head + "owner,,,\"Desk, \"\"a\"\"\",,,0,1\n"));
    EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), 3);
    Fails(2, "export");
}

TEST_P(HistoryStatsTest, RunsWithoutMeasurementsAreExportedToo) {
    RUN_RECORD bare = SampleRun(1, 1, VERDICT::ABORTED, 0);
    bare.steps.clear();
    RUN_RECORD unmeasured = SampleRun(2, 2, VERDICT::PASSED, 0);
    unmeasured.steps[0].measurements.clear();
    Import({bare, unmeasured});
    const std::string csv = Run("export --csv").output;
    EXPECT_EQ(
        csv.substr(csv.find('\n') + 1),
        bare.number + ",,line 4,,1,adjust,aborted,,,,,,,,,,,,,,\n" + unmeasured.number +
            ",,line 4,,2,adjust,passed,,1,Tilt,GetTilt,passed,,,,,,,,,\n");
}

}  // namespace
