// The run's facts, record and log.
#include "jighost/session/RunJson.h"

#include "jighost/operations/ResultName.h"

Json RunJson(const OPERATION_RUN& run) {
    return {
        {"operation", run.info->name},
        {"result", run.result},
        {"result_name", ResultName(run.result)},
        {"error", RunError(run)},
        {"time_ms", run.time.count()},
        {"calls", run.callCount},
        {"record", RecordJson(*run.info->record, run.record)},
        {"log", run.log},
        {"interleaved", run.interleaved},
    };
}
