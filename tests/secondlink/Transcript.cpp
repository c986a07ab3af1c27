// The runs, one behind the other.
#include "tests/secondlink/Transcript.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "frame/Registration.h"
#include "tests/support/Driver.h"

/// An export's address, whose form the caller knows.
static void (*FunctionIn(HMODULE library, const char* pszName))() {
    return reinterpret_cast<void (*)()>(GetProcAddress(library, pszName));
}

SECOND_LINK& SecondLinkIn(HMODULE library) {
    const auto getLink = reinterpret_cast<SECOND_LINK_PROC>(FunctionIn(library, "SecondLink"));
    if (getLink == nullptr) {
        throw std::runtime_error("there is no second link");
    }
    return *getLink();
}

static std::map<std::string, EVENT_PROC> s_Operations;
static std::string s_Registrations;

static void Collect(
    const char* name, EVENT_PROC procedure, std::int32_t* size, std::int32_t* direction,
    std::int32_t* reserved) {
    s_Operations[name] = procedure;
    for (std::int32_t* pWord : {size, direction, reserved}) {
        s_Registrations += std::to_string((*pWord)++) + ' ';  // it may: the next one's are its own
    }
    s_Registrations += std::string(name) + '\n';
}

/// The result, behind a line for each registration.
static std::string RegisterOperations(HMODULE module) {
    s_Registrations.clear();
    const auto registerAll = reinterpret_cast<std::int32_t (*)(EVENT_PROC_REGISTER_FUNC)>(
        FunctionIn(module, "RegisterEventProcList"));
    const std::int32_t result = registerAll(Collect);
    return s_Registrations + std::to_string(result) + '\n';
}

/// What the other two exports give and leave in the log; a table without heads is not touched.
static std::string CallOtherExports(HMODULE module) {
    const auto getList =
        reinterpret_cast<std::int32_t (*)(void*)>(FunctionIn(module, "GetEventProcList"));
    const auto initialize = reinterpret_cast<std::int32_t(WINAPI*)(void*)>(
        FunctionIn(module, "_RegisterInitializeFuncList@4"));
    return std::to_string(getList(nullptr)) + ' ' + std::to_string(initialize(nullptr)) + '\n';
}

/// The log's text since the last call.
static std::string TakeLog() {
    std::ifstream log("JigDll.log", std::ios::binary);
    std::string text(std::istreambuf_iterator<char>(log), {});
    log.close();
    std::filesystem::remove("JigDll.log");
    return text;
}

/// Gives false if the step that was to fail did not come. The link counts its steps afresh.
static bool RunOnce(const OPERATION_INFO& operation, SECOND_LINK& link, std::string& transcript) {
    RecordBytes record = ValidRecord(operation);
    link.steps = 0;
    const std::int32_t result = s_Operations.at(operation.name)(record.data());
    const std::string bytes(record.begin(), record.end());
    transcript += std::string(operation.name) + ", step " + std::to_string(link.failAt) +
                  " fails: " + std::to_string(result) + ", record " +
                  std::to_string(std::hash<std::string>()(bytes)) + '\n' + link.notes + TakeLog();
    link.notes.clear();
    return link.steps >= link.failAt;
}

static void RunWithEachFailure(
    const OPERATION_INFO& operation, SECOND_LINK& link, std::string& transcript) {
    link.failAt = 0;
    do {
        link.failAt += 1 + link.failAt / 40;  // a dump has a thousand steps that are much alike
        link.thrown = static_cast<THROWN>(link.failAt % static_cast<unsigned>(THROWN::COUNT));
    } while (RunOnce(operation, link, transcript));
    link.failAt = 0;
}

std::string Transcript(const std::filesystem::path& module, SECOND_LINK& link) {
    link = {};
    HMODULE library = LoadLibraryA(module.string().c_str());
    std::string transcript = RegisterOperations(library) + RegisterOperations(library) +
                             CallOtherExports(library) + link.notes + TakeLog();
    link.notes.clear();
    for (const OPERATION_INFO* pOperation : AllOperations()) {
        if (pOperation->use == RECORD_USE::NONE) {
            const std::int32_t result = s_Operations.at(pOperation->name)(nullptr);
            transcript +=
                std::string(pOperation->name) + ", nothing given: " + std::to_string(result) + '\n';
        }
        RunOnce(*pOperation, link, transcript);
        RunWithEachFailure(*pOperation, link, transcript);
    }
    FreeLibrary(library);
    return transcript + link.notes + TakeLog();
}

static std::vector<std::string> LinesOf(const std::string& text) {
    std::istringstream lines(text);
    std::vector<std::string> all;
    for (std::string line; std::getline(lines, line);) {
        all.push_back(line);
    }
    all.emplace_back("\n");  // as no line is
    return all;
}

std::string FirstDifference(const std::string& expected, const std::string& made) {
    const auto lines = LinesOf(expected);
    const auto madeLines = LinesOf(made);
    const auto [line, madeLine] =
        std::mismatch(lines.begin(), lines.end(), madeLines.begin(), madeLines.end());
    if (line == lines.end()) {
        return "";
    }
    return std::to_string(line - lines.begin() + 1) + ": " + *line + " | " + *madeLine;
}
