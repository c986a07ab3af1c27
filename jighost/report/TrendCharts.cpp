// Small charts side by side: across, one place for each value; upward, values and limits alike.
#include "jighost/report/TrendCharts.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>

#include "jighost/report/LimitBar.h"

namespace {

struct POINT {
    const REPORTED_RUN* run;
    const REPORTED_VALUE* value;
};

/// Upward places, in pixels from the top.
constexpr double TOP = 12;
constexpr double BOTTOM = 108;

class TrendChart {
  public:
    explicit TrendChart(const std::vector<POINT>& points) : m_Points(points) {
        for (const POINT& point : points) {
            Widen(point.value->number);
            Widen(point.value->min);
            Widen(point.value->max);
        }
    }

    Markup Drawing() const {
        Markup drawing;
        for (std::size_t i = 0; i < m_Points.size(); ++i) {
            drawing << Limit(i, m_Points[i].value->min) << Limit(i, m_Points[i].value->max);
        }
        for (std::size_t i = 1; i < m_Points.size(); ++i) {
            drawing << Line(
                "way"_tag, Across(Middle(i - 1)), Upward(i - 1), Across(Middle(i)), Upward(i));
        }
        for (std::size_t i = 0; i < m_Points.size(); ++i) {
            drawing << Point(i);
        }
        return drawing;
    }
    /// Of the chart's height.
    double Highest() const { return m_High; }
    double Lowest() const { return m_Low; }

  private:
    void Widen(const std::optional<double>& number) {
        m_Low = std::min(m_Low, number.value_or(m_Low));
        m_High = std::max(m_High, number.value_or(m_High));
    }
    static double Middle(std::size_t index) { return static_cast<double>(index) + 0.5; }
    double Across(double place) const {
        return std::round(place / static_cast<double>(m_Points.size()) * 10000) / 100;
    }
    double Upward(std::size_t index) const { return Height(m_Points[index].value->number); }
    double Height(double number) const {
        const double share = ShareOf(number, m_Low, m_High);
        return std::round((BOTTOM - (BOTTOM - TOP) * share) * 100) / 100;
    }
    static Markup Line(TAG kind, double x1, double y1, double x2, double y2) {
        Markup line;
        line << R"(<line class=")"_tag << kind << R"(" x1=")"_tag << x1 << R"(%" y1=")"_tag << y1
             << R"(" x2=")"_tag << x2 << R"(%" y2=")"_tag << y2 << R"("/>)"_tag;
        return line;
    }
    /// As wide as the point's own place: limits may change from run to run.
    Markup Limit(std::size_t index, const std::optional<double>& limit) const {
        if (!limit) {
            return {};
        }
        const auto place = static_cast<double>(index);
        const double height = Height(*limit);
        return Line("limit"_tag, Across(place), height, Across(place + 1), height);
    }
    Markup Point(std::size_t index) const {
        const auto& [pRun, pValue] = m_Points[index];
        Markup point;
        point << R"(<a href="#)"_tag << pRun->place << R"("><title>)"_tag << pRun->serial << ": "
              << pValue->number << (pValue->unit.empty() ? "" : " ") << pValue->unit
              << (pValue->bWithin ? "" : ", failed") << ", " << pRun->started
              << R"(</title><svg class="point )"_tag << (pValue->bWithin ? "passed" : "failed")
              << R"(" x=")"_tag << Across(Middle(index)) << R"(%" y=")"_tag << Upward(index)
              << (pValue->bWithin ? R"("><circle r="4"/></svg></a>)"_tag
                                  : R"("><path d="M0-8L7 5L-7 5Z"/></svg></a>)"_tag)
              << "\n"_tag;
        return point;
    }

    const std::vector<POINT>& m_Points;
    double m_Low = HUGE_VAL;
    double m_High = -HUGE_VAL;
};

/// Sequence, number of the step, measurement, unit.
using TrendName = std::tuple<std::string, std::uint64_t, std::string, std::string>;

}  // namespace

static Markup Figure(const TrendName& name, const std::vector<POINT>& points) {
    const auto& [sequence, step, measurement, unit] = name;
    const auto failed = std::count_if(
        points.begin(), points.end(), [](const POINT& point) { return !point.value->bWithin; });
    const TrendChart chart(points);
    Markup figure;
    figure << "<figure><figcaption><b>"_tag << measurement << (unit.empty() ? "" : ", ") << unit
           << "</b> "_tag << sequence << ", step " << step << R"(<span class="note">)"_tag
           << points.size() << (points.size() == 1 ? " value" : " values")
           << (failed > 0 ? R"(, <b class="failed">)"_tag : ", "_tag) << failed << " outside"
           << (failed > 0 ? "</b>"_tag : ""_tag)
           << R"(</span></figcaption><div class="plot"><span class="scale"><span>)"_tag
           << chart.Highest() << "</span><span>"_tag << chart.Lowest()
           << R"(</span></span><svg class="trend" role="group" aria-label=")"_tag << measurement
           << R"(">)"_tag << chart.Drawing() << "</svg></div></figure>\n"_tag;
    return figure;
}

Markup TrendCharts(const ReportedRuns& runs) {
    std::map<TrendName, std::vector<POINT>> trends;
    for (const REPORTED_RUN* pRun : runs) {
        for (const REPORTED_VALUE& value : pRun->values) {
            trends[{pRun->sequence, value.step, value.name, value.unit}].push_back({pRun, &value});
        }
    }
    Markup charts;
    if (trends.empty()) {
        return charts;
    }
    charts << "<section aria-labelledby=\"trends\"><h2 id=\"trends\">Measurements over time</h2>\n"
              "<div class=\"charts\">\n"_tag;
    for (const auto& [name, points] : trends) {
        charts << Figure(name, points);
    }
    charts << "</div></section>\n"_tag;
    return charts;
}
