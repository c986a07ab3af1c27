// A record with something in each of its parts.
#include "tests/support/SupportRecords.h"

RECORDED_STEP SampleStep() {
    RECORDED_CALL call;
    call.request = "Set 0x1 2: 30 41";
    call.answer = "failed: [EVNT] Link failure (0x2001)";
    call.sent = "30 41";
    call.sentSize = 2;
    call.bFailed = true;
    call.timeMs = 0.5;
    RECORDED_ATTEMPT attempt;
    attempt.result = -5;
    attempt.resultName = "a result";
    attempt.error = "Link failure";
    attempt.before = {{"SerialNo", 7}, {"Levels", {1, 2}}};
    attempt.after = {{"OwnerName", "Line 4"}};
    attempt.calls = {call};
    attempt.log = {"one", "two"};
    RECORDED_STEP step;
    step.number = 3;
    step.name = "a \"name\"\n";
    step.operation = "SetBodyID";
    step.verdict = VERDICT::OPERATION_FAILED;
    step.problem = "expected success";
    step.attempts = {attempt, {}};
    RECORDED_MEASUREMENT tilt;
    tilt.name = "tilt";
    tilt.text = "2.5";
    tilt.number = 2.5;
    tilt.max = 2;
    tilt.bJudged = true;
    tilt.bWithin = false;
    RECORDED_MEASUREMENT owner;
    owner.field = "OwnerName";
    owner.pattern = "L.*";
    step.measurements = {tilt, owner};
    return step;
}

RUN_RECORD SampleRecord() {
    RUN_RECORD record;
    record.number = "c0ffee00-0000-4000-8000-000000000001";
    record.startedAt = 1'700'000'000'123;
    record.serial = 4'294'967'295;
    record.bodyID = {{"SerialNo", 4'294'967'295U}};
    record.sequence = "identity";
    record.sequenceFiles = {{"identity.yaml", "", "00ff"}};
    record.parameters = {{"serial", "12345"}, {"owner", ""}};
    record.range = {2, 3, 9};
    record.module = {"TuneBench.t460", "1.1.0", "ab"};
    record.faults = {"SetBodyID:1=0x2001"};
    record.verdict = VERDICT::FAILED;
    record.steps = {SampleStep()};
    return record;
}
