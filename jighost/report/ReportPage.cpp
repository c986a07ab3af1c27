// The frame of the page; what stands in it is made elsewhere.
#include "jighost/report/ReportPage.h"

#include <algorithm>

#include "jighost/report/PageParts.h"
#include "jighost/report/RunTable.h"
#include "jighost/report/TrendCharts.h"
#include "recorder/Sha256.h"
#include "trace/Base64.h"

void ReportPage::Add(const RUN_RECORD& record) {
    const auto found = m_Runs.find(record.number);
    const bool bOlder =
        found != m_Runs.end() && found->second.verdict == VERDICT::UNFINISHED &&
        (record.verdict != VERDICT::UNFINISHED || found->second.steps < record.steps.size());
    if (found == m_Runs.end() || bOlder) {
        m_Runs.insert_or_assign(record.number, ReportedRun(record));
    }
}

std::size_t ReportPage::NotPassed() const {
    return static_cast<std::size_t>(std::count_if(
        m_Runs.begin(), m_Runs.end(),
        [](const auto& each) { return each.second.verdict != VERDICT::PASSED; }));
}

// --- What is around ---

/// As a policy names a text that may be run.
static std::string PolicySource(std::string_view text) {
    const std::string digits = Recorder::Sha256(text);
    std::vector<std::uint8_t> digest;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        digest.push_back(static_cast<std::uint8_t>(std::stoul(digits.substr(i, 2), nullptr, 16)));
    }
    std::string source = "'sha256-";
    AppendBase64(source, digest);
    return source + '\'';
}

static Markup Head(const std::string& title) {
    Markup head;
    head << TAG{PAGE_BEGIN}
         << "<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
            "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
            "base-uri 'none'; form-action 'none'; style-src "_tag
         << TAG{PolicySource(PAGE_STYLE)} << "; script-src "_tag << TAG{PolicySource(PAGE_SCRIPT)}
         << "\">\n<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
            "<meta name=\"color-scheme\" content=\"light dark\">\n<title>"_tag
         << title << "</title>\n<style>"_tag << TAG{PAGE_STYLE}
         << "</style>\n</head>\n<body>\n"_tag;
    return head;
}

static Markup Foot() {
    Markup foot;
    foot << "<script>"_tag << TAG{PAGE_SCRIPT} << "</script>\n</body>\n</html>\n"_tag;
    return foot;
}

// --- What is within ---

static Markup OneRun(const REPORTED_RUN& run) {
    Markup page;
    page << "<header class=\"one\"><h1>Report of a run</h1></header>\n<main class=\"run\" id=\""_tag
         << run.place << "\">\n<div class=\"heading "_tag << VerdictName(run.verdict) << "\">"_tag
         << run.heading << "</div>\n"_tag << run.body << "</main>\n"_tag;
    return page;
}

static Markup ManyRuns(const ReportedRuns& runs) {
    Markup page;
    page << "<header><h1>"_tag << runs.size() << " runs</h1>\n"_tag << RunCounts(runs)
         << "</header>\n<main>\n"_tag << RunTable(runs) << TrendCharts(runs)
         << "<section aria-labelledby=\"each\"><h2 id=\"each\">Each run</h2>\n"_tag;
    for (const REPORTED_RUN* pRun : runs) {
        page << "<details class=\"run\" id=\""_tag << pRun->place
             << "\"><summary class=\"heading "_tag << VerdictName(pRun->verdict) << "\">"_tag
             << pRun->heading << "</summary>\n"_tag << pRun->body << "</details>\n"_tag;
    }
    page << "</section>\n</main>\n"_tag;
    return page;
}

std::string ReportPage::Text() const {
    ReportedRuns runs;
    for (const auto& [number, run] : m_Runs) {
        runs.push_back(&run);
    }
    std::stable_sort(runs.begin(), runs.end(), [](const auto* pLeft, const auto* pRight) {
        return pLeft->startedAt < pRight->startedAt;
    });
    const REPORTED_RUN& first = *runs.front();
    const bool bOne = runs.size() == 1;
    Markup page;
    page << Head(
                bOne ? VerdictName(first.verdict) + ": " + first.sequence + ", serial " +
                           first.serial
                     : std::to_string(runs.size()) + " runs")
         << (bOne ? OneRun(first) : ManyRuns(runs)) << Foot();
    return page.Text();
}
