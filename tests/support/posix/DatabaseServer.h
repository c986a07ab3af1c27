// A private PostgreSQL of the distribution's packages: its files in a folder of its own, reached by
// a local socket alone, gone with the test program.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "platform/Process.h"

class DatabaseServer {
  public:
    /// The one of this program, started when it is first asked for.
    static DatabaseServer& Instance();
    ~DatabaseServer();
    DatabaseServer(const DatabaseServer&) = delete;
    DatabaseServer& operator=(const DatabaseServer&) = delete;

    /// The URL of a new database without tables.
    std::string NewDatabase();
    /// What its own shell prints for a statement, a line for each row with '|' between columns.
    static std::string Ask(const std::string& url, const std::string& statement);

    /// At once, without a word to those who are connected.
    void Kill();
    void Start();

  private:
    DatabaseServer();
    std::string URL(const std::string& database) const;

    std::filesystem::path m_Folder;
    std::unique_ptr<Process> m_pServer;
    int m_nDatabases = 0;
};
