// The libraries are looked at by a second process, the rest is looked at here.
#include "jighost/check/Doctor.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <optional>
#include <sstream>
#include <thread>

#include "jighost/check/SharedBlockCheck.h"
#include "platform/Process.h"
#include "platform/Program.h"

static const char LOG_FILE[] = "JigDll.log";

// For all checks of the libraries together; a sound module takes a fraction of a second.
static const std::chrono::seconds MODULE_PATIENCE(10);

static const char CHECK_MARK[] = "jighost-check";

static const std::vector<std::string> LINK_CHECKS = {
    "link found", "link word size", "link loads", "link functions", "link serves"};
static const std::vector<std::string> MODULE_CHECKS = {"found",   "word size",     "loads",
                                                       "exports", "registrations", "unloads"};

// --- What is looked at here ---

static CHECK Result(const char* name, bool bGood, const std::string& text) {
    return {name, bGood ? STATE::OK : STATE::FAILED, text};
}

/// What is wrong with the log's file; empty if the module can write it.
static std::string LogFault(const std::filesystem::path& path, bool bExists) {
    std::error_code error;
    if (bExists && !std::filesystem::is_regular_file(path, error)) {
        return path.string() + " is no regular file";  // to open a pipe would wait for its reader
    }
    errno = 0;
    const bool bWritable = std::ofstream(path, std::ios::app).is_open();
    return bWritable ? "" : "can't write " + path.string() + ": " + std::strerror(errno);
}

static CHECK CheckLogFile() {
    std::error_code error;
    const std::filesystem::path path = std::filesystem::current_path(error) / LOG_FILE;
    const bool bExisted = std::filesystem::exists(path, error);
    const std::string fault = LogFault(path, bExisted);
    if (fault.empty() && !bExisted) {
        std::filesystem::remove(path, error);
    }
    return Result("log file", fault.empty(), fault.empty() ? path.string() : fault);
}

static CHECK CheckSharedBlocks() {
    const std::string fault = SharedBlockFault();
    return Result("shared blocks", fault.empty(), fault.empty() ? "can be opened" : fault);
}

// --- What the second process tells ---

std::string CheckLine(const CHECK& check) {
    static const char* const STATES[] = {"ok", "failed", "-"};
    std::ostringstream line;
    line << CHECK_MARK << '\t' << STATES[static_cast<std::size_t>(check.state)] << '\t'
         << check.name << '\t' << check.text;
    return line.str();
}

/// Nothing for a line that the module itself has printed.
static std::optional<CHECK> ParseCheck(const std::string& line) {
    std::istringstream fields(line);
    std::string mark;
    std::string state;
    CHECK check;
    if (!std::getline(fields, mark, '\t') || mark != CHECK_MARK ||
        !std::getline(fields, state, '\t') || !std::getline(fields, check.name, '\t')) {
        return std::nullopt;
    }
    std::getline(fields, check.text);
    check.state = state == "ok" ? STATE::OK : state == "-" ? STATE::NOT_TESTED : STATE::FAILED;
    return check;
}

namespace {

/// Ends a process that takes too long.
class Watchdog {
  public:
    explicit Watchdog(Process& process)
        : m_Thread([this, &process](const std::stop_token& stop) { Watch(stop, process); }) {}

    bool HasBitten() const { return m_bBitten; }

  private:
    void Watch(const std::stop_token& stop, Process& process) {
        std::unique_lock lock(m_Mutex);
        m_Stopped.wait_for(lock, stop, MODULE_PATIENCE, [] { return false; });
        if (!stop.stop_requested()) {
            m_bBitten = true;
            process.End();
        }
    }

    std::mutex m_Mutex;
    std::condition_variable_any m_Stopped;
    std::atomic<bool> m_bBitten = false;
    std::jthread m_Thread;  // the last one: it ends before the others go
};

/// The checks of a second process, and what became of those that it did not come to.
class LibraryChecks {
  public:
    LibraryChecks(std::vector<std::string> names, const std::function<void(const CHECK&)>& onCheck)
        : m_Names(std::move(names)), m_OnCheck(onCheck) {}

    void Read(Process& process) {
        for (auto line = process.ReadLine(); line; line = process.ReadLine()) {
            const std::optional<CHECK> check = ParseCheck(*line);
            if (check && checks.size() < m_Names.size() && check->name == m_Names[checks.size()]) {
                Add(*check);
            }
        }
    }

    /// The check in which the process ended failed by that; those behind it were not made.
    void Close(const std::string& end) {
        bool bCulprit = checks.empty() || checks.back().state == STATE::OK;
        while (checks.size() < m_Names.size()) {
            Add(
                {m_Names[checks.size()], bCulprit ? STATE::FAILED : STATE::NOT_TESTED,
                 bCulprit ? end : "not tested"});
            bCulprit = false;
        }
    }

    std::vector<CHECK> checks;

  private:
    void Add(const CHECK& check) {
        checks.push_back(check);
        m_OnCheck(check);
    }

    std::vector<std::string> m_Names;
    const std::function<void(const CHECK&)>& m_OnCheck;
};

}  // namespace

static std::vector<CHECK> CheckLibraries(
    const std::string& path, const std::string& linkPath,
    const std::function<void(const CHECK&)>& onCheck) {
    std::vector<std::string> names = MODULE_CHECKS;
    std::vector<std::string> arguments = {"doctor", path, "--in-process"};
    if (!linkPath.empty()) {
        names.insert(names.begin(), LINK_CHECKS.begin(), LINK_CHECKS.end());
        arguments.insert(arguments.end(), {"--link", linkPath});
    }
    LibraryChecks checks(names, onCheck);
    Process process(ProgramFile().string(), arguments);
    const Watchdog watchdog(process);
    checks.Read(process);
    const std::string end = process.EndText();
    checks.Close(
        watchdog.HasBitten()
            ? "does not come back within " + std::to_string(MODULE_PATIENCE.count()) + " seconds"
            : "ends the program: " + end);
    return checks.checks;
}

std::vector<CHECK> CheckModuleAndLink(const std::string& path, const std::string& linkPath) {
    return CheckLibraries(path, linkPath, [](const CHECK&) {});
}

std::vector<CHECK> CheckAll(
    const std::string& path, const std::string& linkPath,
    const std::function<void(const CHECK&)>& onCheck) {
    std::vector<CHECK> checks = CheckLibraries(path, linkPath, onCheck);
    for (const CHECK& check : {CheckLogFile(), CheckSharedBlocks()}) {
        checks.push_back(check);
        onCheck(check);
    }
    return checks;
}
