// The ID read as any operation reads it, but for the faults that a person asks for.
#include "jighost/sequence/RecordedBody.h"

#include <algorithm>

#include "frame/Result.h"
#include "jighost/output/Json.h"

static Json ReadBodyID(Session& session) {
    const OPERATION_INFO& info = KnownOperation("GetBodyID");
    const OPERATION_RUN run = session.Run(info, NewRecord(*info.record), 0);
    if (IsFailure(run.result)) {
        throw HostError(EXIT_OPERATION_FAILED, "GetBodyID failed: " + RunError(run));
    }
    return RecordJson(*info.record, run.record);
}

void ReadBody(Session& session, RUN_RECORD& record) {
    record.serial.reset();
    record.bodyID = Json::object();
    record.bodyProblem.clear();
    try {
        record.bodyID = ReadBodyID(session);
        record.serial = record.bodyID.at("SerialNo").get<std::uint32_t>();
    } catch (const HostError& e) {
        record.bodyProblem = e.what();
    }
}

/// An operation that fails may have set it all the same.
static bool MayHaveSetBodyID(const RUN_RECORD& record) {
    return std::any_of(record.steps.begin(), record.steps.end(), [](const RECORDED_STEP& step) {
        return step.operation == "SetBodyID";
    });
}

void ReadBodyAgain(Session& session, RUN_RECORD& record) {
    if (!record.serial || MayHaveSetBodyID(record)) {
        ReadBody(session, record);
    }
}

void ForgetBody(RUN_RECORD& record) {
    if (record.serial && MayHaveSetBodyID(record)) {
        record.serial.reset();
        record.bodyID = Json::object();
        record.bodyProblem = "SetBodyID has run, and the ID could not be read since";
    }
}
