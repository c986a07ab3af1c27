// The classes of the camera link, each member function a call to the simulated body.
#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>

#include "bodylnk/Body.h"
#include "bodylnk/Calls.h"
#include "bodylnk/Events.h"
#include "bodylnk/Monitor.h"
#include "bodylnk/Properties.h"
#include "bodylnk/Refusal.h"
#include "link/BodyLink.h"

using namespace SimulatedBody;

namespace {

// More than the largest property: no honest block is larger.
constexpr std::uint32_t BLOCK_LIMIT = 0x100000;

void RequireResult(const std::int32_t* result) {
    RequirePointer(result, "[VALU] result");
}

// Gives the number of bytes copied: never more than there are, nor than the caller has room for.
std::uint32_t CopyData(const Bytes& data, void* pDestination, std::uint32_t room) {
    const auto count = static_cast<std::uint32_t>(std::min<std::size_t>(data.size(), room));
    if (count != 0) {
        RequirePointer(pDestination, "[VALU] data");
        std::memcpy(pDestination, data.data(), count);
    }
    return count;
}

// A block that is too large is refused, and not looked at for the record either.
REQUEST SendingRequest(
    const char* pszFunction, std::uint32_t id, std::uint32_t size, const void* data) {
    return {
        .pszFunction = pszFunction,
        .id = id,
        .value = size,
        .pSent = data,
        .sentSize = size <= BLOCK_LIMIT ? size : 0};
}

REQUEST ReceivingRequest(
    const char* pszFunction, std::uint32_t id, std::uint32_t size, void* data) {
    return {.pszFunction = pszFunction, .id = id, .value = size, .pReceive = data, .room = size};
}

}  // namespace

// --- CEventProcedure ---

struct CEventProcedure::STATE {
    PARAMETERS parameters;
    std::optional<Bytes> returnData;  // of the last ExecuteAndGetSize
};

CEventProcedure::CEventProcedure() : pState(nullptr) {
    PassConstruction();
    pState = new STATE;
}

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
    MakeCall(request, [&] {
        RequireResult(result);
        *result = RunEvent(name, {.integers = {parameter}, .blocks = {}}).word;
        return ANSWER{.result = *result};
    });
}

void CEventProcedure::ClearParameters() {
    MakeCall({.pszFunction = "CEventProcedure::ClearParameters"}, [&] {
        pState->parameters = {};
        return ANSWER{};
    });
}

void CEventProcedure::PushParameterAsInteger(const std::int32_t& value, const std::int32_t& kind) {
    const REQUEST request = {
        .pszFunction = "CEventProcedure::PushParameterAsInteger",
        .id = static_cast<std::uint32_t>(kind),
        .value = value};
    MakeCall(request, [&] {
        if (kind != 2) {
            Refuse("[VALU] Parameter kind", REFUSED_PARAMETER);
        }
        pState->parameters.integers.push_back(value);
        return ANSWER{};
    });
}

void CEventProcedure::PushParameterAsSafeArray(const void* data, const std::uint32_t& size) {
    MakeCall(SendingRequest("CEventProcedure::PushParameterAsSafeArray", 0, size, data), [&] {
        if (size > BLOCK_LIMIT) {
            Refuse("[VALU] Parameter size", REFUSED_SIZE);
        }
        RequirePointer(data, "[VALU] Parameter data");
        const auto* pBytes = static_cast<const std::uint8_t*>(data);
        pState->parameters.blocks.emplace_back(pBytes, pBytes + size);
        return ANSWER{};
    });
}

void CEventProcedure::Execute(const std::string& name, std::int32_t* result) {
    const REQUEST request = {
        .pszFunction = "CEventProcedure::Execute",
        .name = name,
        .fromList = true,
        .pResult = result};
    MakeCall(request, [&] {
        RequireResult(result);
        *result = RunEvent(name, pState->parameters).word;
        return ANSWER{.result = *result};
    });
}

void CEventProcedure::ExecuteAndGetSize(
    const std::string& name, std::uint32_t* size, std::int32_t* result) {
    const REQUEST request = {
        .pszFunction = "CEventProcedure::ExecuteAndGetSize",
        .name = name,
        .pReceive = size,
        .room = sizeof(*size),
        .pResult = result};
    MakeCall(request, [&] {
        RequireResult(result);
        RequirePointer(size, "[VALU] size");
        EVENT_ANSWER answer = RunEvent(name, pState->parameters);
        const auto dataSize = static_cast<std::uint32_t>(answer.data.size());
        pState->returnData = std::move(answer.data);
        *size = ScriptedReturnSizes().reported.value_or(dataSize);
        *result = answer.word;
        return ANSWER{.pReceived = size, .size = sizeof(*size), .result = *result};
    });
}

void CEventProcedure::GetReturnData(void* data, std::uint32_t* size, std::int32_t* result) {
    const std::uint32_t room = size != nullptr ? *size : 0;
    const REQUEST request = {
        .pszFunction = "CEventProcedure::GetReturnData",
        .value = room,
        .pReceive = data,
        .room = room,
        .pSizeLeft = size,
        .pResult = result};
    MakeCall(request, [&] {
        RequireResult(result);
        RequirePointer(size, "[VALU] size");
        if (!pState->returnData) {
            Refuse("[VALU] No return data", REFUSED_ORDER);
        }
        const std::uint32_t copied = CopyData(*pState->returnData, data, room);
        *size = ScriptedReturnSizes().left.value_or(room);
        *result = 0;
        return ANSWER{.pReceived = data, .size = copied, .sizeLeft = *size, .result = *result};
    });
}

void CEventProcedure::ExecuteAndGetData(
    const std::string& name, void* data, std::uint32_t* size, std::int32_t* result) {
    const std::uint32_t room = size != nullptr ? *size : 0;
    const REQUEST request = {
        .pszFunction = "CEventProcedure::ExecuteAndGetData",
        .value = room,
        .name = name,
        .pReceive = data,
        .room = room,
        .pSizeLeft = size,
        .pResult = result};
    MakeCall(request, [&] {
        RequireResult(result);
        RequirePointer(size, "[VALU] size");
        const EVENT_ANSWER answer = RunEvent(name, pState->parameters);
        *size = CopyData(answer.data, data, room);
        *result = answer.word;
        return ANSWER{.pReceived = data, .size = *size, .sizeLeft = *size, .result = *result};
    });
}

// --- CProperty ---

CProperty::CProperty() = default;
CProperty::~CProperty() = default;

CPublicProperty::CPublicProperty() = default;
CPublicProperty::~CPublicProperty() = default;

void CProperty::Get(const std::uint32_t& id, const std::uint32_t& size, void* data) {
    MakeCall(ReceivingRequest("CProperty::Get", id, size, data), [&] {
        ReadProperty(id, size, data);
        return ANSWER{.pReceived = data, .size = size};
    });
}

void CProperty::Set(const std::uint32_t& id, const std::uint32_t& size, const void* data) {
    MakeCall(SendingRequest("CProperty::Set", id, size, data), [&] {
        WriteProperty(id, size, data);
        return ANSWER{};
    });
}

void CProperty::Save(const std::uint32_t& id) {
    MakeCall({.pszFunction = "CProperty::Save", .id = id}, [&] {
        SaveProperty(id);
        return ANSWER{};
    });
}

void CProperty::InitializeList(const std::uint32_t& count) {
    MakeCall({.pszFunction = "CProperty::InitializeList", .id = count}, [&] {
        BeginSaveList(count);
        return ANSWER{};
    });
}

void CProperty::PushList(const std::uint32_t& id) {
    MakeCall({.pszFunction = "CProperty::PushList", .id = id}, [&] {
        AddToSaveList(id);
        return ANSWER{};
    });
}

void CProperty::SaveList() {
    MakeCall({.pszFunction = "CProperty::SaveList"}, [&] {
        SaveWholeList();
        return ANSWER{};
    });
}

// --- CSLRMonitor ---

struct CSLRMonitor::STATE {
    bool open = false;
    std::optional<std::uint32_t> bank;

    void RequireOpen(bool expected) const {
        if (open != expected) {
            Refuse("[VALU] Monitor session", REFUSED_ORDER);
        }
    }
    std::uint32_t RequireBankChosen() const {
        RequireOpen(true);
        if (!bank) {
            Refuse("[VALU] Monitor bank", REFUSED_ORDER);
        }
        return *bank;
    }
};

CSLRMonitor::CSLRMonitor() : pState(nullptr) {
    PassConstruction();
    pState = new STATE;
}

CSLRMonitor::~CSLRMonitor() {
    delete pState;
}

void CSLRMonitor::OpenSession() {
    MakeCall({.pszFunction = "CSLRMonitor::OpenSession"}, [&] {
        pState->RequireOpen(false);
        *pState = {.open = true, .bank = {}};
        return ANSWER{};
    });
}

void CSLRMonitor::ChangeBank(const SLR_MONITOR::tagBANK_KIND_T& bank) {
    MakeCall({.pszFunction = "CSLRMonitor::ChangeBank", .id = bank}, [&] {
        pState->RequireOpen(true);
        RequireBank(bank);
        pState->bank = bank;
        return ANSWER{};
    });
}

void CSLRMonitor::WriteMemory(
    const std::uint32_t& address, const std::uint32_t& size, const std::uint8_t* data) {
    MakeCall(SendingRequest("CSLRMonitor::WriteMemory", address, size, data), [&] {
        WriteBank(pState->RequireBankChosen(), address, size, data);
        return ANSWER{};
    });
}

void CSLRMonitor::ReadMemory(
    const std::uint32_t& address, const std::uint32_t& size, std::uint8_t* data) {
    MakeCall(ReceivingRequest("CSLRMonitor::ReadMemory", address, size, data), [&] {
        ReadBank(pState->RequireBankChosen(), address, size, data);
        return ANSWER{.pReceived = data, .size = size};
    });
}

void CSLRMonitor::CallFunction(const std::uint32_t& number) {
    MakeCall({.pszFunction = "CSLRMonitor::CallFunction", .id = number}, [&] {
        RunBankFunction(pState->RequireBankChosen(), number);
        return ANSWER{};
    });
}

void CSLRMonitor::CloseSession() {
    MakeCall({.pszFunction = "CSLRMonitor::CloseSession"}, [&] {
        pState->RequireOpen(true);
        *pState = {};
        return ANSWER{};
    });
}

// --- CFilePath ---

CFilePath::CFilePath() {
    PassConstruction();
}

// Not trivial: users call the library's own.
CFilePath::~CFilePath() {}

std::string CFilePath::GetPropertyFullPath(const std::string& name) {
    std::string path;
    const REQUEST request = {
        .pszFunction = "CFilePath::GetPropertyFullPath", .name = name, .pText = &path};
    MakeCall(request, [&] {
        path = Body().installationFolder + name;
        return ANSWER{.pReceived = path.data(), .size = static_cast<std::uint32_t>(path.size())};
    });
    return path;
}
