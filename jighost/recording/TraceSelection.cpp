// What is known of an operation without its records and calls.
#include "jighost/recording/TraceSelection.h"

#include "frame/Result.h"
#include "jighost/operations/ResultName.h"

bool TRACE_SELECTION::Has(const TRACED_OPERATION& traced, std::string_view moment) const {
    return (operation.empty() || traced.name == operation) &&
           (!serial || traced.serial == serial) && (since.empty() || moment >= since) &&
           (until.empty() || moment.substr(0, until.size()) <= until);
}

bool HasFailed(const TRACED_OPERATION& operation) {
    return !operation.result || IsFailure(*operation.result);
}

std::string OutcomeText(const TRACED_OPERATION& operation) {
    if (operation.result) {
        return ResultText(*operation.result) + (operation.bTorn ? ", not whole" : "");
    }
    if (operation.bTorn) {
        return "not whole";
    }
    return operation.bUnanswered ? "call " + std::to_string(operation.callCount) + " never returned"
                                 : "never ended";
}
