// jighost history on files: each record once and whole, whatever else is named, and nothing of what
// is not a history touched.
#include <nlohmann/json.hpp>

#include "tests/jighost/history/posix/HistoryDatabase.h"

using testing::AllOf;
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
    odd.number += '0';
    WriteRecord("odd.json", odd);
    odd = SampleRun(3, 3, VERDICT::PASSED, 1);
    odd.steps[0].number = std::numeric_limits<std::uint64_t>::max();
    WriteRecord("huge.json", odd);
    const JIGHOST_RUN run =
        Run("import 1.json cut.json odd.json again.json huge.json none.json 2.json");
    EXPECT_EQ(run.exitCode, 5);
    EXPECT_EQ(run.output, "2 records imported, 1 known before, 4 spoilt\n");
    EXPECT_THAT(
        run.errors, AllOf(
                        HasSubstr("jighost: cut.json: expected the record of a sequence's run\n"),
                        HasSubstr("jighost: odd.json: record: expected a number in the form of"),
                        HasSubstr("jighost: huge.json: steps: expected smaller numbers\n"),
                        HasSubstr("jighost: can't read none.json: ")));
    EXPECT_EQ(Import("2.json"), "0 records imported, 1 known before, 0 spoilt\n");
    EXPECT_EQ(Output("list")["runs"].size(), 2U);
    EXPECT_EQ(Run("import").exitCode, 2);
    EXPECT_THAT(
        RunJighost({"history", "list", "--serial", ""}).errors,
        HasSubstr("--serial: expected a value, got none"));
}

TEST_P(HistoryTest, UnfinishedRunGivesWayToItsEnd) {
    WriteRecord("early.json", SampleRun(1, 7, VERDICT::UNFINISHED, 1));
    WriteRecord("late.json", SampleRun(1, 7, VERDICT::FAILED, 3));
    EXPECT_EQ(Import("early.json"), "1 record imported, 0 known before, 0 spoilt\n");
    RUN_RECORD middle = SampleRun(1, 7, VERDICT::UNFINISHED, 1);
    middle.steps.push_back(middle.steps[0]);
    middle.steps[1].number += 1;
    WriteRecord("middle.json", middle);
    EXPECT_EQ(Import("middle.json"), "1 record imported, 0 known before, 0 spoilt\n");
    EXPECT_EQ(Import("early.json"), "0 records imported, 1 known before, 0 spoilt\n");
    EXPECT_EQ(Output("show " + SampleNumber(1))["steps"].size(), 2U);
    EXPECT_EQ(Import("early.json late.json"), "1 record imported, 1 known before, 0 spoilt\n");
    EXPECT_EQ(Import("early.json"), "0 records imported, 1 known before, 0 spoilt\n");
    const Json run = Output("show " + SampleNumber(1));
    EXPECT_EQ(run["outcome"], "failed");
    ASSERT_EQ(run["steps"].size(), 1U);
    ASSERT_EQ(run["steps"][0]["measurements"].size(), 1U);
    EXPECT_EQ(run["steps"][0]["measurements"][0]["value"], 3);
}

TEST_P(HistoryTest, RecordIsShownAsItWas) {
    const std::string odd =
        "a\"b'c\\d{e,f}NULL;\n\t\x1b \u00fc\U0001f4f7 :name $1 '); DROP TABLE run; --";
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
    EXPECT_EQ(Import("odd.json"), "1 record imported, 0 known before, 0 spoilt\n");
    const Json shown = Output("show " + run.number);
    for (const char* pszName : {"station", "operator", "sequence", "problem"}) {
        EXPECT_EQ(shown[pszName], odd) << pszName;
    }
    EXPECT_EQ(shown["serial"], 4'294'967'295);
    EXPECT_EQ(shown["started"], run.started);
    EXPECT_EQ(shown["sequence_sha256"], "ab");
    EXPECT_EQ(shown["path"], fs::absolute("odd.json").string());
    const Json& shownStep = shown["steps"].at(0);
    EXPECT_EQ(shownStep["number"], 12);
    EXPECT_EQ(shownStep["name"], odd);
    EXPECT_EQ(shownStep["outcome"], "error");
    EXPECT_EQ(shownStep["attempts"], 2);
    const Json& tilt = shownStep["measurements"].at(0);
    EXPECT_EQ(tilt["value"], 1e-310);
    EXPECT_EQ(tilt["min"], -1.0 / 3);
    EXPECT_TRUE(tilt["max"].is_null());
    EXPECT_EQ(shownStep["measurements"].at(1)["name"], "zero\\x00one");
    EXPECT_EQ(shownStep["measurements"].at(1)["text"], odd);
    EXPECT_TRUE(shownStep["measurements"].at(1)["value"].is_null());
    EXPECT_THAT(Run("show " + run.number).output, Not(HasSubstr("\x1b")));
    const JIGHOST_RUN none = Run("show " + SampleNumber(2));
    EXPECT_EQ(none.exitCode, 5);
    EXPECT_THAT(none.errors, HasSubstr("jighost: there is no record " + SampleNumber(2) + " in "));
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
    EXPECT_EQ(Import("c0ffee*.json"), "2100 records imported, 0 known before, 0 spoilt\n");
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
        EXPECT_TRUE(std::is_sorted(found.begin(), found.end(), [](const Json& a, const Json& b) {
            return a["started_at"] < b["started_at"];
        }));
    }
    EXPECT_THAT(Run("list --serial 2007").output, HasSubstr("\n2 runs\n"));
    for (const char* pszWrong :
         {"--since 2026-11-31", "--until 23.11.2026", "--serial x", "--outcome well",
          "--since 2026-11-24 --until 2026-11-23"}) {
        EXPECT_EQ(Run(std::string("list ") + pszWrong).exitCode, 2) << pszWrong;
        EXPECT_EQ(Run(std::string("stats ") + pszWrong).exitCode, 2) << pszWrong;
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
    EXPECT_EQ(Run("import 1.json").exitCode, 0);
    EXPECT_EQ(
        RunShell(R"(cp h.sqlite newer; sqlite3 newer 'UPDATE tunebench_history SET version = 99'
                    sqlite3 other 'CREATE TABLE run (a)'; echo text >text; mkdir folder
                    cp h.sqlite odd; sqlite3 odd 'ALTER TABLE run DROP COLUMN problem'
                    cp h.sqlite lower; sqlite3 lower 'UPDATE tunebench_history SET version = -1'
                    sqlite3 half 'CREATE TABLE tunebench_history (version INTEGER NOT NULL)'
                    head -c 9000 h.sqlite >cut; : >empty)")
            .exitCode,
        0);
    const std::pair<const char*, const char*> places[] = {
        {"newer", "newer: a history of version 99"},
        {"lower", "lower: a history of version -1"},
        {"half", "half: "},
        {"other", "other: "},
        {"text", "text: file is not a database"},
        {"folder", "folder: Cannot establish connection to the database"},
        {"odd", "odd: "},
        {"cut", "cut: database disk image is malformed"},
        {"no/folder", "no/folder: "}};
    for (const auto& [place, error] : places) {
        const std::string before = fs::is_regular_file(place) ? ReadFile(place) : "";
        for (const char* pszCommand : {"list", "import 2.json"}) {
            const JIGHOST_RUN run =
                RunLine(std::string("history ") + pszCommand + " --database " + place);
            EXPECT_EQ(run.exitCode, 1) << place;
            EXPECT_THAT(run.errors, HasSubstr(std::string("jighost: ") + error));
            EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1) << run.errors;
            EXPECT_EQ(fs::is_regular_file(place) ? ReadFile(place) : "", before) << place;
        }
    }
    EXPECT_THAT(
        RunLine("history list --database empty").errors, HasSubstr("empty: holds no history"));
    EXPECT_EQ(RunLine("history import 1.json --database empty").exitCode, 0);
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
    // No room for all tables.
    EXPECT_EQ(
        RunShell("trap '' XFSZ; ulimit -f 24; \"$0\" history import 1.json --database h.sqlite")
            .exitCode,
        1);
    EXPECT_EQ(Ask("SELECT count(*) FROM sqlite_master"), "0\n");
    EXPECT_EQ(Import("1.json 2.json"), "2 records imported, 0 known before, 0 spoilt\n");
    const JIGHOST_RUN full = RunShell(
        "trap '' XFSZ; ulimit -f 120; \"$0\" history import" + names + " --database h.sqlite");
    EXPECT_EQ(full.exitCode, 1) << full.output;
    EXPECT_THAT(full.errors, HasSubstr("jighost: h.sqlite: "));
    ExpectWhole(2);
    EXPECT_EQ(Import(names), "298 records imported, 2 known before, 0 spoilt\n");
}

TEST_P(HistoryFileTest, KilledImportIsRepeated) {
    const std::string names = WriteRecords(1500);
    EXPECT_EQ(Run("import 1.json").exitCode, 0);
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
    EXPECT_EQ(Import("1.json 2.json"), "2 records imported, 0 known before, 0 spoilt\n");
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
    EXPECT_EQ(Run("list").exitCode, 1);
    DatabaseServer::Instance().Start();
    ExpectWhole(2);
    EXPECT_EQ(Import(names), "298 records imported, 2 known before, 0 spoilt\n");
    ExpectWhole(300);
}

TEST_P(HistoryServerTest, TablesOfOthersStayAsTheyAre) {
    WriteRecords(1);
    EXPECT_THAT(Run("list").errors, HasSubstr("holds no history; jighost history import makes"));
    Ask("CREATE TABLE run (a INTEGER)");
    const JIGHOST_RUN run = Run("import 1.json");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errors, HasSubstr(": has tables of something else"));
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
