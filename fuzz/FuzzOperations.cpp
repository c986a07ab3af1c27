// The fuzz target: runs operations by what the input says. What comes from the camera, from files
// and from other processes is hostile; what the host answers for, valid pointers and blocks that
// are large enough, is kept.
//
// An input is a row of steps. A step is an operation's number, the HOSTILE bits, and behind them
// what each of the bits takes.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <span>
#include <stdexcept>

#include "bodylnk/SimulatedBody.h"
#include "frame/Registration.h"
#include "platform/Export.h"
#include "platform/OwnBlocks.h"
#include "platform/Program.h"
#include "tests/support/Driver.h"

// The module's larger buffers are refused: four gigabytes would only cost time. This takes the
// place of the run-time library's in the module too.
extern "C" MODULE_API void* calloc(std::size_t count, std::size_t size) noexcept {
    const std::size_t LARGEST_BUFFER = 4'000'000;
    if (size != 0 && count > LARGEST_BUFFER / size) {
        return nullptr;
    }
    void* pMemory = std::malloc(std::max<std::size_t>(count * size, 1));
    return pMemory == nullptr ? nullptr : std::memset(pMemory, 0, count * size);
}

namespace {

enum HOSTILE : unsigned {
    HOSTILE_RECORD = 1,
    HOSTILE_PROPERTIES = 2,
    HOSTILE_EVENTS = 4,
    HOSTILE_SIZES = 8,
    HOSTILE_INI = 16,
    HOSTILE_FOLDER = 32,
    HOSTILE_FAULT = 64,
    HOSTILE_MEMORY = 128,
};

// A dump of the host's bytes to the log writes it once for each of them.
const std::uint32_t LARGEST_INI_SIZE = 1000;

/// The bytes of an input; zeros behind its end.
class Input {
  public:
    Input(const std::uint8_t* pData, std::size_t size) : m_Rest(pData, size) {}

    bool AtEnd() const { return m_Rest.empty(); }

    SimulatedBody::Bytes Take(std::size_t count) {
        SimulatedBody::Bytes bytes(count);
        const auto taken = m_Rest.first(std::min(count, m_Rest.size()));
        std::copy(taken.begin(), taken.end(), bytes.begin());
        m_Rest = m_Rest.subspan(taken.size());
        return bytes;
    }

    std::uint8_t Byte() { return Take(1)[0]; }

    std::uint32_t Word() {
        std::uint32_t word = 0;
        std::memcpy(&word, Take(sizeof(word)).data(), sizeof(word));
        return word;
    }

    /// A byte for the length, and the text.
    std::string Text() {
        const SimulatedBody::Bytes bytes = Take(Byte());
        return {bytes.begin(), bytes.end()};
    }

  private:
    std::span<const std::uint8_t> m_Rest;
};

void Require(bool bHolds, const OPERATION_INFO& operation, const char* pszRule) {
    if (!bHolds) {
        std::fprintf(stderr, "%s: %s\n", operation.name, pszRule);
        std::abort();
    }
}

/// An operation, with what a run without any hostility shows of it.
struct KNOWN_OPERATION {
    const OPERATION_INFO* pInfo;
    EVENT_PROC procedure;
    RecordBytes record;  ///< a valid one, with room for what the INI file may ask for
    std::vector<SimulatedBody::CALL> calls;
    std::string closing;
};

std::vector<EVENT_PROC> s_Procedures;

/// A folder of this program's own, the current one while it lives.
class WorkFolder {
  public:
    WorkFolder() {
        std::string path = std::filesystem::temp_directory_path() / "tunebench.XXXXXX";
        if (std::filesystem::exists("/dev/shm")) {
            path = "/dev/shm/tunebench.XXXXXX";
        }
        if (mkdtemp(path.data()) == nullptr) {
            throw std::runtime_error("no folder to work in");
        }
        m_Path = path;
        std::filesystem::current_path(m_Path);
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;
    ~WorkFolder() {
        std::error_code ignored;
        std::filesystem::current_path("/", ignored);
        std::filesystem::remove_all(m_Path, ignored);
    }

  private:
    std::filesystem::path m_Path;
};

class Target {
  public:
    Target();
    void Run(Input input);

  private:
    static void Register();
    static void EndDumpsEarly();
    void LearnOperation(const OPERATION_INFO& info, EVENT_PROC procedure);
    void RunStep(Input& input);
    void SetUp(const KNOWN_OPERATION& known, unsigned hostile, Input& input) const;
    void SetFolderText(Input& input) const;
    void CheckOutcome(const KNOWN_OPERATION& known, std::int32_t result) const;

    WorkFolder m_Folder;
    Surroundings m_Surroundings;
    std::string m_FolderText = FolderBlockText("dump");
    std::vector<KNOWN_OPERATION> m_Operations;
    bool m_bFaultPlanned = false;
};

void CollectProcedure(
    const char*, EVENT_PROC procedure, std::int32_t*, std::int32_t*, std::int32_t*) {
    s_Procedures.push_back(procedure);
}

// The module stays loaded until the process ends.
void Target::Register() {
    const HMODULE library = LoadLibraryA((ProgramFolder() / MODULE_FILE_NAME).string().c_str());
    using REGISTER_PROC = std::int32_t (*)(EVENT_PROC_REGISTER_FUNC);
    const auto registerList =
        library == nullptr
            ? nullptr
            : reinterpret_cast<REGISTER_PROC>(GetProcAddress(library, "RegisterEventProcList"));
    if (registerList == nullptr || registerList(CollectProcedure) != 0) {
        throw std::runtime_error("the module does not register");
    }
}

Target::Target() {
    Register();
    const std::vector<const OPERATION_INFO*> infos = AllOperations();
    for (std::size_t n = 0; n < infos.size(); ++n) {
        LearnOperation(*infos[n], s_Procedures.at(n));
    }
    EndDumpsEarly();
}

// A whole dump takes too long: a folder in the place of the last file that is to be.
void Target::EndDumpsEarly() {
    const std::filesystem::path last = "dump/01000009.bin";
    std::filesystem::remove(last);
    std::filesystem::create_directory(last);
}

std::string ReadText(const char* pszPath) {
    std::ifstream file(pszPath, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void Target::LearnOperation(const OPERATION_INFO& info, EVENT_PROC procedure) {
    SimulatedBody::Reset();
    SimulatedBody::RecordCalls(true);
    std::filesystem::remove("JigDll.log");
    RecordBytes valid = ValidRecord(info);
    valid.resize(info.record->size + LARGEST_INI_SIZE);
    RecordBytes record = valid;
    Require(procedure(record.data()) == 0, info, "does not succeed without hostility");
    m_Operations.push_back(
        {&info, procedure, valid, SimulatedBody::Calls(), ClosingText(ReadText("JigDll.log"))});
}

void Target::Run(Input input) {
    SimulatedBody::Reset();
    std::ofstream("BoardInf.ini") << "[DLResonantFrequency]\nAddress=100\nSize=4\n";
    m_Surroundings.SetFolderText("");
    m_bFaultPlanned = false;
    for (int step = 0; step < 8 && !input.AtEnd(); ++step) {
        RunStep(input);
    }
}

void SetProperties(const KNOWN_OPERATION& known, Input& input) {
    const std::size_t MOST_PROPERTIES = 8;  // as many rows as a dump gets to
    for (std::size_t n = 0; n < std::min(known.calls.size(), MOST_PROPERTIES); ++n) {
        const SimulatedBody::CALL& call = known.calls[n];
        if (call.function == "CProperty::Get") {
            SimulatedBody::SetProperty(call.id, input.Take(static_cast<std::size_t>(call.value)));
        }
    }
}

void SetEvents(const KNOWN_OPERATION& known, Input& input) {
    for (const SimulatedBody::CALL& call : known.calls) {
        if (!call.name.empty()) {
            const auto first = static_cast<std::int32_t>(input.Word());
            const auto second = static_cast<std::int32_t>(input.Word());
            SimulatedBody::ScriptEvent(call.name, {first, second});
        }
    }
}

void PlanFault(Input& input) {
    const std::uint8_t kind = input.Byte();
    const std::uint32_t n = 1U + input.Byte();
    const SimulatedBody::FAILURE failure = {
        .kind = static_cast<SimulatedBody::FAULT>(kind % 3),
        .moment = static_cast<SimulatedBody::MOMENT>(kind / 4 % 2),
        .code = static_cast<std::int32_t>(input.Word() | 1),
        .message = input.Text()};
    switch (kind / 16 % 3) {
        case 0:
            SimulatedBody::FailCall(n, failure);
            break;
        case 1:
            SimulatedBody::FailConstruction(n, failure);
            break;
        default:
            SimulatedBody::FailLinePrefix(n, failure);
    }
}

void SetMemory(Input& input) {
    SimulatedBody::SetLensAnswer(input.Byte());
    const std::string log = input.Text();
    SimulatedBody::SetCameraLog({log.begin(), log.end()});
    std::array<std::int32_t, 9>& calendar = SimulatedBody::Calendar();
    std::memcpy(calendar.data(), input.Take(sizeof(calendar)).data(), sizeof(calendar));
}

// No text may lead a dump to a folder of the machine: a path that an input makes begins with a
// folder that there is not, or has no backslash at all.
void Target::SetFolderText(Input& input) const {
    const std::size_t LONGEST = 260;
    const std::uint8_t kind = input.Byte();
    std::string text = input.Text();
    if (kind % 4 == 0) {
        std::replace(text.begin(), text.end(), '\\', '/');
    } else if (kind % 4 == 1) {
        text = m_FolderText;
    } else {
        text.insert(0, "no such folder\\");
    }
    m_Surroundings.SetFolderText(text.substr(0, LONGEST));
}

void Target::SetUp(const KNOWN_OPERATION& known, unsigned hostile, Input& input) const {
    if ((hostile & HOSTILE_PROPERTIES) != 0) {
        SetProperties(known, input);
    }
    if ((hostile & HOSTILE_EVENTS) != 0) {
        SetEvents(known, input);
    }
    if ((hostile & HOSTILE_SIZES) != 0) {
        const std::uint32_t reported = input.Word();
        SimulatedBody::ScriptReturnSize(reported, input.Word());
    }
    if ((hostile & HOSTILE_INI) != 0) {
        std::ofstream("BoardInf.ini") << "[DLResonantFrequency]\n" << input.Text();
    }
    if ((hostile & HOSTILE_FOLDER) != 0) {
        SetFolderText(input);
    }
    if ((hostile & HOSTILE_MEMORY) != 0) {
        SetMemory(input);
    }
    if ((hostile & HOSTILE_FAULT) != 0) {
        PlanFault(input);
    }
}

/// Whether the INI file asks for no more bytes than the host has.
bool IsIniSizeKept() {
    const auto nSize = static_cast<std::int32_t>(
        GetPrivateProfileIntA("DLResonantFrequency", "Size", -1, "./BoardInf.ini"));
    return nSize < 0 || static_cast<std::uint32_t>(nSize) <= LARGEST_INI_SIZE;
}

void Target::RunStep(Input& input) {
    const KNOWN_OPERATION& known = m_Operations[input.Byte() % m_Operations.size()];
    const unsigned hostile = input.Byte();
    SetUp(known, hostile, input);
    m_bFaultPlanned = m_bFaultPlanned || (hostile & HOSTILE_FAULT) != 0;

    const OPERATION_INFO& info = *known.pInfo;
    if (std::strcmp(info.name, "SetBoardInfDLResonantFrequency") == 0 && !IsIniSizeKept()) {
        return;
    }
    RecordBytes record = known.record;
    if ((hostile & HOSTILE_RECORD) != 0) {
        const SimulatedBody::Bytes bytes = input.Take(info.record->size);
        std::copy(bytes.begin(), bytes.end(), record.begin());
    }
    const RecordBytes before = record;
    std::filesystem::remove("JigDll.log");
    const std::int32_t result = known.procedure(record.data());
    Require(IsSpareUntouched(info, record), info, "wrote behind its record");
    Require(info.use != RECORD_USE::IN || record == before, info, "wrote to the host's record");
    CheckOutcome(known, result);
}

void Target::CheckOutcome(const KNOWN_OPERATION& known, std::int32_t result) const {
    const OPERATION_INFO& info = *known.pInfo;
    Require(result == 0 || (result & 1) != 0, info, "gave an even code");
    Require(
        EndsWithClosing(ReadText("JigDll.log"), known.closing, result), info,
        "left no closing line");
    // A link that fails may keep power saving from being switched on.
    Require(SimulatedBody::PowerSaveEnabled() || m_bFaultPlanned, info, "left power saving off");
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*pCount*/, char*** /*pArguments*/) {
    TakeOwnBlocks();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t size) {
    static Target target;
    target.Run({pData, size});
    return 0;
}
