// What the tests of operations stand on: a module loaded afresh for each test, its log and the
// calls that it made of the camera, each as text.
//
//     TEST_F(ModuleTest, SetBodyIDPacksTheGroups) {
//         BODY_ID_T bodyID{1507, 42, 3, 9, 12345};
//         EXPECT_EQ(Run("SetBodyID", &bodyID), 0);
//         EXPECT_THAT(Calls(), ElementsAre("Set 0x1000006 8: b5 0d 00 00 f9 5d a9 be"));
//         EXPECT_EQ(Log(), Frame("SetBodyID", 0));
//     }
//
// All of it goes through what a host has: the library's exports, the callback, the log file.
#pragma once

#include <gmock/gmock.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "bodylnk/SimulatedBody.h"
#include "module/Module.h"
#include "platform/Platform.h"

using testing::ElementsAre;
using testing::IsEmpty;

/// What happens during a run, in its order: calls of the link as CallText writes them, and lines of
/// the log, each ahead of the first call that finds it in the file.
using Steps = std::vector<std::string>;

/// One call of the registration callback.
struct REGISTERED {
    std::string name;
    EVENT_PROC procedure;
    std::int32_t size;
    std::int32_t direction;
    std::int32_t reserved;
};

/// What a host knows of the module: three exports, and what its callback was told.
class LoadedModule {
  public:
    LoadedModule();  ///< loads the module from the build folder
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;
    ~LoadedModule();  ///< unloads it

    decltype(&GetEventProcList) pGetEventProcList = nullptr;
    decltype(&RegisterEventProcList) pRegisterEventProcList = nullptr;
    decltype(&RegisterInitializeFuncList) pRegisterInitializeFuncList = nullptr;

    /// Calls RegisterEventProcList with a callback that fills `registered` afresh.
    std::int32_t Register();
    std::int32_t RegisterWith(EVENT_PROC_REGISTER_FUNC callback);
    std::vector<REGISTERED> registered;

    /// The address of an export, null if there is none.
    void (*Export(const char* name) const)() {
        return reinterpret_cast<void (*)()>(GetProcAddress(m_Library, name));
    }

  private:
    HMODULE m_Library;
};

/// A fresh folder as current directory; removed afterwards, and the former directory is back.
class FreshFolder {
  public:
    FreshFolder();
    FreshFolder(const FreshFolder&) = delete;
    FreshFolder& operator=(const FreshFolder&) = delete;
    ~FreshFolder();

    std::filesystem::path path;

  private:
    std::filesystem::path m_Former;
};

/// A factory-new body with the line prefix "> ", a fresh folder, the module loaded and registered.
class ModuleTest : public testing::Test {
  protected:
    ModuleTest();

    /// Runs a registered operation. Log and calls then show what this run did.
    std::int32_t Run(const std::string& name, void* pArgument = nullptr);

    /// Runs it, and gives all that happened; the result is in Result.
    Steps RunSteps(const std::string& name, void* pArgument = nullptr);
    std::int32_t Result() const { return m_nResult; }

    /// The operation alone: log and calls go on behind what they hold.
    EVENT_PROC Operation(const std::string& name) const;

    /// The log file's text since the last Run or ClearLog, lines ended by '\n' on each system.
    std::string Log() const;
    void ClearLog();

    /// The link calls since the last Run or SimulatedBody::ClearCalls, as CallText writes them.
    static std::vector<std::string> Calls();

    const std::filesystem::path& Folder() const { return m_Folder.path; }
    LoadedModule& Module() { return *m_pModule; }
    void Unload() { m_pModule.reset(); }
    void LoadAgain();  ///< unloads it first if it is loaded; does not register

  private:
    FreshFolder m_Folder;
    std::unique_ptr<LoadedModule> m_pModule;
    std::size_t m_LogStart = 0;
    std::int32_t m_nResult = 0;
};

/// In the current directory.
inline const char* const LOG_FILE = "JigDll.log";

/// The folder of all build products, with the module's and other programs' file names in it.
const std::filesystem::path& BuildFolder();

// --- Texts ---

/// A link call: function, name, id, number, bytes sent, and " failed" where it threw:
///     Get 0x1000006 8                 Save 0x1000006          PushList 0x1000006
///     Set 0x1000000 4: ff ff ff ff    InitializeList 3        SaveList
///     Execute FA_SomeEvent 5          ClearParameters         PushParameterAsInteger 5
///     GetReturnData 16                ChangeBank 0xEE         PushParameterAsSafeArray 2: 01 02
///     ReadMemory 0xF000 32            CallFunction 3          GetPropertyFullPath BoardInf.ini
std::string CallText(const SimulatedBody::CALL& call);

/// Bytes as "b5 0d 00".
std::string Hex(const SimulatedBody::Bytes& bytes);

/// The bytes of a record as they lie in memory.
template <class Record>
SimulatedBody::Bytes BytesOf(const Record& record) {
    const auto* pBytes = reinterpret_cast<const std::uint8_t*>(&record);
    return {pBytes, pBytes + sizeof(record)};
}

/// The log text of one run of an operation: opening lines, the text of its work (whole lines with
/// their prefix, nested frames among them), closing line.
std::string Frame(const std::string& logName, std::int32_t result, const std::string& work = "");

/// The same for a failed run, with its error line as the work's last line.
std::string FailedFrame(
    const std::string& logName, std::int32_t result, const std::string& message,
    const std::string& work = "");

/// What a call throws that a test lets fail, and its error line without the prefix.
const std::int32_t LINK_FAILURE = 0x2001;
inline const std::string LINK_MESSAGE = "[EVNT] Link failure";

/// A file's bytes; fails the test if it can't be read.
std::string ReadFile(const std::filesystem::path& path);
void WriteFile(const std::filesystem::path& path, std::string_view bytes);
/// How many files and folders lie in a folder.
std::size_t EntryCount(const std::filesystem::path& folder);

/// The lines of a table beside the tests, named from their folder, without those that begin with
/// '#'. Throws if there are none.
std::vector<std::string> TableLines(const std::string& name);

// --- Matchers of a log; each shows the whole log where it does not match ---

/// The number of lines that are exactly `line`.
std::size_t CountLines(std::string_view log, std::string_view line);

MATCHER_P(HasLine, line, "") {
    *result_listener << "the log is\n" << arg;
    return CountLines(arg, line) > 0;
}
