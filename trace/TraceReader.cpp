// Entries put together to operations, each checked for its place among the others.
#include "trace/TraceReader.h"

#include <algorithm>
#include <cstring>
#include <sstream>
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
    if (m_Ended != NONE) {
        m_Running.erase(m_Running.begin() + static_cast<std::ptrdiff_t>(m_Ended));
        m_Ended = NONE;
    }
    m_Found.reset();
    for (;;) {
        if (m_Behind && !m_Running.empty()) {
            HandOver(m_Running.begin());
            return *m_Found;
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
            TakeEntry();
            if (m_Found) {
                return *m_Found;
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

void TraceReader::HandOver(Runs::iterator running) {
    running->operation.serial = m_Serial;
    m_Ended = static_cast<std::size_t>(running - m_Running.begin());
    m_Found = TRACE_ITEM::OPERATION;
}

// --- Entries ---

void TraceReader::TakeEntry() {
    if (m_pEntries->Is(FIELD_ID::ENTRY, R"("call")")) {
        TakeCall();
    } else if (m_pEntries->Is(FIELD_ID::ENTRY, R"("answer")")) {
        TakeAnswer();
    } else if (m_pEntries->Is(FIELD_ID::ENTRY, R"("log")")) {
        TakeLog();
    } else if (m_pEntries->Is(FIELD_ID::ENTRY, R"("operation")")) {
        TakeOperation();
    } else if (m_pEntries->Is(FIELD_ID::ENTRY, R"("result")")) {
        TakeResult();
    } else if (m_pEntries->Is(FIELD_ID::ENTRY, R"("thrown")")) {
        TakeThrow();
    } else if (m_pEntries->Is(FIELD_ID::ENTRY, R"("gap")")) {
        TakeGap();
    } else {
        m_pEntries->TextAt(FIELD_ID::ENTRY);
        m_pEntries->RefuseValue(
            FIELD_ID::ENTRY,
            R"("operation", "call", "answer", "result", "thrown", "log" or "gap")");
    }
}

/// The record of an operation or a result; empty for a null pointer.
static Link::Bytes RecordOf(const EntryReader& entries) {
    return entries.IsNull(FIELD_ID::RECORD) ? Link::Bytes() : entries.BytesAt(FIELD_ID::RECORD);
}

void TraceReader::TakeOperation() {
    const auto number = m_pEntries->NumberAt<std::uint32_t>(FIELD_ID::OPERATION);
    RUNNING& running = m_Running.emplace_back(number);
    TRACED_OPERATION& operation = running.operation;
    operation.name = m_pEntries->TextAt(FIELD_ID::NAME);
    operation.line = m_pEntries->Line();
    m_pEntries->Pass<FIELD_ID::RECORD>();
    m_pEntries->Pass<FIELD_ID::THREAD>();
    operation.at = m_pEntries->NumberIfAny<std::int64_t>(FIELD_ID::AT);
    if (operation.number <= m_LastNumber) {
        m_pEntries->RefuseValue(FIELD_ID::OPERATION, "more than " + std::to_string(m_LastNumber));
    }
    m_LastNumber = operation.number;
    if (m_Running.size() > MOST_RUNNING) {
        m_pEntries->Refuse(
            "expected at most " + std::to_string(MOST_RUNNING) + " operations at one moment");
    }
    running.bWhole = m_IsWhole(operation);
    if (running.bWhole) {
        operation.bNullRecord = m_pEntries->IsNull(FIELD_ID::RECORD);
        operation.record = RecordOf(*m_pEntries);
    }
}

/// The end for none.
TraceReader::Runs::iterator TraceReader::FindRunning() {
    const auto number = m_pEntries->NumberAt<std::uint32_t>(FIELD_ID::OPERATION);
    for (auto running = m_Running.end(); running != m_Running.begin();) {
        if ((--running)->operation.number == number) {  // most likely the innermost one
            return running;
        }
    }
    if (number > m_Head.operationsBefore && !m_bGap) {
        m_pEntries->Refuse("there can be no " + m_pEntries->TextAt(FIELD_ID::ENTRY) + " here");
    }
    return m_Running.end();
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
static const char BODY_ID_TOKEN[] = "16777222";
static const std::uint64_t SERIAL_NUMBERS = 1'000'000;

static std::optional<std::uint32_t> SerialOf(const Link::Bytes& bodyID) {
    std::array<std::uint32_t, 2> words{};
    if (bodyID.size() != sizeof(words)) {
        return std::nullopt;
    }
    std::memcpy(words.data(), bodyID.data(), sizeof(words));
    return static_cast<std::uint32_t>((std::uint64_t{words[0]} << 32 | words[1]) % SERIAL_NUMBERS);
}

/// Most likely the body is the one of before: what its ID says is kept.
std::optional<std::uint32_t> TraceReader::SerialAt(FIELD_ID field) {
    const std::string_view token = m_pEntries->Token(field);
    if (token.empty() || token != m_BodyID) {
        const auto serial = SerialOf(m_pEntries->BytesAt(field));
        if (!serial) {
            return std::nullopt;
        }
        m_BodyID = token;
        m_BodySerial = *serial;
    }
    return m_BodySerial;
}

static bool IsOfBodyID(const EntryReader& entries) {
    if (!entries.Is(FIELD_ID::FUNCTION, R"("CProperty::Get")") &&
        !entries.Is(FIELD_ID::FUNCTION, R"("CProperty::Set")")) {
        return false;
    }
    entries.Pass<FIELD_ID::NAME>();
    return entries.Is(FIELD_ID::ID, BODY_ID_TOKEN);
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
        m_pEntries->Pass<FIELD_ID::VALUE>();  // in the order of writers, as each entry is read
        m_pEntries->Pass<FIELD_ID::FROM_LIST>();
        pRunning->serialSent = SerialAt(FIELD_ID::SENT);
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

static bool HasAnswered(const EntryReader& entries) {
    entries.Pass<FIELD_ID::RECEIVED>();
    entries.Pass<FIELD_ID::SIZE_LEFT>();
    entries.Pass<FIELD_ID::RESULT>();
    return entries.IsNull(FIELD_ID::FAILURE);
}

void TraceReader::TakeAnswer() {
    RUNNING* pRunning = RunningCall(true);
    if (pRunning == nullptr) {
        return;
    }
    if (pRunning->bBodyID && HasAnswered(*m_pEntries)) {
        const auto received = SerialAt(FIELD_ID::RECEIVED);
        const auto serial = received ? received : pRunning->serialSent;
        m_Serial = serial ? serial : m_Serial;
    }
    if (pRunning->bWhole) {
        CountBytes(*pRunning);
        TakeAnswerOf(*m_pEntries, pRunning->operation.calls.back());
        pRunning->operation.callTimes.push_back(TimeOf(*m_pEntries));
    }
}

/// By what is no call.
void TraceReader::TakeThrow() {
    const auto running = FindRunning();
    if (running == m_Running.end() || !running->bWhole) {
        return;
    }
    CountBytes(*running);
    TRACED_THROW traced = {.calls = running->operation.callCount, .thrown = {}};
    traced.thrown.function = m_pEntries->TextAt(FIELD_ID::FUNCTION);
    traced.thrown.number = m_pEntries->NumberAt<std::uint32_t>(FIELD_ID::NUMBER);
    const auto failure = FailureOf(*m_pEntries);
    if (!failure) {
        m_pEntries->RefuseValue(FIELD_ID::FAILURE, "what was thrown");
    }
    traced.thrown.failure = *failure;
    running->operation.throws.push_back(std::move(traced));
}

// --- Ends and gaps ---

/// A recorder reads the log when an operation has ended.
static void TakeLogText(const EntryReader& entries, TRACED_OPERATION& operation) {
    if (!entries.Has(FIELD_ID::LOG)) {
        return;
    }
    operation.bLogUnread = entries.IsNull(FIELD_ID::LOG);
    std::string text = operation.bLogUnread ? "" : entries.TextAt(FIELD_ID::LOG);
    std::erase(text, '\r');
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        operation.log.push_back(
            {.calls = operation.callCount, .bInterleaved = false, .text = line});
    }
    operation.logLeftOut = entries.NumberIfAny<std::int64_t>(FIELD_ID::LOG_LEFT_OUT).value_or(0);
}

void TraceReader::TakeResult() {
    const auto running = FindRunning();
    if (running == m_Running.end()) {
        ++m_Beginningless;
        return;
    }
    TRACED_OPERATION& operation = running->operation;
    if (operation.bUnanswered && !operation.bTorn) {
        m_pEntries->Refuse("there can be no result here");
    }
    operation.result = m_pEntries->NumberAt<std::int32_t>(FIELD_ID::RESULT);
    m_pEntries->Pass<FIELD_ID::RECORD>();
    operation.time = TimeOf(*m_pEntries);
    if (running->bWhole) {
        CountBytes(*running);
        operation.returned = RecordOf(*m_pEntries);
        TakeLogText(*m_pEntries, operation);
    }
    HandOver(running);
}

/// What is missing may be a part of each operation that runs.
void TraceReader::TakeGap() {
    m_Gap = {};
    m_Gap.entries = m_pEntries->NumberAt<std::int64_t>(FIELD_ID::ENTRIES);
    m_Gap.why = m_pEntries->TextAt(FIELD_ID::WHY);
    m_Gap.line = m_pEntries->Line();
    m_Gap.at = m_pEntries->NumberIfAny<std::int64_t>(FIELD_ID::AT);
    m_bGap = true;
    for (RUNNING& running : m_Running) {
        running.operation.bTorn = true;
    }
    m_Found = TRACE_ITEM::GAP;
}
