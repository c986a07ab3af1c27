// Told by the system, by the files and by what the command line asks for.
#include "jighost/sequence/RecordHead.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "bodylnk/SimulatedBody.h"
#include "jighost/help/Version.h"
#include "jighost/records/RecordNumber.h"
#include "jighost/sequence/RecordedBody.h"
#include "jighost/session/Module.h"
#include "platform/Surroundings.h"
#include "platform/User.h"
#include "platform/Utf8Path.h"
#include "recorder/LibraryFacts.h"

/// Such as "2026-11-23T09:20:00.123+01:00".
static std::string StartText(std::int64_t milliseconds) {
    const LOCAL_TIME local = LocalTime(static_cast<std::time_t>(milliseconds / 1000));
    const int east = std::abs(local.minutesEast);
    char szDay[32] = {};
    char szRest[32] = {};
    std::strftime(szDay, sizeof szDay, "%Y-%m-%dT%H:%M:%S", &local.time);
    std::snprintf(
        szRest, sizeof szRest, ".%03d%c%02d:%02d", static_cast<int>(milliseconds % 1000),
        local.minutesEast < 0 ? '-' : '+', east / 60, east % 60);
    return std::string(szDay) + szRest;
}

static void TakeMoment(RUN_RECORD& record) {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    record.startedAt = std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
    record.started = StartText(record.startedAt);
}

static void TakePlace(RUN_RECORD& record, const RUN_PLACE& place) {
    record.number = NewRecordNumber();
    record.jighost = VersionWithCommit();
    record.station = place.station.empty() ? MachineName() : place.station;
    record.operatorName = place.operatorName.empty() ? UserName() : place.operatorName;
}

static RECORDED_FILE RecordedLibrary(const std::filesystem::path& path) {
    const Recorder::LIBRARY_FACTS facts = Recorder::ReadLibraryFacts(path);
    return {TextOf(path), facts.version, facts.hash};
}

/// The library of the simulated body has the body's own data in it.
static std::filesystem::path LinkFile(const SESSION_OPTIONS& options) {
    return options.linkPath.empty() ? LibraryFileOf(&SimulatedBody::Condition())
                                    : std::filesystem::absolute(PathOf(options.linkPath));
}

RUN_RECORD RecordHead(const SEQUENCE& sequence, const STEP_RANGE& range) {
    RUN_RECORD record;
    record.sequence = sequence.name;
    record.sequenceFiles = sequence.files;
    for (const auto& [name, value] : sequence.values) {
        record.parameters.emplace_back(name, value.value_or(""));
    }
    record.range = {range.first + 1, range.last + 1, sequence.steps.size()};
    return record;
}

void CompleteHead(
    RUN_RECORD& record, Session& session, const SESSION_OPTIONS& options, const RUN_PLACE& place) {
    TakePlace(record, place);
    record.module = RecordedLibrary(PathOf(FullModulePath(options.modulePath)));
    record.link = RecordedLibrary(LinkFile(options));
    record.faults = options.faults;
    ReadBody(session, record);
    TakeMoment(record);
}

RUN_RECORD RecordWithoutEnd(const std::string& sequence, const RUN_PLACE& place) {
    RUN_RECORD record;
    TakePlace(record, place);
    TakeMoment(record);
    record.sequence = sequence;
    record.range.first = 1;  // up to none
    record.verdict = VERDICT::OPERATION_FAILED;
    record.problem = "the run has not come to its end";
    return record;
}
