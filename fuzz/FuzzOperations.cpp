// Runs operations of the loaded module by what the input says. What comes from the camera, from
// files and from other processes is hostile; what the host answers for, valid pointers and blocks
// that are large enough, is kept.
//
// An input is a row of steps. A step is an operation's number in two bytes, a byte of HOSTILE bits,
// and behind them what each of the bits takes.
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "bodylnk/SimulatedBody.h"
#include "frame/Registration.h"
#include "fuzz/Hostility.h"
#include "fuzz/MemoryFiles.h"
#include "fuzz/Target.h"
#include "platform/Export.h"
#include "platform/OwnBlocks.h"
#include "platform/Program.h"
#include "tests/support/Driver.h"

// The module's larger buffers are refused: they would only cost time. This takes the place of the
// run-time library's in the module too.
extern "C" MODULE_API void* calloc(std::size_t count, std::size_t size) noexcept {
    const std::size_t LARGEST_BUFFER = 100'000;
    if (size != 0 && count > LARGEST_BUFFER / size) {
        return nullptr;
    }
    void* pMemory = std::malloc(std::max<std::size_t>(count * size, 1));
    return pMemory == nullptr ? nullptr : std::memset(pMemory, 0, count * size);
}

namespace {

// A dump of the host's bytes to the log writes it once for each of them.
const std::uint32_t LARGEST_INI_SIZE = 300;

const int MOST_STEPS = 8;

/// An operation, with what a run without any hostility shows of it.
struct KNOWN_OPERATION {
    const OPERATION_INFO* pInfo;
    EVENT_PROC procedure;
    RecordBytes record;  ///< a valid one, with room for what the INI file may ask for
    ASKED asked;
    std::string closing;
};

std::vector<EVENT_PROC> s_Procedures;

void CollectProcedure(
    const char*, EVENT_PROC procedure, std::int32_t*, std::int32_t*, std::int32_t*) {
    s_Procedures.push_back(procedure);
}

// The module stays loaded until the process ends.
void RegisterModule() {
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

class Target {
  public:
    Target();
    void Run(Input input);

  private:
    void LearnOperation(const OPERATION_INFO& info, EVENT_PROC procedure);
    const KNOWN_OPERATION& ChooseOperation(Input& input) const;
    void RunStep(const KNOWN_OPERATION& known, Input& input);
    void CheckOutcome(const KNOWN_OPERATION& known, std::int32_t result) const;

    FolderBlock m_Folder;
    std::vector<KNOWN_OPERATION> m_Operations;
    unsigned m_Hostile = 0;  // all bits of the steps so far
};

Target::Target() {
    RegisterModule();
    const std::vector<const OPERATION_INFO*> infos = AllOperations();
    for (std::size_t n = 0; n < infos.size(); ++n) {
        LearnOperation(*infos[n], s_Procedures.at(n));
    }
}

void Target::LearnOperation(const OPERATION_INFO& info, EVENT_PROC procedure) {
    ResetSurroundings(m_Folder);
    m_Folder.Write("dump\\");
    MemoryFiles().dumpFiles = UINT32_MAX;
    MemoryFiles().log.clear();
    SimulatedBody::RecordCalls(true);
    RecordBytes valid = ValidRecord(info);
    valid.resize(info.record->size + LARGEST_INI_SIZE);
    RecordBytes record = valid;
    Require(procedure(record.data()) == 0, info.name, "does not succeed without hostility");
    m_Operations.push_back(
        {&info, procedure, valid, AskedBy(SimulatedBody::Calls()), ClosingText(MemoryFiles().log)});
}

void Target::Run(Input input) {
    ResetSurroundings(m_Folder);
    m_Hostile = 0;
    for (int step = 0; step < MOST_STEPS && !input.AtEnd(); ++step) {
        RunStep(ChooseOperation(input), input);
    }
}

// All are equally likely, though most numbers in inputs are zero: what is left of one counts too.
const KNOWN_OPERATION& Target::ChooseOperation(Input& input) const {
    const std::size_t left = input.Left();
    return m_Operations[(left + input.Take<std::uint16_t>()) % m_Operations.size()];
}

/// Whether the INI file asks for no more bytes than the host has.
bool IsIniSizeKept() {
    const auto nSize = static_cast<std::int32_t>(
        GetPrivateProfileIntA("DLResonantFrequency", "Size", -1, "./BoardInf.ini"));
    return nSize < 0 || static_cast<std::uint32_t>(nSize) <= LARGEST_INI_SIZE;
}

void Target::RunStep(const KNOWN_OPERATION& known, Input& input) {
    const auto hostile = input.Take<std::uint8_t>();
    SetUpHostility(hostile, known.asked, m_Folder, input);
    m_Hostile |= hostile;

    const OPERATION_INFO& info = *known.pInfo;
    if (std::strcmp(info.name, "SetBoardInfDLResonantFrequency") == 0 && !IsIniSizeKept()) {
        return;
    }
    RecordBytes record = known.record;
    if ((hostile & HOSTILE_RECORD) != 0) {
        input.Fill(std::span(record).first(info.record->size));
    }
    const RecordBytes before = record;
    MemoryFiles().log.clear();
    const std::int32_t result = known.procedure(record.data());
    Require(IsSpareUntouched(info, record), info.name, "wrote behind its record");
    Require(
        info.use != RECORD_USE::IN || record == before, info.name, "wrote to the host's record");
    CheckOutcome(known, result);
}

void Target::CheckOutcome(const KNOWN_OPERATION& known, std::int32_t result) const {
    const char* pszName = known.pInfo->name;
    Require(result == 0 || (result & 1) != 0, pszName, "gave an even code");
    Require(
        EndsWithClosing(MemoryFiles().log, known.closing, result), pszName, "left no closing line");
    Require(MemoryFiles().open == 0, pszName, "left a file open");
    // A link that fails may keep power saving from being switched on.
    Require(
        SimulatedBody::PowerSaveEnabled() || (m_Hostile & HOSTILE_FAULT) != 0, pszName,
        "left power saving off");
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
