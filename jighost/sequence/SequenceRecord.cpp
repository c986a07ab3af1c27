// Each step becomes text once. The file is replaced as a whole behind each step, since a file that
// grows in its place is no JSON at the moment when a kill comes.
#include "jighost/sequence/SequenceRecord.h"

#include "jighost/session/RunJson.h"
#include "platform/Utf8Path.h"
#include "platform/WholeFile.h"

static const char UNFINISHED[] = "unfinished";

static const char* OutcomeName(EXIT_CODE exitCode) {
    switch (exitCode) {
        case EXIT_OK:
            return "as expected";
        case EXIT_OPERATION_FAILED:
            return "operation failed";
        case EXIT_INTERRUPTED:
            return "interrupted";
        default:
            return "expectation not met";
    }
}

static Json MeasurementJson(const MEASUREMENT& measurement) {
    const MEASURE& measure = *measurement.measure;
    const auto json = [](const auto& optional) { return optional ? Json(*optional) : Json(); };
    return {
        {"name", measure.name},
        {"field", measure.field},
        {"unit", measure.unit},
        {"value", measurement.number ? Json(*measurement.number) : Json(measurement.text)},
        {"min", json(measure.limits.min)},
        {"max", json(measure.limits.max)},
        {"pattern", measure.pattern},
        {"outcome", !measure.IsJudged()   ? "not judged"
                    : measurement.bWithin ? "passed"
                                          : "failed"},
    };
}

static Json StepJson(const STEP_OUTCOME& outcome) {
    Json step = {
        {"number", outcome.number},
        {"name", outcome.step->name},
        {"outcome", OutcomeName(outcome.exitCode)},
        {"problem", outcome.problem},
        {"attempts", outcome.attempts},
        {"measurements", Json::array()},
    };
    for (const MEASUREMENT& each : outcome.measurements) {
        step["measurements"].push_back(MeasurementJson(each));
    }
    if (outcome.bReturned && !outcome.step->asking) {
        step.update(RunJson(outcome.run));
    } else {
        step.update(Json({{"operation", outcome.step->info->name}, {"result", nullptr}}));
    }
    return step;
}

static Json ParametersJson(const VALUES& values) {
    Json parameters = Json::object();
    for (const auto& [name, value] : values) {
        parameters[name] = value.value_or("");
    }
    return parameters;
}

/// A document as it stands within another one. No text of it has a line's end in it.
static std::string Indented(const std::string& text) {
    const std::string indent(4, ' ');
    std::string indented = indent;
    for (const char character : text) {
        indented += character;
        indented += character == '\n' ? indent : "";
    }
    return indented;
}

SequenceRecord::SequenceRecord(const std::string& path, const SEQUENCE& sequence)
    : m_Path(path),
      m_Head({{"sequence", sequence.name}, {"parameters", ParametersJson(sequence.values)}}) {
    if (!m_Path.empty()) {
        WithExitCode(EXIT_WRONG_USE, [this] { CheckReplaceable(PathOf(m_Path)); });
    }
}

void SequenceRecord::Compose(
    const char* pszOutcome, std::chrono::duration<double, std::milli> time) {
    Json document = {{"format", JSON_FORMAT}};
    document.update(m_Head);
    document.update(
        Json({{"outcome", pszOutcome}, {"time_ms", time.count()}, {"steps", Json::array()}}));
    m_Text = JsonText(document);
    if (!m_Steps.empty()) {
        m_Text.erase(m_Text.rfind("]\n}"));
        m_Text += '\n' + m_Steps + "\n  ]\n}";
    }
    m_Text += '\n';
}

void SequenceRecord::WriteInterim() const {
    if (!m_Path.empty() && !IsDeviceOrPipe(PathOf(m_Path))) {
        WithExitCode(
            EXIT_HOST_ERROR, [this] { ReplaceFile(PathOf(m_Path), m_Text, OUTLASTS::KILLS); });
    }
}

void SequenceRecord::Begin() {
    Compose(UNFINISHED, {});
    WriteInterim();
}

void SequenceRecord::Add(
    const STEP_OUTCOME& outcome, std::chrono::duration<double, std::milli> time) {
    m_Steps += (m_Steps.empty() ? "" : ",\n") + Indented(JsonText(StepJson(outcome)));
    Compose(UNFINISHED, time);
    try {
        WriteInterim();
    } catch (const HostError&) {
        // Finish tries again, and tells.
    }
}

void SequenceRecord::Finish(const SEQUENCE_RUN& run) {
    Compose(OutcomeName(run.exitCode), run.time);
    if (!m_Path.empty()) {
        WithExitCode(EXIT_HOST_ERROR, [this] {
            ReplaceFile(PathOf(m_Path), m_Text, OUTLASTS::POWER_FAILURES);
        });
    }
}
