// Histories of both kinds of database, each in a fresh folder.
#pragma once

#include "tests/jighost/history/posix/SampleRecords.h"
#include "tests/support/posix/DatabaseServer.h"
#include "tests/support/posix/Shell.h"

/// Its parameter is the kind.
class HistoryDatabaseTest : public testing::TestWithParam<const char*> {
  protected:
    static bool IsServer() { return std::string(GetParam()) == "PostgreSQL"; }

    JIGHOST_RUN Run(const std::string& arguments) const {
        return RunShell("\"$0\" history " + arguments + " --database '" + m_Place + '\'');
    }
    /// As Run; it must end with this exit code and tell this.
    void Fails(int exitCode, const std::string& arguments, const std::string& error = "") const {
        const JIGHOST_RUN run = Run(arguments);
        EXPECT_EQ(run.exitCode, exitCode) << arguments;
        EXPECT_THAT(run.errors, testing::HasSubstr(error)) << arguments;
    }
    /// All of these files are records.
    void Import(const std::string& names, unsigned unImported, unsigned unKnown = 0) const {
        const JIGHOST_RUN run = Run("import " + names);
        EXPECT_EQ(
            run.output + run.errors,
            std::to_string(unImported) + (unImported == 1 ? " record" : " records") +
                " imported, " + std::to_string(unKnown) + " known before, 0 spoilt\n");
    }
    Json Output(const std::string& arguments) const {
        const JIGHOST_RUN run = Run(arguments + " --json");
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        return Json::parse(run.output);
    }
    /// What the database's own shell prints, columns apart by '|'.
    std::string Ask(const std::string& statement) const {
        return IsServer() ? DatabaseServer::Ask(m_Place, statement)
                          : RunProgram("/usr/bin/sqlite3", {m_Place, statement}).output;
    }
    /// There are so many runs, each with its step and its measurement.
    void ExpectWhole(unsigned unRuns) const {
        const std::string count = std::to_string(unRuns);
        EXPECT_EQ(
            Ask("SELECT (SELECT count(*) FROM run), (SELECT count(*) FROM run JOIN step ON"
                " step.run = id JOIN measurement ON measurement.run = id),"
                " (SELECT count(*) FROM step), (SELECT count(*) FROM measurement)"),
            count + '|' + count + '|' + count + '|' + count + '\n');
    }

    const FreshFolder m_Folder;
    const std::string m_Place = IsServer() ? DatabaseServer::Instance().NewDatabase() : "h.sqlite";
};
