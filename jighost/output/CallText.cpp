// What of a call tells something, by its function.
#include "jighost/output/CallText.h"

#include <algorithm>

#include "frame/Result.h"
#include "jighost/text/Numbers.h"
#include "jighost/text/PlainText.h"
#include "trace/Hex.h"

using Link::CALL;
using Link::FAILURE;
using Link::FAULT;

static const std::size_t MAX_BYTES = 24;

/// What of a call's numbers tells something; functions that are not listed have none.
struct CALL_FORM {
    std::string_view function;
    bool bId;
    bool bValue;
};

static constexpr CALL_FORM FORMS[] = {
    {"CEventProcedure::Execute", false, true},
    {"CEventProcedure::PushParameterAsInteger", false, true},
    {"CEventProcedure::PushParameterAsSafeArray", false, true},
    {"CEventProcedure::GetReturnData", false, true},
    {"CEventProcedure::ExecuteAndGetData", false, true},
    {"CProperty::Get", true, true},
    {"CProperty::Set", true, true},
    {"CProperty::Save", true, false},
    {"CProperty::InitializeList", true, false},
    {"CProperty::PushList", true, false},
    {"CSLRMonitor::ChangeBank", true, false},
    {"CSLRMonitor::WriteMemory", true, true},
    {"CSLRMonitor::ReadMemory", true, true},
    {"CSLRMonitor::CallFunction", true, false},
};

static std::string NumbersText(const CALL& call) {
    const auto* pForm = std::find_if(
        std::begin(FORMS), std::end(FORMS),
        [&](const CALL_FORM& form) { return form.function == call.function; });
    if (call.fromList) {
        return " (list)";
    }
    std::string text;
    if (pForm != std::end(FORMS) && pForm->bId) {
        text.append(" 0x").append(HexText(call.id, 1));
    }
    if (pForm != std::end(FORMS) && pForm->bValue) {
        text.append(" ").append(std::to_string(call.value));
    }
    return text;
}

std::string ShortBytes(std::span<const std::uint8_t> bytes) {
    if (bytes.size() <= MAX_BYTES) {
        return HexBytes(bytes);
    }
    return HexBytes(bytes.first(MAX_BYTES)) + " ... (" + std::to_string(bytes.size()) + " bytes)";
}

/// Without its class.
static std::string FunctionText(const std::string& function) {
    return PlainText(function.substr(function.rfind(':') + 1));
}

std::string RequestText(const CALL& call) {
    std::string text = FunctionText(call.function);
    if (!call.name.empty()) {
        text.append(" ").append(PlainText(call.name));
    }
    text += NumbersText(call);
    return text + (call.sent.empty() ? "" : ": ") + ShortBytes(call.sent);
}

static std::string FailureText(const FAILURE& failure) {
    switch (failure.kind) {
        case FAULT::CAMERA_EXCEPTION:
            return PlainText(failure.message) + " (0x" +
                   HexText(static_cast<std::uint32_t>(failure.code), 1) + ")";
        case FAULT::STANDARD_EXCEPTION:
            return "standard exception, " + PlainText(failure.message);
        case FAULT::INTEGER:
            return "integer " + std::to_string(failure.code);
    }
    return "";
}

std::string ThrowText(const Link::THROW& thrown) {
    const std::string number = std::to_string(thrown.number);
    const std::string function = FunctionText(thrown.function);
    return (thrown.function == Link::LINE_PREFIX_FUNCTION
                ? function + ' ' + number
                : "construction " + number + ", " + function) +
           " -> failed: " + FailureText(thrown.failure);
}

bool IsFailedCall(const CALL& call) {
    return call.failure || (call.result && IsFailure(*call.result));
}

std::string AnswerText(const CALL& call) {
    std::string text = call.failure ? "failed: " + FailureText(*call.failure) : "";
    const auto add = [&text](const std::string& part) {
        text += (text.empty() ? "" : ", ") + part;
    };
    if (!call.received.empty()) {
        add(ShortBytes(call.received));
    }
    if (call.sizeLeft) {
        add("size left " + std::to_string(*call.sizeLeft));
    }
    if (call.result) {
        add("result " + std::to_string(*call.result));
    }
    return text.empty() ? "done" : text;
}
