// A row for each measurement, in the order of the steps.
#include "jighost/report/MeasurementTable.h"

#include <algorithm>

#include "jighost/report/LimitBar.h"
#include "jighost/report/StepPlace.h"
#include "jighost/report/Words.h"

static Markup MeasurementRow(
    const RECORDED_MEASUREMENT& measurement, const RECORDED_STEP& step, const std::string& place) {
    Markup row;
    row << (measurement.bWithin ? "<tr>"_tag : R"(<tr class="failed">)"_tag)
        << R"(<th scope="row">)"_tag << measurement.name << R"(</th><td class="measured">)"_tag
        << ValueText(measurement) << R"(</td><td class="bars">)"_tag << LimitBar(measurement)
        << R"(</td><td class="demand">)"_tag << DemandText(measurement) << "</td><td>"_tag
        << OutcomeBadge(measurement) << R"(</td><td><a href="#)"_tag << place << R"(">)"_tag
        << StepTitle(step) << "</a></td></tr>\n"_tag;
    return row;
}

Markup MeasurementTable(const RUN_RECORD& record, const std::string& id) {
    Markup rows;
    for (std::size_t i = 0; i < record.steps.size(); ++i) {
        for (const RECORDED_MEASUREMENT& each : record.steps[i].measurements) {
            rows << MeasurementRow(each, record.steps[i], StepPlace(id, i));
        }
    }
    if (rows.Text().empty()) {
        return rows;
    }
    Markup table;
    table
        << "<h3>Measurements</h3>\n<div class=\"wide\"><table class=\"measurements\">\n<thead><tr>"
           "<th scope=\"col\">Name</th><th scope=\"col\" class=\"measured\">Value</th>"
           "<th scope=\"col\">Within its limits</th><th scope=\"col\">Limits</th>"
           "<th scope=\"col\">Outcome</th><th scope=\"col\">Step</th></tr></thead>\n<tbody>\n"_tag
        << rows << "</tbody></table></div>\n"_tag;
    return table;
}
