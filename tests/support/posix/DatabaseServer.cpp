// PostgreSQL serves nobody whom it runs as root for: there it runs as "nobody".
#include "tests/support/posix/DatabaseServer.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "tests/support/SupportJighost.h"

namespace fs = std::filesystem;

// Words ahead of a program of the server. It dies with its parent, also if that is killed.
static const std::string OWN_USER =
    "exec setpriv --pdeathsig KILL $([ $(id -u) != 0 ] || echo --reuid nobody --clear-groups) "
    "$(ls -d /usr/lib/postgresql/*/bin | sort -V | tail -1)/";

static std::string NewFolder() {
    std::string folder = (fs::temp_directory_path() / "tunebench-server-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr) {
        throw std::runtime_error("there is no folder for PostgreSQL");
    }
    fs::permissions(folder, fs::perms::all);
    return folder;
}

DatabaseServer& DatabaseServer::Instance() {
    static DatabaseServer s_Server;
    return s_Server;
}

DatabaseServer::DatabaseServer() : m_Folder(NewFolder()) {
    Process make(
        "/bin/sh", {"-c",
                    "cd \"$0\" && " + OWN_USER +
                        "initdb -D data -U line -A trust -E UTF8 --locale=C --no-sync >made 2>&1",
                    m_Folder.string()});
    if (make.Wait() != 0) {
        throw std::runtime_error("PostgreSQL makes no database; Debian's package is postgresql");
    }
    Start();
}

DatabaseServer::~DatabaseServer() {
    Kill();
    std::error_code error;
    fs::remove_all(m_Folder, error);
}

void DatabaseServer::Kill() {
    m_pServer->Kill();
}

// One that was killed leaves helpers behind, which go by themselves; another one waits for that.
void DatabaseServer::Start() {
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(2);
    std::string said;
    while (std::chrono::steady_clock::now() < end) {
        m_pServer = std::make_unique<Process>(
            "/bin/sh",
            std::vector<std::string>{
                "-c",
                "cd \"$0\" && " + OWN_USER +
                    "postgres -D data -k \"$0\" -c listen_addresses= -c log_min_messages=log "
                    "-c log_checkpoints=off -c fsync=off 2>&1",
                m_Folder.string()});
        while (const auto line = m_pServer->ReadLine()) {
            said += *line + '\n';
            if (line->find("ready to accept connections") != std::string::npos) {
                return;
            }
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    throw std::runtime_error("PostgreSQL does not start: " + said);
}

/// With the socket's folder as its host, whose slashes would end one.
std::string DatabaseServer::URL(const std::string& database) const {
    std::string host = m_Folder.string();
    for (auto at = host.find('/'); at != std::string::npos; at = host.find('/')) {
        host.replace(at, 1, "%2F");
    }
    return "postgresql://line@" + host + '/' + database;
}

std::string DatabaseServer::NewDatabase() {
    const std::string name = "history" + std::to_string(++m_nDatabases);
    Ask(URL("postgres"), "CREATE DATABASE " + name);
    return URL(name);
}

std::string DatabaseServer::Ask(const std::string& url, const std::string& statement) {
    const JIGHOST_RUN run = RunProgram("/usr/bin/psql", {"-XqAtc", statement, url});
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    return run.output;
}
