// What a step asked for and what came, attempt by attempt.
#include "jighost/report/StepDetails.h"

#include "jighost/report/AttemptDetails.h"
#include "jighost/report/Words.h"

static Markup Summary(const RECORDED_STEP& step, const Timeline& timeline) {
    Markup summary;
    summary << R"(<summary><span class="number">)"_tag << step.number << R"(</span>)"_tag
            << OutcomeBadge(step.verdict) << R"(<span class="name">)"_tag << step.name;
    if (step.operation != step.name && !step.operation.empty()) {
        summary << " <code>"_tag << step.operation << "</code>"_tag;
    }
    if (step.attempts.size() > 1) {
        summary << R"( <span class="note">)"_tag << step.attempts.size() << " attempts</span>"_tag;
    }
    summary << "</span>"_tag << timeline.Lane(step) << R"(<span class="time">)"_tag
            << DurationText(step.timeMs) << "</span></summary>\n"_tag;
    return summary;
}

Markup StepDetails(const RECORDED_STEP& step, const std::string& place, const Timeline& timeline) {
    Markup details;
    details << R"(<li><details class="step" id=")"_tag << place << R"(")"_tag
            << (step.verdict == VERDICT::PASSED ? ">"_tag : " open>"_tag) << Summary(step, timeline)
            << R"(<div class="inside">)"_tag;
    if (!step.problem.empty()) {
        details << R"(<p class="problem">)"_tag << step.problem << "</p>\n"_tag;
    }
    if (!step.expectedResult.empty()) {
        details << "<p>Expected result: <b>"_tag << step.expectedResult << "</b></p>\n"_tag;
    }
    for (std::size_t i = 0; i < step.attempts.size(); ++i) {
        details << AttemptDetails(step, i, place);
    }
    if (step.attempts.empty()) {
        details << "<p>Nothing was called.</p>\n"_tag;
    }
    details << "</div></details></li>\n"_tag;
    return details;
}
