// A second camera link, written against link/BodyLink.h alone. It notes all that it is asked and
// throws on order. Its objects may be larger than the contract's: they then have a member "own".
#include "tests/secondlink/SecondLink.h"

#include <algorithm>
#include <map>
#include <memory_resource>
#include <sstream>
#include <stdexcept>
#include <utility>
#include <vector>

#include "link/BodyLink.h"

using Bytes = std::vector<std::uint8_t>;

static SECOND_LINK s_Link;

extern "C" BODYLNK_API SECOND_LINK* SecondLink() {
    return &s_Link;
}

namespace {

// --- Steps ---

/// Remembers where the exception itself lies before it goes out; of a pointer, what it points to.
template <class Thrown>
[[noreturn]] void ThrowNoted(Thrown value) {
    try {
        throw value;
    } catch (Thrown& thrown) {
        if constexpr (std::is_pointer_v<Thrown>) {
            s_Link.pThrown = thrown;
        } else {
            s_Link.pThrown = &thrown;
        }
        throw;
    }
}

[[noreturn]] void Throw() {
    switch (s_Link.thrown) {
        case THROWN::CAMERA_EXCEPTION:
            ThrowNoted(new CException("[EVNT] Second link", 0x2001));
        case THROWN::DERIVED_EXCEPTION:
            ThrowNoted(new DERIVED_EXCEPTION("[EVNT] Second link, derived", 0x2003));
        case THROWN::NULL_EXCEPTION:
            ThrowNoted(static_cast<CException*>(nullptr));
        case THROWN::STANDARD_EXCEPTION:
            ThrowNoted(std::out_of_range("second link"));
        case THROWN::INTEGER:
            ThrowNoted(7);
        case THROWN::TEXT:
            ThrowNoted("second link");
        default:
            ThrowNoted(OWN_TYPE{9});
    }
}

/// One step as long as it lasts: what the link does of its own meanwhile is indented.
class Step {
  public:
    explicit Step(const std::string& text) {
        s_Link.notes += std::string(2 * s_Depth, ' ') + text + '\n';
        if (++s_Link.steps == s_Link.failAt) {
            Throw();
        }
        ++s_Depth;
    }
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;
    ~Step() { --s_Depth; }

  protected:
    static inline std::size_t s_Depth = 0;
};

/// A call of a member function.
class Call : public Step {
  public:
    explicit Call(const std::string& text, const std::array<const void*, 4>& arguments = {})
        : Step(Counted(text)) {
        s_Link.arguments = arguments;
        if (auto meanwhile = std::exchange(s_Link.meanwhile, nullptr)) {
            meanwhile();
        }
    }

  private:
    static const std::string& Counted(const std::string& text) {
        ++(s_Depth == 0 ? s_Link.calls : s_Link.ownCalls);
        return text;
    }
};

/// Their number and a hash: a dump has millions of them.
std::string Text(const void* pBytes, std::size_t size) {
    const std::string_view bytes(static_cast<const char*>(pBytes), size);
    std::ostringstream text;
    text << ' ' << size << ':' << std::hash<std::string_view>()(bytes);
    return text.str();
}

template <class... Values>
std::string Line(const char* pszFunction, const Values&... values) {
    std::ostringstream line;
    line << pszFunction << std::hex;
    ((line << ' ' << values), ...);
    return line.str();
}

// --- Objects ---

std::byte s_Memory[1 << 20];
std::pmr::monotonic_buffer_resource s_Arena(
    s_Memory, sizeof(s_Memory), std::pmr::null_memory_resource());
std::pmr::unsynchronized_pool_resource s_Pool(&s_Arena);

/// In memory of the link's own.
struct POOLED {
    static void* operator new(std::size_t size) { return s_Pool.allocate(size); }
    static void operator delete(void* pMemory, std::size_t size) {
        s_Pool.deallocate(pMemory, size);
    }
};

/// Marks all that an object has beyond the contract's.
template <class Object>
void Mark(Object& object) {
    if constexpr (requires { object.own; }) {
        std::fill(std::begin(object.own), std::end(object.own), 0x5A);
    }
}

/// Notes the end of an object, and if it has not kept its marks.
template <class Object>
void NoteEnd(const char* pszClass, const Object& object) {
    s_Link.notes += std::string("~") + pszClass + '\n';
    if constexpr (requires { object.own; }) {
        if (std::count(std::begin(object.own), std::end(object.own), 0x5A) != sizeof(object.own)) {
            s_Link.notes += "it has lost its marks\n";
        }
    }
}

// --- The camera ---

std::map<std::uint64_t, Bytes> s_Values;  // by property id, or by bank and address behind ...
const std::uint64_t MEMORY = 0x100000000;

void Read(std::uint64_t place, std::uint32_t size, void* data) {
    Bytes& value = s_Values[place];
    if (value.size() != size) {  // short ones are zero, which most operations take for sensible
        value.assign(size, 0);
        for (std::uint32_t n = 8; n < size; ++n) {
            value[n] = static_cast<std::uint8_t>(place * 31 + n);
        }
    }
    std::copy(value.begin(), value.end(), static_cast<std::uint8_t*>(data));
    s_Link.notes += " ->" + Text(data, size) + '\n';
}

void Write(std::uint64_t place, std::uint32_t size, const void* data) {
    const auto* pBytes = static_cast<const std::uint8_t*>(data);
    s_Values[place].assign(pBytes, pBytes + size);
}

}  // namespace

std::string _gt(const std::uint32_t& value) {
    s_Link.arguments = {&value};
    const Step step(Line("_gt", value));
    return std::to_string(s_Link.steps) + " ";
}

// --- CEventProcedure ---

struct CEventProcedure::STATE : POOLED {
    Bytes returnData;
};

CEventProcedure::CEventProcedure() : pState(nullptr) {
    const Step step("CEventProcedure");
    pState = new STATE;
    Mark(*this);
}

CEventProcedure::~CEventProcedure() {
    NoteEnd("CEventProcedure", *this);
    delete pState;
}

void CEventProcedure::Execute(
    const std::string& name, const std::int32_t& parameter, std::int32_t* result) {
    const Call call(Line("Execute", name, parameter), {&name, &parameter, result});
    *result = parameter * 2;
}

void CEventProcedure::ClearParameters() {
    const Call call("ClearParameters");
}

void CEventProcedure::PushParameterAsInteger(const std::int32_t& value, const std::int32_t& kind) {
    const Call call(Line("PushParameterAsInteger", value, kind), {&value, &kind});
}

void CEventProcedure::PushParameterAsSafeArray(const void* data, const std::uint32_t& size) {
    const Call call("PushParameterAsSafeArray" + Text(data, size), {data, &size});
}

void CEventProcedure::Execute(const std::string& name, std::int32_t* result) {
    const Call call(Line("Execute", name), {&name, result});
    *result = 0;
}

void CEventProcedure::ExecuteAndGetSize(
    const std::string& name, std::uint32_t* size, std::int32_t* result) {
    const Call call(Line("ExecuteAndGetSize", name), {&name, size, result});
    pState->returnData.assign(36, 1);
    *size = 36;
    *result = 0;
}

void CEventProcedure::GetReturnData(void* data, std::uint32_t* size, std::int32_t* result) {
    const Call call(Line("GetReturnData", *size), {data, size, result});
    const std::size_t count = std::min<std::size_t>(*size, pState->returnData.size());
    std::copy_n(pState->returnData.begin(), count, static_cast<std::uint8_t*>(data));
    *size = 0x10000;  // more than the caller has room for
    *result = 0;
}

// By way of its own exported functions, which no other library may catch.
void CEventProcedure::ExecuteAndGetData(
    const std::string& name, void* data, std::uint32_t* size, std::int32_t* result) {
    const Call call(Line("ExecuteAndGetData", name, *size));
    const std::uint32_t room = *size;
    ExecuteAndGetSize(name, size, result);
    *size = std::min(room, *size);
    GetReturnData(data, size, result);
    s_Link.arguments = {&name, data, size, result};
}

// --- CProperty ---

CProperty::CProperty() {
    Mark(*this);
}
CProperty::~CProperty() = default;

CPublicProperty::CPublicProperty() {
    const Step step("CPublicProperty");
    Mark(*this);
}
CPublicProperty::~CPublicProperty() {
    NoteEnd("CPublicProperty", *this);
}

void CProperty::Get(const std::uint32_t& id, const std::uint32_t& size, void* data) {
    const Call call(Line("Get", id, size), {&id, &size, data});
    Read(id, size, data);
}

void CProperty::Set(const std::uint32_t& id, const std::uint32_t& size, const void* data) {
    const Call call(Line("Set", id) + Text(data, size), {&id, &size, data});
    Write(id, size, data);
}

void CProperty::Save(const std::uint32_t& id) {
    const Call call(Line("Save", id), {&id});
}

void CProperty::InitializeList(const std::uint32_t& count) {
    const Call call(Line("InitializeList", count), {&count});
}

void CProperty::PushList(const std::uint32_t& id) {
    const Call call(Line("PushList", id), {&id});
}

void CProperty::SaveList() {
    const Call call("SaveList");
}

// --- CSLRMonitor ---

struct CSLRMonitor::STATE : POOLED {
    std::uint64_t bank = 0;
};

CSLRMonitor::CSLRMonitor() : pState(nullptr) {
    const Step step("CSLRMonitor");
    pState = new STATE;
    Mark(*this);
}

CSLRMonitor::~CSLRMonitor() {
    NoteEnd("CSLRMonitor", *this);
    delete pState;
}

void CSLRMonitor::OpenSession() {
    const Call call("OpenSession");
}

void CSLRMonitor::ChangeBank(const SLR_MONITOR::tagBANK_KIND_T& bank) {
    const Call call(Line("ChangeBank", bank), {&bank});
    pState->bank = MEMORY * bank;
}

void CSLRMonitor::WriteMemory(
    const std::uint32_t& address, const std::uint32_t& size, const std::uint8_t* data) {
    const Call call(Line("WriteMemory", address) + Text(data, size), {&address, &size, data});
    Write(pState->bank + address, size, data);
}

void CSLRMonitor::ReadMemory(
    const std::uint32_t& address, const std::uint32_t& size, std::uint8_t* data) {
    const Call call(Line("ReadMemory", address, size), {&address, &size, data});
    Read(pState->bank + address, size, data);
}

void CSLRMonitor::CallFunction(const std::uint32_t& number) {
    const Call call(Line("CallFunction", number), {&number});
}

void CSLRMonitor::CloseSession() {
    const Call call("CloseSession");
}

// --- CFilePath ---

CFilePath::CFilePath() {
    const Step step("CFilePath");
    Mark(*this);
}
CFilePath::~CFilePath() {
    NoteEnd("CFilePath", *this);
}

std::string CFilePath::GetPropertyFullPath(const std::string& name) {
    const Call call(Line("GetPropertyFullPath", name), {&name});
    return "./" + name;
}
