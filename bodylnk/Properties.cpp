// Working and saved values, made up when they are first asked for.
#include "bodylnk/Properties.h"

#include <cstdio>
#include <cstring>
#include <stdexcept>

#include "bodylnk/PropertyFacts.h"
#include "bodylnk/Refusal.h"
#include "bodylnk/SimulatedBody.h"

namespace SimulatedBody {

namespace {

// Only what has been given a value is kept, so that a whole dump leaves no trace in memory. A
// property without a working value here shows its saved one, and without that its factory value.
struct PROPERTIES {
    std::map<std::uint32_t, Bytes> working;
    std::map<std::uint32_t, Bytes> saved;
    std::uint32_t announced = 0;
    std::vector<std::uint32_t> list;
};

PROPERTIES s_Properties;

using Values = std::map<std::uint32_t, Bytes>;

const Bytes* Find(const Values& values, std::uint32_t id) {
    const auto found = values.find(id);
    return found != values.end() ? &found->second : nullptr;
}

const Bytes* FindKept(std::uint32_t id) {
    const Bytes* pWorking = Find(s_Properties.working, id);
    return pWorking != nullptr ? pWorking : Find(s_Properties.saved, id);
}

std::optional<std::uint32_t> SizeOf(std::uint32_t id) {
    const Bytes* pKept = FindKept(id);
    return pKept != nullptr ? static_cast<std::uint32_t>(pKept->size()) : FactorySize(id);
}

std::uint32_t RequireProperty(std::uint32_t id) {
    const auto size = SizeOf(id);
    if (!size) {
        char szMessage[48];
        std::snprintf(
            szMessage, sizeof(szMessage), "[VALU] Unknown property 0x%X",
            static_cast<unsigned>(id));
        Refuse(szMessage, REFUSED_PROPERTY);
    }
    return *size;
}

void RequireBlock(std::uint32_t id, std::uint32_t size, const void* data) {
    if (RequireProperty(id) != size) {
        Refuse("[VALU] Property size", REFUSED_SIZE);
    }
    RequirePointer(data, "[VALU] Property data");
}

void Copy(const Bytes* pKept, std::uint32_t id, std::uint32_t size, void* data) {
    if (pKept == nullptr) {
        FillFactoryValue(id, size, data);
    } else if (size != 0) {
        std::memcpy(data, pKept->data(), size);
    }
}

Bytes ValueOf(const Bytes* pKept, std::uint32_t id) {
    Bytes bytes(SizeOf(id).value_or(0));
    Copy(pKept, id, static_cast<std::uint32_t>(bytes.size()), bytes.data());
    return bytes;
}

void RequireKnown(std::uint32_t id) {
    if (!SizeOf(id)) {
        throw std::out_of_range("the body has no such property");
    }
}

bool IsSetting(std::uint32_t id) {
    return id >= 0x80000000 || (id >= 0x2040000 && id < 0x2080000);
}

}  // namespace

// --- For the link ---

void ReadProperty(std::uint32_t id, std::uint32_t size, void* data) {
    RequireBlock(id, size, data);
    Copy(FindKept(id), id, size, data);
}

void WriteProperty(std::uint32_t id, std::uint32_t size, const void* data) {
    RequireBlock(id, size, data);
    const auto* pBytes = static_cast<const std::uint8_t*>(data);
    s_Properties.working.insert_or_assign(id, Bytes(pBytes, pBytes + size));
}

void SaveProperty(std::uint32_t id) {
    RequireProperty(id);
    const auto working = s_Properties.working.find(id);
    if (working != s_Properties.working.end()) {
        s_Properties.saved[id] = std::move(working->second);
        s_Properties.working.erase(working);
    }
}

void BeginSaveList(std::uint32_t count) {
    s_Properties.announced = count;
    s_Properties.list.clear();
}

void AddToSaveList(std::uint32_t id) {
    RequireProperty(id);
    if (s_Properties.list.size() >= s_Properties.announced) {
        Refuse("[VALU] Property list is full", REFUSED_ORDER);
    }
    s_Properties.list.push_back(id);
}

void SaveWholeList() {
    if (s_Properties.list.size() != s_Properties.announced) {
        Refuse("[VALU] Property list is incomplete", REFUSED_ORDER);
    }
    for (const std::uint32_t id : s_Properties.list) {
        SaveProperty(id);
    }
    BeginSaveList(0);
}

void RestoreSettings() {
    const auto isSetting = [](const auto& entry) { return IsSetting(entry.first); };
    std::erase_if(s_Properties.working, isSetting);
    std::erase_if(s_Properties.saved, isSetting);
}

void ResetProperties() {
    s_Properties = {};
}

// --- For those who set the body up and look into it ---

void SetProperty(std::uint32_t id, const Bytes& bytes) {
    s_Properties.saved[id] = bytes;
    s_Properties.working.erase(id);
}

Bytes WorkingValue(std::uint32_t id) {
    RequireKnown(id);
    return ValueOf(FindKept(id), id);
}

Bytes SavedValue(std::uint32_t id) {
    RequireKnown(id);
    return ValueOf(Find(s_Properties.saved, id), id);
}

std::map<std::uint32_t, Bytes> SavedProperties() {
    return s_Properties.saved;
}

std::map<std::uint32_t, std::uint32_t> Properties() {
    std::map<std::uint32_t, std::uint32_t> sizes;
    ForEachFactoryProperty([&](std::uint32_t id, std::uint32_t size) { sizes[id] = size; });
    for (const auto& [id, bytes] : s_Properties.saved) {
        sizes[id] = static_cast<std::uint32_t>(bytes.size());
    }
    return sizes;
}

void PowerCycle() {
    s_Properties.working.clear();
}

}  // namespace SimulatedBody
