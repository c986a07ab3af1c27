// The facts as their table has them, the body that they were written for, and what is read from
// them.
#include "tests/support/SupportOperations.h"

#include <algorithm>
#include <iomanip>
#include <map>
#include <numeric>
#include <sstream>
#include <stdexcept>

// --- The table ---

std::string TextIn(std::istream& line) {
    std::string text;
    if (!(line >> std::quoted(text))) {
        throw std::runtime_error("a fact has no value");
    }
    return text;
}

std::int64_t NumberIn(std::istream& line) {
    return std::stoll(TextIn(line), nullptr, 0);
}

void TakeFact(OPERATION_FACTS& facts, const std::string& key, std::istream& line) {
    using FACTS = OPERATION_FACTS;
    static const std::map<std::string, std::string FACTS::*> texts = {
        {"closing", &FACTS::closing},   {"error", &FACTS::errorLine}, {"filled", &FACTS::left},
        {"given", &FACTS::given},       {"left", &FACTS::left},       {"log", &FACTS::logName},
        {"oddword", &FACTS::wordError}, {"pointer", &FACTS::pointer}, {"second", &FACTS::secondOf}};
    static const std::map<std::string, std::int32_t FACTS::*> numbers = {
        {"direction", &FACTS::direction}, {"result", &FACTS::result}, {"size", &FACTS::size}};
    if (texts.contains(key)) {
        facts.*texts.at(key) = TextIn(line);
    } else if (numbers.contains(key)) {
        facts.*numbers.at(key) = static_cast<std::int32_t>(NumberIn(line));
    } else if (key == "objects") {
        facts.objects = static_cast<std::uint32_t>(NumberIn(line));
    } else if (key == "word") {
        facts.word = static_cast<std::int32_t>(NumberIn(line));
    } else if (key == "property") {
        const auto id = static_cast<std::uint32_t>(NumberIn(line));
        facts.properties.emplace_back(id, TextIn(line));
    } else if (key == "step") {
        facts.steps.push_back(TextIn(line));
    } else {
        throw std::runtime_error("no fact is called " + key);
    }
    if (key == "log") {
        facts.closing = "> [FUNC] " + facts.logName;
    }
    facts.bFilledAtTheEnd = facts.bFilledAtTheEnd || key == "filled";
}

static std::vector<OPERATION_FACTS> ReadFacts() {
    std::vector<OPERATION_FACTS> all;
    for (const std::string& line : TableLines("operations/facts.txt")) {
        std::istringstream words(line);
        for (std::string key; words >> key;) {
            if (key == "operation") {
                all.push_back({.name = TextIn(words)});
            } else {
                TakeFact(all.at(all.size() - 1), key, words);
            }
        }
    }
    if (all.size() != 131) {
        throw std::runtime_error("the table of facts is not whole");
    }
    return all;
}

const std::vector<OPERATION_FACTS>& AllFacts() {
    static const std::vector<OPERATION_FACTS> s_All = ReadFacts();
    return s_All;
}

// --- Its use ---

const OPERATION_FACTS& FactsOf(const std::string& name) {
    const auto found = std::find_if(
        AllFacts().begin(), AllFacts().end(),
        [&](const OPERATION_FACTS& facts) { return facts.name == name; });
    if (found == AllFacts().end()) {
        throw std::runtime_error("no facts are known of " + name);
    }
    return *found;
}

Steps WholeRun(const OPERATION_FACTS& facts, std::int32_t result, const Steps& steps) {
    Steps whole = {"> [----]", "> [FUNC] " + facts.logName};
    whole.insert(whole.end(), steps.begin(), steps.end());
    whole.push_back(facts.closing + " - " + std::to_string(result));
    return whole;
}

std::vector<std::string> EventsOf(const OPERATION_FACTS& facts) {
    std::vector<std::string> events;
    for (const std::string& step : facts.steps) {
        std::istringstream words(step);
        std::string call;
        std::string event;
        if (words >> call >> event && call.starts_with("Execute")) {
            events.push_back(event);
        }
    }
    return events;
}

void SetUpBody(const OPERATION_FACTS& facts) {
    SimulatedBody::Reset();
    SimulatedBody::SetLinePrefix("> ");
    SimulatedBody::Calendar() = {58, 59, 23, 31, 99, 2009, 71, 72, 73};
    SimulatedBody::SetCameraLog({'x'});
    std::iota(
        SimulatedBody::Eeprom().begin(), SimulatedBody::Eeprom().end(), std::uint16_t{0x0A00});
    WriteFile("BoardInf.ini", "[DLResonantFrequency]\nAddress=100\nSize=5\n");
    for (const auto& [id, bytes] : facts.properties) {
        SimulatedBody::SetProperty(id, FromHex(bytes));
    }
    for (const std::string& event : EventsOf(facts)) {
        SimulatedBody::ScriptEvent(
            event, facts.word ? std::vector{*facts.word} : std::vector<std::int32_t>{});
    }
}

SimulatedBody::Bytes LongRecord(const std::string& firstBytes) {
    SimulatedBody::Bytes record = FromHex(firstBytes);
    record.resize(600, 0xA5);
    return record;
}

const std::string& Left(const OPERATION_FACTS& facts) {
    return facts.left.empty() ? facts.given : facts.left;
}

SimulatedBody::Bytes FromHex(const std::string& text) {
    std::istringstream words(text);
    SimulatedBody::Bytes bytes;
    for (std::string word; words >> word;) {
        std::size_t digits = 0;
        const unsigned long byte = std::stoul(word, &digits, 16);
        const std::size_t count = word.size() == digits ? 1 : std::stoul(word.substr(digits + 1));
        bytes.insert(bytes.end(), count, static_cast<std::uint8_t>(byte));
    }
    return bytes;
}
