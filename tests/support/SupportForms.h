// The forms of facts that several operations share.
#pragma once

#include <numeric>
#include <sstream>

#include "tests/support/SupportOperations.h"

namespace Forms {

using SimulatedBody::Bytes;
using FACTS = OPERATION_FACTS;

// --- Bytes ---

/// 01 02 03 ...
inline Bytes Counted(std::size_t size) {
    Bytes bytes(size);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{1});
    return bytes;
}

inline std::string HexText(const std::string& text, std::size_t size) {
    Bytes bytes(text.begin(), text.end());
    bytes.resize(size);
    return Hex(bytes);
}

/// "0x1000006 8", a property as calls name it.
inline std::string Property(std::uint32_t id, std::size_t size) {
    std::ostringstream text;
    text << "0x" << std::hex << std::uppercase << id << std::dec << ' ' << size;
    return text.str();
}

// --- The forms that many share; the log has the registered name and no line between ---

inline FACTS Calls(const std::string& name, const Steps& calls) {
    return {.name = name, .steps = calls, .objects = 1};
}

inline FACTS Save(const std::string& name, const std::string& id) {
    return {.name = name, .steps = {"Save " + id}};
}

inline FACTS Set(
    const std::string& name, std::uint32_t id, const std::string& pointer, std::size_t size = 4) {
    const std::string bytes = Hex(Counted(size));
    return {
        .name = name,
        .steps = {"Set " + Property(id, size) + ": " + bytes},
        .objects = 1,
        .given = bytes,
        .pointer = pointer};
}

inline FACTS Get(
    const std::string& name, std::uint32_t id, const std::string& pointer, std::size_t size = 4) {
    const std::string bytes = Hex(Counted(size));
    return {
        .name = name,
        .steps = {"Get " + Property(id, size)},
        .objects = 1,
        .left = bytes,
        .pointer = pointer,
        .properties = {{id, bytes}}};
}

/// An event whose word is looked at where there is a message of it.
inline FACTS Event(
    const std::string& name, const std::string& event, const std::string& message = "",
    const std::string& logName = "") {
    return {
        .name = name,
        .steps = {"Execute " + event},
        .objects = 1,
        .wordError = message.empty() ? "" : "> [ERR!] - " + message,
        .word = message.empty() ? 3 : 2,
        .logName = logName.empty() ? name : logName};
}

// --- Forms of one feature ---

/// The record goes back with one byte changed.
inline FACTS SwitchAF(const std::string& name, const std::string& logName, std::uint8_t bySwitch) {
    Bytes record = Counted(84);
    FACTS facts{.name = name, .objects = 1, .logName = logName};
    facts.properties = {{0x80010007, Hex(record)}};
    record[10] = bySwitch;
    facts.steps = {"Get 0x80010007 84", "Set 0x80010007 84: " + Hex(record)};
    return facts;
}

inline FACTS Replace(const std::string& name, std::uint32_t id, const std::string& pointer) {
    FACTS facts = Set(name, id, pointer);
    facts.steps.insert(facts.steps.begin(), "Get " + Property(id, 4));
    return facts;
}

inline FACTS CellResult(const std::string& name, const std::string& event, std::int32_t size = 4) {
    const std::string tableEnd = "Table";
    return {
        .name = name,
        .steps = {"Execute " + event + " 4"},
        .objects = 1,
        .left = "39 30 00 00",
        .pointer = "pResult",
        .word = 12345,
        .logName = size == 4 ? name : name.substr(0, name.size() - tableEnd.size()),
        .size = size,
        .direction = 1};
}

inline FACTS VersionBlock(const std::string& name, std::uint32_t id, const std::string& logName) {
    FACTS facts = Get(name, id, "pFirmVersion", 36);
    facts.logName = logName;
    facts.closing = "> [FUNC] " + logName;
    facts.steps.insert(
        facts.steps.end(),
        {"> [----]", "> [FUNC] DebugPrintDumpMemory", "> [VALU]  DataSize = 36",
         "> [VALU] Data[ 00000000 ] -  01 02 03 04 05 06 07 08  09 0a 0b 0c 0d 0e 0f 10 ",
         "> [VALU] Data[ 00000010 ] -  11 12 13 14 15 16 17 18  19 1a 1b 1c 1d 1e 1f 20 ",
         "> [VALU] Data[ 00000020 ] -  21 22 23 24 ", "> [FUNC] DebugPrintDumpMemory - 0"});
    return facts;
}

/// Each byte of the block is its offset and one more.
inline FACTS PartVersion(
    const std::string& name, const std::string& logName, const std::string& bytes,
    const std::string& heading, const std::string& value) {
    return {
        .name = name,
        .steps = {"Get 0x2000006 36", "> [VALU] " + heading, "> [VALU]    " + value},
        .objects = 1,
        .left = bytes,
        .pointer = "pFirmVersion",
        .logName = logName,
        .properties = {{0x2000006, Hex(Counted(36))}}};
}

/// As the host has it: 128 slots, of which the last two count.
inline std::string EepromRecord(const std::string& lastSlots) {
    return Hex(Bytes(std::size_t{126} * 4)) + " " + lastSlots + " 7e 00 00 00 02 00 00 00";
}

inline Steps AllEepromWords() {
    Steps steps = {"Execute DisablePowerSave 0"};
    for (std::uint8_t word = 0; word < 128; ++word) {
        steps.push_back("Execute FA_ReadEepromData " + std::to_string(word));
        steps.push_back("> [VALU] Data( 0x" + Hex({word}) + " ) - 0x0a" + Hex({word}));
    }
    steps.emplace_back("Execute EnablePowerSave 0");
    return steps;
}

inline FACTS WithoutPrefix(FACTS facts) {
    facts.errorLine = "[ERR!] - ";
    return facts;
}

}  // namespace Forms
