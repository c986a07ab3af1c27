// Places are hundredths of the whole run, so that they hold at any width of a page.
#include "jighost/report/Timeline.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "jighost/report/Words.h"

// Of a lane.
static constexpr double MOST_MOMENTS = 6;
static constexpr double PLACES_OF_TICKS = 1000;
static constexpr double NARROWEST = 0.15;  // a bar of no width would not be seen

Timeline::Timeline(const RUN_RECORD& record, const std::string& id)
    : m_Grid(id + "-grid"), m_bMoments(HasMoments(record)) {
    double end = record.timeMs;
    for (const RECORDED_STEP& step : record.steps) {
        end = std::max(end, step.startMs + step.timeMs);
    }
    if (end > 0 && std::isfinite(end)) {
        m_Length = end;
    }
}

double Timeline::PlaceOf(double ms) const {
    return std::clamp(std::round(ms / m_Length * 100 * 100) / 100, 0.0, 100.0);
}

/// 1, 2 or 5 of a decimal place.
static double MomentsApart(double length) {
    const double least = length / MOST_MOMENTS;
    const double decimal = std::pow(10, std::floor(std::log10(least)));
    for (const double factor : {1, 2, 5}) {
        if (factor * decimal >= least) {
            return factor * decimal;
        }
    }
    return 10 * decimal;
}

Markup Timeline::Axis() const {
    Markup lines;
    Markup texts;
    if (!m_bMoments) {
        return lines;
    }
    const double apart = MomentsApart(m_Length);
    for (int i = 0; i <= MOST_MOMENTS && i * apart <= m_Length; ++i) {
        const double place = PlaceOf(i * apart);
        lines << R"(<line x1=")"_tag << place << R"(%" x2=")"_tag << place
              << R"(%" y1="0" y2="100%"/>)"_tag;
        texts << R"(<text x=")"_tag << place << R"(%" y="14">)"_tag << NumberText(i * apart)
              << (i == 0 ? " ms" : "") << "</text>"_tag;
    }
    Markup axis;
    axis << R"(<div class="axis"><svg class="lane" aria-hidden="true"><g id=")"_tag << m_Grid
         << R"(" class="grid">)"_tag << lines << "</g>"_tag << texts << "</svg></div>\n"_tag;
    return axis;
}

Markup Timeline::Bar(TAG opening, double start, double time) const {
    const double begin = PlaceOf(start);
    Markup bar;
    bar << opening << R"( x=")"_tag << begin << R"(%" width=")"_tag
        << std::max(PlaceOf(start + time) - begin, NARROWEST) << R"(%"/>)"_tag;
    return bar;
}

/// Of several at one place, one is drawn.
Markup Timeline::Ticks(const RECORDED_ATTEMPT& attempt) const {
    Markup ticks;
    std::set<std::pair<double, bool>> drawn;
    for (const RECORDED_CALL& call : attempt.calls) {
        const double start = attempt.startMs + call.startMs;
        const double place = std::round(PlaceOf(start) / 100 * PLACES_OF_TICKS);
        if (drawn.insert({place, call.bFailed}).second) {
            ticks << Bar(
                call.bFailed ? R"(<rect class="call failed" y="1" height="18")"_tag
                             : R"(<rect class="call" y="4" height="12")"_tag,
                start, call.timeMs);
        }
    }
    return ticks;
}

Markup Timeline::Lane(const RECORDED_STEP& step) const {
    Markup lane;
    if (!m_bMoments) {
        return lane;
    }
    lane << R"(<svg class="lane" role="img" aria-label="begins at )"_tag
         << DurationText(step.startMs) << R"("><use href="#)"_tag << m_Grid << R"("/>)"_tag
         << Bar(R"(<rect class="step" y="8" height="4")"_tag, step.startMs, step.timeMs);
    for (const RECORDED_ATTEMPT& each : step.attempts) {
        lane << Bar(R"(<rect class="attempt" y="5" height="10")"_tag, each.startMs, each.timeMs);
    }
    for (const RECORDED_ATTEMPT& each : step.attempts) {
        lane << Ticks(each);
    }
    lane << "</svg>"_tag;
    return lane;
}
