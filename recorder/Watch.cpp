// Numbers, threads and times of operations and calls.
#include "recorder/Watch.h"

#include <atomic>
#include <cerrno>

#include "link/CException.h"
#include "platform/Program.h"
#include "platform/Surroundings.h"
#include "recorder/Files.h"
#include "recorder/KeptErrors.h"
#include "recorder/RecordingName.h"
#include "trace/TraceEntries.h"

namespace fs = std::filesystem;

namespace Recorder {

using Clock = std::chrono::steady_clock;

// Reading the log takes a tenth of the shortest operation's time. With a camera behind the link
// none is so short that another one ends within this.
static const std::chrono::microseconds LOG_INTERVAL(100);

static thread_local RUNNING_OPERATION* s_pInnermost = nullptr;

/// Counts threads in the order in which they first come by.
static std::uint32_t ThreadNumber() {
    static std::atomic<std::uint32_t> s_Threads = 0;
    static thread_local std::uint32_t s_Number = 0;
    if (s_Number == 0) {
        s_Number = ++s_Threads;
    }
    return s_Number;
}

static PLACE PlaceOfCall(std::uint32_t operation) {
    return operation == 0 ? PLACE::BETWEEN_OPERATIONS : PLACE::WITHIN_OPERATION;
}

static TraceEntry::Record KnownBytes(const ARGUMENT& argument) {
    if (argument.pRecord == nullptr) {
        return std::nullopt;
    }
    return std::span(static_cast<const std::uint8_t*>(argument.pRecord), argument.knownSize);
}

static std::span<const std::uint8_t> BytesAt(const void* pBytes, std::uint32_t size) {
    const bool bAny = pBytes != nullptr && size <= Link::BLOCK_LIMIT;
    return {static_cast<const std::uint8_t*>(pBytes), bAny ? size : 0};
}

static TraceEntry::REQUEST_FIELDS FieldsOf(const Link::REQUEST& request) {
    return {
        .function = request.pszFunction,
        .name = request.name,
        .id = request.id,
        .value = request.value,
        .fromList = request.fromList,
        .sent = BytesAt(request.pSent, request.sentSize)};
}

static TraceEntry::ANSWER_FIELDS FieldsOf(const Link::ANSWER& answer, bool bFailed) {
    return {
        .received = BytesAt(answer.pReceived, answer.size),
        .sizeLeft = answer.sizeLeft,
        .result = answer.result,
        .failure = bFailed ? std::optional(Link::CaughtFailure()) : std::nullopt};
}

Watch::Watch(const fs::path& folder)
    : m_Settings(ReadSettings(folder / SETTINGS_FILE_NAME)),
      m_Libraries({
          {JsonKey("module"), ReadLibraryFacts(folder / RecordedName(MODULE_FILE_NAME))},
          {JsonKey("link"), ReadLibraryFacts(folder / RecordedName(LINK_FILE_NAME))},
          {JsonKey("recorder_module"), ReadLibraryFacts(folder / MODULE_FILE_NAME)},
          {JsonKey("recorder_link"), ReadLibraryFacts(folder / LINK_FILE_NAME)},
      }),
      m_Recording(
          m_Settings.into, m_Settings.keep, folder / FAILURE_FILE_NAME,
          [this](const BEGINNING& beginning) { return HeadLine(beginning); }) {}

static void AddLibrary(JsonLine& line, const JsonKey& key, const LIBRARY_FACTS& facts) {
    line.BeginObject(key);
    line.Add("file", facts.file.string());
    line.Add("size", static_cast<std::int64_t>(facts.size));
    line.Add("version", facts.version);
    line.Add("sha256", facts.hash);
    line.EndObject();
}

std::string Watch::HeadLine(const BEGINNING& beginning) const {
    std::string text;
    JsonLine line(text);
    TraceEntry::AddHead(line);
    line.Add("started", MomentText(beginning.moment));
    line.Add("machine", MachineName());
    line.Add("process", std::int64_t{ProcessNumber()});
    line.Add("program", ProgramFile().string());
    line.Add("bits", std::int64_t{8 * sizeof(void*)});
    line.Add("recorder", TUNEBENCH_VERSION);
    for (const auto& [key, facts] : m_Libraries) {
        AddLibrary(line, key, facts);
    }
    line.Add("continues", beginning.continues);
    line.Add("operations_before", std::int64_t{m_Operations});
    line.End();
    return text;
}

template <class AddFields>
void Watch::Write(PLACE place, const AddFields& addFields) noexcept {
    try {
        m_Line.clear();
        JsonLine line(m_Line);
        addFields(line);
        line.End();
        m_Recording.Write(m_Line, place);
    } catch (...) {
        m_Recording.Lose(ENOMEM);
    }
}

std::uint32_t Watch::RecordSize(const char* pszOperation) const noexcept {
    const auto found = m_Settings.recordSizes.find(std::string_view(pszOperation));
    return found != m_Settings.recordSizes.end() ? found->second : 0;
}

void Watch::Begin(
    RUNNING_OPERATION& operation, const char* pszName, const ARGUMENT& argument) noexcept {
    const KeptErrors errors;
    const std::lock_guard lock(m_Mutex);
    const PLACE place =
        s_pInnermost == nullptr ? PLACE::BETWEEN_OPERATIONS : PLACE::WITHIN_OPERATION;
    operation.pAround = s_pInnermost;
    s_pInnermost = &operation;
    Write(place, [&](JsonLine& line) {
        operation.number = m_Operations + 1;
        TraceEntry::AddOperation(line, operation.number, pszName, KnownBytes(argument));
        line.Add("thread", std::int64_t{ThreadNumber()});
        line.Add("at", Now());
    });
    operation.number = ++m_Operations;
    operation.start = Clock::now();
}

void Watch::End(
    RUNNING_OPERATION& operation, std::int32_t result, const ARGUMENT& argument) noexcept {
    const TraceEntry::Time time = Clock::now() - operation.start;
    const KeptErrors errors;
    const std::lock_guard lock(m_Mutex);
    s_pInnermost = operation.pAround;
    Write(PLACE::WITHIN_OPERATION, [&](JsonLine& line) {
        TraceEntry::AddResult(line, operation.number, result, KnownBytes(argument), time);
        AddLogText(line, operation, result != 0);
    });
}

/// The outermost operation has the text of all that ran within it: none stands twice.
void Watch::AddLogText(JsonLine& line, const RUNNING_OPERATION& operation, bool bFailed) {
    if (operation.pAround != nullptr || !operation.bLogLine) {
        return;
    }
    const auto now = Clock::now();
    if (!bFailed && now - m_LogRead < LOG_INTERVAL) {
        TraceEntry::AddUnreadLogText(line);
        return;
    }
    m_LogRead = now;
    const GROWN_TEXT log = m_Log.TextFrom(operation.firstLine);
    TraceEntry::AddLogText(line, log.text, log.leftOut);
}

void Watch::NoteLogLine(std::string_view prefix) noexcept {
    RUNNING_OPERATION* pOutermost = s_pInnermost;
    while (pOutermost != nullptr && pOutermost->pAround != nullptr) {
        pOutermost = pOutermost->pAround;
    }
    const std::lock_guard lock(m_Mutex);
    const LOG_LINE_PLACE place = m_Log.NoteLine(prefix);
    if (pOutermost != nullptr && !pOutermost->bLogLine) {
        pOutermost->bLogLine = true;
        pOutermost->firstLine = place;
    }
}

void Watch::BeginCall(RUNNING_CALL& running, const Link::REQUEST& request) noexcept {
    const KeptErrors errors;
    const std::lock_guard lock(m_Mutex);
    running.operation = s_pInnermost != nullptr ? s_pInnermost->number : 0;
    running.number = s_pInnermost != nullptr ? ++s_pInnermost->calls : ++m_OtherCalls;
    Write(PlaceOfCall(running.operation), [&](JsonLine& line) {
        TraceEntry::AddCall(line, running.operation, running.number, FieldsOf(request));
    });
    running.start = Clock::now();
}

void Watch::EndCall(RUNNING_CALL& running, const Link::ANSWER& answer, bool bFailed) noexcept {
    const TraceEntry::Time time = Clock::now() - running.start;
    const KeptErrors errors;
    const std::lock_guard lock(m_Mutex);
    Write(PLACE::WITHIN_OPERATION, [&](JsonLine& line) {
        TraceEntry::AddAnswer(
            line, running.operation, running.number, FieldsOf(answer, bFailed), time);
    });
}

// --- What is no call, but may throw ---

std::uint32_t Watch::CountConstruction() noexcept {
    return s_pInnermost != nullptr ? ++s_pInnermost->constructions : ++m_OtherConstructions;
}

std::uint32_t Watch::CountLinePrefix() noexcept {
    return s_pInnermost != nullptr ? ++s_pInnermost->linePrefixes : ++m_OtherLinePrefixes;
}

void Watch::NoteThrow(const char* pszFunction, std::uint32_t number) noexcept {
    const KeptErrors errors;
    const std::lock_guard lock(m_Mutex);
    const std::uint32_t operation = s_pInnermost != nullptr ? s_pInnermost->number : 0;
    Write(PlaceOfCall(operation), [&](JsonLine& line) {
        TraceEntry::AddThrow(line, operation, {pszFunction, number, Link::CaughtFailure()});
    });
}

}  // namespace Recorder
