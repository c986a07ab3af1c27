// Faults parsed from their text, and the calls that they meet.
#include "jighost/session/Fault.h"

#include <algorithm>

#include "jighost/operations/OperationTable.h"
#include "jighost/text/HostError.h"
#include "jighost/text/NearestName.h"
#include "jighost/text/Numbers.h"

using Link::CALL;

static const std::string_view WORD_MARK = ":word";

// --- Parsing ---

[[noreturn]] static void Refuse(const std::string& text, const std::string& problem) {
    throw HostError(EXIT_WRONG_USE, "--fault " + text + ": " + problem);
}

static void CheckOperation(const std::string& text, const std::string& name) {
    if (FindOperation(name) == nullptr) {
        Refuse(text, "there is no operation '" + name + "'" + NearestNames(name, OperationNames()));
    }
}

static void CheckEvent(const std::string& text, const std::string& name) {
    const std::vector<std::string> events = SimulatedBody::Events();
    if (std::find(events.begin(), events.end(), name) != events.end()) {
        return;
    }
    if (FindOperation(name) != nullptr) {
        Refuse(
            text, name + " is an operation: expected the number of its link call too, such as " +
                      name + ":1=0x2001");
    }
    std::vector<std::string> names = OperationNames();
    names.insert(names.end(), events.begin(), events.end());
    Refuse(text, "there is no event '" + name + "'" + NearestNames(name, names));
}

/// Takes "@2" off; 0 if there is none.
static std::uint32_t TakeAttempt(const std::string& text, std::string_view& target) {
    const std::size_t at = target.find('@');
    if (at == std::string_view::npos) {
        return 0;
    }
    const auto attempt = ParseNumber<std::uint32_t>(target.substr(at + 1));
    if (!attempt || *attempt == 0) {
        Refuse(text, std::string("expected an attempt's number from 1 on: ") + FAULT_FORMS);
    }
    target = target.substr(0, at);
    return *attempt;
}

Faults::FAULT Faults::Parse(const std::string& text) {
    const std::size_t equals = text.find('=');
    std::string_view target = std::string_view(text).substr(0, equals);
    if (equals == std::string::npos || target.empty()) {
        Refuse(text, std::string("expected ") + FAULT_FORMS);
    }
    FAULT fault;
    fault.text = text;
    const auto value = ParseNumber<std::int32_t>(std::string_view(text).substr(equals + 1));
    if (!value) {
        Refuse(text, "expected a number from -2147483648 to 2147483647 behind '='");
    }
    fault.value = *value;
    fault.bWord = target.ends_with(WORD_MARK);
    target.remove_suffix(fault.bWord ? WORD_MARK.size() : 0);
    fault.attempt = TakeAttempt(text, target);
    const std::size_t colon = target.find(':');
    fault.name = target.substr(0, colon);
    if (colon == std::string_view::npos) {
        CheckEvent(text, fault.name);
        return fault;
    }
    fault.number = ParseNumber<std::uint32_t>(target.substr(colon + 1)).value_or(0);
    if (fault.number == 0) {
        Refuse(text, std::string("expected a call's number from 1 on: ") + FAULT_FORMS);
    }
    CheckOperation(text, fault.name);
    return fault;
}

Faults::Faults(const std::vector<std::string>& texts) {
    std::transform(texts.begin(), texts.end(), std::back_inserter(m_Faults), Parse);
}

// --- Striking ---

static bool IsEvent(const CALL& call) {
    return call.function.starts_with("CEventProcedure::Execute");
}

static bool HasWord(const CALL& call) {
    return IsEvent(call) || call.function == "CEventProcedure::GetReturnData";
}

bool Faults::IsMetBy(const FAULT& fault, const CALL& call) const {
    const bool bOtherAttempt = fault.attempt != 0 && fault.attempt != m_Attempt;
    if (m_Attempt == 0 || bOtherAttempt || (fault.bWord && !HasWord(call))) {
        return false;
    }
    return fault.number == 0 ? IsEvent(call) && fault.name == call.name
                             : fault.number == m_Calls && fault.name == m_Operation;
}

void Faults::BeginOperation(std::string_view name, std::uint32_t attempt) {
    m_Operation = name;
    m_Attempt = attempt;
    m_Calls = 0;
}

std::optional<CALL> Faults::Answer(const CALL& call) {
    const std::lock_guard lock(m_Mutex);
    ++m_Calls;
    const auto fault = std::find_if(
        m_Faults.begin(), m_Faults.end(), [&](const FAULT& each) { return IsMetBy(each, call); });
    if (fault == m_Faults.end()) {
        return std::nullopt;
    }
    fault->bMet = true;
    CALL answered = call;
    if (fault->bWord) {
        answered.result = fault->value;
    } else {
        answered.failure = {.code = fault->value, .message = "[EVNT] --fault " + fault->text};
    }
    return answered;
}

std::vector<std::string> Faults::NotMet() const {
    const std::lock_guard lock(m_Mutex);
    std::vector<std::string> texts;
    for (const FAULT& fault : m_Faults) {
        if (!fault.bMet) {
            texts.push_back(fault.text);
        }
    }
    return texts;
}
