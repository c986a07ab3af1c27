// Entries put together to operations, each checked for its place among the others.
#include "trace/TraceReader.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/Utf8Path.h"
#include "trace/TraceHead.h"

// Far more than threads of a host and operations within each other; a hostile file has any number.
static const std::size_t MOST_RUNNING = 1000;

// Of one operation that is to be had whole; a dump takes ten megabytes.
static const std::size_t LARGEST_OPERATION = 256'000'000;

// --- Files ---

TraceReader::TraceReader(const std::vector<std::string>& paths, Choice isWhole)
    : m_Paths(InOrder(paths)), m_IsWhole(std::move(isWhole)) {
    OpenNext();
}

void TraceReader::OpenNext() {
    m_pNextEntries = std::make_unique<EntryReader>(m_Paths[m_Next]);
    m_NextHead = ReadHead(*m_pNextEntries);
}

bool TraceReader::DoesNextContinue() const {
    return PathOf(Path()).filename() == PathOf(m_NextHead.continues);
}

TRACE_ITEM TraceReader::BeginFile() {
    m_pEntries = std::move(m_pNextEntries);
    m_Head = std::exchange(m_NextHead, {});
    ++m_Next;
    m_Behind.reset();
    return TRACE_ITEM::NEW_FILE;
}

TRACE_ITEM TraceReader::Next() {
    for (;;) {
        if (m_Behind && !m_Running.empty()) {
            return HandOver(m_Running.begin());
        }
        if (m_Behind == TRACE_ITEM::NEW_FILE) {
            m_bGap = false;
            m_LastNumber = 0;
            m_Serial.reset();
            return BeginFile();
        }
        if (m_Behind) {
            return TRACE_ITEM::END;
        }
        if (m_pEntries->Next()) {
            if (const auto item = TakeEntry()) {
                return *item;
            }
        } else if (m_Next == m_Paths.size()) {
            m_Behind = TRACE_ITEM::END;
        } else {
            OpenNext();
            if (DoesNextContinue()) {
                return BeginFile();
            }
            m_Behind = TRACE_ITEM::NEW_FILE;
        }
    }
}

TRACE_ITEM TraceReader::HandOver(std::vector<RUNNING>::iterator running) {
    m_Operation = std::move(running->operation);
    m_Operation.serial = m_Serial;
    m_Running.erase(running);
    return TRACE_ITEM::OPERATION;
}

// --- Entries ---

std::optional<TRACE_ITEM> TraceReader::TakeEntry() {
    const std::string_view entry = m_pEntries->Token(FIELD_ID::ENTRY);
    if (entry == R"("call")") {
        TakeCall();
    } else if (entry == R"("answer")") {
        TakeAnswer();
    } else if (entry == R"("log")") {
        TakeLog();
    } else if (entry == R"("operation")") {
        TakeOperation();
    } else if (entry == R"("result")") {
        return TakeResult();
    } else if (entry == R"("gap")") {
        return TakeGap();
    } else {
        m_pEntries->TextAt(FIELD_ID::ENTRY);
        m_pEntries->RefuseValue(
            FIELD_ID::ENTRY, "\"operation\", \"call\", \"answer\", \"result\", \"log\" or \"gap\"");
    }
    return std::nullopt;
}

/// The record of an operation or a result; empty for a null pointer.
static Link::Bytes RecordOf(const EntryReader& entries) {
    return entries.IsNull(FIELD_ID::RECORD) ? Link::Bytes() : entries.BytesAt(FIELD_ID::RECORD);
}

void TraceReader::TakeOperation() {
    RUNNING running;
    TRACED_OPERATION& operation = running.operation;
    operation.number = m_pEntries->NumberAt<std::uint32_t>(FIELD_ID::OPERATION);
    operation.name = m_pEntries->TextAt(FIELD_ID::NAME);
    operation.line = m_pEntries->Line();
    if (m_pEntries->Has(FIELD_ID::AT)) {
        operation.at = m_pEntries->NumberAt<std::int64_t>(FIELD_ID::AT);
    }
    if (operation.number <= m_LastNumber) {
        m_pEntries->RefuseValue(FIELD_ID::OPERATION, "more than " + std::to_string(m_LastNumber));
    }
    m_LastNumber = operation.number;
    if (m_Running.size() == MOST_RUNNING) {
        m_pEntries->Refuse(
            "expected at most " + std::to_string(MOST_RUNNING) + " operations at one moment");
    }
    running.bWhole = m_IsWhole(operation);
    if (running.bWhole) {
        operation.bNullRecord = m_pEntries->IsNull(FIELD_ID::RECORD);
        operation.record = RecordOf(*m_pEntries);
    }
    m_Running.push_back(std::move(running));
}

/// The end for none.
std::vector<TraceReader::RUNNING>::iterator TraceReader::FindRunning() {
    const auto number = m_pEntries->NumberAt<std::uint32_t>(FIELD_ID::OPERATION);
    const auto found = std::find_if(
        m_Running.begin(), m_Running.end(),
        [&](const RUNNING& running) { return running.operation.number == number; });
    if (found == m_Running.end() && number > m_Head.operationsBefore && !m_bGap) {
        m_pEntries->Refuse("there can be no " + m_pEntries->TextAt(FIELD_ID::ENTRY) + " here");
    }
    return found;
}

/// The operation whose call an entry begins or answers; null for one that nobody knows, and for
/// calls outside all operations.
TraceReader::RUNNING* TraceReader::RunningCall(bool bUnanswered) {
    const auto running = FindRunning();
    if (running == m_Running.end()) {
        return nullptr;
    }
    TRACED_OPERATION& operation = running->operation;
    const auto number = m_pEntries->NumberAt<std::uint32_t>(FIELD_ID::CALL);
    if (operation.bTorn) {
        return nullptr;
    }
    if (operation.bUnanswered != bUnanswered) {
        m_pEntries->Refuse("there can be no " + m_pEntries->TextAt(FIELD_ID::ENTRY) + " here");
    }
    operation.callCount += bUnanswered ? 0 : 1;
    if (number != operation.callCount) {
        m_pEntries->RefuseValue(FIELD_ID::CALL, std::to_string(operation.callCount));
    }
    operation.bUnanswered = !bUnanswered;
    return &*running;
}

/// Bounds what one operation may take of the memory.
void TraceReader::CountBytes(RUNNING& running) const {
    running.operation.size += m_pEntries->Size();
    if (running.operation.size > LARGEST_OPERATION) {
        m_pEntries->Refuse(
            "expected at most " + std::to_string(LARGEST_OPERATION) + " bytes of one operation");
    }
}

/// Of a line of the module's log nobody tells whose it is: most likely the innermost operation's.
void TraceReader::TakeLog() {
    if (m_Running.empty() || !m_Running.back().bWhole) {
        return;
    }
    CountBytes(m_Running.back());
    TRACED_OPERATION& operation = m_Running.back().operation;
    operation.log.push_back(
        {.calls = operation.callCount,
         .bInterleaved =
             m_pEntries->Has(FIELD_ID::INTERLEAVED) && m_pEntries->FlagAt(FIELD_ID::INTERLEAVED),
         .text = m_pEntries->TextAt(FIELD_ID::LINE)});
}

// --- Calls ---

// The body's ID among its properties: the upper 32 bits of a number first, then the lower ones,
// each little-endian. Its last six decimal digits are the serial number.
static const std::string_view BODY_ID_TOKEN = "16777222";
static const std::uint64_t SERIAL_NUMBERS = 1'000'000;

static std::optional<std::uint32_t> SerialOf(const Link::Bytes& bodyID) {
    std::array<std::uint32_t, 2> words{};
    if (bodyID.size() != sizeof(words)) {
        return std::nullopt;
    }
    std::memcpy(words.data(), bodyID.data(), sizeof(words));
    return static_cast<std::uint32_t>((std::uint64_t{words[0]} << 32 | words[1]) % SERIAL_NUMBERS);
}

static bool IsOfBodyID(const EntryReader& entries) {
    const std::string_view function = entries.Token(FIELD_ID::FUNCTION);
    return (function == R"("CProperty::Get")" || function == R"("CProperty::Set")") &&
           entries.Token(FIELD_ID::ID) == BODY_ID_TOKEN;
}

static Link::CALL RequestOf(const EntryReader& entries) {
    Link::CALL call;
    call.function = entries.TextAt(FIELD_ID::FUNCTION);
    call.name = entries.TextAt(FIELD_ID::NAME);
    call.id = entries.NumberAt<std::uint32_t>(FIELD_ID::ID);
    call.value = entries.NumberAt<std::int64_t>(FIELD_ID::VALUE);
    call.fromList = entries.FlagAt(FIELD_ID::FROM_LIST);
    call.sent = entries.BytesAt(FIELD_ID::SENT);
    return call;
}

void TraceReader::TakeCall() {
    RUNNING* pRunning = RunningCall(false);
    if (pRunning == nullptr) {
        m_OtherCalls += m_pEntries->Token(FIELD_ID::OPERATION) == "0" ? 1 : 0;
        return;
    }
    pRunning->bBodyID = IsOfBodyID(*m_pEntries);
    if (pRunning->bBodyID) {
        pRunning->serialSent = SerialOf(m_pEntries->BytesAt(FIELD_ID::SENT));
    }
    if (pRunning->bWhole) {
        CountBytes(*pRunning);
        pRunning->operation.calls.push_back(RequestOf(*m_pEntries));
    }
}

static std::optional<Link::FAILURE> FailureOf(const EntryReader& entries) {
    if (entries.IsNull(FIELD_ID::FAILURE)) {
        return std::nullopt;
    }
    const std::string kind = entries.TextAt(FIELD_ID::KIND);
    const auto* pNamed = std::find_if(
        std::begin(TRACED_FAULTS), std::end(TRACED_FAULTS),
        [&](const TRACED_FAULT& named) { return named.name == kind; });
    if (pNamed == std::end(TRACED_FAULTS)) {
        entries.RefuseValue(FIELD_ID::KIND, "a known kind of failure");
    }
    Link::FAILURE failure;
    failure.kind = pNamed->kind;
    failure.code = entries.NumberAt<std::int32_t>(FIELD_ID::CODE);
    failure.message = entries.TextAt(FIELD_ID::MESSAGE);
    return failure;
}

static double TimeOf(const EntryReader& entries) {
    return entries.Has(FIELD_ID::TIME) ? entries.FractionAt(FIELD_ID::TIME) : 0;
}

static void TakeAnswerOf(const EntryReader& entries, Link::CALL& call) {
    call.received = entries.BytesAt(FIELD_ID::RECEIVED);
    call.sizeLeft = entries.OptionalNumberAt<std::uint32_t>(FIELD_ID::SIZE_LEFT);
    call.result = entries.OptionalNumberAt<std::int32_t>(FIELD_ID::RESULT);
    call.failure = FailureOf(entries);
}

void TraceReader::TakeAnswer() {
    RUNNING* pRunning = RunningCall(true);
    if (pRunning == nullptr) {
        return;
    }
    if (pRunning->bBodyID && m_pEntries->IsNull(FIELD_ID::FAILURE)) {
        const auto received = SerialOf(m_pEntries->BytesAt(FIELD_ID::RECEIVED));
        const auto serial = received ? received : pRunning->serialSent;
        m_Serial = serial ? serial : m_Serial;
    }
    if (pRunning->bWhole) {
        CountBytes(*pRunning);
        TakeAnswerOf(*m_pEntries, pRunning->operation.calls.back());
        pRunning->operation.callTimes.push_back(TimeOf(*m_pEntries));
    }
}

// --- Ends and gaps ---

std::optional<TRACE_ITEM> TraceReader::TakeResult() {
    const auto running = FindRunning();
    if (running == m_Running.end()) {
        ++m_Beginningless;
        return std::nullopt;
    }
    TRACED_OPERATION& operation = running->operation;
    if (operation.bUnanswered && !operation.bTorn) {
        m_pEntries->Refuse("there can be no result here");
    }
    operation.result = m_pEntries->NumberAt<std::int32_t>(FIELD_ID::RESULT);
    operation.time = TimeOf(*m_pEntries);
    if (running->bWhole) {
        operation.returned = RecordOf(*m_pEntries);
    }
    return HandOver(running);
}

/// What is missing may be a part of each operation that runs.
TRACE_ITEM TraceReader::TakeGap() {
    m_Gap = {};
    m_Gap.entries = m_pEntries->NumberAt<std::int64_t>(FIELD_ID::ENTRIES);
    m_Gap.why = m_pEntries->TextAt(FIELD_ID::WHY);
    m_Gap.line = m_pEntries->Line();
    if (m_pEntries->Has(FIELD_ID::AT)) {
        m_Gap.at = m_pEntries->NumberAt<std::int64_t>(FIELD_ID::AT);
    }
    m_bGap = true;
    for (RUNNING& running : m_Running) {
        running.operation.bTorn = true;
    }
    return TRACE_ITEM::GAP;
}
