// The objects of the camera link as the simulated body has them.
#include "bodylnk/SimulatedLink.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "bodylnk/Body.h"
#include "bodylnk/Clock.h"
#include "bodylnk/Events.h"
#include "bodylnk/Monitor.h"
#include "bodylnk/Properties.h"
#include "bodylnk/Refusal.h"
#include "passage/Passage.h"

namespace SimulatedBody {

namespace {

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

// --- CEventProcedure and CPublicProperty ---

class SimulatedProcedure : public Link::Procedure {
  public:
    void Execute(
        const std::string& name, const std::int32_t& parameter, std::int32_t* result) override {
        RequireResult(result);
        *result = RunEvent(name, {.integers = {parameter}, .blocks = {}}).word;
    }

    void ClearParameters() override { m_Parameters = {}; }

    void PushParameterAsInteger(const std::int32_t& value, const std::int32_t& kind) override {
        if (kind != 2) {
            Refuse("[VALU] Parameter kind", REFUSED_PARAMETER);
        }
        m_Parameters.integers.push_back(value);
    }

    void PushParameterAsSafeArray(const void* data, const std::uint32_t& size) override {
        if (size > Link::BLOCK_LIMIT) {
            Refuse("[VALU] Parameter size", REFUSED_SIZE);
        }
        RequirePointer(data, "[VALU] Parameter data");
        const auto* pBytes = static_cast<const std::uint8_t*>(data);
        m_Parameters.blocks.emplace_back(pBytes, pBytes + size);
    }

    void Execute(const std::string& name, std::int32_t* result) override {
        RequireResult(result);
        *result = RunEvent(name, m_Parameters).word;
    }

    void ExecuteAndGetSize(
        const std::string& name, std::uint32_t* size, std::int32_t* result) override {
        RequireResult(result);
        RequirePointer(size, "[VALU] size");
        EVENT_ANSWER answer = RunEvent(name, m_Parameters);
        const auto dataSize = static_cast<std::uint32_t>(answer.data.size());
        m_ReturnData = std::move(answer.data);
        *size = ScriptedReturnSizes().reported.value_or(dataSize);
        *result = answer.word;
    }

    void GetReturnData(void* data, std::uint32_t* size, std::int32_t* result) override {
        RequireResult(result);
        RequirePointer(size, "[VALU] size");
        if (!m_ReturnData) {
            Refuse("[VALU] No return data", REFUSED_ORDER);
        }
        CopyData(*m_ReturnData, data, *size);
        *size = ScriptedReturnSizes().left.value_or(*size);
        *result = 0;
    }

    void ExecuteAndGetData(
        const std::string& name, void* data, std::uint32_t* size, std::int32_t* result) override {
        RequireResult(result);
        RequirePointer(size, "[VALU] size");
        const EVENT_ANSWER answer = RunEvent(name, m_Parameters);
        *size = CopyData(answer.data, data, *size);
        *result = answer.word;
    }

    void Get(const std::uint32_t& id, const std::uint32_t& size, void* data) override {
        ReadProperty(id, size, data);
    }
    void Set(const std::uint32_t& id, const std::uint32_t& size, const void* data) override {
        WriteProperty(id, size, data);
    }
    void InitializeList(const std::uint32_t& count) override { BeginSaveList(count); }
    void PushList(const std::uint32_t& id) override { AddToSaveList(id); }
    void SaveList() override { SaveWholeList(); }

  private:
    PARAMETERS m_Parameters;
    std::optional<Bytes> m_ReturnData;  // of the last ExecuteAndGetSize
};

// --- CSLRMonitor ---

class SimulatedMonitor : public Link::Monitor {
  public:
    void OpenSession() override {
        RequireOpen(false);
        m_Open = true;
    }

    void ChangeBank(const SLR_MONITOR::tagBANK_KIND_T& bank) override {
        RequireOpen(true);
        RequireBank(bank);
        m_Bank = bank;
    }

    void WriteMemory(
        const std::uint32_t& address, const std::uint32_t& size,
        const std::uint8_t* data) override {
        WriteBank(RequireBankChosen(), address, size, data);
    }

    void ReadMemory(
        const std::uint32_t& address, const std::uint32_t& size, std::uint8_t* data) override {
        ReadBank(RequireBankChosen(), address, size, data);
    }

    void CallFunction(const std::uint32_t& number) override {
        RunBankFunction(RequireBankChosen(), number);
    }

    void CloseSession() override {
        RequireOpen(true);
        m_Open = false;
        m_Bank.reset();
    }

  private:
    void RequireOpen(bool expected) const {
        if (m_Open != expected) {
            Refuse("[VALU] Monitor session", REFUSED_ORDER);
        }
    }
    std::uint32_t RequireBankChosen() const {
        RequireOpen(true);
        if (!m_Bank) {
            Refuse("[VALU] Monitor bank", REFUSED_ORDER);
        }
        return *m_Bank;
    }

    bool m_Open = false;
    std::optional<std::uint32_t> m_Bank;
};

// --- The rest ---

class SimulatedFilePath : public Link::FilePath {
  public:
    std::string GetPropertyFullPath(const std::string& name) override {
        return Body().installationFolder + name;
    }
};

class SimulatedLink : public Link::Behind {
  public:
    std::unique_ptr<Link::Procedure> NewEventProcedure() override {
        return std::make_unique<SimulatedProcedure>();
    }
    std::unique_ptr<Link::Procedure> NewPublicProperty() override {
        return std::make_unique<SimulatedProcedure>();
    }
    std::unique_ptr<Link::Monitor> NewMonitor() override {
        return std::make_unique<SimulatedMonitor>();
    }
    std::unique_ptr<Link::FilePath> NewFilePath() override {
        return std::make_unique<SimulatedFilePath>();
    }
    void Save(const std::uint32_t& id) override { SaveProperty(id); }
    std::string LinePrefix(const std::uint32_t& /*value*/) override { return ClockText(); }
};

SimulatedLink s_Link;

}  // namespace

Link::Behind& BodyBehindLink() {
    return s_Link;
}

}  // namespace SimulatedBody
