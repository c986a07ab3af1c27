// The body that the facts were written for, and what is read from them.
#include "tests/support/SupportOperations.h"

#include <algorithm>
#include <numeric>
#include <sstream>

const OPERATION_FACTS& FactsOf(const std::string& name) {
    return *std::find_if(AllFacts().begin(), AllFacts().end(), [&](const OPERATION_FACTS& facts) {
        return facts.name == name;
    });
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

SimulatedBody::Bytes FromHex(const std::string& text) {
    std::istringstream words(text);
    SimulatedBody::Bytes bytes;
    for (unsigned byte = 0; words >> std::hex >> byte;) {
        bytes.push_back(static_cast<std::uint8_t>(byte));
    }
    return bytes;
}
