// The table is whole without its script, which shows the controls and does their work.
#include "jighost/report/RunTable.h"

#include <algorithm>
#include <map>

#include "jighost/report/Words.h"

static std::map<VERDICT, std::size_t> CountsOf(const ReportedRuns& runs) {
    std::map<VERDICT, std::size_t> counts;
    for (const REPORTED_RUN* pRun : runs) {
        ++counts[pRun->verdict];
    }
    return counts;
}

Markup RunCounts(const ReportedRuns& runs) {
    Markup line;
    line << R"(<p class="counts">)"_tag;
    for (const auto& [verdict, count] : CountsOf(runs)) {
        line << "<span><b>"_tag << count << "</b> "_tag << OutcomeBadge(verdict) << "</span> "_tag;
    }
    line << "</p>\n"_tag;
    return line;
}

static Markup Controls(const ReportedRuns& runs) {
    Markup controls;
    controls << R"(<form class="controls" id="filter" hidden>
<label>Filter <input type="search" id="text" placeholder="serial, station, problem"></label>
<label>Outcome <select id="outcome"><option value="">all</option>)"_tag;
    for (const auto& [verdict, count] : CountsOf(runs)) {
        controls << "<option>"_tag << VerdictName(verdict) << "</option>"_tag;
    }
    controls << "</select></label>\n<output id=\"shown\" role=\"status\"></output></form>\n"_tag;
    return controls;
}

/// A cell that sorts by a number.
static Markup NumberCell(double number, const std::string& text) {
    Markup cell;
    cell << R"(<td class="number" data-sort=")"_tag << number << R"(">)"_tag << text << "</td>"_tag;
    return cell;
}

static Markup RunRow(const REPORTED_RUN& run) {
    Markup row;
    row << R"(<tr data-outcome=")"_tag << VerdictName(run.verdict) << R"("><td data-sort=")"_tag
        << static_cast<int>(run.verdict) << R"(">)"_tag << OutcomeBadge(run.verdict)
        << R"(</td><th scope="row"><a href="#)"_tag << run.place << R"(">)"_tag << run.serial
        << R"(</a></th><td class="why">)"_tag << run.problem << "</td><td>"_tag << run.sequence
        << "</td>"_tag << NumberCell(static_cast<double>(run.startedAt), run.started)
        << NumberCell(run.timeMs, DurationText(run.timeMs)) << "<td>"_tag << run.station
        << "</td><td>"_tag << run.operatorName << "</td></tr>\n"_tag;
    return row;
}

static ReportedRuns MostUrgentFirst(const ReportedRuns& runs) {
    ReportedRuns sorted(runs.rbegin(), runs.rend());
    std::stable_partition(sorted.begin(), sorted.end(), [](const REPORTED_RUN* pRun) {
        return pRun->verdict != VERDICT::PASSED;
    });
    return sorted;
}

Markup RunTable(const ReportedRuns& runs) {
    static constexpr TAG COLUMNS[] = {"Outcome"_tag,  "Serial number"_tag, "What went wrong"_tag,
                                      "Sequence"_tag, "Started"_tag,       "Took"_tag,
                                      "Station"_tag,  "Operator"_tag};
    Markup table;
    table << Controls(runs) << "<div class=\"wide\"><table id=\"runs\">\n<thead><tr>"_tag;
    for (const TAG& column : COLUMNS) {
        table << R"(<th scope="col" aria-sort="none">)"_tag << column << "</th>"_tag;
    }
    table << "</tr></thead>\n<tbody>\n"_tag;
    for (const REPORTED_RUN* pRun : MostUrgentFirst(runs)) {
        table << RunRow(*pRun);
    }
    table << "</tbody></table></div>\n"_tag;
    return table;
}
