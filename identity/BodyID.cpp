// The body number packed into a property and unpacked, and its copy in a shared block.
#include "identity/BodyID.h"

#include <cstring>

#include "frame/OperationFrame.h"
#include "frame/OperationShapes.h"
#include "link/BodyLink.h"
#include "link/SharedMemory.h"

static const std::uint32_t PROP_BODY_ID = 0x1000006;

// Decimal weights of the groups in the body number.
static const std::uint64_t MONTH_WEIGHT = 10'000'000'000;
static const std::uint32_t CODE_PAIR_WEIGHT = 100'000'000;
static const std::uint32_t DIGIT_HIGH_WEIGHT = 10'000'000;
static const std::uint32_t DIGIT_LOW_WEIGHT = 1'000'000;

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

namespace {

using BodyIDBytes = CBodyIDSharedMemory::BodyIDBytes;

std::uint64_t PackBodyNumber(const BODY_ID_T& bodyID) {
    // The two digits are multiplied in 32 bits: a group out of range wraps there.
    const std::uint32_t digitHigh = bodyID.CodeDigitHigh * DIGIT_HIGH_WEIGHT;
    const std::uint32_t digitLow = bodyID.CodeDigitLow * DIGIT_LOW_WEIGHT;
    return (std::uint64_t{bodyID.ManufactureMonth} * 100 + bodyID.CodePair) * CODE_PAIR_WEIGHT +
           digitHigh + digitLow + bodyID.SerialNo;
}

BODY_ID_T UnpackBodyNumber(std::uint64_t number) {
    BODY_ID_T bodyID{};
    bodyID.ManufactureMonth = static_cast<std::uint32_t>(number / MONTH_WEIGHT);
    number %= MONTH_WEIGHT;
    bodyID.CodePair = static_cast<std::uint32_t>(number / CODE_PAIR_WEIGHT);
    number %= CODE_PAIR_WEIGHT;
    bodyID.CodeDigitHigh = static_cast<std::uint32_t>(number / DIGIT_HIGH_WEIGHT);
    number %= DIGIT_HIGH_WEIGHT;
    bodyID.CodeDigitLow = static_cast<std::uint32_t>(number / DIGIT_LOW_WEIGHT);
    bodyID.SerialNo = static_cast<std::uint32_t>(number % DIGIT_LOW_WEIGHT);
    return bodyID;
}

// The property holds the upper 32 bits first, then the lower ones, each little-endian.
BodyIDBytes ToProperty(std::uint64_t number) {
    const std::uint64_t swapped = (number >> 32) | (number << 32);
    BodyIDBytes bytes{};
    std::memcpy(bytes.data(), &swapped, bytes.size());
    return bytes;
}

std::uint64_t FromProperty(const BodyIDBytes& bytes) {
    std::uint64_t swapped = 0;
    std::memcpy(&swapped, bytes.data(), bytes.size());
    return (swapped >> 32) | (swapped << 32);
}

}  // namespace

std::int32_t SetBodyID(void* argument) noexcept {
    return RunOperation<CPublicProperty, CBodyIDSharedMemory>(
        {s_LogStream, s_byLogBuffer, "SetBodyID"}, [&](auto& property, auto& block) {
            const auto* pBodyID = static_cast<const BODY_ID_T*>(argument);
            CheckPointer(pBodyID, "pBodyID");
            CheckSharedMemory(block);
            const BodyIDBytes bytes = ToProperty(PackBodyNumber(*pBodyID));
            property.Set(PROP_BODY_ID, bytes.size(), bytes.data());
            block.Store(bytes);
        });
}

std::int32_t GetBodyID(void* argument) noexcept {
    return RunOperation<CPublicProperty, CBodyIDSharedMemory>(
        {s_LogStream, s_byLogBuffer, "GetBodyID"}, [&](auto& property, auto& block) {
            auto* pBodyID = static_cast<BODY_ID_T*>(argument);
            CheckPointer(pBodyID, "pBodyID");
            CheckSharedMemory(block);
            BodyIDBytes bytes{};
            property.Get(PROP_BODY_ID, bytes.size(), bytes.data());
            block.Store(bytes);
            *pBodyID = UnpackBodyNumber(FromProperty(bytes));
            BeginLine(s_LogStream) << "BodyID - " << pBodyID->SerialNo << '\n';
            FlushLog(s_LogStream, s_byLogBuffer);
        });
}

std::int32_t SaveBodyID(void* /*argument*/) noexcept {
    return SaveProperty({s_LogStream, s_byLogBuffer, "SaveBodyID"}, PROP_BODY_ID);
}

void RegisterBodyID(EVENT_PROC_REGISTER_FUNC callback) {
    static const REGISTRATION registrations[] = {
        {"SetBodyID", SetBodyID, sizeof(BODY_ID_T), EVENT_PROC_IN},
        {"GetBodyID", GetBodyID, sizeof(BODY_ID_T), EVENT_PROC_OUT},
        {"SaveBodyID", SaveBodyID},
    };
    RegisterEventProcs(callback, registrations);
}
