// The module loaded and unloaded, fresh folders, logs and calls as text.
#include "tests/support/Support.h"

#include <algorithm>
#include <fstream>
#include <iomanip>
#include <iterator>
#include <memory>
#include <random>
#include <sstream>
#include <stdexcept>

#include "platform/OwnBlocks.h"

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace {

std::filesystem::path s_BuildFolder;

/// The callback takes no context, so that it finds its list here.
std::vector<REGISTERED>* s_pRegistered = nullptr;

void TakeRegistration(
    const char* name, EVENT_PROC procedure, std::int32_t* size, std::int32_t* direction,
    std::int32_t* reserved) {
    s_pRegistered->push_back({name, procedure, *size, *direction, *reserved});
    *size = *direction = *reserved = 77;  // the host's during the call
}

/// Leaves allocations out of the check for leaks: the module keeps its property hash for good, and
/// unloading takes away the last pointer to it.
#ifdef __SANITIZE_ADDRESS__
using LeaksAllowed = __lsan::ScopedDisabler;
#else
struct LeaksAllowed {};
#endif

}  // namespace

int main(int argc, char** argv) {
    TakeOwnBlocks();
    testing::InitGoogleMock(&argc, argv);
    s_BuildFolder = std::filesystem::absolute(argv[0]).parent_path();
    return RUN_ALL_TESTS();
}

const std::filesystem::path& BuildFolder() {
    return s_BuildFolder;
}

// --- The module as its host has it ---

LoadedModule::LoadedModule()
    : m_Library(LoadLibraryA((BuildFolder() / MODULE_FILE).string().c_str())) {
    if (m_Library == nullptr) {
        throw std::runtime_error("the module does not load");
    }
    pGetEventProcList = reinterpret_cast<decltype(pGetEventProcList)>(Export("GetEventProcList"));
    pRegisterEventProcList =
        reinterpret_cast<decltype(pRegisterEventProcList)>(Export("RegisterEventProcList"));
    pRegisterInitializeFuncList = reinterpret_cast<decltype(pRegisterInitializeFuncList)>(
        Export("_RegisterInitializeFuncList@4"));
}

LoadedModule::~LoadedModule() {
    FreeLibrary(m_Library);
}

std::int32_t LoadedModule::Register() {
    registered.clear();
    s_pRegistered = &registered;
    return RegisterWith(TakeRegistration);
}

std::int32_t LoadedModule::RegisterWith(EVENT_PROC_REGISTER_FUNC callback) {
    [[maybe_unused]] const LeaksAllowed leaksAllowed;
    return pRegisterEventProcList(callback);
}

FreshFolder::FreshFolder() : m_Former(std::filesystem::current_path()) {
    // In memory where that is possible: some tests write a million files.
    const std::filesystem::path memory = "/dev/shm";
    const auto base =
        std::filesystem::exists(memory) ? memory : std::filesystem::temp_directory_path();
    std::random_device random;
    do {
        path = base / ("tunebench-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(path));
    std::filesystem::current_path(path);
}

FreshFolder::~FreshFolder() {
    std::error_code ignored;
    std::filesystem::current_path(m_Former, ignored);
    std::filesystem::remove_all(path, ignored);
}

// --- The fixture ---

ModuleTest::ModuleTest() {
    SimulatedBody::Reset();
    SimulatedBody::SetLinePrefix("> ");
    SimulatedBody::RecordCalls(true);
    LoadAgain();
    EXPECT_EQ(Module().Register(), 0);
    ClearLog();
}

void ModuleTest::LoadAgain() {
    Unload();
    m_pModule = std::make_unique<LoadedModule>();
}

EVENT_PROC ModuleTest::Operation(const std::string& name) const {
    for (const REGISTERED& operation : m_pModule->registered) {
        if (operation.name == name) {
            return operation.procedure;
        }
    }
    throw std::out_of_range(name + " is not registered");
}

std::int32_t ModuleTest::Run(const std::string& name, void* pArgument) {
    ClearLog();
    SimulatedBody::ClearCalls();
    return Operation(name)(pArgument);
}

Steps ModuleTest::RunSteps(const std::string& name, void* pArgument) {
    Steps steps;
    std::size_t shown = 0;
    const auto showLog = [&] {
        const std::string log = Log();
        std::istringstream lines(log.substr(shown));
        shown = log.size();
        for (std::string line; std::getline(lines, line);) {
            steps.push_back(line);
        }
    };
    SimulatedBody::Observe([&](const SimulatedBody::CALL& call, bool complete) {
        if (complete) {
            steps.push_back(CallText(call));
        } else {
            showLog();
        }
    });
    m_nResult = Run(name, pArgument);
    showLog();
    SimulatedBody::Observe({});
    return steps;
}

std::string ModuleTest::Log() const {
    std::string log = ReadFile(LOG_FILE).substr(m_LogStart);
    log.erase(std::remove(log.begin(), log.end(), '\r'), log.end());
    return log;
}

void ModuleTest::ClearLog() {
    m_LogStart = std::filesystem::is_regular_file(LOG_FILE) ? ReadFile(LOG_FILE).size() : 0;
}

std::vector<std::string> ModuleTest::Calls() {
    std::vector<std::string> texts;
    std::transform(
        SimulatedBody::Calls().begin(), SimulatedBody::Calls().end(), std::back_inserter(texts),
        CallText);
    return texts;
}

// --- Texts ---

std::string CallText(const SimulatedBody::CALL& call) {
    const std::string function = call.function.substr(call.function.rfind(':') + 1);
    const auto isOneOf = [&](std::string_view functions) {
        return functions.find(' ' + function + ' ') != functions.npos;
    };
    std::ostringstream text;
    text << function << (call.name.empty() ? "" : " ") << call.name;
    if (isOneOf(" Get Set Save PushList ChangeBank WriteMemory ReadMemory ")) {
        text << " 0x" << std::hex << std::uppercase << call.id << std::dec;
    }
    if (isOneOf(" InitializeList CallFunction ")) {
        text << ' ' << call.id;
    }
    if (isOneOf(" Get Set Execute PushParameterAsInteger PushParameterAsSafeArray "
                "GetReturnData ExecuteAndGetData WriteMemory ReadMemory ")) {
        text << ' ' << call.value;
    }
    text << (call.sent.empty() ? "" : ": ") << Hex(call.sent) << (call.failure ? " failed" : "");
    return text.str();
}

std::string Hex(const SimulatedBody::Bytes& bytes) {
    std::ostringstream text;
    text << std::hex << std::setfill('0');
    const char* pszSeparator = "";
    for (const unsigned byte : bytes) {
        text << pszSeparator << std::setw(2) << byte;
        pszSeparator = " ";
    }
    return text.str();
}

std::string Frame(const std::string& logName, std::int32_t result, const std::string& work) {
    return "> [----]\n> [FUNC] " + logName + "\n" + work + "> [FUNC] " + logName + " - " +
           std::to_string(result) + "\n";
}

std::string FailedFrame(
    const std::string& logName, std::int32_t result, const std::string& message,
    const std::string& work) {
    return Frame(logName, result, work + "> [ERR!] - " + message + "\n");
}

std::size_t CountLines(std::string_view log, std::string_view line) {
    std::istringstream lines{std::string(log)};
    std::string each;
    std::size_t count = 0;
    while (std::getline(lines, each)) {
        count += each == line ? 1 : 0;
    }
    return count;
}

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path << " can't be read";
    return {std::istreambuf_iterator<char>(file), {}};
}

std::size_t EntryCount(const std::filesystem::path& folder) {
    return static_cast<std::size_t>(std::distance(
        std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator()));
}

void WriteFile(const std::filesystem::path& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    EXPECT_TRUE(file.flush()) << path << " can't be written";
}

std::vector<std::string> TableLines(const std::string& name) {
    std::ifstream file(std::filesystem::path(TEST_FOLDER) / name);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line[0] != '#') {
            lines.push_back(line);
        }
    }
    if (lines.empty()) {
        throw std::runtime_error("can't read the table " + name);
    }
    return lines;
}
