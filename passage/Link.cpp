// The classes of the camera link, each member function a call that passes on to who stands behind.
#include <map>

#include "link/BodyLink.h"
#include "passage/Behind.h"
#include "passage/Passage.h"

using namespace Link;

namespace {

/// Spares the copy of a work that refers to much.
template <class Work>
void Pass(const REQUEST& request, const Work& work) {
    PassCall(request, std::cref(work));
}

REQUEST SendingRequest(
    const char* pszFunction, std::uint32_t id, std::uint32_t size, const void* data) {
    return {.pszFunction = pszFunction, .id = id, .value = size, .pSent = data, .sentSize = size};
}

REQUEST ReceivingRequest(
    const char* pszFunction, std::uint32_t id, std::uint32_t size, void* data) {
    return {.pszFunction = pszFunction, .id = id, .value = size, .pReceive = data, .room = size};
}

/// Of an event's return data, of which `*size` bytes have room.
REQUEST DataRequest(const char* pszFunction, void* data, std::uint32_t* size) {
    const std::uint32_t room = size != nullptr ? *size : 0;
    return {
        .pszFunction = pszFunction,
        .value = room,
        .pReceive = data,
        .room = room,
        .pSizeLeft = size};
}

}  // namespace

// --- CEventProcedure ---

struct CEventProcedure::STATE {
    std::unique_ptr<Procedure> pBehind;
};

CEventProcedure::CEventProcedure() : pState(nullptr) {
    PassConstruction("CEventProcedure::CEventProcedure", [this] {
        pState = new STATE{WhoStandsBehind().NewEventProcedure()};
    });
}

CEventProcedure::CEventProcedure(STATE* pOwn) : pState(pOwn) {}

CEventProcedure::~CEventProcedure() {
    delete pState;
}

void CEventProcedure::Execute(
    const std::string& name, const std::int32_t& parameter, std::int32_t* result) {
    const REQUEST request = {
        .pszFunction = "CEventProcedure::Execute",
        .value = parameter,
        .name = name,
        .pResult = result};
    Pass(request, [&] { pState->pBehind->Execute(name, parameter, result); });
}

void CEventProcedure::ClearParameters() {
    Pass({.pszFunction = "CEventProcedure::ClearParameters"}, [&] {
        pState->pBehind->ClearParameters();
    });
}

void CEventProcedure::PushParameterAsInteger(const std::int32_t& value, const std::int32_t& kind) {
    const REQUEST request = {
        .pszFunction = "CEventProcedure::PushParameterAsInteger",
        .id = static_cast<std::uint32_t>(kind),
        .value = value};
    Pass(request, [&] { pState->pBehind->PushParameterAsInteger(value, kind); });
}

void CEventProcedure::PushParameterAsSafeArray(const void* data, const std::uint32_t& size) {
    Pass(SendingRequest("CEventProcedure::PushParameterAsSafeArray", 0, size, data), [&] {
        pState->pBehind->PushParameterAsSafeArray(data, size);
    });
}

void CEventProcedure::Execute(const std::string& name, std::int32_t* result) {
    const REQUEST request = {
        .pszFunction = "CEventProcedure::Execute",
        .name = name,
        .fromList = true,
        .pResult = result};
    Pass(request, [&] { pState->pBehind->Execute(name, result); });
}

void CEventProcedure::ExecuteAndGetSize(
    const std::string& name, std::uint32_t* size, std::int32_t* result) {
    const REQUEST request = {
        .pszFunction = "CEventProcedure::ExecuteAndGetSize",
        .name = name,
        .pReceive = size,
        .room = sizeof(*size),
        .pResult = result};
    Pass(request, [&] { pState->pBehind->ExecuteAndGetSize(name, size, result); });
}

void CEventProcedure::GetReturnData(void* data, std::uint32_t* size, std::int32_t* result) {
    REQUEST request = DataRequest("CEventProcedure::GetReturnData", data, size);
    request.pResult = result;
    Pass(request, [&] { pState->pBehind->GetReturnData(data, size, result); });
}

void CEventProcedure::ExecuteAndGetData(
    const std::string& name, void* data, std::uint32_t* size, std::int32_t* result) {
    REQUEST request = DataRequest("CEventProcedure::ExecuteAndGetData", data, size);
    request.name = name;
    request.pResult = result;
    Pass(request, [&] { pState->pBehind->ExecuteAndGetData(name, data, size, result); });
}

// --- CProperty ---

// One object stands behind the whole chain: the last class of it brings the state.
CProperty::CProperty() : CEventProcedure(nullptr) {}
CProperty::~CProperty() = default;

CPublicProperty::CPublicProperty() {
    PassConstruction("CPublicProperty::CPublicProperty", [this] {
        pState = new STATE{WhoStandsBehind().NewPublicProperty()};
    });
}

CPublicProperty::~CPublicProperty() = default;

void CProperty::Get(const std::uint32_t& id, const std::uint32_t& size, void* data) {
    Pass(ReceivingRequest("CProperty::Get", id, size, data), [&] {
        pState->pBehind->Get(id, size, data);
    });
}

void CProperty::Set(const std::uint32_t& id, const std::uint32_t& size, const void* data) {
    Pass(SendingRequest("CProperty::Set", id, size, data), [&] {
        pState->pBehind->Set(id, size, data);
    });
}

void CProperty::Save(const std::uint32_t& id) {
    Pass({.pszFunction = "CProperty::Save", .id = id}, [&] { WhoStandsBehind().Save(id); });
}

void CProperty::InitializeList(const std::uint32_t& count) {
    Pass({.pszFunction = "CProperty::InitializeList", .id = count}, [&] {
        pState->pBehind->InitializeList(count);
    });
}

void CProperty::PushList(const std::uint32_t& id) {
    Pass({.pszFunction = "CProperty::PushList", .id = id}, [&] { pState->pBehind->PushList(id); });
}

void CProperty::SaveList() {
    Pass({.pszFunction = "CProperty::SaveList"}, [&] { pState->pBehind->SaveList(); });
}

// --- CSLRMonitor ---

struct CSLRMonitor::STATE {
    std::unique_ptr<Monitor> pBehind;
};

CSLRMonitor::CSLRMonitor() : pState(nullptr) {
    PassConstruction(
        "CSLRMonitor::CSLRMonitor", [this] { pState = new STATE{WhoStandsBehind().NewMonitor()}; });
}

CSLRMonitor::~CSLRMonitor() {
    delete pState;
}

void CSLRMonitor::OpenSession() {
    Pass({.pszFunction = "CSLRMonitor::OpenSession"}, [&] { pState->pBehind->OpenSession(); });
}

void CSLRMonitor::ChangeBank(const SLR_MONITOR::tagBANK_KIND_T& bank) {
    Pass({.pszFunction = "CSLRMonitor::ChangeBank", .id = bank}, [&] {
        pState->pBehind->ChangeBank(bank);
    });
}

void CSLRMonitor::WriteMemory(
    const std::uint32_t& address, const std::uint32_t& size, const std::uint8_t* data) {
    Pass(SendingRequest("CSLRMonitor::WriteMemory", address, size, data), [&] {
        pState->pBehind->WriteMemory(address, size, data);
    });
}

void CSLRMonitor::ReadMemory(
    const std::uint32_t& address, const std::uint32_t& size, std::uint8_t* data) {
    Pass(ReceivingRequest("CSLRMonitor::ReadMemory", address, size, data), [&] {
        pState->pBehind->ReadMemory(address, size, data);
    });
}

void CSLRMonitor::CallFunction(const std::uint32_t& number) {
    Pass({.pszFunction = "CSLRMonitor::CallFunction", .id = number}, [&] {
        pState->pBehind->CallFunction(number);
    });
}

void CSLRMonitor::CloseSession() {
    Pass({.pszFunction = "CSLRMonitor::CloseSession"}, [&] { pState->pBehind->CloseSession(); });
}

// --- CFilePath ---

// The class has no place for a state of its own.
static std::map<const CFilePath*, std::unique_ptr<FilePath>> s_FilePaths;

CFilePath::CFilePath() {
    PassConstruction("CFilePath::CFilePath", [this] {
        s_FilePaths.insert_or_assign(this, WhoStandsBehind().NewFilePath());
    });
}

CFilePath::~CFilePath() {
    s_FilePaths.erase(this);
}

std::string CFilePath::GetPropertyFullPath(const std::string& name) {
    std::string path;
    const REQUEST request = {
        .pszFunction = "CFilePath::GetPropertyFullPath", .name = name, .pText = &path};
    Pass(request, [&] { path = s_FilePaths.at(this)->GetPropertyFullPath(name); });
    return path;
}

// --- Line prefix ---

std::string _gt(const std::uint32_t& value) {
    return PassLinePrefix([&] { return WhoStandsBehind().LinePrefix(value); });
}
