// Each version as the statements that make it of the one before. None of them ever changes: what is
// new gets a version of its own. They are of both kinds of database.
#include "jighost/history/Schema.h"

#include <span>

#include "jighost/text/HostError.h"

// Rows of a run come and go in one transaction with it: no keys between tables, the checks of which
// take longer than all else of an import.
static constexpr const char* VERSION_1[] = {
    "CREATE TABLE tunebench_history (version INTEGER NOT NULL)",
    "INSERT INTO tunebench_history VALUES (0)",
    // started_at in milliseconds since 1970, 0 if unknown; day since 1970, of the station's
    // calendar
    "CREATE TABLE run ("
    " id INTEGER PRIMARY KEY,"
    " number TEXT NOT NULL UNIQUE,"
    " started_at BIGINT NOT NULL,"
    " started TEXT NOT NULL,"
    " day BIGINT,"
    " time_ms DOUBLE PRECISION NOT NULL,"
    " station TEXT NOT NULL,"
    " operator TEXT NOT NULL,"
    " serial BIGINT,"
    " sequence TEXT NOT NULL,"
    " sequence_sha256 TEXT NOT NULL,"
    " outcome TEXT NOT NULL,"
    " problem TEXT NOT NULL,"
    " path TEXT NOT NULL)",  // where it was imported from
    "CREATE INDEX run_serial ON run (serial)",
    "CREATE INDEX run_started ON run (started_at, id)",
    // place counts from 1; number is that of the record
    "CREATE TABLE step ("
    " run INTEGER NOT NULL,"
    " place INTEGER NOT NULL,"
    " number BIGINT NOT NULL,"
    " name TEXT NOT NULL,"
    " operation TEXT NOT NULL,"
    " outcome TEXT NOT NULL,"
    " problem TEXT NOT NULL,"
    " time_ms DOUBLE PRECISION NOT NULL,"
    " attempts BIGINT NOT NULL)",
    "CREATE INDEX step_run ON step (run)",
    // What is measured time and again; digest is that of all other columns
    "CREATE TABLE quantity ("
    " id INTEGER PRIMARY KEY,"
    " digest TEXT NOT NULL UNIQUE,"
    " sequence TEXT NOT NULL,"
    " step BIGINT NOT NULL,"
    " name TEXT NOT NULL,"
    " unit TEXT NOT NULL,"
    " least DOUBLE PRECISION,"
    " greatest DOUBLE PRECISION)",
    "CREATE TABLE measurement ("
    " run INTEGER NOT NULL,"
    " step INTEGER NOT NULL,"  // its place
    " place INTEGER NOT NULL,"
    " quantity INTEGER NOT NULL,"
    " value DOUBLE PRECISION,"
    " text TEXT NOT NULL,"
    " judged INTEGER NOT NULL,"
    " within INTEGER NOT NULL)",
    "CREATE INDEX measurement_run ON measurement (run)",
};

static constexpr std::span<const char* const> VERSIONS[] = {VERSION_1};
static constexpr std::int64_t NEWEST = std::size(VERSIONS);

static std::int64_t Count(Database& database, const char* pszFile, const char* pszServer) {
    std::int64_t nCount = 0;
    Query(database, database.IsServer() ? pszServer : pszFile).Into(nCount).Next();
    return nCount;
}

/// 0 where there is none.
static std::int64_t VersionOf(Database& database) {
    const bool bAny =
        Count(
            database, "SELECT count(*) FROM sqlite_master WHERE name = 'tunebench_history'",
            "SELECT count(*) FROM pg_tables WHERE schemaname = current_schema() AND"
            " tablename = 'tunebench_history'") > 0;
    static const char SELECT[] = "SELECT version FROM tunebench_history";
    return bAny ? Count(database, SELECT, SELECT) : 0;
}

static bool HasTables(Database& database) {
    return Count(
               database, "SELECT count(*) FROM sqlite_master",
               "SELECT count(*) FROM pg_tables WHERE schemaname = current_schema()") > 0;
}

[[noreturn]] static void RefuseDatabase(const Database& database, const std::string& why) {
    throw HostError(EXIT_HOST_ERROR, database.Name() + ": " + why);
}

/// Gives whether it is of the newest version.
static bool IsUpToDate(const Database& database, std::int64_t nVersion) {
    if (nVersion < 0 || nVersion > NEWEST) {
        RefuseDatabase(
            database, "a history of version " + std::to_string(nVersion) +
                          ", made by another jighost; this one knows up to " +
                          std::to_string(NEWEST));
    }
    return nVersion == NEWEST;
}

static void BringUpToDate(Database& database, std::int64_t nVersion) {
    for (; nVersion < NEWEST; ++nVersion) {
        for (const char* pszStatement : VERSIONS[nVersion]) {
            database.Run(pszStatement);
        }
    }
    Query(database, "UPDATE tunebench_history SET version = :version")
        .With("version", NEWEST)
        .Run();
}

void MakeHistory(Database& database) {
    if (IsUpToDate(database, VersionOf(database))) {
        return;
    }
    Transaction transaction(database, Transaction::WRITE);
    const std::int64_t nVersion = VersionOf(database);  // another one may have been quicker
    if (nVersion == 0 && HasTables(database)) {
        RefuseDatabase(database, "has tables of something else; expected a history or none at all");
    }
    if (!IsUpToDate(database, nVersion)) {
        BringUpToDate(database, nVersion);
    }
    transaction.Commit();
}

void RequireHistory(Database& database) {
    if (VersionOf(database) == 0) {
        RefuseDatabase(database, "holds no history; jighost history import makes one");
    }
    MakeHistory(database);
}
