// What went wrong stands first, with links to where it did.
#include "jighost/report/RecordSection.h"

#include "jighost/report/MeasurementTable.h"
#include "jighost/report/RecordFacts.h"
#include "jighost/report/StepDetails.h"
#include "jighost/report/StepPlace.h"
#include "jighost/report/Words.h"

Markup RecordHeading(const RUN_RECORD& record) {
    Markup heading;
    heading << OutcomeBadge(record.verdict) << R"(<span class="title"><h2>)"_tag << record.sequence
            << R"(</h2> <span class="of">serial )"_tag << SerialText(record) << ", "
            << StartText(record) << ", " << DurationText(record.timeMs) << "</span></span>"_tag;
    return heading;
}

// --- What went wrong ---

static constexpr std::size_t STEPS_IN_FULL = 3;

/// Of a run that ended otherwise than by a step.
static std::string EndText(const RUN_RECORD& record) {
    switch (record.verdict) {
        case VERDICT::PASSED:
            return "";
        case VERDICT::ABORTED:
            return "a signal ended the run";
        case VERDICT::UNFINISHED:
            return "nothing was told of the run's end; all steps that ended are there";
        default:
            return record.problem.empty() ? "why is not told" : record.problem;
    }
}

std::string ProblemText(const RUN_RECORD& record) {
    const auto failed = FailedStep(record);
    if (!failed) {
        return EndText(record);
    }
    const RECORDED_STEP& step = record.steps[*failed];
    return "step " + StepTitle(step) + ": " + step.problem;
}

static Markup LinkTo(const std::string& place, const std::string& text) {
    Markup link;
    link << R"(<a href="#)"_tag << place << R"(">)"_tag << text << "</a>"_tag;
    return link;
}

static Markup FailedCallLine(const RECORDED_STEP& step, const std::string& place) {
    Markup line;
    if (const auto failed = FailedCall(step)) {
        const std::size_t attempt = step.attempts.size() - 1;
        const RECORDED_CALL& call = step.attempts[attempt].calls[*failed];
        line << "<p>"_tag
             << LinkTo(
                    CallPlace(place, attempt, *failed), "Link call " + std::to_string(*failed + 1))
             << " <code>"_tag << call.request << "</code> <b>"_tag << call.answer
             << "</b></p>\n"_tag;
    }
    return line;
}

static Markup FailedStepLines(const RECORDED_STEP& step, const std::string& place) {
    Markup lines;
    lines << R"(<p class="where">)"_tag << LinkTo(place, "Step " + StepTitle(step)) << " <code>"_tag
          << step.operation << "</code></p>\n<p class=\"problem\">"_tag << step.problem
          << "</p>\n"_tag << FailedCallLine(step, place);
    return lines;
}

/// The first few with what went wrong, the others by a link.
static Markup FailedSteps(const RUN_RECORD& record, const std::string& id) {
    Markup steps;
    Markup links;
    std::size_t count = 0;
    for (std::size_t i = 0; i < record.steps.size(); ++i) {
        const RECORDED_STEP& step = record.steps[i];
        if (step.verdict == VERDICT::PASSED) {
            continue;
        }
        if (++count <= STEPS_IN_FULL) {
            steps << FailedStepLines(step, StepPlace(id, i));
        } else {
            links << (links.Text().empty() ? "<p>Not as expected either: "_tag : "; "_tag)
                  << LinkTo(StepPlace(id, i), StepTitle(step));
        }
    }
    steps << links << (links.Text().empty() ? ""_tag : "</p>\n"_tag);
    return steps;
}

static Markup Alert(const RUN_RECORD& record, const std::string& id) {
    Markup alert;
    const Markup steps = FailedSteps(record, id);
    const bool bStep = !steps.Text().empty();
    if (record.verdict == VERDICT::PASSED && !bStep) {
        return alert;
    }
    alert << R"(<div class="alert )"_tag << VerdictName(record.verdict) << "\">\n"_tag << steps;
    if (!bStep || record.verdict == VERDICT::ABORTED || record.verdict == VERDICT::UNFINISHED) {
        alert << R"(<p class="problem">)"_tag << EndText(record) << "</p>\n"_tag;
    }
    alert << "</div>\n"_tag;
    return alert;
}

// --- All of it ---

static Markup StepList(const RUN_RECORD& record, const std::string& id) {
    const Timeline timeline(record, id);
    Markup list;
    list << "<h3>Steps</h3>\n"_tag << timeline.Axis() << "<ol class=\"steps\">\n"_tag;
    for (std::size_t i = 0; i < record.steps.size(); ++i) {
        list << StepDetails(record.steps[i], StepPlace(id, i), timeline);
    }
    list << "</ol>\n"_tag;
    return list;
}

Markup RecordBody(const RUN_RECORD& record, const std::string& id) {
    Markup body;
    body << Alert(record, id) << MainFacts(record) << MeasurementTable(record, id)
         << StepList(record, id) << FurtherFacts(record);
    return body;
}
