// jighost history on files: each record once and whole, whatever else is named, and nothing of what
// is not a history touched.
#include "tests/jighost/history/posix/HistoryDatabase.h"
#include "tests/support/SupportJson.h"

using testing::HasSubstr;
using testing::Not;

namespace fs = std::filesystem;

namespace {

class HistoryTest : public HistoryDatabaseTest {};

INSTANTIATE_TEST_SUITE_P(, HistoryTest, testing::Values("SQLite", "PostgreSQL"));

TEST_P(HistoryTest, SpoiltRecordsAreLeftOutAndNoneIsTakenTwice) {
    WriteRecords(2);
    fs::copy_file("1.json", "again.json");
    WriteFile("cut.json", ReadFile("1.json").substr(0, 300));
    RUN_RECORD odd = SampleRun(3, 3, VERDICT::PASSED, 1);
    odd.steps[0].number = std::numeric_limits<std::uint64_t>::max();
    WriteRecord("huge.json", odd);
    odd.steps[0].number = 1;
    odd.number += '0';
    WriteRecord("odd.json", odd);
    const JIGHOST_RUN run =
        Run("import 1.json cut.json odd.json again.json huge.json none.json 2.json");
    EXPECT_EQ(run.exitCode, 5);
    EXPECT_EQ(run.output, "2 records imported, 1 known before, 4 spoilt\n");
    for (const char* pszError :
         {"cut.json: expected the record of a sequence's run\n",
          "odd.json: record: expected a number in the form of",
          "huge.json: steps: expected smaller numbers\n", "can't read none.json: "}) {
        EXPECT_THAT(run.errors, HasSubstr(std::string("jighost: ") + pszError));
    }
    Import("2.json", 0, 1);
    EXPECT_EQ(Output("list")["runs"].size(), 2U);
    Fails(2, "import");
    Fails(2, "list --serial ''", "--serial: expected a value, got none");
}

TEST_P(HistoryTest, UnfinishedRunGivesWayToItsEnd) {
    RUN_RECORD run = SampleRun(1, 7, VERDICT::UNFINISHED, 1);
    WriteRecord("early.json", run);
    run.steps.push_back(run.steps[0]);
    WriteRecord("middle.json", run);
    WriteRecord("late.json", SampleRun(1, 7, VERDICT::FAILED, 3));
    Import("early.json", 1);
    Import("middle.json", 1);
    Import("early.json", 0, 1);
    EXPECT_EQ(Output("show " + run.number)["steps"].size(), 2U);
    Import("early.json late.json", 1, 1);
    Import("early.json", 0, 1);
    EXPECT_THAT(Output("show " + run.number), Holds(Json::parse(R"({
            "outcome": "failed", "steps": [{"measurements": [{"value": 3}]}]})")));
    // Both at once, behind one that is known.
    WriteRecord("begun.json", SampleRun(2, 8, VERDICT::UNFINISHED, 1));
    WriteRecord("ended.json", SampleRun(2, 8, VERDICT::PASSED, 4));
    Import("early.json begun.json ended.json", 1, 2);
    EXPECT_THAT(Output("show " + SampleNumber(2)), Holds(Json::parse(R"({
            "outcome": "passed", "steps": [{"measurements": [{"value": 4}]}]})")));
    ExpectWhole(2);
}

TEST_P(HistoryTest, RecordIsShownAsItWas) {
    const std::string odd =
        "\\N a\"b'c\\d{e,f}NULL;\r\n\t\x1b \u00fc\U0001f4f7 :name $1 '); DROP TABLE run; --";
    RUN_RECORD run = SampleRun(1, 4'294'967'295, VERDICT::OPERATION_FAILED, 1e-310);
    run.started = "2026-11-24T00:30:00.000+09:00";
    run.station = run.operatorName = run.sequence = run.problem = odd;
    run.sequenceFiles = {{"adjust.yaml", "", "ab"}, {"more.yaml", "", "cd"}};
    RECORDED_STEP& step = run.steps[0];
    step.number = 12;
    step.name = step.operation = step.problem = odd;
    step.measurements[0].max.reset();
    step.measurements[0].min = -1.0 / 3;
    RECORDED_MEASUREMENT text;
    text.name = std::string("zero") + '\0' + "one";
    text.text = odd;
    step.measurements.push_back(text);
    WriteRecord("odd.json", run);
    Import("odd.json", 1);
    const Json measured = {{"value", 1e-310}, {"min", -1.0 / 3}, {"max", nullptr}};
    const Json told = {{"name", "zero\\x00one"}, {"text", odd}, {"value", nullptr}};
    const Json shownStep = {
        {"number", 12},
        {"name", odd},
        {"operation", odd},
        {"problem", odd},
        {"outcome", "error"},
        {"attempts", 2},
        {"measurements", Json::array({measured, told})}};
    const Json shown = {
        {"station", odd},
        {"operator", odd},
        {"sequence", odd},
        {"problem", odd},
        {"serial", 4'294'967'295},
        {"started", run.started},
        {"sequence_sha256", "ab"},
        {"path", fs::absolute("odd.json").string()},
        {"steps", Json::array({shownStep})}};
    EXPECT_THAT(Output("show " + run.number), Holds(shown));
    EXPECT_THAT(Run("show " + run.number).output, Not(HasSubstr("\x1b")));
    Fails(5, "show " + SampleNumber(2), "jighost: there is no record " + SampleNumber(2) + " in ");
}

TEST_P(HistoryTest, RunsAreChosen) {
    std::vector<RUN_RECORD> runs;
    for (unsigned i = 0; i < 2100; ++i) {  // more than the database gives at once
        runs.push_back(SampleRun(i, 2000 + i / 2, VERDICT::PASSED, 1, FIRST_DAY + i / 3));
    }
    runs[5].station = "line 5";
    runs[6].sequence = "other";
    runs[7].verdict = VERDICT::ABORTED;
    runs[8].startedAt = FIRST_DAY + ONE_DAY;
    runs[9].startedAt = FIRST_DAY - 1;
    runs[9].started = "2026-11-23T08:59:59.999+09:00";  // the next day at the station
    runs[10].startedAt = 0;                             // of a form of old, which did not tell
    runs[11].startedAt = FIRST_DAY - 1;
    runs[12].serial.reset();
    for (const RUN_RECORD& run : runs) {
        WriteRecord(run.number + ".json", run);
    }
    Import("c0ffee*.json", 2100);
    const std::pair<const char*, int> lines[] = {
        {"", 2100},
        {"--serial 2006", 1},
        {"--serial 2007", 2},
        {"--station 'line 5'", 1},
        {"--sequence other", 1},
        {"--outcome aborted", 1},
        {"--since 2026-11-24", 1},
        {"--until 2026-11-22", 1},
        {"--since 2026-11-23 --until 2026-11-23", 2097},
        {"--serial 2003 --outcome passed --station 'line 4'", 1},
        {"--station \"' OR 1=1 --\"", 0}};
    for (const auto& [line, count] : lines) {
        const Json found = Output(std::string("list ") + line)["runs"];
        EXPECT_EQ(found.size(), count) << line;
        EXPECT_TRUE(std::ranges::is_sorted(
            found, {}, [](const Json& run) { return run["started_at"].get<std::int64_t>(); }));
    }
    EXPECT_THAT(Run("list --serial 2007").output, HasSubstr("\n2 runs\n"));
    for (const char* pszWrong :
         {"--since 2026-11-31", "--until 23.11.2026", "--serial x", "--outcome well",
          "--since 2026-11-24 --until 2026-11-23"}) {
        Fails(2, std::string("list ") + pszWrong);
        Fails(2, std::string("stats ") + pszWrong);
    }
}

// --- Files ---

/// Of SQLite alone.
class HistoryFileTest : public HistoryDatabaseTest {};

INSTANTIATE_TEST_SUITE_P(, HistoryFileTest, testing::Values("SQLite"));

TEST_P(HistoryFileTest, LiesInTheFolderOfTheUsersData) {
    WriteRecords(1);
    const auto run = [](const std::string& variables, const std::string& arguments) {
        return RunShell("env -u XDG_DATA_HOME " + variables + " \"$0\" history " + arguments);
    };
    const std::string home = "HOME=\"$PWD/home\"";
    const JIGHOST_RUN none = run(home, "list");
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_THAT(none.errors, HasSubstr("/home/.local/share/tunebench/history.sqlite: there is no"));
    EXPECT_FALSE(fs::exists("home"));
    EXPECT_EQ(run(home, "import 1.json").exitCode, 0);
    EXPECT_TRUE(fs::exists("home/.local/share/tunebench/history.sqlite"));
    EXPECT_EQ(run(home + " XDG_DATA_HOME=\"$PWD/data\"", "import 1.json").exitCode, 0);
    EXPECT_TRUE(fs::exists("data/tunebench/history.sqlite"));
    EXPECT_EQ(run("-u HOME", "list").exitCode, 2);
}

TEST_P(HistoryFileTest, WhatIsNoHistoryStaysAsItIs) {
    WriteRecords(2);
    Import("1.json", 1);
    const JIGHOST_RUN made =
        RunShell(R"(cp h.sqlite newer; sqlite3 newer 'UPDATE tunebench_history SET version = 99'
                    sqlite3 other 'CREATE TABLE run (a)'; echo text >text; mkdir folder
                    cp h.sqlite odd; sqlite3 odd 'ALTER TABLE run DROP COLUMN problem'
                    cp h.sqlite lower; sqlite3 lower 'UPDATE tunebench_history SET version = -1'
                    sqlite3 half 'CREATE TABLE tunebench_history (version INTEGER NOT NULL)'
                    head -c 9000 h.sqlite >cut; : >empty)");
    EXPECT_EQ(made.exitCode, 0);
    const std::pair<std::string, std::string> places[] = {
        {"newer", "a history of version 99"},
        {"lower", "a history of version -1"},
        {"half", ""},
        {"other", ""},
        {"text", "file is not a database"},
        {"folder", "Cannot establish connection to the database"},
        {"odd", ""},
        {"cut", "database disk image is malformed"},
        {"no/folder", ""}};
    for (const auto& [place, error] : places) {
        const auto content = [&place = place] {
            return fs::is_regular_file(place) ? ReadFile(place) : "";
        };
        const std::string before = content();
        for (const std::string command : {"list", "import 2.json"}) {
            const std::string errors = RunTo(
                                           1, "history " + command + " --database " + place,
                                           "jighost: " + place + ": " + error)
                                           .errors;
            EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors;
            EXPECT_EQ(content(), before) << place;
        }
    }
    RunTo(1, "history list --database empty", "empty: holds no history");
    RunTo(0, "history import 1.json --database empty");
    EXPECT_EQ(RunJighost({"history", "import", "1.json", "--database", "a\" b"}).exitCode, 2);
}

// --- Others at once, and ends in the middle ---

TEST_P(HistoryTest, ImportsAtOnceTakeEachRecordOnce) {
    const std::string names = WriteRecords(60);
    const std::string line = "history import" + names + " --database " + m_Place;
    std::size_t imported = 0;
    for (const JIGHOST_RUN& run : RunAtOnce({line, line, line, line})) {
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        imported += std::stoul(run.output);
    }
    EXPECT_EQ(imported, 60U);
    ExpectWhole(60);
}

TEST_P(HistoryFileTest, FullDiskKeepsWhatWasThere) {
    const std::string names = WriteRecords(300);
    const auto importWithin = [](const std::string& blocks, const std::string& paths) {
        const JIGHOST_RUN run = RunShell(
            "trap '' XFSZ; ulimit -f " + blocks + "; \"$0\" history import " + paths +
            " --database h.sqlite");
        EXPECT_EQ(run.exitCode, 1) << run.output;
        EXPECT_THAT(run.errors, HasSubstr("jighost: h.sqlite: "));
    };
    importWithin("24", "1.json");  // no room for all tables
    EXPECT_EQ(Ask("SELECT count(*) FROM sqlite_master"), "0\n");
    Import("1.json 2.json", 2);
    importWithin("120", names);
    ExpectWhole(2);
    Import(names, 298, 2);
}

TEST_P(HistoryFileTest, KilledImportIsRepeated) {
    const std::string names = WriteRecords(1500);
    Import("1.json", 1);
    Process import(
        "/bin/sh", {"-c", "exec \"$0\" history import *.json --database h.sqlite", JighostFile()});
    // Its first change: the journal that a change begins with.
    while (!fs::exists("h.sqlite-journal") && fs::file_size("h.sqlite") < 200'000) {
        std::this_thread::yield();
    }
    import.Kill();
    EXPECT_EQ(Run("import *.json").exitCode, 0);
    ExpectWhole(1500);
}

// --- Servers ---

/// Of PostgreSQL alone.
class HistoryServerTest : public HistoryDatabaseTest {};

INSTANTIATE_TEST_SUITE_P(, HistoryServerTest, testing::Values("PostgreSQL"));

TEST_P(HistoryServerTest, DiesInTheMiddleOfAnImport) {
    const std::string names = WriteRecords(300);
    Import("1.json 2.json", 2);
    // Who holds the last table holds up the import behind its first rows.
    Process holder("/usr/bin/psql", {"-XqAt", m_Place});
    holder.WriteLine("BEGIN; LOCK TABLE measurement; SELECT 'held';");
    EXPECT_EQ(holder.ReadLine(), "held");
    Process import(
        JighostFile(), Words("history import" + names + " --database " + m_Place), "import.txt");
    int nAsked = 0;
    while (Ask("SELECT count(*) FROM pg_locks WHERE NOT granted") == "0\n") {
        ASSERT_LT(++nAsked, 5000);
    }
    DatabaseServer::Instance().Kill();
    EXPECT_EQ(import.Wait(), 1);
    const std::string errors = ReadFile("import.txt");
    EXPECT_THAT(errors, HasSubstr("jighost: postgresql://"));
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors;
    Fails(1, "list");
    DatabaseServer::Instance().Start();
    ExpectWhole(2);
    Import(names, 298, 2);
    ExpectWhole(300);
}

TEST_P(HistoryServerTest, TablesOfOthersStayAsTheyAre) {
    WriteRecords(1);
    Fails(1, "list", "holds no history; jighost history import makes");
    Ask("CREATE TABLE run (a INTEGER)");
    Fails(1, "import 1.json", ": has tables of something else");
    EXPECT_EQ(Ask("SELECT count(*) FROM pg_tables WHERE schemaname = 'public'"), "1\n");
}

TEST(HistoryAddressTest, NoPasswordIsShown) {
    const FreshFolder folder;
    for (const char* pszURL :
         {"postgresql://u:secret@%2Fnone/d", "postgres://u:secret@[::1]:1/d?connect_timeout=2",
          "postgresql://u:sec%ret@h/d", "postgresql://u:/secret@h/d", "postgresql://u:@secret@/d",
          "postgresql://u:secret", "postgresql://[u:secret@h/d", "postgresql://u:secret@h/d?x=y",
          "postgresql:///d?host=%2Fnone&password=secret", "postgresql:///d?p%61ssword=secret"}) {
        const JIGHOST_RUN run = RunJighost({"history", "list", "--database", pszURL});
        EXPECT_TRUE(run.exitCode == 1 || run.exitCode == 2) << pszURL;
        EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1) << run.errors;
        EXPECT_THAT(run.errors, Not(HasSubstr("ret")));
    }
}

}  // namespace
