// What a database could not take makes a record spoilt here, so that it holds up no other one.
#include "jighost/history/RecordBatch.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <utility>

#include "jighost/records/RunRecordReader.h"
#include "jighost/session/Interrupt.h"
#include "jighost/text/HostError.h"
#include "platform/Utf8Path.h"

static constexpr std::size_t MOST_RECORDS = 1000;
static constexpr std::size_t MOST_BYTES = 64'000'000;

static bool IsRecordNumber(const std::string& number) {
    static const std::string_view FORM = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
    return std::equal(
        number.begin(), number.end(), FORM.begin(), FORM.end(), [](char character, char form) {
            return form == '-' ? character == '-'
                               : std::isxdigit(static_cast<unsigned char>(character)) != 0;
        });
}

static void RequireStorable(const std::string& path, const RUN_RECORD& record) {
    if (!IsRecordNumber(record.number)) {
        throw HostError(EXIT_WRONG_USE, path + ": record: expected a number in the form of a UUID");
    }
    const auto& steps = record.steps;
    if (std::any_of(steps.begin(), steps.end(), [](const RECORDED_STEP& step) {
            return !std::in_range<std::int64_t>(step.number);
        })) {
        throw HostError(EXIT_WRONG_USE, path + ": steps: expected smaller numbers");
    }
}

/// They stand as \x00 then.
static void EscapeZeros(std::initializer_list<std::string*> texts) {
    for (std::string* pText : texts) {
        for (auto at = pText->find('\0'); at != std::string::npos; at = pText->find('\0')) {
            pText->replace(at, 1, "\\x00");
        }
    }
}

static void EscapeAllZeros(RUN_RECORD& record) {
    EscapeZeros(
        {&record.started, &record.station, &record.operatorName, &record.sequence,
         &record.problem});
    for (RECORDED_STEP& step : record.steps) {
        EscapeZeros({&step.name, &step.operation, &step.problem});
        for (RECORDED_MEASUREMENT& measurement : step.measurements) {
            EscapeZeros({&measurement.name, &measurement.unit, &measurement.text});
        }
    }
}

static void ReadInto(RECORD_BATCH& batch, const std::string& path, std::size_t& bytes) {
    const std::string text = ReadRecordText(path);
    bytes += text.size();
    RUN_RECORD record = ParseRunRecord(path, text);
    RequireStorable(path, record);
    EscapeAllZeros(record);
    batch.records.push_back(
        {record.number,
         {record.verdict == VERDICT::UNFINISHED, static_cast<std::int64_t>(record.steps.size())}});
    batch.rows.Add(record, TextOf(std::filesystem::absolute(PathOf(path))));
}

RECORD_BATCH ReadBatch(std::span<const std::string> paths) {
    RECORD_BATCH batch;
    std::size_t bytes = 0;
    while (batch.files < std::min(paths.size(), MOST_RECORDS) && bytes < MOST_BYTES &&
           !IsInterrupted()) {
        try {
            ReadInto(batch, paths[batch.files], bytes);
        } catch (const HostError& e) {
            batch.problems.emplace_back(e.what());
        }
        ++batch.files;
    }
    return batch;
}
