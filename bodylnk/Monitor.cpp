// The memory banks, and the functions that work in them.
#include "bodylnk/Monitor.h"

#include <algorithm>
#include <stdexcept>

#include "bodylnk/Body.h"
#include "bodylnk/Refusal.h"
#include "bodylnk/SimulatedBody.h"
#include "link/BodyLink.h"

namespace SimulatedBody {

namespace {

using SLR_MONITOR::BANK_EE;
using SLR_MONITOR::BANK_FC;

constexpr std::uint32_t BANK_SIZE = 0x10000;
constexpr std::uint32_t FUNCTION_LENS_EXCHANGE = 15;
constexpr std::uint32_t FUNCTION_MPU_RESET = 118;

// The lens exchange has its block at address 0 of bank 0xFC and is told what to do by the block's
// first three bytes.
constexpr std::uint32_t LENS_BLOCK_SIZE = 8;
constexpr std::uint8_t s_byLensBegin[] = {0x07, 0x12, 0x80};
constexpr std::uint8_t s_byLensEnd[] = {0x02, 0x12, 0x80};
constexpr std::uint32_t LENS_ANSWER_OFFSET = 7;

struct MONITOR {
    std::map<std::uint32_t, std::uint8_t> memory;  // by bank and address; what is missing is zero
    std::uint8_t lensAnswer = 1;
    bool lensExchange = false;
};

MONITOR s_Monitor;

std::uint32_t Place(std::uint32_t bank, std::uint32_t address) {
    return bank * BANK_SIZE + address;
}

bool IsBank(std::uint32_t bank) {
    return bank == BANK_EE || bank == BANK_FC;
}

bool IsInBank(std::uint32_t address, std::uint32_t size) {
    return address <= BANK_SIZE && size <= BANK_SIZE - address;
}

void Store(
    std::uint32_t bank, std::uint32_t address, std::uint32_t size, const std::uint8_t* data) {
    for (std::uint32_t n = 0; n < size; ++n) {
        s_Monitor.memory[Place(bank, address + n)] = data[n];
    }
}

void Load(std::uint32_t bank, std::uint32_t address, std::uint32_t size, std::uint8_t* data) {
    for (std::uint32_t n = 0; n < size; ++n) {
        const auto found = s_Monitor.memory.find(Place(bank, address + n));
        data[n] = found != s_Monitor.memory.end() ? found->second : std::uint8_t{0};
    }
}

void RequireInBank(std::uint32_t address, std::uint32_t size, const void* data) {
    if (!IsInBank(address, size)) {
        Refuse("[VALU] Memory range", REFUSED_RANGE);
    }
    RequirePointer(data, "[VALU] Memory data");
}

// Setting up is refused like this; the link has refusals of its own.
void CheckArea(std::uint32_t bank, std::uint32_t address, std::size_t size) {
    if (!IsBank(bank) || size > BANK_SIZE || !IsInBank(address, static_cast<std::uint32_t>(size))) {
        throw std::out_of_range("the body has no such memory");
    }
}

void ExchangeWithLens() {
    std::uint8_t block[LENS_BLOCK_SIZE];
    Load(BANK_FC, 0, sizeof(block), block);
    const auto begins = [&](const auto& bytes) {
        return std::equal(std::begin(bytes), std::end(bytes), block);
    };
    if (begins(s_byLensBegin)) {
        s_Monitor.lensExchange = true;
        Store(BANK_FC, LENS_ANSWER_OFFSET, 1, &s_Monitor.lensAnswer);
    } else if (begins(s_byLensEnd) && s_Monitor.lensExchange) {
        s_Monitor.lensExchange = false;
    } else {
        Refuse("[VALU] Lens exchange", REFUSED_ORDER);
    }
}

void ResetMpu() {
    s_Monitor.lensExchange = false;
    ++Body().condition.mpuResets;
}

}  // namespace

// --- For the link ---

void RequireBank(std::uint32_t bank) {
    if (!IsBank(bank)) {
        Refuse("[VALU] Memory bank", REFUSED_RANGE);
    }
}

void WriteBank(
    std::uint32_t bank, std::uint32_t address, std::uint32_t size, const std::uint8_t* data) {
    RequireInBank(address, size, data);
    Store(bank, address, size, data);
}

void ReadBank(std::uint32_t bank, std::uint32_t address, std::uint32_t size, std::uint8_t* data) {
    RequireInBank(address, size, data);
    Load(bank, address, size, data);
}

void RunBankFunction(std::uint32_t bank, std::uint32_t number) {
    if (bank == BANK_FC && number == FUNCTION_LENS_EXCHANGE) {
        ExchangeWithLens();
    } else if (bank == BANK_FC && number == FUNCTION_MPU_RESET) {
        ResetMpu();
    } else {
        Refuse("[VALU] Monitor function", REFUSED_RANGE);
    }
}

void ResetMonitor() {
    s_Monitor = {};
}

// --- For those who set the body up and look into it ---

Bytes Memory(std::uint32_t bank, std::uint32_t address, std::uint32_t size) {
    CheckArea(bank, address, size);
    Bytes bytes(size);
    Load(bank, address, size, bytes.data());
    return bytes;
}

void SetMemory(std::uint32_t bank, std::uint32_t address, const Bytes& bytes) {
    CheckArea(bank, address, bytes.size());
    Store(bank, address, static_cast<std::uint32_t>(bytes.size()), bytes.data());
}

void SetLensAnswer(std::uint8_t byte) {
    s_Monitor.lensAnswer = byte;
}

}  // namespace SimulatedBody
